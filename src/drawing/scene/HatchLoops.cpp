#include "drawing/scene/HatchLoops.h"

#include "drawing/geometry/Nurbs.h"

namespace zv::dwg {

namespace {

constexpr std::size_t kMostPieces = 300000;
constexpr double kMostLines = 50000;

/// Takes `amount` off; false when there is not as much.
bool spend(std::size_t& work, std::size_t amount)
{
    work -= std::min(work, amount);
    return work > 0;
}

/// Goes to a point: starts the path there, or draws a line when it ended elsewhere.
void join(Path& path, Point2 to, double tolerance)
{
    if (path.elements.empty())
        path.moveTo(to);
    else if (length(path.elements.back().to - to) > tolerance)
        path.lineTo(to);
}

void addArc(Path& path, PathArc arc, bool counterClockwise, double end)
{
    if (counterClockwise) {
        arc.sweep = end - arc.start;
    } else {
        // Clockwise ones count their angles the other way round.
        arc.sweep = arc.start - end;
        arc.start = -arc.start;
    }
    if (!std::isfinite(arc.start) || !std::isfinite(arc.sweep))
        return;
    const double turns = std::abs(arc.sweep) / (2 * kPi);
    if (turns > 1 + 1e-9)
        arc.sweep = std::fmod(arc.sweep, 2 * kPi);
    if (std::abs(arc.sweep) < 1e-12)
        arc.sweep = counterClockwise ? 2 * kPi : -2 * kPi;
    if (counterClockwise != (arc.sweep > 0))
        arc.sweep += counterClockwise ? 2 * kPi : -2 * kPi;
    const double size = std::max(length(arc.u), length(arc.v));
    join(path, arc.at(arc.start), size * 1e-6);
    path.arcTo(arc);
}

void addEdge(Path& path, const HatchEdge& edge)
{
    switch (edge.kind) {
    case HatchEdge::Kind::Line:
        join(path, edge.start, length(edge.end - edge.start) * 1e-6);
        path.lineTo(edge.end);
        break;
    case HatchEdge::Kind::Arc:
        addArc(path, {edge.center, {edge.radius, 0}, {0, edge.radius}, edge.startAngle, 0},
               edge.counterClockwise, edge.endAngle);
        break;
    case HatchEdge::Kind::Ellipse: {
        const Point2 u = edge.majorAxis;
        addArc(path, {edge.center, u, Point2{-u.y, u.x} * edge.axisRatio, edge.startAngle, 0},
               edge.counterClockwise, edge.endAngle);
        break;
    }
    case HatchEdge::Kind::Spline:
        for (const Point3& p : splinePoints(edge.spline))
            join(path, flat(p), 0);
        break;
    }
}

Path loopPath(const HatchLoop& loop)
{
    Path path;
    if (!loop.polyline.empty()) {
        const auto& v = loop.polyline;
        path.moveTo(flat(v[0].position));
        for (std::size_t i = 0; i < v.size(); ++i)
            path.bulgeTo(flat(v[i].position), flat(v[(i + 1) % v.size()].position), v[i].bulge);
    } else {
        for (const HatchEdge& edge : loop.edges)
            addEdge(path, edge);
    }
    if (!path.elements.empty())
        path.close(path.elements.front().to);
    return path;
}

void append(Path& to, const Path& from)
{
    const auto base = static_cast<std::uint32_t>(to.arcs.size());
    for (PathElement e : from.elements) {
        e.arc += base;
        to.elements.push_back(e);
    }
    to.arcs.insert(to.arcs.end(), from.arcs.begin(), from.arcs.end());
}

std::vector<std::vector<Point2>> polygons(const Path& area)
{
    const Box box = area.bounds();
    const double tolerance = std::max(box.width(), box.height()) / 4000;
    std::vector<std::vector<Point2>> out;
    std::vector<Point2> scratch;
    flatten(area.elements, area.arcs, {}, tolerance, scratch, [&](std::span<const Point2> points, bool) {
        if (points.size() > 2)
            out.emplace_back(points.begin(), points.end());
    });
    return out;
}

bool inside(const std::vector<Point2>& polygon, Point2 p)
{
    bool in = false;
    for (std::size_t i = 0, j = polygon.size() - 1; i < polygon.size(); j = i++) {
        const Point2 a = polygon[i], b = polygon[j];
        if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
            in = !in;
    }
    return in;
}

/// One family of parallel lines, laid over polygons turned so that the lines are level.
class Family {
public:
    Family(const HatchPatternLine& line, const std::vector<std::vector<Point2>>& area);
    bool draw(Path& out, std::size_t& work);

private:
    void drawSpan(Path& out, double y, double from, double to, double phase);
    Point2 back(double x, double y) const { return {x * m_cos - y * m_sin, x * m_sin + y * m_cos}; }

