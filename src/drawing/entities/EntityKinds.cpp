#include "drawing/entities/EntityRecord.h"

#include <array>

namespace zv::dwg {

namespace {

constexpr int kLastFixedType = objectType::kLayout;

constexpr auto kFixedKinds = [] {
    std::array<EntityKind, kLastFixedType + 1> kinds{};
    kinds[objectType::kText] = {"TEXT", readText};
    kinds[objectType::kAttribDefinition] = {"ATTDEF", readAttribDefinition};
    kinds[objectType::kInsert] = {"INSERT", readInsert};
    kinds[objectType::kMInsert] = {"INSERT", readMInsert};
    kinds[objectType::kPolyline2D] = {"POLYLINE", readPolyline2D};
    kinds[objectType::kPolyline3D] = {"POLYLINE", readPolyline3D};
    kinds[objectType::kArc] = {"ARC", readArc};
    kinds[objectType::kCircle] = {"CIRCLE", readCircle};
    kinds[objectType::kLine] = {"LINE", readLine};
    kinds[objectType::kDimensionOrdinate] = {"DIMENSION", readOrdinateDimension};
    kinds[objectType::kDimensionLinear] = {"DIMENSION", readLinearDimension};
    kinds[objectType::kDimensionAligned] = {"DIMENSION", readAlignedDimension};
    kinds[objectType::kDimensionAngular3] = {"DIMENSION", readThreePointAngularDimension};
    kinds[objectType::kDimensionAngular2] = {"DIMENSION", readAngularDimension};
    kinds[objectType::kDimensionRadius] = {"DIMENSION", readRadiusDimension};
    kinds[objectType::kDimensionDiameter] = {"DIMENSION", readDiameterDimension};
    kinds[objectType::kPoint] = {"POINT", readPoint};
    kinds[objectType::kFace3D] = {"3DFACE", readFace3D};
    kinds[objectType::kPolyfaceMesh] = {"POLYLINE", readPolyfaceMesh};
    kinds[objectType::kPolygonMesh] = {"POLYLINE", readPolygonMesh};
    kinds[objectType::kSolid] = {"SOLID", readSolid};
    kinds[objectType::kTrace] = {"TRACE", readTrace};
    kinds[objectType::kShape] = {"SHAPE", readShape};
    kinds[objectType::kViewport] = {"VIEWPORT", readViewport};
    kinds[objectType::kEllipse] = {"ELLIPSE", readEllipse};
    kinds[objectType::kSpline] = {"SPLINE", readSpline};
    kinds[objectType::kRegion] = {"REGION", readModelGeometry};
    kinds[objectType::kSolid3D] = {"3DSOLID", readModelGeometry};
    kinds[objectType::kBody] = {"BODY", readModelGeometry};
    kinds[objectType::kRay] = {"RAY", readRay};
    kinds[objectType::kXLine] = {"XLINE", readXLine};
    kinds[objectType::kOleFrame] = {"OLEFRAME"};
    kinds[objectType::kMText] = {"MTEXT", readMText};
    kinds[objectType::kLeader] = {"LEADER", readLeader};
    kinds[objectType::kTolerance] = {"TOLERANCE", readTolerance};
    kinds[objectType::kMLine] = {"MLINE", readMLine};
    kinds[objectType::kOle2Frame] = {"OLE2FRAME"};
    kinds[objectType::kLightPolyline] = {"LWPOLYLINE", readLightPolyline};
    kinds[objectType::kHatch] = {"HATCH", readHatch};
    return kinds;
}();

constexpr EntityKind kProxyKind{"ACAD_PROXY_ENTITY"};

constexpr EntityKind kClassKinds[] = {
    {"LWPOLYLINE", readLightPolyline},
    {"HATCH", readHatch},
    {"IMAGE", readImage},
    {"WIPEOUT", readImage},
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
    {"HELIX", readSpline},
    {"ACAD_TABLE", readInsert},
};

} // namespace

const EntityKind* entityKind(int type)
{
    if (type == objectType::kProxyEntity)
        return &kProxyKind;
    if (type < 0 || type > kLastFixedType || kFixedKinds[static_cast<std::size_t>(type)].name.empty())
        return nullptr;
    return &kFixedKinds[static_cast<std::size_t>(type)];
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
