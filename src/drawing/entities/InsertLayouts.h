#pragma once

#include "drawing/entities/CurveLayouts.h"

#include <algorithm>

/// The records of inserts, images and viewports, for reading and for writing.
namespace zv::dwg {

template <class Fields> void layoutScale(Fields& fields, auto& scale)
{
    enum : unsigned { kEach, kXIsOne, kAllTheSame, kAllOne };
    if (fields.version() <= Version::R14)
        return fields.bitPoint3(scale);
    const bool even = scale.x == scale.y && scale.x == scale.z;
    unsigned kind = even ? (scale.x == 1 ? kAllOne : kAllTheSame) : scale.x == 1 ? kXIsOne : kEach;
    fields.bitPair(kind);
    if (kind == kAllOne)
        return;
    if (kind != kXIsOne)
        fields.rawDouble(scale.x);
    if (kind != kAllTheSame) {
        fields.defaultDouble(scale.y, scale.x);
        fields.defaultDouble(scale.z, scale.x);
    } else if constexpr (Fields::kReads) {
        scale.y = scale.z = scale.x;
    }
}

/// `repeated` are the rows and columns of MINSERT; `owned` tells a reader how many attributes there are.
template <class Fields>
void layoutInsert(Fields& fields, Of<Insert> auto& insert, bool repeated, auto&& attributes,
                  std::int64_t& owned)
{
    fields.bitPoint3(insert.position);
    layoutScale(fields, insert.scale);
    fields.bitDouble(insert.rotation);
    fields.bitPoint3(insert.normal);
    fields.bit(attributes);
    if (fields.version() >= Version::R2004 && attributes)
        fields.bitLong(owned);
    if (repeated) {
        fields.bitShort(insert.columns);
        fields.bitShort(insert.rows);
        fields.bitDouble(insert.columnSpacing);
        fields.bitDouble(insert.rowSpacing);
    }
    fields.handle(insert.block, Table::Block);
}

template <class Fields> void layout(Fields& fields, Of<Wipeout> auto& image)
{
    constexpr int kRectangle = 1, kPolygon = 2;
    constexpr unsigned kShown = 1, kAligned = 2, kClipped = 4;
    fields.fixedLong(0); // Version.
    fields.bitPoint3(image.insertion);
    fields.bitPoint3(image.uVector);
    fields.bitPoint3(image.vVector);
    fields.rawPoint2(image.pixels);
    unsigned display = kAligned | kClipped | (image.frame ? kShown : 0);
    bool clipped = true;
    fields.bitShort(display);
    fields.bit(clipped);
    fields.fixedChar(50); // Brightness, contrast, fade.
    fields.fixedChar(50);
    fields.fixedChar(0);
    if (fields.version() >= Version::R2010)
        fields.bit(image.clipIsHole);
    int kind = image.clip.size() > 2 ? kPolygon : kRectangle;
    fields.bitShort(kind);
    if (kind == kRectangle) {
        const bool cut = image.clip.size() == 2;
        Point2 low = cut ? image.clip[0] : Point2{-0.5, -0.5};
        Point2 high = cut ? image.clip[1] : Point2{image.pixels.x - 0.5, image.pixels.y - 0.5};
        fields.rawPoint2(low);
        fields.rawPoint2(high);
        if constexpr (Fields::kReads)
            image.clip = {low, {high.x, low.y}, high, {low.x, high.y}};
    } else {
        fields.count(image.clip, kRawPointBits);
        for (auto& corner : image.clip)
            fields.rawPoint2(corner);
    }
    if constexpr (Fields::kReads) {
        image.frame = (display & kShown) != 0;
        if (!clipped)
            image.clip.clear();
        fields.record().imageDefinition = fields.reader().handle();
    } else {
        fields.noHandle(); // The picture, and what tells of its changes.
        fields.noOwnedHandle();
    }
}

/// Before R2000 what a viewport shows hangs on it as extended data.
void readOldView(EntityFieldsIn& fields, Viewport& view);

template <class Fields> void layout(Fields& fields, Of<Viewport> auto& view)
{
    constexpr std::uint32_t kOff = 0x20000;
    constexpr unsigned kFewestHandleBits = 8;
    constexpr double kLens = 50;
    constexpr int kSmoothness = 1000;
    fields.bitPoint3(view.center);
    fields.bitDouble(view.width);
    fields.bitDouble(view.height);
    if constexpr (Fields::kReads) {
        if (fields.version() <= Version::R14)
            return readOldView(fields, view);
    }
    fields.bitPoint3(view.viewTarget);
    fields.bitPoint3(view.viewDirection);
    fields.bitDouble(view.twist);
    fields.bitDouble(view.viewHeight);
    fields.fixedDouble(kLens);
    fields.fixedDouble(0); // Clipping planes, angle of the snap.
    fields.fixedDouble(0);
    fields.fixedDouble(0);
    fields.rawPoint2(view.viewCenter);
    fields.fixedPoint2({0, 0}); // Snap base and spacing, grid.
    fields.fixedPoint2({0.5, 0.5});
    fields.fixedPoint2({0.5, 0.5});
    fields.fixedShort(kSmoothness);
    if (fields.version() >= Version::R2007)
        fields.fixedShort(0); // Grid lines.
    if constexpr (Fields::kReads) {
        const std::int64_t frozen = fields.reader().bitLong();
        fields.bitLong(view.flags);
        view.on = (view.flags & kOff) == 0;
        view.frozenLayers.resize(fields.reader().handles().checkedCount(frozen, kFewestHandleBits));
        for (Handle& layer : view.frozenLayers)
            fields.handle(layer, Table::Layer);
    } else {
        fields.fixedLong(0); // Frozen layers.
        fields.bitLong(view.flags);
        fields.text(Text()); // Style sheet.
        fields.fixedChar(0);
        fields.fixedBit(false);
        fields.fixedBit(true);
        fields.worldCoordinates();
        for (int i = 0; i < 4; ++i)
            fields.noHandle();
    }
}

} // namespace zv::dwg
