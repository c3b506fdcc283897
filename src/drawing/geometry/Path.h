#pragma once

#include "drawing/geometry/Transform.h"

#include <cstdint>
#include <span>
#include <vector>

namespace zv::dwg {

/// One step of a path. `to` is where it ends, whatever the verb.
struct PathElement {
    enum class Verb : std::uint8_t { Move, Line, Arc, Close };
    Point2 to;
    Verb verb = Verb::Move;
    std::uint32_t arc = 0; ///< Index into the arcs, for Verb::Arc.
};

/// The points center + u cos t + v sin t for t from start to start + sweep.
struct PathArc {
    Point2 center, u, v;
    double start = 0, sweep = 0;
    Point2 at(double t) const { return center + u * std::cos(t) + v * std::sin(t); }
};

/// Lines and elliptic arcs, kept exact so that they can be drawn at any size.
struct Path {
    std::vector<PathElement> elements;
    std::vector<PathArc> arcs;

    void moveTo(Point2 p) { elements.push_back({p, PathElement::Verb::Move, 0}); }
    void lineTo(Point2 p) { elements.push_back({p, PathElement::Verb::Line, 0}); }
    void close(Point2 start) { elements.push_back({start, PathElement::Verb::Close, 0}); }
    /// From the present end, which should be the arc's own start.
    void arcTo(const PathArc& arc);
    /// The arc from the present end `from` to `to` with the bulge (tangent of a quarter of its angle).
    void bulgeTo(Point2 from, Point2 to, double bulge);
    Box bounds() const;
};

/// The arc with a bulge between two points.
PathArc bulgeArc(Point2 from, Point2 to, double bulge);
/// The rectangle round an arc's points.
Box arcBounds(const PathArc& arc);
/// How many straight pieces keep an arc within `tolerance` when its axes are `radius` long; 1 to 720.
int arcSteps(double radius, double sweep, double tolerance);

/// Straight pieces of a path: `line(points, closed)` for each of its runs, mapped and within `tolerance`
/// after the map. `scratch` is reused between calls.
template <class Sink>
void flatten(std::span<const PathElement> elements, std::span<const PathArc> arcs, const Affine& map,
             double tolerance, std::vector<Point2>& scratch, Sink&& line)
{
    scratch.clear();
    const auto flush = [&](bool closed) {
        if (!scratch.empty())
            line(std::span<const Point2>(scratch), closed);
        scratch.clear();
    };
    for (const PathElement& e : elements) {
        switch (e.verb) {
        case PathElement::Verb::Move:
            flush(false);
            scratch.push_back(map.map(e.to));
            break;
        case PathElement::Verb::Line:
            scratch.push_back(map.map(e.to));
            break;
        case PathElement::Verb::Arc: {
            const PathArc& arc = arcs[e.arc];
            const PathArc mapped{map.map(arc.center), map.mapVector(arc.u), map.mapVector(arc.v), arc.start,
                                 arc.sweep};
            const double radius = std::max(length(mapped.u), length(mapped.v));
            const int steps = arcSteps(radius, arc.sweep, tolerance);
            for (int i = 1; i <= steps; ++i)
                scratch.push_back(mapped.at(arc.start + arc.sweep * i / steps));
            break;
        }
        case PathElement::Verb::Close:
            flush(true);
            // What follows a closed run without a move starts where that run did.
            scratch.push_back(map.map(e.to));
            break;
        }
    }
    if (scratch.size() > 1 || (!elements.empty() && elements.back().verb == PathElement::Verb::Move))
        flush(false);
}

} // namespace zv::dwg
