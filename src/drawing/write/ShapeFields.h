#pragma once

#include "drawing/write/Plan.h"
#include "drawing/write/Record.h"

namespace zv::dwg {

/// The type of the record that a shape of one record becomes; 0 when it cannot be written.
template <class ShapeType> int recordType(const ShapeType&)
{
    return 0;
}
int recordType(const Line&);
int recordType(const PointShape&);
int recordType(const Circle&);
int recordType(const Arc&);
int recordType(const Ellipse&);
int recordType(const Spline&);
int recordType(const TextLine&);
int recordType(const MText&);
int recordType(const Dimension& dimension);
int recordType(const Solid& solid);
int recordType(const Face3D&);
int recordType(const Ray& ray);
int recordType(const Hatch&);
int recordType(const MLine&);
int recordType(const Leader&);
int recordType(const Wipeout& wipeout);
int recordType(const Viewport&);
int recordType(const Shape&);
int recordType(const Tolerance&);
int insertType(const Insert& insert);

/// The fields and handles of a shape, behind those that all entities have. Errors: Unsupported.
template <class ShapeType> Result<void> writeShape(Record&, const Plan&, const ShapeType&)
{
    return Error{ErrorCode::Unsupported, "a kind of entity that cannot be written"};
}
Result<void> writeShape(Record& out, const Plan& plan, const Line& line);
Result<void> writeShape(Record& out, const Plan& plan, const PointShape& point);
Result<void> writeShape(Record& out, const Plan& plan, const Circle& circle);
Result<void> writeShape(Record& out, const Plan& plan, const Arc& arc);
Result<void> writeShape(Record& out, const Plan& plan, const Ellipse& ellipse);
Result<void> writeShape(Record& out, const Plan& plan, const Spline& spline);
Result<void> writeShape(Record& out, const Plan& plan, const TextLine& text);
Result<void> writeShape(Record& out, const Plan& plan, const MText& text);
Result<void> writeShape(Record& out, const Plan& plan, const Dimension& dimension);
Result<void> writeShape(Record& out, const Plan& plan, const Solid& solid);
Result<void> writeShape(Record& out, const Plan& plan, const Face3D& face);
Result<void> writeShape(Record& out, const Plan& plan, const Ray& ray);
Result<void> writeShape(Record& out, const Plan& plan, const Hatch& hatch);
Result<void> writeShape(Record& out, const Plan& plan, const Leader& leader);
Result<void> writeShape(Record& out, const Plan& plan, const MLine& line);
Result<void> writeShape(Record& out, const Plan& plan, const Wipeout& wipeout);
Result<void> writeShape(Record& out, const Plan& plan, const Viewport& viewport);
Result<void> writeShape(Record& out, const Plan& plan, const Shape& shape);
Result<void> writeShape(Record& out, const Plan& plan, const Tolerance& tolerance);

/// The parts of shapes that become several records.
void writeInsert(Record& out, const Insert& insert);
void writeAttribute(Record& out, const Plan& plan, const Attribute& attribute, bool definition);
void writeLightPolyline(Record& out, const Polyline& line);
void writePolylineHead(Record& out, const Polyline& line);
void writeVertex(Record& out, const Polyline& line, const PolylineVertex& vertex);
void writeMeshHead(Record& out, const Mesh& mesh);

} // namespace zv::dwg
