#include "controls/Resizer.h"

#include <QEvent>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace zv {
namespace {

constexpr int kLeastGap = 3; ///< Pixels that stay between neighbours, where the design has a gap at all.

/// A design place with the least size of what stands there.
struct Item {
    QRect design;
    QSize least;
};

struct Extent {
    int from;
    int to;
};

Extent extent(const QRect& place, Qt::Orientation along)
{
    return along == Qt::Horizontal ? Extent{place.left(), place.left() + place.width()}
                                   : Extent{place.top(), place.top() + place.height()};
}

Qt::Orientation otherOf(Qt::Orientation along)
{
    return along == Qt::Horizontal ? Qt::Vertical : Qt::Horizontal;
}

/// Adds every item with its least length, and the gaps to the edges and to the neighbours beside it.
void addAxis(ProportionalAxis& axis, const QVector<Item>& items, int whole, Qt::Orientation along)
{
    for (const Item& item : items) {
        const Extent own = extent(item.design, along);
        const Extent aside = extent(item.design, otherOf(along));
        axis.add(own.from, own.to, along == Qt::Horizontal ? item.least.width() : item.least.height());
        axis.add(0, own.from, std::min(own.from, kLeastGap));
        axis.add(own.to, whole, std::min(whole - own.to, kLeastGap));
        for (const Item& other : items) {
            const Extent next = extent(other.design, along);
            const Extent nextAside = extent(other.design, otherOf(along));
            if (own.to < next.from && aside.from < nextAside.to && nextAside.from < aside.to)
                axis.add(own.to, next.from, kLeastGap);
        }
    }
}

} // namespace

void ProportionalAxis::add(int from, int to, int least)
{
    if (from < to)
        m_spans.append({from, to, least});
}

void ProportionalAxis::solve(int whole, int actual)
{
    QVector<int> edges{0, whole};
    for (const Span& span : m_spans)
        edges << span.from << span.to;
    std::sort(edges.begin(), edges.end());
    edges.erase(std::unique(edges.begin(), edges.end()), edges.end());
    const auto indexOf = [&edges](int edge) {
        return std::lower_bound(edges.begin(), edges.end(), edge) - edges.begin();
    };
    struct Piece {
        qsizetype from;
        qsizetype to;
        double least;
    };
    QVector<Piece> pieces;
    for (const Span& span : m_spans)
        pieces.append({indexOf(span.from), indexOf(span.to), double(span.least)});

    QVector<double> at(edges.size());
    // Each edge goes to its share of the whole, or farther where the least lengths before it need more. Edges
    // of controls that do not stand side by side know nothing of each other.
    const auto push = [&](double share) {
        for (qsizetype i = 0; i < edges.size(); ++i) {
            at[i] = edges[i] * share;
            for (const Piece& piece : pieces)
                if (piece.to == i)
                    at[i] = std::max(at[i], at[piece.from] + piece.least);
        }
    };
    push(0);
    const double needed = at.last();
    if (needed > actual) {
        for (double& position : at)
            position *= actual / needed;
    } else {
        push(double(actual) / whole);
        // What went too far comes back, and what stands before it gives way.
        at.last() = std::min(at.last(), double(actual));
        for (qsizetype i = edges.size() - 2; i >= 0; --i) {
            for (const Piece& piece : pieces)
                if (piece.from == i)
                    at[i] = std::min(at[i], at[piece.to] - piece.least);
        }
    }
    m_positions.clear();
    for (qsizetype i = 0; i < edges.size(); ++i)
        m_positions.insert(edges[i], static_cast<int>(std::lround(at[i])));
}

Resizer::Resizer(QWidget* form, QSize designSize) : QObject(form), m_form(form), m_designSize(designSize)
{
    form->installEventFilter(this);
}

void Resizer::place(QWidget* control, const QRect& design, QSize least)
{
    m_entries.append({control->parentWidget(), control, design, least});
}

void Resizer::reserve(QWidget* parent, const QRect& design, QSize least)
{
    m_entries.append({parent, nullptr, design, least});
}

void Resizer::setLeast(QWidget* control, QSize least)
{
    for (Entry& entry : m_entries)
        if (entry.control == control)
            entry.least = least;
}

QRect Resizer::designPlace(const QWidget* control) const
{
    for (const Entry& entry : m_entries)
        if (entry.control == control)
            return entry.design;
    return {};
}

void Resizer::setDesignSize(QSize designSize)
{
    m_designSize = designSize;
    layOut();
}

void Resizer::layOut()
{
    Q_EMIT aboutToLayOut();
    layOutInside(m_form, m_designSize);
    // Parents were added before their children, so each parent has its new size by now.
    QVector<const QWidget*> done{m_form};
    for (const Entry& entry : m_entries) {
        if (done.contains(entry.parent))
            continue;
        done.append(entry.parent);
        layOutInside(entry.parent, designPlace(entry.parent).size());
    }
    Q_EMIT resized();
}

void Resizer::layOutInside(const QWidget* parent, QSize designSize)
{
    if (designSize.isEmpty())
        return;
    QVector<Item> items;
    for (const Entry& entry : m_entries)
        if (entry.parent == parent)
            items.append({entry.design, entry.least});
    ProportionalAxis across;
    ProportionalAxis down;
    addAxis(across, items, designSize.width(), Qt::Horizontal);
    addAxis(down, items, designSize.height(), Qt::Vertical);
    across.solve(designSize.width(), parent->width());
    down.solve(designSize.height(), parent->height());
    for (const Entry& entry : m_entries) {
        if (entry.parent != parent || entry.control == nullptr)
            continue;
        const QPoint start(across.at(entry.design.left()), down.at(entry.design.top()));
        const QPoint end(across.at(entry.design.left() + entry.design.width()),
                         down.at(entry.design.top() + entry.design.height()));
        entry.control->setGeometry(QRect(start, QSize(end.x() - start.x(), end.y() - start.y())));
    }
}

bool Resizer::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_form && event->type() == QEvent::Resize)
        layOut();
    return QObject::eventFilter(watched, event);
}

} // namespace zv
