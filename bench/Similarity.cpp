#include "Similarity.h"

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

/// The sides that all kinds with a thickness and a plane share.
struct Mover {
    const Similarity& map;

    void operator()(Unknown&) const {}
    void operator()(Line& line) const
    {
        line.start = map.point(line.start);
        line.end = map.point(line.end);
        line.thickness *= map.scale;
        line.normal = map.direction(line.normal);
    }
    void operator()(PointShape& point) const
    {
        point.position = map.point(point.position);
        point.thickness *= map.scale;
        point.normal = map.direction(point.normal);
        point.xAxisAngle += map.rotation;
    }
    void operator()(Circle& circle) const
    {
        Plane(circle.normal, map).point(circle.center);
        circle.radius *= map.scale;
        circle.thickness *= map.scale;
    }
    void operator()(Arc& arc) const
    {
        const Plane plane(arc.normal, map);
        plane.point(arc.center);
        plane.angle(arc.startAngle);
        plane.angle(arc.endAngle);
        arc.radius *= map.scale;
        arc.thickness *= map.scale;
    }
    void operator()(Ellipse& ellipse) const
    {
        ellipse.center = map.point(ellipse.center);
        ellipse.majorAxis = map.vector(ellipse.majorAxis);
        ellipse.normal = map.direction(ellipse.normal);
    }
    void operator()(Spline& spline) const
    {
        for (Point3& p : spline.controlPoints)
            p = map.point(p);
        for (Point3& p : spline.fitPoints)
            p = map.point(p);
        spline.startTangent = map.direction(spline.startTangent);
        spline.endTangent = map.direction(spline.endTangent);
    }
    void operator()(Polyline& line) const
    {
        if (line.threeD) {
            for (PolylineVertex& vertex : line.vertices)
                vertex.position = map.point(vertex.position);
            return;
        }
        const Plane plane(line.normal, map);
        Point3 elevation{0, 0, line.elevation};
        plane.point(elevation);
        line.elevation = elevation.z;
        for (PolylineVertex& vertex : line.vertices) {
            plane.point(vertex.position);
            vertex.startWidth *= map.scale;
            vertex.endWidth *= map.scale;
        }
        line.constantWidth *= map.scale;
        line.thickness *= map.scale;
    }
    void operator()(Mesh& mesh) const
    {
        for (Point3& p : mesh.vertices)
            p = map.point(p);
    }
    void operator()(TextLine& text) const
    {
        const Plane plane(text.normal, map);
        plane.point(text.insertion);
        plane.point(text.alignment);
        plane.turn(text.rotation);
        text.height *= map.scale;
        text.thickness *= map.scale;
    }
    void operator()(Attribute& attribute) const { (*this)(attribute.text); }
    void operator()(MText& text) const
    {
        text.insertion = map.point(text.insertion);
        text.xAxis = map.direction(text.xAxis);
        text.normal = map.direction(text.normal);
        text.height *= map.scale;
        text.width *= map.scale;
    }
    void operator()(Insert& insert) const
    {
        const Plane plane(insert.normal, map);
        plane.point(insert.position);
        plane.turn(insert.rotation);
        insert.scale = insert.scale * map.scale;
        insert.columnSpacing *= map.scale;
        insert.rowSpacing *= map.scale;
    }
    void operator()(Dimension& dimension) const
    {
        for (Point3* p : {&dimension.definitionPoint, &dimension.point13, &dimension.point14,
                          &dimension.point15, &dimension.point16})
            *p = map.point(*p);
        const Plane plane(dimension.normal, map);
        plane.point(dimension.insertion);
        plane.point(dimension.textPosition);
        plane.turn(dimension.rotation);
        dimension.measurement *= map.scale;
    }
    void operator()(Solid& solid) const
    {
        const Plane plane(solid.normal, map);
        for (Point3& corner : solid.corners)
            plane.point(corner);
        solid.thickness *= map.scale;
    }
    void operator()(Face3D& face) const
    {
        for (Point3& corner : face.corners)
            corner = map.point(corner);
    }
    void operator()(Ray& ray) const
    {
        ray.start = map.point(ray.start);
        ray.direction = map.direction(ray.direction);
    }
    void operator()(Hatch& hatch) const;
    void operator()(MPolygon& polygon) const { (*this)(polygon.area); }
    void operator()(StoredPicture& picture) const
    {
        for (PictureFigure& figure : picture.figures) {
            Placement& place = figure.place;
            for (Point3* axis : {&place.x, &place.y, &place.z})
                *axis = map.vector(*axis);
            place.origin = map.point(place.origin);
        }
    }
    void operator()(Leader& leader) const
    {
        for (Point3& p : leader.points)
            p = map.point(p);
        leader.normal = map.direction(leader.normal);
    }
    void operator()(MultiLeader& leader) const
    {
        for (std::vector<Point3>& line : leader.lines) {
            for (Point3& p : line)
                p = map.point(p);
        }
        leader.arrowSize *= map.scale;
        (*this)(leader.text);
        (*this)(leader.block);
    }
    void operator()(MLine& line) const
    {
        line.normal = map.direction(line.normal);
        line.scale *= map.scale;
        for (MLineVertex& vertex : line.vertices) {
            vertex.position = map.point(vertex.position);
            vertex.direction = map.direction(vertex.direction);
            vertex.miter = map.direction(vertex.miter);
            for (std::vector<double>& element : vertex.elements) {
                for (double& distance : element)
                    distance *= map.scale;
            }
        }
    }
    void operator()(Wipeout& wipeout) const
    {
        wipeout.insertion = map.point(wipeout.insertion);
        wipeout.uVector = map.vector(wipeout.uVector);
        wipeout.vVector = map.vector(wipeout.vVector);
    }
    void operator()(Viewport& viewport) const
    {
        viewport.center = map.point(viewport.center);
        viewport.width *= map.scale;
        viewport.height *= map.scale;
    }
    void operator()(Shape& shape) const
    {
        const Plane plane(shape.normal, map);
        plane.point(shape.position);
        plane.turn(shape.rotation);
        shape.size *= map.scale;
    }
    void operator()(Tolerance& tolerance) const
    {
        tolerance.insertion = map.point(tolerance.insertion);
        tolerance.direction = map.direction(tolerance.direction);
        tolerance.normal = map.direction(tolerance.normal);
        tolerance.height *= map.scale;
    }
};

