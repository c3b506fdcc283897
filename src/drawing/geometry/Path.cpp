#include "drawing/geometry/Path.h"

namespace zv::dwg {

void Path::arcTo(const PathArc& arc)
{
    elements.push_back(
        {arc.at(arc.start + arc.sweep), PathElement::Verb::Arc, static_cast<std::uint32_t>(arcs.size())});
    arcs.push_back(arc);
}

void Path::bulgeTo(Point2 from, Point2 to, double bulge)
{
    const double chord = length(to - from);
    if (std::abs(bulge) < 1e-9 || !(chord > 0) || !std::isfinite(bulge)) {
        lineTo(to);
        return;
    }
    arcTo(bulgeArc(from, to, bulge));
    elements.back().to = to;
}

Box Path::bounds() const
{
    Box box;
    for (const PathElement& e : elements)
        box.add(e.to);
    for (const PathArc& arc : arcs)
        box.add(arcBounds(arc));
    return box;
}

PathArc bulgeArc(Point2 from, Point2 to, double bulge)
{
    const Point2 chord = to - from;
    const Point2 middle = (from + to) * 0.5;
    // Distance of the centre from the chord's middle, along the chord's left normal.
    const double offset = (1 - bulge * bulge) / (4 * bulge);
    const Point2 center = middle + Point2{-chord.y, chord.x} * offset;
    const double radius = length(from - center);
    const double start = std::atan2(from.y - center.y, from.x - center.x);
    return {center, {radius, 0}, {0, radius}, start, 4 * std::atan(bulge)};
}

Box arcBounds(const PathArc& arc)
{
    Box box;
    box.add(arc.at(arc.start));
    box.add(arc.at(arc.start + arc.sweep));
    const double low = std::min(arc.start, arc.start + arc.sweep);
    const double high = std::max(arc.start, arc.start + arc.sweep);
    if (!std::isfinite(low) || !std::isfinite(high))
        return box;
    // The tangent is level or upright where these angles lie.
    for (const double base : {std::atan2(arc.v.x, arc.u.x), std::atan2(arc.v.y, arc.u.y)})
        for (int turn = 0; turn < 2; ++turn) {
            const double t = base + turn * kPi;
            const double inside = t + std::ceil((low - t) / (2 * kPi)) * 2 * kPi;
            if (inside <= high)
                box.add(arc.at(inside));
        }
    return box;
}

int arcSteps(double radius, double sweep, double tolerance)
{
    if (!std::isfinite(radius) || !std::isfinite(sweep) || !(radius > 0))
        return 1;
    const double ratio = std::clamp(1 - tolerance / radius, -1.0, 1.0);
    const double step = std::clamp(2 * std::acos(ratio), 2 * kPi / 720, kPi / 4);
    return static_cast<int>(std::clamp(std::ceil(std::abs(sweep) / step), 1.0, 720.0));
}

} // namespace zv::dwg
