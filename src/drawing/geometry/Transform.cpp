#include "drawing/geometry/Transform.h"

namespace zv::dwg {

Affine Affine::of(const Affine& inner) const
{
    const Point2 x = mapVector({inner.xx, inner.xy}), y = mapVector({inner.yx, inner.yy});
    const Point2 d = map({inner.dx, inner.dy});
    return {x.x, x.y, y.x, y.y, d.x, d.y};
}

double Affine::scale() const
{
    return std::max(std::hypot(xx, xy), std::hypot(yx, yy));
}

Matrix Matrix::translation(Point3 by)
{
    Matrix m;
    m.origin = by;
    return m;
}

Matrix Matrix::rotationZ(double angle)
{
    Matrix m;
    m.x = {std::cos(angle), std::sin(angle), 0};
    m.y = {-std::sin(angle), std::cos(angle), 0};
    return m;
}

Matrix Matrix::scaling(Point3 by)
{
    Matrix m;
    m.x.x = by.x;
    m.y.y = by.y;
    m.z.z = by.z;
    return m;
}

Matrix ocsMatrix(Point3 normal)
{
    Matrix m;
    if (normal.x == 0 && normal.y == 0 && normal.z >= 0)
        return m;
    m.z = unit(normal);
    // Near the poles the world's y axis decides the direction of x, elsewhere its z axis.
    constexpr double kNearPole = 1.0 / 64;
    const bool nearPole = std::abs(m.z.x) < kNearPole && std::abs(m.z.y) < kNearPole;
    m.x = unit(cross(nearPole ? Point3{0, 1, 0} : kZAxis, m.z), {1, 0, 0});
    m.y = cross(m.z, m.x);
    return m;
}

} // namespace zv::dwg
