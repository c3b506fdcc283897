// Dimensions, hatches, multilines and wipeouts, the shapes with the most fields.
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
    // A gradient is a solid fill here.
    const bool solid = hatch.solid || hatch.gradient;
    fields.text(hatch.gradient ? "SOLID" : encodeText(hatch.pattern));
    fields.bit(solid);
    fields.bit(false);
    fields.bitLong(static_cast<std::int32_t>(hatch.loops.size()));
    for (const HatchLoop& loop : hatch.loops)
        writeHatchLoop(fields, loop);
    fields.bitShort(static_cast<std::int16_t>(hatch.style));
    fields.bitShort(1);
    if (!solid)
        writeHatchPattern(fields, hatch);
    fields.bitLong(0); // Seed points.
    return {};
}

Result<void> writeShape(Record& out, const Plan& plan, const MLine& line)
{
    const MLineStyle* style = plan.mlineStyle(line.style);
    if (style == nullptr)
        return Error{ErrorCode::Unsupported, "an MLINE without its style cannot be written"};
    if (line.vertices.size() > INT16_MAX)
        return Error{ErrorCode::Unsupported, "an MLINE of so many vertices cannot be written"};
    constexpr int kOpen = 1, kClosed = 3, kNoStartCap = 4, kNoEndCap = 8;
    const std::size_t elements = style->elements.size();
    BitWriter& fields = out.fields;
    fields.bitDouble(line.scale);
    fields.rawChar(static_cast<std::uint8_t>(line.justification));
    fields.bitPoint3(line.vertices.empty() ? Point3{} : line.vertices.front().position);
    fields.bitPoint3(line.normal);
    fields.bitShort(static_cast<std::int16_t>((line.closed ? kClosed : kOpen) |
                                              (line.noStartCap ? kNoStartCap : 0) |
                                              (line.noEndCap ? kNoEndCap : 0)));
    fields.rawChar(static_cast<std::uint8_t>(elements));
    fields.bitShort(static_cast<std::int16_t>(line.vertices.size()));
    const auto distances = [&](const std::vector<std::vector<double>>& all, std::size_t element) {
        static const std::vector<double> kNone;
        const std::vector<double>& each = element < all.size() ? all[element] : kNone;
        fields.bitShort(static_cast<std::int16_t>(each.size()));
        for (const double distance : each)
            fields.bitDouble(distance);
    };
    for (const MLineVertex& vertex : line.vertices) {
        fields.bitPoint3(vertex.position);
        fields.bitPoint3(vertex.direction);
        fields.bitPoint3(vertex.miter);
        for (std::size_t element = 0; element < elements; ++element) {
            distances(vertex.elements, element);
            fields.bitShort(0); // Of the fill.
        }
    }
    out.handles.handle(kHardPointer, line.style);
    return {};
}

Result<void> writeShape(Record& out, const Plan&, const Wipeout& wipeout)
{
    BitWriter& fields = out.fields;
    fields.bitLong(0);
    fields.bitPoint3(wipeout.insertion);
    fields.bitPoint3(wipeout.uVector);
    fields.bitPoint3(wipeout.vVector);
    fields.rawPoint2(wipeout.pixels);
    fields.bitShort(wipeout.frame ? 7 : 6);
    fields.bit(true);
    fields.rawChar(50);
    fields.rawChar(50);
    fields.rawChar(0);
    if (wipeout.clip.size() > 2) {
        fields.bitShort(2);
        fields.bitLong(static_cast<std::int32_t>(wipeout.clip.size()));
        for (const Point2& point : wipeout.clip)
            fields.rawPoint2(point);
    } else {
        fields.bitShort(1);
        fields.rawPoint2(wipeout.clip.size() == 2 ? wipeout.clip[0] : Point2{-0.5, -0.5});
        fields.rawPoint2(wipeout.clip.size() == 2 ? wipeout.clip[1]
                                                  : Point2{wipeout.pixels.x - 0.5, wipeout.pixels.y - 0.5});
    }
    out.handles.handle(kHardPointer, 0);
    out.handles.handle(kHardOwner, 0);
    return {};
}

} // namespace zv::dwg
