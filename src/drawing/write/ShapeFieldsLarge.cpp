// Dimensions and hatches, the shapes with the most fields.
#include "drawing/write/ShapeFields.h"

#include <algorithm>
#include <cmath>

namespace zv::dwg {

namespace {
Point2 flat(Point3 point)
{
    return {point.x, point.y};
}

void writeDimensionHead(BitWriter& fields, const Dimension& dimension)
{
    fields.bitPoint3(dimension.normal);
    fields.rawPoint2(flat(dimension.textPosition));
    fields.bitDouble(dimension.textPosition.z);
    fields.rawChar(0x0B); // The text is where the style puts it; the block is this dimension's own.
    fields.text(encodeText(dimension.text));
    fields.bitDouble(0);
    fields.bitDouble(0);
    fields.bitPoint3({1, 1, 1});
    fields.bitDouble(0);
    fields.bitShort(5);
    fields.bitShort(1);
    fields.bitDouble(1);
    fields.bitDouble(dimension.measurement);
    fields.rawPoint2(flat(dimension.insertion));
}
} // namespace

Result<void> writeShape(Record& out, const Plan& plan, const Dimension& dimension)
{
    if (!plan.hasBlock(dimension.block))
        return Error{ErrorCode::Unsupported, "a DIMENSION without its block cannot be written"};
    BitWriter& fields = out.fields;
    writeDimensionHead(fields, dimension);
    switch (dimension.type) {
    case 0:
    case 1:
        fields.bitPoint3(dimension.point13);
        fields.bitPoint3(dimension.point14);
        fields.bitPoint3(dimension.definitionPoint);
        fields.bitDouble(0);
        if (dimension.type == 0)
            fields.bitDouble(dimension.rotation);
        break;
    case 2:
        fields.rawPoint2(flat(dimension.point16));
        fields.bitPoint3(dimension.point13);
        fields.bitPoint3(dimension.point14);
        fields.bitPoint3(dimension.point15);
        fields.bitPoint3(dimension.definitionPoint);
        break;
    case 3:
        fields.bitPoint3(dimension.point15);
        fields.bitPoint3(dimension.definitionPoint);
        fields.bitDouble(0);
        break;
    case 4:
        fields.bitPoint3(dimension.definitionPoint);
        fields.bitPoint3(dimension.point15);
        fields.bitDouble(0);
        break;
    case 5:
        fields.bitPoint3(dimension.definitionPoint);
        fields.bitPoint3(dimension.point13);
        fields.bitPoint3(dimension.point14);
        fields.bitPoint3(dimension.point15);
        break;
    default: {
        fields.bitPoint3(dimension.definitionPoint);
        fields.bitPoint3(dimension.point13);
        fields.bitPoint3(dimension.point14);
        // The leader runs across what is measured.
        const bool ofX = std::abs(dimension.point14.y - dimension.point13.y) >
                         std::abs(dimension.point14.x - dimension.point13.x);
        fields.rawChar(ofX ? 1 : 0);
        break;
    }
    }
    out.handles.handle(kHardPointer, plan.dimensionStyle(dimension.style));
    out.handles.handle(kHardPointer, dimension.block);
    return {};
}

namespace {
void writeHatchSpline(BitWriter& fields, const Spline& spline)
{
    const bool weighted = spline.rational && spline.weights.size() == spline.controlPoints.size();
    fields.bitLong(spline.degree);
    fields.bit(weighted);
    fields.bit(spline.periodic);
    fields.bitLong(static_cast<std::int32_t>(spline.knots.size()));
    fields.bitLong(static_cast<std::int32_t>(spline.controlPoints.size()));
    for (const double knot : spline.knots)
        fields.bitDouble(knot);
    for (std::size_t i = 0; i < spline.controlPoints.size(); ++i) {
        fields.rawPoint2(flat(spline.controlPoints[i]));
        if (weighted)
            fields.bitDouble(spline.weights[i]);
    }
}

void writeHatchEdge(BitWriter& fields, const HatchEdge& edge)
{
    fields.rawChar(static_cast<std::uint8_t>(static_cast<int>(edge.kind) + 1));
    switch (edge.kind) {
    case HatchEdge::Kind::Line:
        fields.rawPoint2(edge.start);
        fields.rawPoint2(edge.end);
        return;
    case HatchEdge::Kind::Arc:
        fields.rawPoint2(edge.center);
        fields.bitDouble(edge.radius);
        break;
    case HatchEdge::Kind::Ellipse:
        fields.rawPoint2(edge.center);
        fields.rawPoint2(edge.majorAxis);
        fields.bitDouble(edge.axisRatio);
        break;
    case HatchEdge::Kind::Spline:
        writeHatchSpline(fields, edge.spline);
        return;
    }
    fields.bitDouble(edge.startAngle);
    fields.bitDouble(edge.endAngle);
    fields.bit(edge.counterClockwise);
}

constexpr std::uint32_t kPolylineLoop = 2, kDerivedLoop = 4;

void writeHatchLoop(BitWriter& fields, const HatchLoop& loop)
{
    const bool polyline = loop.edges.empty();
    const std::uint32_t flags =
        (loop.flags & ~(kPolylineLoop | kDerivedLoop)) | (polyline ? kPolylineLoop : 0);
    fields.bitLong(static_cast<std::int32_t>(flags));
    if (!polyline) {
        fields.bitLong(static_cast<std::int32_t>(loop.edges.size()));
        for (const HatchEdge& edge : loop.edges)
            writeHatchEdge(fields, edge);
    } else {
        const bool bulges = std::any_of(loop.polyline.begin(), loop.polyline.end(),
                                        [](const PolylineVertex& vertex) { return vertex.bulge != 0; });
        fields.bit(bulges);
        fields.bit(loop.closed);
        fields.bitLong(static_cast<std::int32_t>(loop.polyline.size()));
        for (const PolylineVertex& vertex : loop.polyline) {
            fields.rawPoint2(flat(vertex.position));
            if (bulges)
                fields.bitDouble(vertex.bulge);
        }
    }
    fields.bitLong(0); // No boundary entities: the hatch stands for itself.
}

void writeHatchPattern(BitWriter& fields, const Hatch& hatch)
{
    fields.bitDouble(hatch.angle);
    fields.bitDouble(hatch.scale);
    fields.bit(hatch.doubled);
    fields.bitShort(static_cast<std::int16_t>(hatch.lines.size()));
    for (const HatchPatternLine& line : hatch.lines) {
        fields.bitDouble(line.angle);
        fields.bitPoint2(line.base);
        fields.bitPoint2(line.offset);
        fields.bitShort(static_cast<std::int16_t>(line.dashes.size()));
        for (const double dash : line.dashes)
            fields.bitDouble(dash);
    }
}
} // namespace

Result<void> writeShape(Record& out, const Plan&, const Hatch& hatch)
{
    BitWriter& fields = out.fields;
    fields.bitDouble(hatch.elevation);
    fields.bitPoint3(hatch.normal);
    fields.text(encodeText(hatch.pattern));
    fields.bit(hatch.solid);
    fields.bit(false);
    fields.bitLong(static_cast<std::int32_t>(hatch.loops.size()));
    for (const HatchLoop& loop : hatch.loops)
        writeHatchLoop(fields, loop);
    fields.bitShort(static_cast<std::int16_t>(hatch.style));
    fields.bitShort(1);
    if (!hatch.solid)
        writeHatchPattern(fields, hatch);
    fields.bitLong(0); // Seed points.
    return {};
}

} // namespace zv::dwg
