#include "drawing/scene/Dashes.h"

namespace zv::dwg {

namespace {

constexpr double kMostPatterns = 20000;

bool isCurve(const Path& line, std::size_t i)
{
    return line.elements[i].verb == PathElement::Verb::Arc;
}

} // namespace

Dashes::Dashes(const Linetype& linetype, double scale, bool throughVertices)
    : m_linetype(linetype), m_scale(scale), m_through(throughVertices)
{
    for (const LinetypeDash& dash : linetype.dashes)
        m_pattern += std::abs(dash.length) * scale;
}

void Dashes::addRun(std::vector<Run>& runs, std::vector<Point2>& points) const
{
    if (points.size() > 1) {
        Run run;
        run.points = points;
        run.along.push_back(0);
        for (std::size_t i = 1; i < points.size(); ++i)
            run.along.push_back(run.along.back() + length(points[i] - points[i - 1]));
        runs.push_back(std::move(run));
    }
    points.clear();
}

std::vector<Dashes::Run> Dashes::runsOf(const Path& line) const
{
    std::vector<Run> runs;
    std::vector<Point2> points;
    for (std::size_t i = 0; i < line.elements.size(); ++i) {
        const PathElement& e = line.elements[i];
        if (e.verb == PathElement::Verb::Move) {
            addRun(runs, points);
            points.push_back(e.to);
            continue;
        }
        if (points.empty())
            points.push_back(i > 0 ? line.elements[i - 1].to : e.to);
        if (isCurve(line, i)) {
            const PathArc& arc = line.arcs[e.arc];
            const double radius = std::max(length(arc.u), length(arc.v));
            const int steps = arcSteps(radius, arc.sweep, radius * 0.001);
            for (int k = 1; k <= steps; ++k)
                points.push_back(arc.at(arc.start + arc.sweep * k / steps));
        } else {
            points.push_back(e.to);
        }
        if (!m_through) {
            addRun(runs, points);
            points.push_back(e.to);
        }
    }
    addRun(runs, points);
    return runs;
}

bool Dashes::cut(const Path& line, std::vector<GlyphPlace>& figures, DashFigures& source)
{
    if (m_linetype.dashes.size() < 2 || !(m_pattern > 0) || !std::isfinite(m_pattern))
        return false;
    const std::vector<Run> runs = runsOf(line);
    double total = 0;
    bool any = false;
    for (const Run& run : runs) {
        total += run.size();
        any = any || run.size() >= m_pattern;
    }
    if (!any || !(total / m_pattern < kMostPatterns))
        return false;
    for (const Run& run : runs)
        cutRun(run, figures, source);
    return true;
}

void Dashes::cutRun(const Run& run, std::vector<GlyphPlace>& figures, DashFigures& source)
{
    const double size = run.size();
    const double first = m_linetype.dashes.front().length * m_scale;
    const double whole = std::floor(size / m_pattern);
    if (whole < 1) {
        draw(run, 0, size);
        return;
    }
    // A line begins and ends with a dash: what the whole patterns leave over is shared between its ends.
    const bool startsWithDash = first > 0;
    const double end = startsWithDash ? (size - whole * m_pattern + first) / 2 : 0;
    double at = 0;
    if (startsWithDash) {
        draw(run, 0, end);
        at = end - first;
    }
    bool opening = startsWithDash;
    while (at < size - end * (startsWithDash ? 1 : 0) - m_pattern * 1e-9) {
        for (const LinetypeDash& dash : m_linetype.dashes) {
            const double step = std::abs(dash.length) * m_scale;
            if (dash.length >= 0 && !opening)
                draw(run, at, std::min(at + step, size));
            opening = false;
            at += step;
            if ((dash.shape != 0 || !dash.text.empty()) && at <= size) {
                const auto [place, direction] = placeAt(run, at);
                source.add(dash, place, direction * m_scale, figures);
            }
            if (at >= size)
                break;
        }
    }
    if (startsWithDash)
        draw(run, size - end, size);
}

void Dashes::draw(const Run& run, double from, double to)
{
    const auto begin = std::upper_bound(run.along.begin(), run.along.end(), from);
    m_out.moveTo(placeAt(run, from).first);
    for (auto i = begin; i != run.along.end() && *i < to; ++i)
        m_out.lineTo(run.points[static_cast<std::size_t>(i - run.along.begin())]);
    m_out.lineTo(placeAt(run, to).first);
}

std::pair<Point2, Point2> Dashes::placeAt(const Run& run, double along) const
{
    const auto next = std::upper_bound(run.along.begin() + 1, run.along.end() - 1, along);
    const auto i = static_cast<std::size_t>(next - run.along.begin());
    const Point2 a = run.points[i - 1], b = run.points[i];
    const double piece = run.along[i] - run.along[i - 1];
    if (!(piece > 0))
        return {a, {1, 0}};
    const Point2 direction = (b - a) * (1 / piece);
    return {a + direction * std::clamp(along - run.along[i - 1], 0.0, piece), direction};
}

} // namespace zv::dwg
