#pragma once

#include "controls/LockedCombo.h"
#include "search/Search.h"
#include "support/OfficeFixture.h"

namespace zv {

/// An office with libraries and the search window over it.
class SearchFixture : public OfficeFixture {
protected:
    SearchFixture();

    /// A drawing with keywords of its own in the folder "drawings"; returns its path.
    std::string makeKeyworded(const std::string& name, const std::string& keywords);
    /// Loads the main window and opens the search window from it.
    Search& open();
    Search& search();
    /// Fills in the first keyword, picks a library, and searches.
    void find(const QString& keyword, const QString& library = QStringLiteral("Doors"));
    /// A click on a control of the search window.
    bool press(const char* name) { return click(QLatin1String(name), QStringLiteral("Search")); }
    QString shown(const char* name) { return text(QLatin1String(name), QStringLiteral("Search")); }
    bool isOn(const char* name) { return enabled(QLatin1String(name), QStringLiteral("Search")); }
    bool isBold(const char* name);
    QStringList results() { return rows(QStringLiteral("List1"), QStringLiteral("Search")); }
    /// Runs in the next turn of the event loop.
    void inATurn(const std::function<void()>& handler);
    QString picture(const char* name);
    QColor ground(const char* name);
};

} // namespace zv
