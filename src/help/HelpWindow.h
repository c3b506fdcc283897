#pragma once

#include "help/HelpBook.h"

#include <QMainWindow>

#include <memory>

class QLineEdit;
class QListWidget;
class QTabWidget;
class QTextBrowser;
class QTreeWidget;
class QTreeWidgetItem;

namespace zv {

/// The program's own help viewer: contents, index and search on the left, the page on the right.
class HelpWindow : public QMainWindow {
    Q_OBJECT

public:
    enum class Side { Contents, Index, Search };

    explicit HelpWindow(std::unique_ptr<HelpBook> book);
    ~HelpWindow() override;

    /// Brings one of the three lists to the front.
    void showSide(Side side);
    /// Shows the page that the book opens with.
    void showHome();
    /// Shows a page by its path inside the book; an unknown one changes nothing.
    void showPage(const QString& page);

private:
    QWidget* contentsSide();
    QWidget* indexSide();
    QWidget* searchSide();
    void addTools();
    void addContents(const std::vector<HelpEntry>& entries, QTreeWidgetItem* parent);
    void chooseIndexed(const QString& start);
    void search();
    void pageChanged(const QUrl& address);

    std::unique_ptr<HelpBook> m_book;
    QTabWidget* m_sides;
    QTreeWidget* m_contents = nullptr;
    QLineEdit* m_indexText = nullptr;
    QListWidget* m_index = nullptr;
    QLineEdit* m_searchText = nullptr;
    QListWidget* m_results = nullptr;
    QTextBrowser* m_page;
    bool m_following = false; ///< The contents follow the page, not the other way round.
};

} // namespace zv
