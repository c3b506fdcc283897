#include "drawing/entities/EntityRecord.h"

namespace zv::dwg {

namespace {

constexpr unsigned kFewestDoubleBits = 2, kFewestPointBits = 6;

std::vector<double> readDoubles(RecordReader& in, std::uint32_t count)
{
    std::vector<double> values(count);
    for (double& value : values)
        value = in.bitDouble();
    return values;
}

} // namespace

void readLine(RecordReader& in, EntityRecord& out)
{
    auto& line = out.geometry.emplace<Line>();
    if (in.version() <= Version::R14) {
        line.start = in.bitPoint3();
        line.end = in.bitPoint3();
    } else {
        const bool flat = in.bit();
        line.start.x = in.rawDouble();
        line.end.x = in.defaultDouble(line.start.x);
        line.start.y = in.rawDouble();
        line.end.y = in.defaultDouble(line.start.y);
        if (!flat) {
            line.start.z = in.rawDouble();
            line.end.z = in.defaultDouble(line.start.z);
        }
    }
    line.thickness = in.thickness();
    line.normal = in.extrusion();
}

void readPoint(RecordReader& in, EntityRecord& out)
{
    auto& point = out.geometry.emplace<PointShape>();
    point.position = in.bitPoint3();
    point.thickness = in.thickness();
    point.normal = in.extrusion();
    point.xAxisAngle = in.bitDouble();
}

void readCircle(RecordReader& in, EntityRecord& out)
{
    auto& circle = out.geometry.emplace<Circle>();
    circle.center = in.bitPoint3();
    circle.radius = in.bitDouble();
    circle.thickness = in.thickness();
    circle.normal = in.extrusion();
}

void readArc(RecordReader& in, EntityRecord& out)
{
    auto& arc = out.geometry.emplace<Arc>();
    arc.center = in.bitPoint3();
    arc.radius = in.bitDouble();
    arc.thickness = in.thickness();
    arc.normal = in.extrusion();
    arc.startAngle = in.bitDouble();
    arc.endAngle = in.bitDouble();
}

void readEllipse(RecordReader& in, EntityRecord& out)
{
    auto& ellipse = out.geometry.emplace<Ellipse>();
    ellipse.center = in.bitPoint3();
    ellipse.majorAxis = in.bitPoint3();
    ellipse.normal = in.bitPoint3();
    ellipse.axisRatio = in.bitDouble();
    ellipse.startParameter = in.bitDouble();
    ellipse.endParameter = in.bitDouble();
}

void readSpline(RecordReader& in, EntityRecord& out)
{
    constexpr int kByFitPoints = 2, kCustomKnots = 15;
    constexpr std::int32_t kClosed = 4, kUseKnotParameter = 8;
    auto& spline = out.geometry.emplace<Spline>();
    bool byFitPoints = in.bitLong() == kByFitPoints;
    if (in.version() >= Version::R2013) {
        const std::int32_t flags = in.bitLong();
        const std::int32_t knots = in.bitLong();
        spline.closed = (flags & kClosed) != 0;
        byFitPoints = knots != kCustomKnots && (flags & kUseKnotParameter) != 0;
    }
    spline.degree = in.bitLong();
    if (byFitPoints) {
        in.bitDouble(); // Tolerance.
        spline.startTangent = in.bitPoint3();
        spline.endTangent = in.bitPoint3();
        spline.fitPoints.resize(in.count(kFewestPointBits));
        for (Point3& point : spline.fitPoints)
            point = in.bitPoint3();
        return;
    }
    spline.rational = in.bit();
    spline.closed = in.bit();
    spline.periodic = in.bit();
    in.bitDouble(); // Tolerances.
    in.bitDouble();
    const std::int32_t knots = in.bitLong();
    const std::int32_t points = in.bitLong();
    const bool weighted = in.bit();
    spline.knots = readDoubles(in, in.checkedCount(knots, kFewestDoubleBits));
    spline.controlPoints.resize(in.checkedCount(points, kFewestPointBits));
    if (weighted)
        spline.weights.resize(spline.controlPoints.size());
    for (std::size_t i = 0; i < spline.controlPoints.size(); ++i) {
        spline.controlPoints[i] = in.bitPoint3();
        if (weighted)
            spline.weights[i] = in.bitDouble();
    }
    spline.rational = weighted;
}

void readRay(RecordReader& in, EntityRecord& out)
{
    auto& ray = out.geometry.emplace<Ray>();
    ray.start = in.bitPoint3();
    ray.direction = in.bitPoint3();
}

void readXLine(RecordReader& in, EntityRecord& out)
{
    readRay(in, out);
    std::get<Ray>(out.geometry).bothWays = true;
}

void readSolid(RecordReader& in, EntityRecord& out)
{
    auto& solid = out.geometry.emplace<Solid>();
    solid.thickness = in.thickness();
    const double elevation = in.bitDouble();
    for (Point3& corner : solid.corners) {
        const Point2 flat = in.rawPoint2();
        corner = {flat.x, flat.y, elevation};
    }
    solid.normal = in.extrusion();
}

void readTrace(RecordReader& in, EntityRecord& out)
{
    readSolid(in, out);
    std::get<Solid>(out.geometry).trace = true;
}

void readFace3D(RecordReader& in, EntityRecord& out)
{
    auto& face = out.geometry.emplace<Face3D>();
    if (in.version() <= Version::R14) {
        for (Point3& corner : face.corners)
            corner = in.bitPoint3();
        face.hiddenEdges = static_cast<std::uint16_t>(in.bitShort());
        return;
    }
    const bool noFlags = in.bit();
    const bool onGround = in.bit();
    Point3 last;
    last.x = in.rawDouble();
    last.y = in.rawDouble();
    if (!onGround)
        last.z = in.rawDouble();
    face.corners[0] = last;
    for (std::size_t i = 1; i < face.corners.size(); ++i) {
        last = {in.defaultDouble(last.x), in.defaultDouble(last.y), in.defaultDouble(last.z)};
        face.corners[i] = last;
    }
    if (!noFlags)
        face.hiddenEdges = static_cast<std::uint16_t>(in.bitShort());
}

void readShape(RecordReader& in, EntityRecord& out)
{
    auto& shape = out.geometry.emplace<Shape>();
    shape.position = in.bitPoint3();
    shape.size = in.bitDouble();
    shape.rotation = in.bitDouble();
    shape.widthFactor = in.bitDouble();
    shape.oblique = in.bitDouble();
    in.bitDouble(); // Thickness.
    shape.number = static_cast<std::uint16_t>(in.bitShort());
    shape.normal = in.bitPoint3();
    shape.style = in.handle();
}

} // namespace zv::dwg
