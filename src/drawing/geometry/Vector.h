#pragma once

#include "drawing/Document.h"

#include <cmath>

namespace zv::dwg {

inline Point2 operator+(Point2 a, Point2 b)
{
    return {a.x + b.x, a.y + b.y};
}
inline Point2 operator-(Point2 a, Point2 b)
{
    return {a.x - b.x, a.y - b.y};
}
inline Point2 operator*(Point2 a, double s)
{
    return {a.x * s, a.y * s};
}
inline double length(Point2 a)
{
    return std::hypot(a.x, a.y);
}
inline Point3 operator+(Point3 a, Point3 b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}
inline Point3 operator-(Point3 a, Point3 b)
{
    return {a.x - b.x, a.y - b.y, a.z - b.z};
}
inline Point3 operator*(Point3 a, double s)
{
    return {a.x * s, a.y * s, a.z * s};
}
inline double dot(Point3 a, Point3 b)
{
    return a.x * b.x + a.y * b.y + a.z * b.z;
}
inline Point3 cross(Point3 a, Point3 b)
{
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}
inline double length(Point3 a)
{
    return std::sqrt(dot(a, a));
}
/// The same direction with length 1; `fallback` when it has none.
inline Point3 unit(Point3 a, Point3 fallback = kZAxis)
{
    const double size = length(a);
    return size > 1e-300 && std::isfinite(size) ? a * (1 / size) : fallback;
}

} // namespace zv::dwg
