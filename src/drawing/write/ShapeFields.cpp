#include "drawing/write/ShapeFields.h"

#include "drawing/entities/TextFlags.h"

#include <algorithm>
#include <cmath>

namespace zv::dwg {

namespace {
Point2 flat(Point3 point)
{
    return {point.x, point.y};
}
bool isZAxis(Point3 normal)
{
    return normal.x == 0 && normal.y == 0 && normal.z == 1;
}
} // namespace

int recordType(const Line&)
{
    return kLine;
}
int recordType(const PointShape&)
{
    return kPoint;
}
int recordType(const Circle&)
{
    return kCircle;
}
int recordType(const Arc&)
{
    return kArc;
}
int recordType(const Ellipse&)
{
    return kEllipse;
}
int recordType(const Spline&)
{
    return kSpline;
}
int recordType(const TextLine&)
{
    return kText;
}
int recordType(const MText&)
{
    return kMText;
}
int recordType(const Face3D&)
{
    return kFace3D;
}
int recordType(const Leader&)
{
    return kLeader;
}
int recordType(const Viewport&)
{
    return kViewport;
}
int recordType(const Shape&)
{
    return kShape;
}
int recordType(const Tolerance&)
{
    return kTolerance;
}
int recordType(const Solid& solid)
{
    return solid.trace ? kTrace : kSolid;
}
int recordType(const Ray& ray)
{
    return ray.bothWays ? kXLine : kRay;
}
int recordType(const Hatch&)
{
    return kHatch;
}
int recordType(const MLine&)
{
    return kMLine;
}
int recordType(const Wipeout& wipeout)
{
    return wipeout.image ? 0 : kWipeout;
}

int recordType(const Dimension& dimension)
{
    switch (dimension.type) {
    case 0:
        return kDimensionLinear;
    case 1:
        return kDimensionAligned;
    case 2:
        return kDimensionAngular2;
    case 3:
        return kDimensionDiameter;
    case 4:
        return kDimensionRadius;
    case 5:
        return kDimensionAngular3;
    case 6:
        return kDimensionOrdinate;
    default:
        return 0;
    }
}

int insertType(const Insert& insert)
{
    return insert.columns > 1 || insert.rows > 1 ? kMInsert : kInsert;
}

Result<void> writeShape(Record& out, const Plan&, const Line& line)
{
    BitWriter& fields = out.fields;
    const bool isFlat = line.start.z == 0 && line.end.z == 0;
    fields.bit(isFlat);
    fields.rawDouble(line.start.x);
    fields.defaultDouble(line.end.x, line.start.x);
    fields.rawDouble(line.start.y);
    fields.defaultDouble(line.end.y, line.start.y);
    if (!isFlat) {
        fields.rawDouble(line.start.z);
        fields.defaultDouble(line.end.z, line.start.z);
    }
    fields.thickness(line.thickness);
    fields.extrusion(line.normal);
    return {};
}

Result<void> writeShape(Record& out, const Plan&, const PointShape& point)
{
    out.fields.bitPoint3(point.position);
    out.fields.thickness(point.thickness);
    out.fields.extrusion(point.normal);
    out.fields.bitDouble(point.xAxisAngle);
    return {};
}

Result<void> writeShape(Record& out, const Plan&, const Circle& circle)
{
    out.fields.bitPoint3(circle.center);
    out.fields.bitDouble(circle.radius);
    out.fields.thickness(circle.thickness);
    out.fields.extrusion(circle.normal);
    return {};
}

Result<void> writeShape(Record& out, const Plan&, const Arc& arc)
{
    out.fields.bitPoint3(arc.center);
    out.fields.bitDouble(arc.radius);
    out.fields.thickness(arc.thickness);
    out.fields.extrusion(arc.normal);
    out.fields.bitDouble(arc.startAngle);
    out.fields.bitDouble(arc.endAngle);
    return {};
}

Result<void> writeShape(Record& out, const Plan&, const Ellipse& ellipse)
{
    out.fields.bitPoint3(ellipse.center);
    out.fields.bitPoint3(ellipse.majorAxis);
    out.fields.bitPoint3(ellipse.normal);
    out.fields.bitDouble(ellipse.axisRatio);
    out.fields.bitDouble(ellipse.startParameter);
    out.fields.bitDouble(ellipse.endParameter);
    return {};
}

Result<void> writeShape(Record& out, const Plan&, const Spline& spline)
{
    BitWriter& fields = out.fields;
    const bool byFitPoints = spline.controlPoints.empty();
    fields.bitLong(byFitPoints ? 2 : 1);
    fields.bitLong(spline.degree);
    if (byFitPoints) {
        fields.bitDouble(0);
        fields.bitPoint3(spline.startTangent);
        fields.bitPoint3(spline.endTangent);
        fields.bitLong(static_cast<std::int32_t>(spline.fitPoints.size()));
        for (const Point3& point : spline.fitPoints)
            fields.bitPoint3(point);
        return {};
    }
    const bool weighted = spline.weights.size() == spline.controlPoints.size();
    fields.bit(spline.rational);
    fields.bit(spline.closed);
    fields.bit(spline.periodic);
    fields.bitDouble(1e-7);
    fields.bitDouble(1e-7);
    fields.bitLong(static_cast<std::int32_t>(spline.knots.size()));
    fields.bitLong(static_cast<std::int32_t>(spline.controlPoints.size()));
    fields.bit(weighted);
    for (const double knot : spline.knots)
        fields.bitDouble(knot);
    for (std::size_t i = 0; i < spline.controlPoints.size(); ++i) {
        fields.bitPoint3(spline.controlPoints[i]);
        if (weighted)
            fields.bitDouble(spline.weights[i]);
    }
    return {};
}

namespace {
void writeTextLine(Record& out, const Plan& plan, const TextLine& text)
{
    BitWriter& fields = out.fields;
    const bool aligned = text.horizontal != HorizontalAlign::Left || text.vertical != VerticalAlign::Baseline;
    const int generation = (text.backward ? 2 : 0) | (text.upsideDown ? 4 : 0);
    const unsigned left = (text.insertion.z == 0 ? kNoElevation : 0u) | (aligned ? 0u : kNoAlignment) |
                          (text.oblique == 0 ? kNoOblique : 0u) | (text.rotation == 0 ? kNoRotation : 0u) |
                          (text.widthFactor == 1 ? kNoWidth : 0u) | (generation == 0 ? kNoGeneration : 0u) |
                          (text.horizontal == HorizontalAlign::Left ? kNoHorizontal : 0u) |
                          (text.vertical == VerticalAlign::Baseline ? kNoVertical : 0u);
    fields.rawChar(static_cast<std::uint8_t>(left));
    if ((left & kNoElevation) == 0)
        fields.rawDouble(text.insertion.z);
    fields.rawPoint2(flat(text.insertion));
    if (aligned) {
        fields.defaultDouble(text.alignment.x, text.insertion.x);
        fields.defaultDouble(text.alignment.y, text.insertion.y);
    }
    fields.extrusion(text.normal);
    fields.thickness(text.thickness);
    if ((left & kNoOblique) == 0)
        fields.rawDouble(text.oblique);
    if ((left & kNoRotation) == 0)
        fields.rawDouble(text.rotation);
    fields.rawDouble(text.height);
    if ((left & kNoWidth) == 0)
        fields.rawDouble(text.widthFactor);
    fields.text(encodeText(text.text));
    if (generation != 0)
        fields.bitShort(static_cast<std::int16_t>(generation));
    if ((left & kNoHorizontal) == 0)
        fields.bitShort(static_cast<std::int16_t>(text.horizontal));
    if ((left & kNoVertical) == 0)
        fields.bitShort(static_cast<std::int16_t>(text.vertical));
    out.handles.handle(kHardPointer, plan.style(text.style));
}
} // namespace

Result<void> writeShape(Record& out, const Plan& plan, const TextLine& text)
{
    writeTextLine(out, plan, text);
    return {};
}

void writeAttribute(Record& out, const Plan& plan, const Attribute& attribute, bool definition)
{
    writeTextLine(out, plan, attribute.text);
    out.fields.text(encodeText(attribute.tag));
    out.fields.bitShort(0);
    const int flags = (attribute.invisible ? 1 : 0) | (attribute.constant ? 2 : 0) |
                      (attribute.verify ? 4 : 0) | (attribute.preset ? 8 : 0);
    out.fields.rawChar(static_cast<std::uint8_t>(flags));
    if (definition)
        out.fields.text(encodeText(attribute.prompt));
}

Result<void> writeShape(Record& out, const Plan& plan, const MText& text)
{
    BitWriter& fields = out.fields;
    fields.bitPoint3(text.insertion);
    fields.bitPoint3(text.normal);
    fields.bitPoint3(text.xAxis);
    fields.bitDouble(text.width);
    fields.bitDouble(text.height);
    fields.bitShort(static_cast<std::int16_t>(text.attachment));
    fields.bitShort(static_cast<std::int16_t>(text.direction));
    fields.bitDouble(0); // Extents, worked out by who shows it.
    fields.bitDouble(0);
    fields.text(encodeText(text.text));
    fields.bitShort(static_cast<std::int16_t>(text.lineSpacingStyle));
    fields.bitDouble(text.lineSpacing);
    fields.bit(false);
    out.handles.handle(kHardPointer, plan.style(text.style));
    return {};
}

void writeInsert(Record& out, const Insert& insert)
{
    BitWriter& fields = out.fields;
    const Point3& scale = insert.scale;
    fields.bitPoint3(insert.position);
    if (scale.x == 1 && scale.y == 1 && scale.z == 1) {
        fields.bitPair(3);
    } else if (scale.x == scale.y && scale.x == scale.z) {
        fields.bitPair(2);
        fields.rawDouble(scale.x);
    } else if (scale.x == 1) {
        fields.bitPair(1);
        fields.defaultDouble(scale.y, 1);
        fields.defaultDouble(scale.z, 1);
    } else {
        fields.bitPair(0);
        fields.rawDouble(scale.x);
        fields.defaultDouble(scale.y, scale.x);
        fields.defaultDouble(scale.z, scale.x);
    }
    fields.bitDouble(insert.rotation);
    fields.bitPoint3(insert.normal);
    fields.bit(!insert.attributes.empty());
    if (insertType(insert) == kMInsert) {
        fields.bitShort(static_cast<std::int16_t>(insert.columns));
        fields.bitShort(static_cast<std::int16_t>(insert.rows));
        fields.bitDouble(insert.columnSpacing);
        fields.bitDouble(insert.rowSpacing);
    }
}

namespace {
enum LightFlags {
    kHasNormal = 1,
    kHasThickness = 2,
    kHasWidth = 4,
    kHasElevation = 8,
    kHasBulges = 16,
    kHasWidths = 32,
    kPlinegen = 256,
    kClosed = 512
};
}

void writeLightPolyline(Record& out, const Polyline& line)
{
    BitWriter& fields = out.fields;
    const auto any = [&](auto has) { return std::any_of(line.vertices.begin(), line.vertices.end(), has); };
    const bool bulges = any([](const PolylineVertex& v) { return v.bulge != 0; });
    const bool widths = any([](const PolylineVertex& v) { return v.startWidth != 0 || v.endWidth != 0; });
    const int flags = (isZAxis(line.normal) ? 0 : kHasNormal) | (line.thickness != 0 ? kHasThickness : 0) |
                      (line.constantWidth != 0 ? kHasWidth : 0) | (line.elevation != 0 ? kHasElevation : 0) |
                      (bulges ? kHasBulges : 0) | (widths ? kHasWidths : 0) |
                      (line.plinegen ? kPlinegen : 0) | (line.closed ? kClosed : 0);
    fields.bitShort(static_cast<std::int16_t>(flags));
    if (line.constantWidth != 0)
        fields.bitDouble(line.constantWidth);
    if (line.elevation != 0)
        fields.bitDouble(line.elevation);
    if (line.thickness != 0)
        fields.bitDouble(line.thickness);
    if (!isZAxis(line.normal))
        fields.bitPoint3(line.normal);
    const auto count = static_cast<std::int32_t>(line.vertices.size());
    fields.bitLong(count);
    if (bulges)
        fields.bitLong(count);
    if (widths)
        fields.bitLong(count);
    for (std::size_t i = 0; i < line.vertices.size(); ++i) {
        const Point3& at = line.vertices[i].position;
        if (i == 0) {
            fields.rawPoint2(flat(at));
        } else {
            fields.defaultDouble(at.x, line.vertices[i - 1].position.x);
            fields.defaultDouble(at.y, line.vertices[i - 1].position.y);
        }
    }
    for (const PolylineVertex& vertex : line.vertices)
        if (bulges)
            fields.bitDouble(vertex.bulge);
    for (const PolylineVertex& vertex : line.vertices) {
        if (widths) {
            fields.bitDouble(vertex.startWidth);
            fields.bitDouble(vertex.endWidth);
        }
    }
}

namespace {
bool isSplined(const Polyline& line)
{
    return std::any_of(line.vertices.begin(), line.vertices.end(),
                       [](const PolylineVertex& vertex) { return vertex.splineFrame; });
}
} // namespace

void writePolylineHead(Record& out, const Polyline& line)
{
    BitWriter& fields = out.fields;
    const bool splined = isSplined(line);
    if (line.threeD) {
        fields.rawChar(splined ? 2 : 0);
        fields.rawChar(line.closed ? 1 : 0);
        return;
    }
    fields.bitShort(
        static_cast<std::int16_t>((line.closed ? 1 : 0) | (splined ? 4 : 0) | (line.plinegen ? 128 : 0)));
    fields.bitShort(splined ? 6 : 0);
    fields.bitDouble(line.constantWidth);
    fields.bitDouble(line.constantWidth);
    fields.thickness(line.thickness);
    fields.bitDouble(line.elevation);
    fields.extrusion(line.normal);
}

void writeVertex(Record& out, const Polyline& line, const PolylineVertex& vertex)
{
    BitWriter& fields = out.fields;
    const int role = vertex.splineFrame ? 16 : isSplined(line) ? 8 : 0;
    if (line.threeD) {
        fields.rawChar(static_cast<std::uint8_t>(32 | role));
        fields.bitPoint3(vertex.position);
        return;
    }
    fields.rawChar(static_cast<std::uint8_t>(role));
    fields.bitPoint3({vertex.position.x, vertex.position.y, 0});
    // Two equal widths are one negative number.
    if (vertex.startWidth != 0 && vertex.startWidth == vertex.endWidth) {
        fields.bitDouble(-vertex.startWidth);
    } else {
        fields.bitDouble(vertex.startWidth);
        fields.bitDouble(vertex.endWidth);
    }
    fields.bitDouble(vertex.bulge);
    fields.bitDouble(0);
}

void writeMeshHead(Record& out, const Mesh& mesh)
{
    BitWriter& fields = out.fields;
    if (!mesh.faces.empty()) {
        fields.bitShort(static_cast<std::int16_t>(mesh.vertices.size()));
        fields.bitShort(static_cast<std::int16_t>(mesh.faces.size()));
        return;
    }
    fields.bitShort(static_cast<std::int16_t>(16 | (mesh.closedM ? 1 : 0) | (mesh.closedN ? 32 : 0)));
    fields.bitShort(0);
    fields.bitShort(static_cast<std::int16_t>(mesh.m));
    fields.bitShort(static_cast<std::int16_t>(mesh.n));
    fields.bitShort(0);
    fields.bitShort(0);
}

Result<void> writeShape(Record& out, const Plan&, const Solid& solid)
{
    out.fields.thickness(solid.thickness);
    out.fields.bitDouble(solid.corners[0].z);
    for (const Point3& corner : solid.corners)
        out.fields.rawPoint2(flat(corner));
    out.fields.extrusion(solid.normal);
    return {};
}

Result<void> writeShape(Record& out, const Plan&, const Face3D& face)
{
    BitWriter& fields = out.fields;
    fields.bit(face.hiddenEdges == 0);
    fields.bit(face.corners[0].z == 0);
    fields.rawPoint2(flat(face.corners[0]));
    if (face.corners[0].z != 0)
        fields.rawDouble(face.corners[0].z);
    for (std::size_t i = 1; i < 4; ++i)
        fields.defaultPoint3(face.corners[i], face.corners[i - 1]);
    if (face.hiddenEdges != 0)
        fields.bitShort(static_cast<std::int16_t>(face.hiddenEdges));
    return {};
}

Result<void> writeShape(Record& out, const Plan&, const Ray& ray)
{
    out.fields.bitPoint3(ray.start);
    out.fields.bitPoint3(ray.direction);
    return {};
}

Result<void> writeShape(Record& out, const Plan& plan, const Leader& leader)
{
    BitWriter& fields = out.fields;
    fields.bit(false);
    fields.bitShort(3); // It points at nothing but itself.
    fields.bitShort(leader.splined ? 1 : 0);
    fields.bitLong(static_cast<std::int32_t>(leader.points.size()));
    for (const Point3& point : leader.points)
        fields.bitPoint3(point);
    fields.bitPoint3(leader.points.empty() ? Point3{} : leader.points.front());
    fields.bitPoint3(leader.normal);
    fields.bitPoint3({1, 0, 0});
    fields.bitPoint3({});
    fields.bitPoint3({});
    fields.bitDouble(0);
    fields.bitDouble(0);
    fields.bit(false);
    fields.bit(leader.arrow);
    fields.bitShort(0);
    fields.bit(false);
    fields.bit(false);
    out.handles.handle(kHardPointer, 0);
    out.handles.handle(kHardPointer, plan.dimensionStyle(leader.style));
    return {};
}

Result<void> writeShape(Record& out, const Plan&, const Viewport& viewport)
{
    BitWriter& fields = out.fields;
    fields.bitPoint3(viewport.center);
    fields.bitDouble(viewport.width);
    fields.bitDouble(viewport.height);
    fields.bitPoint3(viewport.viewTarget);
    fields.bitPoint3(viewport.viewDirection);
    fields.bitDouble(viewport.twist);
    fields.bitDouble(viewport.viewHeight);
    fields.bitDouble(50); // Lens.
    fields.bitDouble(0);
    fields.bitDouble(0);
    fields.bitDouble(0);
    fields.rawPoint2(viewport.viewCenter);
    fields.rawPoint2({0, 0});
    fields.rawPoint2({0.5, 0.5});
    fields.rawPoint2({0.5, 0.5});
    fields.bitShort(1000);
    fields.bitLong(0);
    fields.bitLong(static_cast<std::int32_t>(viewport.flags));
    fields.text({});
    fields.rawChar(0);
    fields.bit(false);
    fields.bit(true);
    writeWorldCoordinates(fields);
    for (int i = 0; i < 4; ++i)
        out.handles.handle(kHardPointer, 0);
    return {};
}

Result<void> writeShape(Record& out, const Plan& plan, const Shape& shape)
{
    BitWriter& fields = out.fields;
    fields.bitPoint3(shape.position);
    fields.bitDouble(shape.size);
    fields.bitDouble(shape.rotation);
    fields.bitDouble(shape.widthFactor);
    fields.bitDouble(shape.oblique);
    fields.bitDouble(0);
    fields.bitShort(static_cast<std::int16_t>(shape.number));
    fields.bitPoint3(shape.normal);
    out.handles.handle(kHardPointer, plan.style(shape.style));
    return {};
}

Result<void> writeShape(Record& out, const Plan& plan, const Tolerance& tolerance)
{
    out.fields.bitPoint3(tolerance.insertion);
    out.fields.bitPoint3(tolerance.direction);
    out.fields.bitPoint3(tolerance.normal);
    out.fields.text(encodeText(tolerance.text));
    out.handles.handle(kHardPointer, plan.dimensionStyle(tolerance.style));
    return {};
}

} // namespace zv::dwg
