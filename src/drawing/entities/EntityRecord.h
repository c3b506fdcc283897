#pragma once

#include "drawing/records/ObjectHeader.h"
#include "drawing/records/ObjectType.h"

#include <string_view>
#include <vector>

namespace zv::dwg {

/// The objects that an entity owns and that belong to its shape: vertices, attributes.
struct OwnedChain {
    Handle first = 0, last = 0; ///< R13 to R2000: the ends of their chain.
    std::vector<Handle> owned;  ///< R2004 and later: all of them.
};

/// An entity as its own record tells it.
struct EntityRecord {
    EntityHeader header;
    Geometry geometry;
    OwnedChain chain;
    /// Of a polygon mesh: its vertices are those of the smoothed surface, a control net among them.
    bool smoothed = false;
    Handle imageDefinition = 0; ///< Of an image.
};

/// Reads an entity's own fields into `out`, whose header has been read. Whether that went well tells
/// `in.ok()`.
using EntityReader = void (*)(RecordReader& in, EntityRecord& out);

/// A kind of entities: its DXF name, and how its fields are read (null: it is only known by name).
struct EntityKind {
    std::string_view name;
    EntityReader read = nullptr;
};

/// The kind of an object type that the format itself numbers; null when it is no entity, or belongs to one:
/// vertices, attributes, ends of sequences and blocks.
const EntityKind* entityKind(int type);
/// The kind of a class by its DXF name; null when its fields are not known.
const EntityKind* entityKind(std::string_view className);
/// The object type under which the format itself numbers a shape; 0 when it numbers none.
int recordType(const Geometry& geometry);

/// A vertex of a POLYLINE of any kind.
struct VertexRecord {
    PolylineVertex vertex;
    std::array<int, 4> face{}; ///< Of a face's record: the corners' numbers.
};
VertexRecord readVertex(RecordReader& in, int type);

/// The text of a BLOCK entity: its full name.
Text readBlockBegin(RecordReader& in);

/// Reads the handles of `count` owned objects (R2004 and later), or those of the ends of their chain.
void readChain(RecordReader& in, std::int64_t count, OwnedChain& chain);

// The readers of kinds whose record is more than the layout of one shape.
void readLightPolyline(RecordReader& in, EntityRecord& out);
void readPolyline2D(RecordReader& in, EntityRecord& out);
void readPolyline3D(RecordReader& in, EntityRecord& out);
void readPolygonMesh(RecordReader& in, EntityRecord& out);
void readPolyfaceMesh(RecordReader& in, EntityRecord& out);
void readMLine(RecordReader& in, EntityRecord& out);
void readAttrib(RecordReader& in, EntityRecord& out);
void readAttribDefinition(RecordReader& in, EntityRecord& out);
void readMText(RecordReader& in, EntityRecord& out);
void readInsert(RecordReader& in, EntityRecord& out);
void readMInsert(RecordReader& in, EntityRecord& out);
void readUnderlay(RecordReader& in, EntityRecord& out);
void readMPolygon(RecordReader& in, EntityRecord& out);
void readArcDimension(RecordReader& in, EntityRecord& out);
void readJoggedDimension(RecordReader& in, EntityRecord& out);
void readMultiLeader(RecordReader& in, EntityRecord& out);
/// Solids, regions and surfaces: their edges, and the wires that are stored beside them. Without any they
/// stay unknown.
void readModelGeometry(RecordReader& in, EntityRecord& out);

} // namespace zv::dwg
