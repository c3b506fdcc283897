#include "drawing/entities/DimensionLayouts.h"

namespace zv::dwg {

namespace {

/// The head of a kind that is kept as one of the seven types.
Dimension& readHead(EntityFieldsIn& fields, int type)
{
    auto& dimension = fields.record().geometry.emplace<Dimension>();
    dimension.type = type;
    layoutDimensionHead(fields, dimension);
    return dimension;
}

} // namespace

void readArcDimension(RecordReader& in, EntityRecord& out)
{
    constexpr int kThreePointAngular = 5;
    EntityFieldsIn fields(in, out);
    Dimension& dimension = readHead(fields, kThreePointAngular);
    layoutDimensionPoints(fields, dimension);
    in.bit(); // Of a part only.
    in.bitDouble();
    in.bitDouble();
    in.bit(); // With a leader, and its points.
    in.bitPoint3();
    in.bitPoint3();
    layoutDimensionHandles(fields, dimension);
}

void readJoggedDimension(RecordReader& in, EntityRecord& out)
{
    constexpr int kRadius = 4;
    EntityFieldsIn fields(in, out);
    Dimension& dimension = readHead(fields, kRadius);
    dimension.definitionPoint = in.bitPoint3();
    dimension.point13 = in.bitPoint3();
    dimension.point14 = in.bitPoint3();
    dimension.point15 = in.bitPoint3();
    in.bitDouble(); // Angle of the jog.
    layoutDimensionHandles(fields, dimension);
}

} // namespace zv::dwg
