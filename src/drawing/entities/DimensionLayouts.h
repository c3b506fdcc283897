#pragma once

#include "drawing/entities/EntityFields.h"

#include <cmath>

/// The records of dimensions and leaders, for reading and for writing.
namespace zv::dwg {

template <class Fields> void layoutDimensionHead(Fields& fields, Of<Dimension> auto& dimension)
{
    constexpr int kTextByStyleAndBlockItsOwn = 0x0B, kMiddleCentre = 5, kAtLeast = 1;
    if (fields.version() >= Version::R2010)
        fields.fixedChar(0); // Version.
    fields.bitPoint3(dimension.normal);
    fields.rawFlat(dimension.textPosition, dimension.textPosition.z);
    fields.bitDouble(dimension.textPosition.z);
    fields.fixedChar(kTextByStyleAndBlockItsOwn);
    fields.text(dimension.text);
    fields.fixedDouble(0);         // Rotation of the text.
    fields.fixedDouble(0);         // Horizontal direction.
    fields.fixedPoint3({1, 1, 1}); // Scale and rotation of the block.
    fields.fixedDouble(0);
    if (fields.version() >= Version::R2000) {
        fields.fixedShort(kMiddleCentre); // Attachment and line spacing of the text.
        fields.fixedShort(kAtLeast);
        fields.fixedDouble(1);
        fields.bitDouble(dimension.measurement);
    }
    if (fields.version() >= Version::R2007) {
        for (int i = 0; i < 3; ++i) // Flipped arrows.
            fields.fixedBit(false);
    }
    fields.rawFlat(dimension.insertion, 0);
}

/// The points of each type; `type` is known.
template <class Fields> void layoutDimensionPoints(Fields& fields, Of<Dimension> auto& dimension)
{
    switch (dimension.type) {
    case 0:
    case 1:
        fields.bitPoint3(dimension.point13);
        fields.bitPoint3(dimension.point14);
        fields.bitPoint3(dimension.definitionPoint);
        fields.fixedDouble(0); // Slant of the extension lines.
        if (dimension.type == 0)
            fields.bitDouble(dimension.rotation);
        return;
    case 2:
        fields.rawFlat(dimension.point16, dimension.textPosition.z);
        fields.bitPoint3(dimension.point13);
        fields.bitPoint3(dimension.point14);
        fields.bitPoint3(dimension.point15);
        fields.bitPoint3(dimension.definitionPoint);
        return;
    case 3:
        fields.bitPoint3(dimension.point15);
        fields.bitPoint3(dimension.definitionPoint);
        fields.fixedDouble(0); // Length of the leader.
        return;
    case 4:
        fields.bitPoint3(dimension.definitionPoint);
        fields.bitPoint3(dimension.point15);
        fields.fixedDouble(0);
        return;
    case 5:
        fields.bitPoint3(dimension.definitionPoint);
        fields.bitPoint3(dimension.point13);
        fields.bitPoint3(dimension.point14);
        fields.bitPoint3(dimension.point15);
        return;
    default:
        fields.bitPoint3(dimension.definitionPoint);
        fields.bitPoint3(dimension.point13);
        fields.bitPoint3(dimension.point14);
        // The leader runs across what is measured.
        fields.fixedChar(std::abs(dimension.point14.y - dimension.point13.y) >
                         std::abs(dimension.point14.x - dimension.point13.x));
        return;
    }
}

void layoutDimensionHandles(auto& fields, Of<Dimension> auto& dimension)
{
    fields.handle(dimension.style, Table::DimensionStyle);
    fields.handle(dimension.block, Table::Block);
}

/// Which type it is tells the record's own type.
void layout(auto& fields, Of<Dimension> auto& dimension)
{
    layoutDimensionHead(fields, dimension);
    layoutDimensionPoints(fields, dimension);
    layoutDimensionHandles(fields, dimension);
}

template <class Fields> void layout(Fields& fields, Of<Leader> auto& leader)
{
    constexpr unsigned kPointBits = 6;
    constexpr int kCurved = 1, kToNothing = 3;
    const Version version = fields.version();
    int path = leader.splined ? kCurved : 0;
    fields.fixedBit(false);
    fields.fixedShort(kToNothing);
    fields.bitShort(path);
    if constexpr (Fields::kReads)
        leader.splined = path == kCurved;
    fields.count(leader.points, kPointBits);
    for (auto& point : leader.points)
        fields.bitPoint3(point);
    fields.fixedPoint3(leader.points.empty() ? Point3{} : leader.points.front()); // Origin of its plane.
    fields.bitPoint3(leader.normal);
    fields.fixedPoint3({1, 0, 0}); // Horizontal direction.
    fields.fixedPoint3({});        // Offset of a block.
    if (version >= Version::R14)
        fields.fixedPoint3({}); // Offset of the text.
    if (version <= Version::R14)
        fields.fixedDouble(0); // Gap.
    if (version <= Version::R2007) {
        fields.fixedDouble(0); // Size of the text.
        fields.fixedDouble(0);
    }
    fields.fixedBit(false); // On which side the text is.
    fields.bit(leader.arrow);
    if constexpr (!Fields::kReads) {
        fields.fixedShort(0);
        fields.fixedBit(false);
        fields.fixedBit(false);
    }
    fields.noHandle(); // What it leads to.
    fields.handle(leader.style, Table::DimensionStyle);
}

} // namespace zv::dwg
