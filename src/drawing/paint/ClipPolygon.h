#pragma once

#include "drawing/geometry/Transform.h"

#include <span>
#include <vector>

namespace zv::dwg {

/// Cuts a line to a box grown by `margin`. False when nothing of it is left.
bool clipSegment(Point2& a, Point2& b, const Box& box, double margin);

/// The part of a polygon inside a box grown by `margin`.
std::vector<Point2> clipPolygon(std::span<const Point2> polygon, const Box& box, double margin);

} // namespace zv::dwg
