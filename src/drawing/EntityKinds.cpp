#include "drawing/EntityRecord.h"

#include <array>

namespace zv::dwg {

namespace {

constexpr int kLastFixedType = 0x52;

constexpr auto kFixedKinds = [] {
    std::array<EntityKind, kLastFixedType + 1> kinds{};
    kinds[0x01] = {"TEXT", readText};
    kinds[0x03] = {"ATTDEF", readAttribDefinition};
    kinds[0x07] = {"INSERT", readInsert};
    kinds[0x08] = {"INSERT", readMInsert};
    kinds[0x0F] = {"POLYLINE", readPolyline2D};
    kinds[0x10] = {"POLYLINE", readPolyline3D};
    kinds[0x11] = {"ARC", readArc};
    kinds[0x12] = {"CIRCLE", readCircle};
    kinds[0x13] = {"LINE", readLine};
    kinds[0x14] = {"DIMENSION", readOrdinateDimension};
    kinds[0x15] = {"DIMENSION", readLinearDimension};
    kinds[0x16] = {"DIMENSION", readAlignedDimension};
    kinds[0x17] = {"DIMENSION", readThreePointAngularDimension};
    kinds[0x18] = {"DIMENSION", readAngularDimension};
    kinds[0x19] = {"DIMENSION", readRadiusDimension};
    kinds[0x1A] = {"DIMENSION", readDiameterDimension};
    kinds[0x1B] = {"POINT", readPoint};
    kinds[0x1C] = {"3DFACE", readFace3D};
    kinds[0x1D] = {"POLYLINE", readPolyfaceMesh};
    kinds[0x1E] = {"POLYLINE", readPolygonMesh};
    kinds[0x1F] = {"SOLID", readSolid};
    kinds[0x20] = {"TRACE", readTrace};
    kinds[0x21] = {"SHAPE", readShape};
    kinds[0x22] = {"VIEWPORT", readViewport};
    kinds[0x23] = {"ELLIPSE", readEllipse};
    kinds[0x24] = {"SPLINE", readSpline};
    kinds[0x25] = {"REGION", readModelGeometry};
    kinds[0x26] = {"3DSOLID", readModelGeometry};
    kinds[0x27] = {"BODY", readModelGeometry};
    kinds[0x28] = {"RAY", readRay};
    kinds[0x29] = {"XLINE", readXLine};
    kinds[0x2B] = {"OLEFRAME"};
    kinds[0x2C] = {"MTEXT", readMText};
    kinds[0x2D] = {"LEADER", readLeader};
    kinds[0x2E] = {"TOLERANCE", readTolerance};
    kinds[0x2F] = {"MLINE", readMLine};
    kinds[0x4A] = {"OLE2FRAME"};
    kinds[0x4D] = {"LWPOLYLINE", readLightPolyline};
    kinds[0x4E] = {"HATCH", readHatch};
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