    const HatchPatternLine& m_line;
    double m_cos, m_sin;
    double m_pattern = 0;
    std::vector<std::pair<Point2, Point2>> m_edges; ///< Lower end first.
    Box m_box;
    std::size_t m_pieces = 0;
};

Family::Family(const HatchPatternLine& line, const std::vector<std::vector<Point2>>& area)
    : m_line(line), m_cos(std::cos(line.angle)), m_sin(std::sin(line.angle))
{
    const auto turn = [&](Point2 p) { return Point2{p.x * m_cos + p.y * m_sin, -p.x * m_sin + p.y * m_cos}; };
    for (const auto& polygon : area)
        for (std::size_t i = 0; i < polygon.size(); ++i) {
            Point2 a = turn(polygon[i]), b = turn(polygon[(i + 1) % polygon.size()]);
            m_box.add(a);
            if (a.y > b.y)
                std::swap(a, b);
            if (a.y < b.y)
                m_edges.emplace_back(a, b);
        }
    std::sort(m_edges.begin(), m_edges.end(),
              [](const auto& a, const auto& b) { return a.first.y < b.first.y; });
    for (const double dash : line.dashes)
        m_pattern += std::abs(dash);
}

bool Family::draw(Path& out, std::size_t& work)
{
    if (m_box.empty())
        return true;
    const double baseX = m_line.base.x * m_cos + m_line.base.y * m_sin;
    const double baseY = -m_line.base.x * m_sin + m_line.base.y * m_cos;
    const double stepX = m_line.offset.x * m_cos + m_line.offset.y * m_sin;
    const double stepY = -m_line.offset.x * m_sin + m_line.offset.y * m_cos;
    if (std::abs(stepY) < 1e-12 || !std::isfinite(stepX) || !std::isfinite(stepY) || !std::isfinite(baseY))
        return true;
    double first = (m_box.min.y - baseY) / stepY, last = (m_box.max.y - baseY) / stepY;
    if (first > last)
        std::swap(first, last);
    first = std::ceil(first - 1e-9);
    last = std::floor(last + 1e-9);
    if (!(last - first < kMostLines) || std::abs(first) > 1e15)
        return false;
    // Lines are taken upwards, so that edges enter once and leave once.
    const bool up = stepY > 0;
    std::size_t next = 0;
    std::vector<std::size_t> active;
    std::vector<double> crossings;
    for (std::int64_t line = 0; static_cast<double>(line) <= last - first; ++line) {
        const double n = static_cast<double>(line);
        const double k = up ? first + n : last - n;
        // Lines that run exactly through corners are moved by less than a hair.
        const double y = baseY + k * stepY + m_box.height() * 1e-10;
        while (next < m_edges.size() && m_edges[next].first.y <= y)
            active.push_back(next++);
        std::erase_if(active, [&](std::size_t i) { return m_edges[i].second.y <= y; });
        crossings.clear();
        if (!spend(work, active.size() + 1))
            return false;
        for (const std::size_t i : active) {
            const auto& [a, b] = m_edges[i];
            crossings.push_back(a.x + (b.x - a.x) * (y - a.y) / (b.y - a.y));
        }
        std::sort(crossings.begin(), crossings.end());
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2)
            drawSpan(out, y, crossings[i], crossings[i + 1], baseX + k * stepX);
        if (m_pieces > kMostPieces)
            return false;
    }
    return true;
}

void Family::drawSpan(Path& out, double y, double from, double to, double phase)
{
    const auto piece = [&](double a, double b) {
        ++m_pieces;
        out.moveTo(back(a, y));
        out.lineTo(back(b, y));
    };
    if (m_line.dashes.empty() || !(m_pattern > 0)) {
        piece(from, to);
        return;
    }
    double at = phase + std::floor((from - phase) / m_pattern) * m_pattern;
    if (!((to - at) / m_pattern < static_cast<double>(kMostPieces))) {
        m_pieces = kMostPieces + 1;
        return;
    }
    while (at < to && m_pieces <= kMostPieces)
        for (const double dash : m_line.dashes) {
            const double end = at + std::abs(dash);
            if (dash >= 0 && end >= from && at <= to && (dash > 0 || (at > from && at < to)))
                piece(std::max(at, from), std::min(end, to));
            at = end;
        }
}

} // namespace

Path hatchArea(const Hatch& hatch, std::size_t& work)
{
    std::vector<Path> loops;
    std::vector<std::vector<Point2>> outlines;
    for (const HatchLoop& loop : hatch.loops) {
        Path path = loopPath(loop);
        if (path.elements.size() < 2)
            continue;
        auto polygon = polygons(path);
        loops.push_back(std::move(path));
        outlines.push_back(polygon.empty() ? std::vector<Point2>() : std::move(polygon.front()));
    }
    constexpr int kNormal = 0;
    constexpr std::size_t kMostCompared = 400;
    Path area;
    for (std::size_t i = 0; i < loops.size(); ++i) {
        if (hatch.style != kNormal && loops.size() <= kMostCompared && !outlines[i].empty()) {
            int depth = 0;
            for (std::size_t j = 0; j < loops.size(); ++j)
                if (j != i && !outlines[j].empty() && spend(work, outlines[j].size()))
                    depth += inside(outlines[j], outlines[i].front());
            // The outer style knows one level of islands, the ignoring style none.
            if (depth > (hatch.style == 1 ? 1 : 0))
                continue;
        }
        append(area, loops[i]);
    }
    return area;
}

Path hatchLines(const Hatch& hatch, const Path& area, bool& complete, std::size_t& work)
{
    const auto outlines = polygons(area);
    Path out;
    complete = true;
    for (const HatchPatternLine& line : hatch.lines) {
        complete = Family(line, outlines).draw(out, work) && out.elements.size() < 2 * kMostPieces;
        if (!complete)
            return {};
    }
    return out;
}

} // namespace zv::dwg
