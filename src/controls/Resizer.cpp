#include "controls/Resizer.h"

#include <QEvent>
#include <QWidget>

#include <algorithm>
#include <cmath>

namespace zv {

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
        return static_cast<int>(std::lower_bound(edges.begin(), edges.end(), edge) - edges.begin());
    };

    const int pieces = static_cast<int>(edges.size()) - 1;
    QVector<double> least(pieces, 0.0);
    // Narrow spans first, so that a wide one only asks for what they have not claimed already.
    QVector<Span> spans = m_spans;
    std::stable_sort(spans.begin(), spans.end(),
                     [](const Span& a, const Span& b) { return a.to - a.from < b.to - b.from; });
    for (const Span& span : spans) {
        double missing = span.least;
        for (int i = indexOf(span.from); i < indexOf(span.to); ++i)
            missing -= least[i];
        if (missing <= 0)
            continue;
        for (int i = indexOf(span.from); i < indexOf(span.to); ++i)
            least[i] += missing * (edges[i + 1] - edges[i]) / (span.to - span.from);
    }

    double claimed = 0;
    double wanted = 0;
    QVector<double> wish(pieces);
    for (int i = 0; i < pieces; ++i) {
        const double share = double(edges[i + 1] - edges[i]) * actual / whole;
        wish[i] = std::max(0.0, share - least[i]);
        claimed += least[i];
        wanted += wish[i];
    }
    const double squeeze = claimed > actual ? actual / claimed : 1.0;
    const double rest = std::max(0.0, actual - claimed);

    m_positions.clear();
    double position = 0;
    for (int i = 0; i <= pieces; ++i) {
        m_positions.insert(edges[i], static_cast<int>(std::lround(position)));
        if (i < pieces)
            position += least[i] * squeeze + (wanted > 0 ? wish[i] * rest / wanted : 0.0);
    }
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

void Resizer::layOut()
{
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
    ProportionalAxis across;
    ProportionalAxis down;
    for (const Entry& entry : m_entries) {
        if (entry.parent != parent)
            continue;
        across.add(entry.design.left(), entry.design.left() + entry.design.width(), entry.least.width());
        down.add(entry.design.top(), entry.design.top() + entry.design.height(), entry.least.height());
    }
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
