#include "controls/FlowLayout.h"

#include <QWidget>

#include <algorithm>

namespace zv {
namespace {

constexpr int kLineGap = 4; ///< At least, between two lines, in pixels.
constexpr int kStep = 4;    ///< By which shorter lines are tried.

int widthOfItem(const QLayoutItem* item)
{
    return std::min(item->sizeHint().expandedTo(item->minimumSize()).width(), item->maximumSize().width());
}

} // namespace

FlowLayout::FlowLayout(QWidget* parent, int spacing) : QLayout(parent)
{
    setContentsMargins(0, 0, 0, 0);
    setSpacing(spacing);
    setSizeConstraint(SetNoConstraint);
}

FlowLayout::~FlowLayout()
{
    for (const Entry& entry : m_entries)
        delete entry.item;
}

void FlowLayout::addControl(QWidget* control, Place place, int gap)
{
    addChildWidget(control);
    m_entries.append({new QWidgetItem(control), place, gap < 0 ? spacing() : gap});
    invalidate();
}

void FlowLayout::addItem(QLayoutItem* item)
{
    m_entries.append({item, Place::Next, spacing()});
}

QLayoutItem* FlowLayout::itemAt(int index) const
{
    return index >= 0 && index < m_entries.size() ? m_entries[index].item : nullptr;
}

QLayoutItem* FlowLayout::takeAt(int index)
{
    if (index < 0 || index >= m_entries.size())
        return nullptr;
    return m_entries.takeAt(index).item;
}

QVector<QVector<FlowLayout::Line>> FlowLayout::groups(int width) const
{
    QVector<Line> whole;
    for (const Entry& entry : m_entries) {
        if (entry.item->isEmpty())
            continue;
        if (whole.isEmpty() || entry.place == Place::NewLine)
            whole.append(Line());
        whole.last().append(&entry);
    }
    QVector<QVector<Line>> all;
    for (const Line& group : whole) {
        QVector<Line> best = broken(group, width);
        // The shortest lines that are not more of them are about the same.
        for (int less = width - kStep; less > 0 && best.size() > 1; less -= kStep) {
            QVector<Line> tried = broken(group, less);
            if (tried.size() != best.size())
                break;
            best = std::move(tried);
        }
        all.append(std::move(best));
    }
    return all;
}

QVector<FlowLayout::Line> FlowLayout::broken(const Line& group, int width)
{
    QVector<Line> all{Line()};
    for (qsizetype i = 0; i < group.size(); ++i) {
        Line tried = all.last();
        tried.append(group[i]);
        while (tried.size() + i - all.last().size() < group.size() &&
               group[i + tried.size() - all.last().size()]->place == Place::Beside)
            tried.append(group[i + tried.size() - all.last().size()]);
        const bool fits = group[i]->place == Place::Beside || widthOf(tried) <= width;
        if (!fits && !all.last().isEmpty())
            all.append(Line());
        all.last().append(group[i]);
    }
    return all;
}

int FlowLayout::heightOf(const Line& line)
{
    int height = 0;
    for (const Entry* entry : line)
        height = std::max(height, entry->item->sizeHint().height());
    return height;
}

int FlowLayout::widthOf(const Line& line)
{
    int width = 0;
    for (const Entry* entry : line)
        width += (entry == line.first() ? 0 : entry->gap) + widthOfItem(entry->item);
    return width;
}

int FlowLayout::heightForWidth(int width) const
{
    int height = 0;
    const QVector<QVector<Line>> all = groups(width);
    for (const QVector<Line>& group : all)
        for (const Line& line : group)
            height += (height > 0 ? kLineGap : 0) + heightOf(line);
    return height;
}

QSize FlowLayout::sizeHint() const
{
    int width = 0;
    const QVector<QVector<Line>> all = groups(QLAYOUTSIZE_MAX);
    for (const QVector<Line>& group : all)
        for (const Line& line : group)
            width = std::max(width, widthOf(line));
    return {width, heightForWidth(QLAYOUTSIZE_MAX)};
}

void FlowLayout::setGeometry(const QRect& area)
{
    QLayout::setGeometry(area);
    const QVector<QVector<Line>> all = groups(area.width());
    qsizetype count = 0;
    for (const QVector<Line>& group : all)
        count += group.size();
    // Lines share the height evenly, each control in the middle of its own.
    qsizetype number = 0;
    for (const QVector<Line>& group : all) {
        const QVector<int> columns = columnsOf(group, area.width());
        for (const Line& line : group) {
            const int top = area.top() + int(area.height() * number / count);
            const int bottom = area.top() + int(area.height() * ++number / count);
            setLine(line, columns, QRect(area.left(), top, area.width(), bottom - top));
        }
    }
}

/// Widths of columns in which all lines of a group can stand; none when they cannot.
QVector<int> FlowLayout::columnsOf(const QVector<Line>& group, int width)
{
    QVector<int> columns;
    int total = 0;
    for (const Line& line : group) {
        if (group.size() < 2 || line.size() > group.first().size())
            return {};
        for (qsizetype i = 0; i < line.size(); ++i) {
            if (line[i]->place == Place::Beside || line[i]->place == Place::Right)
                return {};
            if (i == columns.size())
                columns.append(0);
            columns[i] = std::max(columns[i], widthOfItem(line[i]->item));
        }
    }
    for (qsizetype i = 0; i < columns.size(); ++i)
        total += columns[i] + (i > 0 ? group.first()[i]->gap : 0);
    return total <= width ? columns : QVector<int>();
}

void FlowLayout::setLine(const Line& line, const QVector<int>& columns, const QRect& area)
{
    int left = area.left();
    bool atRight = false;
    for (qsizetype i = 0; i < line.size(); ++i) {
        const Entry& entry = *line[i];
        if (i > 0)
            left += entry.gap;
        if (entry.place == Place::Right && !atRight) {
            atRight = true;
            left = std::max(left, area.right() + 1 - widthOf(line.mid(i)));
        }
        const QSize natural = entry.item->sizeHint().expandedTo(entry.item->minimumSize());
        const int width = std::min(widthOfItem(entry.item), area.right() + 1 - left);
        const int height = std::min({natural.height(), entry.item->maximumSize().height(), area.height()});
        entry.item->setGeometry(
            QRect(left, area.top() + (area.height() - height) / 2, std::max(width, 0), height));
        left += columns.isEmpty() ? width : columns[i];
    }
}

} // namespace zv
