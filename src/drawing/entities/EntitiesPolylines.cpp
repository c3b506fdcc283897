#include "drawing/entities/PolylineLayouts.h"

namespace zv::dwg {

namespace {

/// The vertices of a POLYLINE: their number stands among the fields from R2004 on.
void readVertexHandles(RecordReader& in, EntityRecord& out)
{
    readChain(in, in.version() >= Version::R2004 ? in.bitLong() : 0, out.chain);
}

void readHeavyPolyline(RecordReader& in, EntityRecord& out, bool threeD)
{
    EntityFieldsIn fields(in, out);
    auto& line = out.geometry.emplace<Polyline>();
    line.lightweight = false;
    line.threeD = threeD;
    layoutHeavy(fields, line);
    readVertexHandles(in, out);
}

} // namespace

void readChain(RecordReader& in, std::int64_t count, OwnedChain& chain)
{
    constexpr unsigned kFewestHandleBits = 8;
    if (in.version() <= Version::R2000) {
        chain.first = in.handle();
        chain.last = in.handle();
        return;
    }
    chain.owned.resize(in.handles().checkedCount(count, kFewestHandleBits));
    for (Handle& handle : chain.owned)
        handle = in.handle();
}

void readLightPolyline(RecordReader& in, EntityRecord& out)
{
    EntityFieldsIn fields(in, out);
    layoutLight(fields, out.geometry.emplace<Polyline>());
}

void readPolyline2D(RecordReader& in, EntityRecord& out)
{
    readHeavyPolyline(in, out, false);
}

void readPolyline3D(RecordReader& in, EntityRecord& out)
{
    readHeavyPolyline(in, out, true);
}

void readPolygonMesh(RecordReader& in, EntityRecord& out)
{
    EntityFieldsIn fields(in, out);
    layoutPolygonMesh(fields, out.geometry.emplace<Mesh>());
    readVertexHandles(in, out);
}

void readPolyfaceMesh(RecordReader& in, EntityRecord& out)
{
    EntityFieldsIn fields(in, out);
    layoutPolyfaceMesh(fields, out.geometry.emplace<Mesh>());
    readVertexHandles(in, out);
}

VertexRecord readVertex(RecordReader& in, int type)
{
    EntityRecord record;
    record.header = readEntityHeader(in);
    VertexRecord vertex;
    if (type == objectType::kPolyfaceFace) {
        for (int& corner : vertex.face)
            corner = in.bitShort();
        return vertex;
    }
    vertex.vertex.splineFrame = (in.rawChar() & kVertexSplineFrame) != 0;
    EntityFieldsIn fields(in, record);
    layoutVertex(fields, vertex.vertex, type == objectType::kVertex2D);
    return vertex;
}

void readMLine(RecordReader& in, EntityRecord& out)
{
    EntityFieldsIn fields(in, out);
    layoutMLine(fields, out.geometry.emplace<MLine>(), 0);
}

} // namespace zv::dwg
