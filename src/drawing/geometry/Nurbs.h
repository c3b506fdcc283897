#pragma once

#include "drawing/geometry/Transform.h"

#include <vector>

namespace zv::dwg {

/// Points along a spline, close enough together to look smooth at any sensible size; at most `limit`. Empty
/// when its knots, weights and control points do not belong together.
std::vector<Point3> splinePoints(const Spline& spline, std::size_t limit = 4000);

/// A smooth curve through points (natural cubic, or with the given end tangents where they are not zero).
std::vector<Point3> curveThrough(const std::vector<Point3>& points, bool closed, Point3 startTangent,
                                 Point3 endTangent, std::size_t limit = 4000);

} // namespace zv::dwg
