#include "controls/PathList.h"

#include <QHelpEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <QStyledItemDelegate>
#include <QToolTip>

#include <algorithm>

namespace zv {
namespace {

/// Rows are taken out of a list one after the other, and each time all behind them move up.
constexpr int kMostRowsTakenOut = 100;

/// Gives every row the list's extent, so that no row has to be measured when the list is laid out. A row that
/// goes beyond the list's edge is told whole in a tool tip.
class ExtentDelegate final : public QStyledItemDelegate {
public:
    explicit ExtentDelegate(PathList* list) : QStyledItemDelegate(list), m_list(list) {}

    QSize sizeHint(const QStyleOptionViewItem&, const QModelIndex&) const override
    {
        return {m_list->horizontalExtent(), m_list->rowHeight()};
    }

    bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem&,
                   const QModelIndex& index) override
    {
        const bool isCut = index.isValid() && m_list->horizontalExtent() > view->viewport()->width();
        QToolTip::showText(event->globalPos(), isCut ? index.data().toString() : QString(), view);
        return true;
    }

private:
    PathList* m_list;
};

} // namespace

PathList::PathList(QWidget* parent) : QListWidget(parent)
{
    setItemDelegate(new ExtentDelegate(this));
    setUniformItemSizes(true);
    setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
    setTextElideMode(Qt::ElideNone);
    setTabKeyNavigation(false);
    connect(this, &QListWidget::currentRowChanged, this, [this](int row) {
        m_rowChanged = true;
        if (row >= 0)
            Q_EMIT rowSelected(row);
    });
}

// Measuring a text as it will be drawn costs more than all else that adding a row does; the widths of its
// letters, each measured once, tell it closely enough.
int PathList::widthOf(const QString& text)
{
    int width = 0;
    for (const QChar letter : text) {
        const auto known = m_letterWidths.constFind(letter);
        width += known != m_letterWidths.constEnd()
                     ? *known
                     : *m_letterWidths.insert(letter, fontMetrics().horizontalAdvance(letter));
    }
    return width;
}

void PathList::changeEvent(QEvent* event)
{
    if (event->type() == QEvent::FontChange)
        m_letterWidths.clear();
    QListWidget::changeEvent(event);
}

int PathList::rowHeight() const
{
    return fontMetrics().height() + 2;
}

int PathList::heightOfTwoRows() const
{
    return 2 * (rowHeight() + frameWidth()) + horizontalScrollBar()->sizeHint().height();
}

void PathList::resizeEvent(QResizeEvent* event)
{
    const auto wanted = height() < heightOfTwoRows() ? Qt::ScrollBarAlwaysOff : Qt::ScrollBarAsNeeded;
    if (horizontalScrollBarPolicy() != wanted) {
        setHorizontalScrollBarPolicy(wanted);
        // A list without the bar takes its rows for as narrow as itself.
        scheduleDelayedItemsLayout();
    }
    QListWidget::resizeEvent(event);
}

void PathList::addItemWithExtent(const QString& text)
{
    addItemsWithExtent({text});
}

void PathList::addItemsWithExtent(const QStringList& texts)
{
    widenTo(texts);
    addItems(texts);
}

void PathList::widenTo(const QStringList& texts)
{
    const int scrollBar = verticalScrollBar()->sizeHint().width();
    for (const QString& text : texts)
        m_extent = std::max(m_extent, widthOf(text) + scrollBar);
}

void PathList::setItemsWithExtent(const QStringList& texts)
{
    setCurrentRow(-1);
    clearSelection();
    // Nearly always all rows but one are there already, and making rows costs more than to compare them.
    const int rows = count(), wanted = int(texts.size()), common = std::min(rows, wanted);
    int first = 0, last = 0;
    while (first < common && item(first)->text() == texts[first])
        ++first;
    while (last < common - first && item(rows - 1 - last)->text() == texts[wanted - 1 - last])
        ++last;
    if (rows - first - last > kMostRowsTakenOut) {
        clear();
        addItemsWithExtent(texts);
        return;
    }
    model()->removeRows(first, rows - first - last);
    const QStringList others = texts.mid(first, wanted - first - last);
    widenTo(others);
    insertItems(first, others);
}

// With Ctrl held the view would take the mark from the row that is the current one all the same.
QItemSelectionModel::SelectionFlags PathList::selectionCommand(const QModelIndex& index,
                                                               const QEvent* event) const
{
    const QItemSelectionModel::SelectionFlags command = QListWidget::selectionCommand(index, event);
    if (selectionMode() == SingleSelection &&
        command & (QItemSelectionModel::Deselect | QItemSelectionModel::Toggle))
        return QItemSelectionModel::ClearAndSelect;
    return command;
}

void PathList::mousePressEvent(QMouseEvent* event)
{
    m_rowChanged = false;
    QListWidget::mousePressEvent(event);
    const QListWidgetItem* pressed = itemAt(event->position().toPoint());
    if (event->button() == Qt::LeftButton && !m_rowChanged && pressed && pressed == currentItem())
        Q_EMIT rowClickedAgain(currentRow());
}

void PathList::mouseDoubleClickEvent(QMouseEvent* event)
{
    QListWidget::mouseDoubleClickEvent(event);
    if (event->button() == Qt::LeftButton)
        Q_EMIT doubleClickedInList();
}

// The view's own handler would make the first row the current one.
void PathList::focusInEvent(QFocusEvent* event)
{
    QAbstractScrollArea::focusInEvent(event);
    viewport()->update();
}

void PathList::focusOutEvent(QFocusEvent* event)
{
    QListWidget::focusOutEvent(event);
    Q_EMIT lostFocus();
}

} // namespace zv
