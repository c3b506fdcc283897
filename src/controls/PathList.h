#pragma once

#include <QHash>
#include <QListWidget>

namespace zv {

/// A list of paths or labels. A text wider than the list can be scrolled to. Nothing is selected until the
/// user or the program selects a row; the focus alone does not. Where two rows and the bar below them have no
/// room, the rows are worth more than the bar.
class PathList : public QListWidget {
    Q_OBJECT

public:
    explicit PathList(QWidget* parent = nullptr);

    /// Adds rows at the end and widens the list's horizontal extent to the widest of them. The extent never
    /// shrinks, also not when the list is cleared.
    void addItemWithExtent(const QString& text);
    void addItemsWithExtent(const QStringList& texts);
    /// Fills the list afresh with these rows, of which none is selected.
    void setItemsWithExtent(const QStringList& texts);
    int horizontalExtent() const { return m_extent; } ///< In pixels.
    int rowHeight() const;
    /// The height that shows two rows above the bar.
    int heightOfTwoRows() const;

Q_SIGNALS:
    /// Another row was selected, by the user or by the program.
    void rowSelected(int row);
    void rowClickedAgain(int row);
    void doubleClickedInList();
    void lostFocus();

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index,
                                                         const QEvent* event) const override;
    void changeEvent(QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;

private:
    int widthOf(const QString& text);
    void widenTo(const QStringList& texts);

    int m_extent = 0;
    QHash<QChar, int> m_letterWidths;
    bool m_rowChanged = false;
};

} // namespace zv
