#include "Similarity.h"

#include "drawing/Fields.h"
#include "drawing/geometry/Transform.h"

#include <cmath>

namespace zv::bench {

using namespace zv::dwg;

namespace {

/// The plane of an entity before and after the map: its points and angles are written in it.
class Plane {
public:
    Plane(Point3& normal, const Similarity& map) : m_map(map), m_old(ocsMatrix(normal))
    {
        normal = map.direction(normal);
        m_new = ocsMatrix(normal);
    }

    void point(Point3& p) const { p = toNew(m_map.point(m_old.point(p))); }
    void vector(Point3& v) const { v = toNew(m_map.vector(m_old.vector(v))); }
    void angle(double& a) const
    {
        Point3 direction{std::cos(a), std::sin(a), 0};
        vector(direction);
        a = std::atan2(direction.y, direction.x);
        if (a < 0)
            a += 2 * kPi;
    }
    /// An angle that need not lie between 0 and a full turn keeps its turns.
    void turn(double& a) const
    {
        double turned = a;
        angle(turned);
        a = turned + 2 * kPi * std::round((a - turned + m_map.rotation) / (2 * kPi));
    }

private:
    Point3 toNew(const Point3& p) const { return {dot(m_new.x, p), dot(m_new.y, p), dot(m_new.z, p)}; }

    const Similarity& m_map;
    Matrix m_old, m_new;
};

/// The normal of an entity, which has to be known before its points are moved.
struct NormalFinder : FieldsPassedOver {
    Point3* found = nullptr;

    void extrusion(Point3& normal) { found = &normal; }
    void normal(Point3& normal) { found = &normal; }
    void list(auto&, auto) const {}
    void part(auto&) const {}
    void placed(auto&) const {}
};

Point3& normalOf(auto& record, Point3& none)
{
    NormalFinder finder;
    visit(finder, record);
    return finder.found != nullptr ? *finder.found : none;
}

/// Moves the fields of one record; its plane has turned the normal already.
class Mover : public FieldsPassedOver {
public:
    Mover(const Similarity& map, Point3& normal) : m_map(map), m_plane(normal, map) {}

    void point(Point3& p) const { p = m_map.point(p); }
    void direction(Point3& v) const { v = m_map.direction(v); }
    void vector(Point3& v) const { v = m_map.vector(v); }
    void inPlane(Point3& p) const { m_plane.point(p); }
    void inPlane(Point2& p) const
    {
        Point3 space{p.x, p.y, 0};
        m_plane.point(space);
        p = {space.x, space.y};
    }
    void vectorInPlane(Point2& v) const
    {
        Point3 space{v.x, v.y, 0};
        m_plane.vector(space);
        v = {space.x, space.y};
    }
    void directionInPlane(Point3& v) const
    {
        m_plane.vector(v);
        v = v * (1 / m_map.scale);
    }
    void scale(Point3& factors) const { factors = factors * m_map.scale; }
    void elevation(double& height) const
    {
        Point3 above{0, 0, height};
        m_plane.point(above);
        height = above.z;
    }
    void length(double& length) const { length *= m_map.scale; }
    void thickness(double& length) const { length *= m_map.scale; }
    void angle(double& a) const { m_plane.angle(a); }
    void turn(double& a) const { m_plane.turn(a); }
    void mirroredTurn(double& a) const
    {
        a = -a;
        m_plane.turn(a);
        a = -a;
    }
    void bearing(double& a) const { a += m_map.rotation; }
    void part(auto& record) const
    {
        Point3 none = kZAxis;
        Mover mover(m_map, normalOf(record, none));
        visit(mover, record);
    }
    void placed(auto&) const {}

private:
    const Similarity& m_map;
    Plane m_plane;
};

} // namespace

Point3 Similarity::direction(const Point3& v) const
{
    const double c = std::cos(rotation);
    const double s = std::sin(rotation);
    return {c * v.x - s * v.y, s * v.x + c * v.y, v.z};
}

Point3 Similarity::vector(const Point3& v) const
{
    return direction(v) * scale;
}

Point3 Similarity::point(const Point3& p) const
{
    return vector(p) + move;
}

void transform(Geometry& geometry, const Similarity& map)
{
    Point3 world = kZAxis;
    const Mover mover(map, world);
    std::visit([&](auto& shape) { mover.part(shape); }, geometry);
}

} // namespace zv::bench
