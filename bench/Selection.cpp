#include "Selection.h"

#include "drawing/fonts/FontFolder.h"
#include "drawing/scene/SceneBuilder.h"

#include <algorithm>
#include <limits>
#include <span>

namespace zv::bench {

using namespace zv::dwg;

namespace {

/// Curves are followed this closely, as a part of an entity's size.
constexpr double kTolerance = 1e-3;

double distanceToSegment(Point2 p, Point2 a, Point2 b)
{
    const Point2 along = b - a;
    const double square = along.x * along.x + along.y * along.y;
    double t = square > 0 ? ((p.x - a.x) * along.x + (p.y - a.y) * along.y) / square : 0;
    t = std::clamp(t, 0.0, 1.0);
    return length(p - (a + along * t));
}

bool isInside(Point2 p, const std::vector<Point2>& points)
{
    bool inside = false;
    for (std::size_t i = 0, before = points.size() - 1; i < points.size(); before = i++) {
        const Point2 a = points[i], b = points[before];
        if ((a.y > p.y) != (b.y > p.y) && p.x < (b.x - a.x) * (p.y - a.y) / (b.y - a.y) + a.x)
            inside = !inside;
    }
    return inside;
}

bool contains(const Box& box, Point2 p)
{
    return p.x >= box.min.x && p.x <= box.max.x && p.y >= box.min.y && p.y <= box.max.y;
}

/// Cuts off what of a segment lies beyond one edge: its start is `depth` beyond it, its end `change` further.
/// False when nothing is left between `from` and `to`.
bool cut(double depth, double change, double& from, double& to)
{
    if (change == 0)
        return depth <= 0;
    const double at = -depth / change;
    if (change > 0)
        to = std::min(to, at);
    else
        from = std::max(from, at);
    return from <= to;
}

bool touches(const Box& box, Point2 a, Point2 b)
{
    const Point2 along = b - a;
    double from = 0, to = 1;
    return cut(box.min.x - a.x, -along.x, from, to) && cut(a.x - box.max.x, along.x, from, to) &&
           cut(box.min.y - a.y, -along.y, from, to) && cut(a.y - box.max.y, along.y, from, to);
}

std::vector<Point2> corners(const Box& box)
{
    return {box.min, {box.max.x, box.min.y}, box.max, {box.min.x, box.max.y}, box.min};
}

} // namespace

Outlines::Outlines(const Document& seen)
{
    FontFolder fonts{{}};
    Document alone = seen;
    const std::vector<Entity> entities = std::move(alone.blocks[alone.modelSpace].entities);
    std::vector<Point2> scratch;
    for (const Entity& entity : entities) {
        alone.blocks[alone.modelSpace].entities.assign(1, entity);
        const Scene scene = buildScene(alone, fonts);
        Outline outline;
        outline.bounds = scene.bounds;
        const double tolerance = std::max(scene.bounds.width(), scene.bounds.height()) * kTolerance;
        for (const SceneItem& item : scene.items) {
            // Letters are taken by the rectangle round them.
            if (item.kind == SceneItem::Kind::Glyphs) {
                outline.runs.push_back({corners(item.bounds), true});
                continue;
            }
            const bool filled = item.kind != SceneItem::Kind::Stroke;
            flatten(scene.elements(item), scene.path.arcs, Affine{}, tolerance, scratch,
                    [&](std::span<const Point2> points, bool closed) {
                        Run run{{points.begin(), points.end()}, filled};
                        if (closed)
                            run.points.push_back(points.front());
                        outline.runs.push_back(std::move(run));
                    });
        }
        m_outlines.push_back(std::move(outline));
    }
}

double Outlines::distance(const Outline& outline, Point2 point)
{
    double nearest = std::numeric_limits<double>::infinity();
    bool inside = false;
    for (const Run& run : outline.runs) {
        if (run.points.size() == 1)
            nearest = std::min(nearest, length(point - run.points[0]));
        for (std::size_t i = 1; i < run.points.size(); ++i)
            nearest = std::min(nearest, distanceToSegment(point, run.points[i - 1], run.points[i]));
        if (run.filled && !run.points.empty() && isInside(point, run.points))
            inside = !inside;
    }
    return inside ? 0 : nearest;
}

std::optional<std::size_t> Outlines::nearest(Point2 point, double radius) const
{
    std::optional<std::size_t> found;
    double best = radius;
    for (std::size_t index = 0; index < m_outlines.size(); ++index) {
        const double away = distance(m_outlines[index], point);
        if (away > best)
            continue;
        best = away;
        found = index;
    }
    return found;
}

std::vector<std::size_t> Outlines::inside(const Box& window) const
{
    std::vector<std::size_t> found;
    for (std::size_t index = 0; index < m_outlines.size(); ++index) {
        const Box& bounds = m_outlines[index].bounds;
        if (!bounds.empty() && contains(window, bounds.min) && contains(window, bounds.max))
            found.push_back(index);
    }
    return found;
}

std::vector<std::size_t> Outlines::crossing(const Box& window) const
{
    const auto isTouched = [&window](const Run& run) {
        bool touched = !run.points.empty() && contains(window, run.points[0]);
        for (std::size_t i = 1; i < run.points.size() && !touched; ++i)
            touched = touches(window, run.points[i - 1], run.points[i]);
        return touched || (run.filled && !run.points.empty() && isInside(window.min, run.points));
    };
    std::vector<std::size_t> found;
    for (std::size_t index = 0; index < m_outlines.size(); ++index) {
        const std::vector<Run>& runs = m_outlines[index].runs;
        if (std::any_of(runs.begin(), runs.end(), isTouched))
            found.push_back(index);
    }
    return found;
}

} // namespace zv::bench
