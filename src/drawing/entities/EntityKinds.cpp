#include "drawing/entities/DimensionLayouts.h"
#include "drawing/entities/HatchLayouts.h"
#include "drawing/entities/InsertLayouts.h"
#include "drawing/entities/PolylineLayouts.h"
#include "drawing/entities/TextLayouts.h"

#include <array>

namespace zv::dwg {

namespace {

/// A kind that the format itself numbers, and the shapes that are written under that number.
struct FixedKind {
    int type;
    EntityKind kind;
    bool (*is)(const Geometry& geometry) = nullptr;
};

template <class ShapeType> bool isA(const Geometry& geometry)
{
    return std::holds_alternative<ShapeType>(geometry);
}

template <int type> void readDimension(RecordReader& in, EntityRecord& out)
{
    EntityFieldsIn fields(in, out);
    auto& dimension = out.geometry.emplace<Dimension>();
    dimension.type = type;
    layout(fields, dimension);
}

template <int type> bool isDimension(const Geometry& geometry)
{
    const auto* dimension = std::get_if<Dimension>(&geometry);
    return dimension != nullptr && dimension->type == type;
}

template <bool bothWays> void readRay(RecordReader& in, EntityRecord& out)
{
    readShape<Ray>(in, out);
    std::get<Ray>(out.geometry).bothWays = bothWays;
}

template <bool bothWays> bool isRay(const Geometry& geometry)
{
    const auto* ray = std::get_if<Ray>(&geometry);
    return ray != nullptr && ray->bothWays == bothWays;
}

template <bool trace> void readSolid(RecordReader& in, EntityRecord& out)
{
    readShape<Solid>(in, out);
    std::get<Solid>(out.geometry).trace = trace;
}

void readImage(RecordReader& in, EntityRecord& out)
{
    readShape<Wipeout>(in, out);
    std::get<Wipeout>(out.geometry).image = true;
}

template <bool trace> bool isSolid(const Geometry& geometry)
{
    const auto* solid = std::get_if<Solid>(&geometry);
    return solid != nullptr && solid->trace == trace;
}

template <bool repeated> bool isInsert(const Geometry& geometry)
{
    const auto* insert = std::get_if<Insert>(&geometry);
    return insert != nullptr && (insert->columns > 1 || insert->rows > 1) == repeated;
}

template <bool lightweight, bool threeD> bool isPolyline(const Geometry& geometry)
{
    const auto* line = std::get_if<Polyline>(&geometry);
    return line != nullptr && line->threeD == threeD && (threeD || line->lightweight == lightweight);
}

template <bool polyface> bool isMesh(const Geometry& geometry)
{
    const auto* mesh = std::get_if<Mesh>(&geometry);
    return mesh != nullptr && mesh->faces.empty() != polyface;
}

constexpr FixedKind kFixedKinds[] = {
    {objectType::kText, {"TEXT", readShape<TextLine>}, isA<TextLine>},
    {objectType::kAttribDefinition, {"ATTDEF", readAttribDefinition}, isA<Attribute>},
    {objectType::kInsert, {"INSERT", readInsert}, isInsert<false>},
    {objectType::kMInsert, {"INSERT", readMInsert}, isInsert<true>},
    {objectType::kPolyline2D, {"POLYLINE", readPolyline2D}, isPolyline<false, false>},
    {objectType::kPolyline3D, {"POLYLINE", readPolyline3D}, isPolyline<false, true>},
    {objectType::kArc, {"ARC", readShape<Arc>}, isA<Arc>},
    {objectType::kCircle, {"CIRCLE", readShape<Circle>}, isA<Circle>},
    {objectType::kLine, {"LINE", readShape<Line>}, isA<Line>},
    {objectType::kDimensionOrdinate, {"DIMENSION", readDimension<6>}, isDimension<6>},
    {objectType::kDimensionLinear, {"DIMENSION", readDimension<0>}, isDimension<0>},
    {objectType::kDimensionAligned, {"DIMENSION", readDimension<1>}, isDimension<1>},
    {objectType::kDimensionAngular3, {"DIMENSION", readDimension<5>}, isDimension<5>},
    {objectType::kDimensionAngular2, {"DIMENSION", readDimension<2>}, isDimension<2>},
    {objectType::kDimensionRadius, {"DIMENSION", readDimension<4>}, isDimension<4>},
    {objectType::kDimensionDiameter, {"DIMENSION", readDimension<3>}, isDimension<3>},
    {objectType::kPoint, {"POINT", readShape<PointShape>}, isA<PointShape>},
    {objectType::kFace3D, {"3DFACE", readShape<Face3D>}, isA<Face3D>},
    {objectType::kPolyfaceMesh, {"POLYLINE", readPolyfaceMesh}, isMesh<true>},
    {objectType::kPolygonMesh, {"POLYLINE", readPolygonMesh}, isMesh<false>},
    {objectType::kSolid, {"SOLID", readSolid<false>}, isSolid<false>},
    {objectType::kTrace, {"TRACE", readSolid<true>}, isSolid<true>},
    {objectType::kShape, {"SHAPE", readShape<Shape>}, isA<Shape>},
    {objectType::kViewport, {"VIEWPORT", readShape<Viewport>}, isA<Viewport>},
    {objectType::kEllipse, {"ELLIPSE", readShape<Ellipse>}, isA<Ellipse>},
    {objectType::kSpline, {"SPLINE", readShape<Spline>}, isA<Spline>},
    {objectType::kRegion, {"REGION", readModelGeometry}},
    {objectType::kSolid3D, {"3DSOLID", readModelGeometry}},
    {objectType::kBody, {"BODY", readModelGeometry}},
    {objectType::kRay, {"RAY", readRay<false>}, isRay<false>},
    {objectType::kXLine, {"XLINE", readRay<true>}, isRay<true>},
    {objectType::kOleFrame, {"OLEFRAME"}},
    {objectType::kMText, {"MTEXT", readMText}, isA<MText>},
    {objectType::kLeader, {"LEADER", readShape<Leader>}, isA<Leader>},
    {objectType::kTolerance, {"TOLERANCE", readShape<Tolerance>}, isA<Tolerance>},
    {objectType::kMLine, {"MLINE", readMLine}, isA<MLine>},
    {objectType::kOle2Frame, {"OLE2FRAME"}},
    {objectType::kLightPolyline, {"LWPOLYLINE", readLightPolyline}, isPolyline<true, false>},
    {objectType::kHatch, {"HATCH", readShape<Hatch>}, isA<Hatch>},
};

/// The same, found by the number.
constexpr auto kKindOfType = [] {
    std::array<EntityKind, objectType::kLayout + 1> kinds{};
    for (const FixedKind& fixed : kFixedKinds)
        kinds[static_cast<std::size_t>(fixed.type)] = fixed.kind;
    return kinds;
}();

constexpr EntityKind kProxyKind{"ACAD_PROXY_ENTITY"};

constexpr EntityKind kClassKinds[] = {
    {"LWPOLYLINE", readLightPolyline},
    {"HATCH", readShape<Hatch>},
    {"IMAGE", readImage},
    {"WIPEOUT", readShape<Wipeout>},
    {"MPOLYGON", readMPolygon},
    {"PDFUNDERLAY", readUnderlay},
    {"DWFUNDERLAY", readUnderlay},
    {"DGNUNDERLAY", readUnderlay},
    {"SURFACE", readModelGeometry},
    {"EXTRUDEDSURFACE", readModelGeometry},
    {"LOFTEDSURFACE", readModelGeometry},
    {"PLANESURFACE", readModelGeometry},
    {"REVOLVEDSURFACE", readModelGeometry},
    {"SWEPTSURFACE", readModelGeometry},
    {"MULTILEADER", readMultiLeader},
    {"ARC_DIMENSION", readArcDimension},
    {"LARGE_RADIAL_DIMENSION", readJoggedDimension},
    // A helix begins with its spline, a table with the insert of the block that draws it.
    {"HELIX", readShape<Spline>},
    {"ACAD_TABLE", readInsert},
};

} // namespace

const EntityKind* entityKind(int type)
{
    if (type == objectType::kProxyEntity)
        return &kProxyKind;
    if (type < 0 || static_cast<std::size_t>(type) >= kKindOfType.size())
        return nullptr;
    const EntityKind& kind = kKindOfType[static_cast<std::size_t>(type)];
    return kind.name.empty() ? nullptr : &kind;
}

int recordType(const Geometry& geometry)
{
    for (const FixedKind& fixed : kFixedKinds) {
        if (fixed.is != nullptr && fixed.is(geometry))
            return fixed.type;
    }
    return 0;
}

Text readBlockBegin(RecordReader& in)
{
    readEntityHeader(in);
    return in.text();
}

const EntityKind* entityKind(std::string_view className)
{
    for (const EntityKind& kind : kClassKinds) {
        if (kind.name == className)
            return &kind;
    }
    return nullptr;
}

} // namespace zv::dwg