void moveFlat(const Plane& plane, Point2& p, bool isVector = false)
{
    Point3 space{p.x, p.y, 0};
    isVector ? plane.vector(space) : plane.point(space);
    p = {space.x, space.y};
}

void moveEdge(const Plane& plane, HatchEdge& edge, double scale)
{
    moveFlat(plane, edge.start);
    moveFlat(plane, edge.end);
    moveFlat(plane, edge.center);
    moveFlat(plane, edge.majorAxis, true);
    edge.radius *= scale;
    if (edge.kind == HatchEdge::Kind::Arc) {
        // The angles of an edge that runs clockwise are mirrored.
        const double sign = edge.counterClockwise ? 1 : -1;
        for (double* angle : {&edge.startAngle, &edge.endAngle}) {
            double turned = *angle * sign;
            plane.turn(turned);
            *angle = turned * sign;
        }
    }
    for (Point3& p : edge.spline.controlPoints)
        plane.point(p);
    for (Point3& p : edge.spline.fitPoints)
        plane.point(p);
}

void Mover::operator()(Hatch& hatch) const
{
    const Plane plane(hatch.normal, map);
    Point3 elevation{0, 0, hatch.elevation};
    plane.point(elevation);
    hatch.elevation = elevation.z;
    for (HatchLoop& loop : hatch.loops) {
        for (HatchEdge& edge : loop.edges)
            moveEdge(plane, edge, map.scale);
        for (PolylineVertex& vertex : loop.polyline)
            plane.point(vertex.position);
    }
    for (HatchPatternLine& line : hatch.lines) {
        plane.turn(line.angle);
        moveFlat(plane, line.base);
        moveFlat(plane, line.offset, true);
        for (double& dash : line.dashes)
            dash *= map.scale;
    }
    hatch.scale *= map.scale;
    hatch.angle += map.rotation;
}

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
    std::visit(Mover{map}, geometry);
}

} // namespace zv::bench
