#include "drawing/entities/EntityRecord.h"

namespace zv::dwg {

namespace {

constexpr unsigned kRawPointBits = 128, kFewestDoubleBits = 2, kFewestHandleBits = 8;
constexpr std::uint32_t kPolylineLoop = 2, kDerivedLoop = 4;

void readGradient(RecordReader& in, Hatch& hatch)
{
    constexpr unsigned kFewestColorBits = 14;
    hatch.gradient = in.bitLong() != 0;
    in.bitLong();
    hatch.gradientAngle = in.bitDouble();
    hatch.gradientShift = in.bitDouble();
    const bool oneColor = in.bitLong() != 0;
    hatch.gradientTint = in.bitDouble();
    const std::uint32_t colors = in.count(kFewestColorBits);
    for (std::uint32_t i = 0; i < colors; ++i) {
        in.bitDouble();
        (i == 0 ? hatch.gradientColor1 : hatch.gradientColor2) = in.color();
    }
    hatch.gradientOneColor = oneColor;
    hatch.gradientName = in.text();
}

void readSplineEdge(RecordReader& in, Spline& spline)
{
    spline.degree = in.bitLong();
    spline.rational = in.bit();
    spline.periodic = in.bit();
    const std::int32_t knots = in.bitLong();
    const std::int32_t points = in.bitLong();
    spline.knots.resize(in.checkedCount(knots, kFewestDoubleBits));
    for (double& knot : spline.knots)
        knot = in.bitDouble();
    spline.controlPoints.resize(in.checkedCount(points, kRawPointBits));
    for (Point3& point : spline.controlPoints) {
        const Point2 flat = in.rawPoint2();
        point = {flat.x, flat.y, 0};
        if (spline.rational)
            spline.weights.push_back(in.bitDouble());
    }
    if (in.version() < Version::R2010)
        return;
    spline.fitPoints.resize(in.count(kRawPointBits));
    for (Point3& point : spline.fitPoints) {
        const Point2 flat = in.rawPoint2();
        point = {flat.x, flat.y, 0};
    }
    if (spline.fitPoints.empty())
        return;
    const Point2 start = in.rawPoint2();
    const Point2 end = in.rawPoint2();
    spline.startTangent = {start.x, start.y, 0};
    spline.endTangent = {end.x, end.y, 0};
}

HatchEdge readEdge(RecordReader& in)
{
    HatchEdge edge;
    switch (in.rawChar()) {
    case 1:
        edge.start = in.rawPoint2();
        edge.end = in.rawPoint2();
        break;
    case 2:
        edge.kind = HatchEdge::Kind::Arc;
        edge.center = in.rawPoint2();
        edge.radius = in.bitDouble();
        edge.startAngle = in.bitDouble();
        edge.endAngle = in.bitDouble();
        edge.counterClockwise = in.bit();
        break;
    case 3:
        edge.kind = HatchEdge::Kind::Ellipse;
        edge.center = in.rawPoint2();
        edge.majorAxis = in.rawPoint2();
        edge.axisRatio = in.bitDouble();
        edge.startAngle = in.bitDouble();
        edge.endAngle = in.bitDouble();
        edge.counterClockwise = in.bit();
        break;
    case 4:
        edge.kind = HatchEdge::Kind::Spline;
        readSplineEdge(in, edge.spline);
        break;
    default:
        in.fail();
        break;
    }
    return edge;
}

void readLoopVertices(RecordReader& in, HatchLoop& loop, bool bulges)
{
    loop.polyline.resize(in.count(kRawPointBits));
    for (PolylineVertex& vertex : loop.polyline) {
        const Point2 flat = in.rawPoint2();
        vertex.position = {flat.x, flat.y, 0};
        if (bulges)
            vertex.bulge = in.bitDouble();
    }
}

HatchLoop readLoop(RecordReader& in)
{
    constexpr unsigned kFewestEdgeBits = 8 + 12;
    HatchLoop loop;
    loop.flags = static_cast<std::uint32_t>(in.bitLong());
    if ((loop.flags & kPolylineLoop) == 0) {
        const std::uint32_t edges = in.count(kFewestEdgeBits);
        for (std::uint32_t i = 0; i < edges && in.ok(); ++i)
            loop.edges.push_back(readEdge(in));
    } else {
        const bool bulges = in.bit();
        loop.closed = in.bit();
        readLoopVertices(in, loop, bulges);
    }
    return loop;
}

void readPattern(RecordReader& in, Hatch& hatch)
{
    constexpr unsigned kFewestLineBits = 12;
    hatch.angle = in.bitDouble();
    hatch.scale = in.bitDouble();
    hatch.doubled = in.bit();
    hatch.lines.resize(in.checkedCount(in.bitShort(), kFewestLineBits));
    for (HatchPatternLine& line : hatch.lines) {
        line.angle = in.bitDouble();
        line.base = in.bitPoint2();
        line.offset = in.bitPoint2();
        line.dashes.resize(in.checkedCount(in.bitShort(), kFewestDoubleBits));
        for (double& dash : line.dashes)
            dash = in.bitDouble();
    }
}

HatchLoop readPolygonLoop(RecordReader& in)
{
    HatchLoop loop;
    loop.flags = kPolylineLoop;
    loop.closed = in.bit();
    readLoopVertices(in, loop, in.bit());
    return loop;
}

} // namespace

void readMPolygon(RecordReader& in, EntityRecord& out)
{
    constexpr unsigned kFewestLoopBits = 4;
    auto& polygon = out.geometry.emplace<MPolygon>();
    Hatch& area = polygon.area;
    in.bitLong(); // Version.
    if (in.version() >= Version::R2004)
        readGradient(in, area);
    area.elevation = in.bitDouble();
    area.normal = in.bitPoint3();
    area.pattern = in.text();
    area.solid = in.bit();
    const std::uint32_t loops = in.count(kFewestLoopBits);
    for (std::uint32_t i = 0; i < loops && in.ok(); ++i)
        area.loops.push_back(readPolygonLoop(in));
    in.bitShort(); // Where the pattern comes from.
    if (!area.solid)
        readPattern(in, area);
    polygon.fill = in.color();
}

void readHatch(RecordReader& in, EntityRecord& out)
{
    constexpr unsigned kFewestLoopBits = 6;
    auto& hatch = out.geometry.emplace<Hatch>();
    if (in.version() >= Version::R2004)
        readGradient(in, hatch);
    hatch.elevation = in.bitDouble();
    hatch.normal = in.bitPoint3();
    hatch.pattern = in.text();
    hatch.solid = in.bit();
    in.bit(); // Follows its boundary.
    const std::uint32_t loops = in.count(kFewestLoopBits);
    std::int64_t boundaries = 0;
    bool derived = false;
    for (std::uint32_t i = 0; i < loops && in.ok(); ++i) {
        hatch.loops.push_back(readLoop(in));
        derived = derived || (hatch.loops.back().flags & kDerivedLoop) != 0;
        boundaries += in.handles().checkedCount(in.bitLong(), kFewestHandleBits);
    }
    hatch.style = in.bitShort();
    in.bitShort(); // Where the pattern comes from.
    if (!hatch.solid)
        readPattern(in, hatch);
    if (derived)
        in.bitDouble();      // Size of a pixel.
    in.count(kRawPointBits); // Points that were picked; the last fields.
    in.handles().checkedCount(boundaries, kFewestHandleBits);
}

} // namespace zv::dwg
