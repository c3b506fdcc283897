#pragma once

#include "drawing/geometry/Vector.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace zv::dwg {

inline Point3 lift(Point2 a, double z = 0)
{
    return {a.x, a.y, z};
}
inline Point2 flat(Point3 a)
{
    return {a.x, a.y};
}
inline bool finite(Point2 a)
{
    return std::isfinite(a.x) && std::isfinite(a.y);
}

inline constexpr double kPi = 3.14159265358979323846;

/// A rectangle; empty until a point is added. Points that are no numbers are left out.
struct Box {
    Point2 min{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Point2 max{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

    bool empty() const { return min.x > max.x; }
    double width() const { return empty() ? 0 : max.x - min.x; }
    double height() const { return empty() ? 0 : max.y - min.y; }
    Point2 center() const { return {(min.x + max.x) / 2, (min.y + max.y) / 2}; }
    void add(Point2 p)
    {
        if (!finite(p))
            return;
        min = {std::min(min.x, p.x), std::min(min.y, p.y)};
        max = {std::max(max.x, p.x), std::max(max.y, p.y)};
    }
    void add(const Box& other)
    {
        if (other.empty())
            return;
        add(other.min);
        add(other.max);
    }
    bool touches(const Box& o) const
    {
        return min.x <= o.max.x && o.min.x <= max.x && min.y <= o.max.y && o.min.y <= max.y;
    }
};

/// x' = xx x + yx y + dx, y' = xy x + yy y + dy.
struct Affine {
    double xx = 1, xy = 0, yx = 0, yy = 1, dx = 0, dy = 0;

    Point2 map(Point2 p) const { return {xx * p.x + yx * p.y + dx, xy * p.x + yy * p.y + dy}; }
    Point2 mapVector(Point2 p) const { return {xx * p.x + yx * p.y, xy * p.x + yy * p.y}; }
    /// First `inner`, then this.
    Affine of(const Affine& inner) const;
    /// The larger of the lengths that unit vectors take on.
    double scale() const;
    static Affine placed(Point2 origin, Point2 xAxis, Point2 yAxis)
    {
        return {xAxis.x, xAxis.y, yAxis.x, yAxis.y, origin.x, origin.y};
    }
};

/// An affine map of space, as three axes and an origin.
struct Matrix {
    Point3 x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1}, origin;

    Point3 vector(Point3 p) const { return x * p.x + y * p.y + z * p.z; }
    Point3 point(Point3 p) const { return vector(p) + origin; }
    /// First `inner`, then this.
    Matrix of(const Matrix& inner) const
    {
        return {vector(inner.x), vector(inner.y), vector(inner.z), point(inner.origin)};
    }
    static Matrix translation(Point3 by);
    static Matrix rotationZ(double angle);
    static Matrix scaling(Point3 by);
};

/// From the plane of an entity to the world, by the arbitrary axis rule.
Matrix ocsMatrix(Point3 normal);

} // namespace zv::dwg
