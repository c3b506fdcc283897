#pragma once

#include "drawing/entities/EntityRecord.h"
#include "drawing/records/PackedFields.h"

namespace zv::dwg {

/// Reads an entity's own fields, with what they tell beside its shape.
class EntityFieldsIn : public FieldsIn {
public:
    EntityFieldsIn(RecordReader& in, EntityRecord& out) : FieldsIn(in), m_out(out) {}

    EntityRecord& record() { return m_out; }

private:
    EntityRecord& m_out;
};

/// Reads the fields of one shape.
template <class ShapeType> void readShape(RecordReader& in, EntityRecord& out)
{
    EntityFieldsIn fields(in, out);
    layout(fields, out.geometry.emplace<ShapeType>());
}

} // namespace zv::dwg
