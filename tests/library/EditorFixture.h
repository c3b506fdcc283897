#pragma once

#include "library/Newlib.h"
#include "support/OfficeFixture.h"

namespace zv {

/// An office with its library editor open, reached from the main window as a user reaches it.
class EditorFixture : public OfficeFixture {
protected:
    EditorFixture();

    /// Opens the editor on a catalogue of these libraries, each with its list; an empty list is made for one
    /// that has none yet.
    Newlib& open(const std::vector<std::string>& libraries);
    Newlib& editor();

    /// Shows the folder of the test's drawings in the editor's lists and selects these files in it.
    bool pick(const std::vector<std::string>& files);
    /// The same, and adds them.
    bool add(const std::vector<std::string>& files);
    /// Lists of bytes as drawings and libraries have them.
    std::string linesOf(const std::vector<std::string>& drawings) const;
    std::string listBytes(const std::string& library) const;
    /// The whole master profile after a write of the catalogue.
    std::string profileWith(int count, const std::vector<std::string>& names) const;
    std::string profileBytes() const;
    bool exists(const std::string& nameInMasterFolder) const;

    QString shown(const char* name) { return text(QLatin1String(name), QStringLiteral("Newlib")); }
    bool press(const char* name) { return click(QLatin1String(name), QStringLiteral("Newlib")); }
    bool inPlay(const char* name);
    bool usable(const char* name) { return enabled(QLatin1String(name), QStringLiteral("Newlib")); }
    bool select(int row) { return clickRow(QStringLiteral("List1"), row, QStringLiteral("Newlib")); }
    int selectedRow();
    QStringList listed() { return rows(QStringLiteral("List1"), QStringLiteral("Newlib")); }
    bool chooseIn(const char* combo, const QString& library)
    {
        return choose(QLatin1String(combo), library, QStringLiteral("Newlib"));
    }
    void typeIn(const char* name, const QString& what)
    {
        type(QLatin1String(name), what, QStringLiteral("Newlib"));
    }
    QColor groundOf(const char* name);
    /// Expects that no label and no caption of a window is cut at the sizes in use.
    static void labelsAreReadWhole(QWidget& window);
    /// The last message whole: title, icon, text.
    std::string lastBox() const;
};

QStringList texts(const std::vector<std::string>& paths);

} // namespace zv
