#pragma once

#include "drawing/entities/EntityFields.h"

/// The records of texts, for reading and for writing.
namespace zv::dwg {

/// How a text runs, as one number.
template <class Fields> void layoutGeneration(Fields& fields, Of<TextLine> auto& text)
{
    unsigned generation = (text.backward ? kBackward : 0) | (text.upsideDown ? kUpsideDown : 0);
    fields.bitShort(generation);
    if constexpr (Fields::kReads) {
        text.backward = (generation & kBackward) != 0;
        text.upsideDown = (generation & kUpsideDown) != 0;
    }
}

/// An alignment; a number that is none of them stands for the usual one.
template <class Fields> void layoutAlignment(Fields& fields, auto& align, int count)
{
    int number = static_cast<int>(align);
    fields.bitShort(number);
    if constexpr (Fields::kReads)
        align =
            static_cast<std::remove_reference_t<decltype(align)>>(number >= 0 && number < count ? number : 0);
}

inline constexpr int kHorizontalAligns = 6, kVerticalAligns = 4;

/// Until R14 all fields stand there; reading only.
inline void layoutTextR14(EntityFieldsIn& fields, TextLine& text)
{
    double elevation = 0;
    fields.bitDouble(elevation);
    fields.rawFlat(text.insertion, elevation);
    fields.rawFlat(text.alignment, elevation);
    fields.bitPoint3(text.normal);
    fields.bitDouble(text.thickness);
    fields.bitDouble(text.oblique);
    fields.bitDouble(text.rotation);
    fields.bitDouble(text.height);
    fields.bitDouble(text.widthFactor);
    fields.text(text.text);
    layoutGeneration(fields, text);
    layoutAlignment(fields, text.horizontal, kHorizontalAligns);
    layoutAlignment(fields, text.vertical, kVerticalAligns);
    fields.handle(text.style, Table::TextStyle);
}

template <class Fields> void layout(Fields& fields, Of<TextLine> auto& text)
{
    // From R2000 on a byte of flags tells which fields are left out because they have their usual value.
    constexpr unsigned kNoElevation = 1, kNoAlignment = 2, kNoOblique = 4, kNoRotation = 8, kNoWidth = 16,
                       kNoGeneration = 32, kNoHorizontal = 64, kNoVertical = 128;
    if constexpr (Fields::kReads) {
        if (fields.version() <= Version::R14)
            return layoutTextR14(fields, text);
    }
    const bool left = text.horizontal == HorizontalAlign::Left,
               baseline = text.vertical == VerticalAlign::Baseline;
    unsigned absent = (text.insertion.z == 0 ? kNoElevation : 0) | (left && baseline ? kNoAlignment : 0) |
                      (text.oblique == 0 ? kNoOblique : 0) | (text.rotation == 0 ? kNoRotation : 0) |
                      (text.widthFactor == 1 ? kNoWidth : 0) |
                      (text.backward || text.upsideDown ? 0 : kNoGeneration) | (left ? kNoHorizontal : 0) |
                      (baseline ? kNoVertical : 0);
    fields.rawChar(absent);
    const auto has = [&](unsigned missing) { return (absent & missing) == 0; };
    double elevation = text.insertion.z;
    if (has(kNoElevation))
        fields.rawDouble(elevation);
    fields.rawFlat(text.insertion, elevation);
    if (has(kNoAlignment)) {
        fields.defaultDouble(text.alignment.x, text.insertion.x);
        fields.defaultDouble(text.alignment.y, text.insertion.y);
    }
    if constexpr (Fields::kReads)
        text.alignment.z = elevation;
    fields.extrusion(text.normal);
    fields.thickness(text.thickness);
    if (has(kNoOblique))
        fields.rawDouble(text.oblique);
    if (has(kNoRotation))
        fields.rawDouble(text.rotation);
    fields.rawDouble(text.height);
    if (has(kNoWidth))
        fields.rawDouble(text.widthFactor);
    fields.text(text.text);
    if (has(kNoGeneration))
        layoutGeneration(fields, text);
    if (has(kNoHorizontal))
        layoutAlignment(fields, text.horizontal, kHorizontalAligns);
    if (has(kNoVertical))
        layoutAlignment(fields, text.vertical, kVerticalAligns);
    fields.handle(text.style, Table::TextStyle);
}

/// What R2004 and later say of a text in several lines behind the fields of R2000.
void readLaterMText(RecordReader& in, MText& text);

template <class Fields> void layout(Fields& fields, Of<MText> auto& text)
{
    fields.bitPoint3(text.insertion);
    fields.bitPoint3(text.normal);
    fields.bitPoint3(text.xAxis);
    fields.bitDouble(text.width);
    if (fields.version() >= Version::R2007)
        fields.bitDouble(text.boxHeight);
    fields.bitDouble(text.height);
    fields.bitShort(text.attachment);
    fields.bitShort(text.direction);
    fields.fixedDouble(0); // Extents, worked out by who shows it.
    fields.fixedDouble(0);
    fields.text(text.text);
    fields.handle(text.style, Table::TextStyle);
    if (fields.version() >= Version::R2000) {
        fields.bitShort(text.lineSpacingStyle);
        fields.bitDouble(text.lineSpacing);
        fields.fixedBit(false);
    }
    if constexpr (Fields::kReads)
        readLaterMText(fields.reader(), text);
}

/// R2018: an attribute of several lines holds a whole MTEXT.
void readInnerMText(EntityFieldsIn& fields, Attribute& attribute);

/// ATTRIB, and ATTDEF, which has a prompt too.
template <class Fields> void layoutAttribute(Fields& fields, Of<Attribute> auto& attribute, bool definition)
{
    constexpr unsigned kInvisible = 1, kConstant = 2, kVerify = 4, kPreset = 8;
    layout(fields, attribute.text);
    if constexpr (Fields::kReads) {
        constexpr unsigned kSeveralLines = 2, kSeveralConstantLines = 4;
        if (fields.version() >= Version::R2010)
            fields.reader().rawChar(); // Version.
        if (fields.version() >= Version::R2018) {
            const unsigned kind = fields.reader().rawChar();
            if (kind == kSeveralLines || kind == kSeveralConstantLines)
                readInnerMText(fields, attribute);
        }
    }
    fields.text(attribute.tag);
    fields.fixedShort(0); // Length of the field.
    unsigned flags = (attribute.invisible ? kInvisible : 0) | (attribute.constant ? kConstant : 0) |
                     (attribute.verify ? kVerify : 0) | (attribute.preset ? kPreset : 0);
    fields.rawChar(flags);
    if constexpr (Fields::kReads) {
        attribute.invisible = (flags & kInvisible) != 0;
        attribute.constant = (flags & kConstant) != 0;
        attribute.verify = (flags & kVerify) != 0;
        attribute.preset = (flags & kPreset) != 0;
        if (fields.version() >= Version::R2007)
            fields.reader().bit(); // Locked.
        if (definition && fields.version() >= Version::R2010)
            fields.reader().rawChar(); // Version.
    }
    if (definition)
        fields.text(attribute.prompt);
}

template <class Fields> void layout(Fields& fields, Of<Tolerance> auto& tolerance)
{
    if (fields.version() <= Version::R14) {
        fields.fixedShort(0);
        fields.bitDouble(tolerance.height);
        fields.fixedDouble(0);
    }
    fields.bitPoint3(tolerance.insertion);
    fields.bitPoint3(tolerance.direction);
    fields.bitPoint3(tolerance.normal);
    fields.text(tolerance.text);
    fields.handle(tolerance.style, Table::DimensionStyle);
}

} // namespace zv::dwg
