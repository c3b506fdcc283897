#include "drawing/entities/EntityRecord.h"

namespace zv::dwg {

namespace {

/// What all kinds have; `type` is that of Dimension.
Dimension& readCommon(RecordReader& in, EntityRecord& out, int type)
{
    auto& dimension = out.geometry.emplace<Dimension>();
    dimension.type = type;
    if (in.version() >= Version::R2010)
        in.rawChar(); // Version.
    dimension.normal = in.bitPoint3();
    const Point2 text = in.rawPoint2();
    dimension.textPosition = {text.x, text.y, in.bitDouble()};
    in.rawChar(); // Flags.
    dimension.text = in.text();
    in.bitDouble(); // Rotation of the text.
    in.bitDouble(); // Horizontal direction.
    in.bitPoint3(); // Scale and rotation of the block.
    in.bitDouble();
    if (in.version() >= Version::R2000) {
        in.bitShort(); // Attachment and line spacing of the text.
        in.bitShort();
        in.bitDouble();
        dimension.measurement = in.bitDouble();
    }
    if (in.version() >= Version::R2007)
        in.skip(3); // Flipped arrows.
    const Point2 insertion = in.rawPoint2();
    dimension.insertion = {insertion.x, insertion.y, 0};
    return dimension;
}

void readHandles(RecordReader& in, Dimension& dimension)
{
    dimension.style = in.handle();
    dimension.block = in.handle();
}

void readTwoPoints(RecordReader& in, Dimension& dimension)
{
    dimension.point13 = in.bitPoint3();
    dimension.point14 = in.bitPoint3();
    dimension.definitionPoint = in.bitPoint3();
    in.bitDouble(); // Slant of the extension lines.
}

} // namespace

void readLinearDimension(RecordReader& in, EntityRecord& out)
{
    Dimension& dimension = readCommon(in, out, 0);
    readTwoPoints(in, dimension);
    dimension.rotation = in.bitDouble();
    readHandles(in, dimension);
}

void readAlignedDimension(RecordReader& in, EntityRecord& out)
{
    Dimension& dimension = readCommon(in, out, 1);
    readTwoPoints(in, dimension);
    readHandles(in, dimension);
}

void readAngularDimension(RecordReader& in, EntityRecord& out)
{
    Dimension& dimension = readCommon(in, out, 2);
    const Point2 arc = in.rawPoint2();
    dimension.point16 = {arc.x, arc.y, dimension.textPosition.z};
    dimension.point13 = in.bitPoint3();
    dimension.point14 = in.bitPoint3();
    dimension.point15 = in.bitPoint3();
    dimension.definitionPoint = in.bitPoint3();
    readHandles(in, dimension);
}

void readDiameterDimension(RecordReader& in, EntityRecord& out)
{
    Dimension& dimension = readCommon(in, out, 3);
    dimension.point15 = in.bitPoint3();
    dimension.definitionPoint = in.bitPoint3();
    in.bitDouble(); // Length of the leader.
    readHandles(in, dimension);
}

void readRadiusDimension(RecordReader& in, EntityRecord& out)
{
    Dimension& dimension = readCommon(in, out, 4);
    dimension.definitionPoint = in.bitPoint3();
    dimension.point15 = in.bitPoint3();
    in.bitDouble(); // Length of the leader.
    readHandles(in, dimension);
}

void readThreePointAngularDimension(RecordReader& in, EntityRecord& out)
{
    Dimension& dimension = readCommon(in, out, 5);
    dimension.definitionPoint = in.bitPoint3();
    dimension.point13 = in.bitPoint3();
    dimension.point14 = in.bitPoint3();
    dimension.point15 = in.bitPoint3();
    readHandles(in, dimension);
}

void readOrdinateDimension(RecordReader& in, EntityRecord& out)
{
    Dimension& dimension = readCommon(in, out, 6);
    dimension.definitionPoint = in.bitPoint3();
    dimension.point13 = in.bitPoint3();
    dimension.point14 = in.bitPoint3();
    in.rawChar(); // Along which axis.
    readHandles(in, dimension);
}

void readArcDimension(RecordReader& in, EntityRecord& out)
{
    Dimension& dimension = readCommon(in, out, 5);
    dimension.definitionPoint = in.bitPoint3();
    dimension.point13 = in.bitPoint3();
    dimension.point14 = in.bitPoint3();
    dimension.point15 = in.bitPoint3();
    in.bit(); // Of a part only.
    in.bitDouble();
    in.bitDouble();
    in.bit(); // With a leader, and its points.
    in.bitPoint3();
    in.bitPoint3();
    readHandles(in, dimension);
}

void readJoggedDimension(RecordReader& in, EntityRecord& out)
{
    Dimension& dimension = readCommon(in, out, 4);
    dimension.definitionPoint = in.bitPoint3();
    dimension.point13 = in.bitPoint3();
    dimension.point14 = in.bitPoint3();
    dimension.point15 = in.bitPoint3();
    in.bitDouble(); // Angle of the jog.
    readHandles(in, dimension);
}

} // namespace zv::dwg
