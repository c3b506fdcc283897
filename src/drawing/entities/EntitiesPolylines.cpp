#include "drawing/entities/EntityRecord.h"

namespace zv::dwg {

namespace {

constexpr unsigned kFewestDoubleBits = 2, kFewestHandleBits = 8;
constexpr unsigned kClosed = 1, kSplineFit = 4, kClosedN = 32, kLinetypeThroughVertices = 128;

/// The vertices of a POLYLINE: their number stands among the fields, and all have a handle from R2004 on.
void readVertexHandles(RecordReader& in, EntityRecord& out)
{
    if (in.version() <= Version::R2000) {
        out.chain.first = in.handle();
        out.chain.last = in.handle();
        return;
    }
    out.chain.owned.resize(in.handles().checkedCount(in.bitLong(), kFewestHandleBits));
    for (Handle& handle : out.chain.owned)
        handle = in.handle();
}

} // namespace

void readLightPolyline(RecordReader& in, EntityRecord& out)
{
    enum : unsigned {
        kNormal = 1,
        kThickness = 2,
        kConstantWidth = 4,
        kElevation = 8,
        kBulges = 16,
        kWidths = 32,
        kPlinegen = 256,
        kLightClosed = 512,
        kVertexNames = 1024
    };
    const bool whole = in.version() <= Version::R14;
    const unsigned fewestVertexBits = whole ? 128 : 4;
    auto& line = out.geometry.emplace<Polyline>();
    const unsigned flags = static_cast<std::uint16_t>(in.bitShort());
    line.plinegen = (flags & kPlinegen) != 0;
    line.closed = (flags & kLightClosed) != 0;
    if ((flags & kConstantWidth) != 0)
        line.constantWidth = in.bitDouble();
    if ((flags & kElevation) != 0)
        line.elevation = in.bitDouble();
    if ((flags & kThickness) != 0)
        line.thickness = in.bitDouble();
    if ((flags & kNormal) != 0)
        line.normal = in.bitPoint3();
    const std::int32_t vertices = in.bitLong();
    const std::int32_t bulges = (flags & kBulges) != 0 ? in.bitLong() : 0;
    const std::int32_t names = (flags & kVertexNames) != 0 ? in.bitLong() : 0;
    const std::int32_t widths = (flags & kWidths) != 0 ? in.bitLong() : 0;
    line.vertices.resize(in.checkedCount(vertices, fewestVertexBits));
    Point2 last;
    for (std::size_t i = 0; i < line.vertices.size() && in.ok(); ++i) {
        last = whole || i == 0 ? in.rawPoint2() : in.defaultPoint2(last);
        line.vertices[i].position = {last.x, last.y, line.elevation};
    }
    const std::size_t count = line.vertices.size();
    const std::uint32_t bulgeCount = in.checkedCount(bulges, kFewestDoubleBits);
    for (std::uint32_t i = 0; i < bulgeCount; ++i) {
        const double bulge = in.bitDouble();
        if (i < count)
            line.vertices[i].bulge = bulge;
    }
    const std::uint32_t nameCount = in.checkedCount(names, kFewestDoubleBits);
    for (std::uint32_t i = 0; i < nameCount; ++i)
        in.bitLong();
    const std::uint32_t widthCount = in.checkedCount(widths, 2 * kFewestDoubleBits);
    for (std::uint32_t i = 0; i < widthCount; ++i) {
        const double start = in.bitDouble();
        const double end = in.bitDouble();
        if (i >= count)
            continue;
        line.vertices[i].startWidth = start;
        line.vertices[i].endWidth = end;
    }
}

void readPolyline2D(RecordReader& in, EntityRecord& out)
{
    auto& line = out.geometry.emplace<Polyline>();
    line.lightweight = false;
    const unsigned flags = static_cast<std::uint16_t>(in.bitShort());
    line.closed = (flags & kClosed) != 0;
    line.plinegen = (flags & kLinetypeThroughVertices) != 0;
    in.bitShort();  // Kind of the fitted curve.
    in.bitDouble(); // Widths for new vertices.
    in.bitDouble();
    line.thickness = in.thickness();
    line.elevation = in.bitDouble();
    line.normal = in.extrusion();
    readVertexHandles(in, out);
}

void readPolyline3D(RecordReader& in, EntityRecord& out)
{
    auto& line = out.geometry.emplace<Polyline>();
    line.lightweight = false;
    line.threeD = true;
    in.rawChar(); // Kind of the fitted curve.
    line.closed = (in.rawChar() & kClosed) != 0;
    readVertexHandles(in, out);
}

void readPolygonMesh(RecordReader& in, EntityRecord& out)
{
    auto& mesh = out.geometry.emplace<Mesh>();
    const unsigned flags = static_cast<std::uint16_t>(in.bitShort());
    mesh.closedM = (flags & kClosed) != 0;
    mesh.closedN = (flags & kClosedN) != 0;
    in.bitShort(); // Kind of the surface.
    mesh.m = in.bitShort();
    mesh.n = in.bitShort();
    const int fineM = in.bitShort();
    const int fineN = in.bitShort();
    if ((flags & kSplineFit) != 0) {
        out.smoothed = true;
        mesh.m = fineM;
        mesh.n = fineN;
    }
    readVertexHandles(in, out);
}

void readPolyfaceMesh(RecordReader& in, EntityRecord& out)
{
    out.geometry.emplace<Mesh>();
    in.bitShort(); // How many vertices and faces; the vertices' own records tell.
    in.bitShort();
    readVertexHandles(in, out);
}

VertexRecord readVertex(RecordReader& in, int type)
{
    VertexRecord record;
    readEntityHeader(in);
    if (type == objectType::kPolyfaceFace) {
        for (int& corner : record.face)
            corner = in.bitShort();
        return record;
    }
    PolylineVertex& vertex = record.vertex;
    record.flags = in.rawChar();
    vertex.position = in.bitPoint3();
    vertex.splineFrame = (record.flags & kVertexSplineFrame) != 0;
    if (type != objectType::kVertex2D)
        return record;
    // A negative width stands for both.
    vertex.startWidth = in.bitDouble();
    if (vertex.startWidth < 0)
        vertex.startWidth = vertex.endWidth = -vertex.startWidth;
    else
        vertex.endWidth = in.bitDouble();
    vertex.bulge = in.bitDouble();
    return record;
}

void readMLine(RecordReader& in, EntityRecord& out)
{
    constexpr int kLoop = 3;
    constexpr unsigned kFewestVertexBits = 18, kFewestElementBits = 4;
    auto& line = out.geometry.emplace<MLine>();
    line.scale = in.bitDouble();
    line.justification = in.rawChar();
    in.bitPoint3(); // The first vertex.
    line.normal = in.bitPoint3();
    const int flags = in.bitShort();
    line.closed = (flags & kLoop) == kLoop;
    line.noStartCap = (flags & 4) != 0;
    line.noEndCap = (flags & 8) != 0;
    const unsigned elements = in.rawChar();
    line.vertices.resize(in.checkedCount(in.bitShort(), kFewestVertexBits + elements * kFewestElementBits));
    for (MLineVertex& vertex : line.vertices) {
        vertex.position = in.bitPoint3();
        vertex.direction = in.bitPoint3();
        vertex.miter = in.bitPoint3();
        vertex.elements.resize(elements);
        for (auto& element : vertex.elements) {
            element.resize(in.checkedCount(in.bitShort(), kFewestDoubleBits));
            for (double& distance : element)
                distance = in.bitDouble();
            const std::uint32_t fills = in.checkedCount(in.bitShort(), kFewestDoubleBits);
            for (std::uint32_t i = 0; i < fills; ++i)
                in.bitDouble();
        }
    }
    line.style = in.handle();
}

} // namespace zv::dwg
