#pragma once

#include "drawing/records/ObjectHeader.h"
#include "drawing/records/PackedFields.h"

#include <algorithm>

/// The records of tables and of what named dictionaries hold, for reading and for writing.
namespace zv::dwg {

/// What every entry of a table begins with. `dependent` tells that it belongs to an external reference.
template <class Fields> void layoutEntryName(Fields& fields, auto& name, auto&& dependent)
{
    constexpr int kDependsOnXref = 0x100;
    fields.text(name);
    if constexpr (Fields::kReads) {
        if (fields.version() >= Version::R2007) {
            dependent = (fields.reader().bitShort() & kDependsOnXref) != 0;
            return;
        }
    }
    fields.fixedBit(true); // Referred to.
    fields.fixedShort(0);  // Which reference.
    fields.bit(dependent);
}

template <class Fields> void layout(Fields& fields, Of<Layer> auto& layer)
{
    constexpr unsigned kFrozen = 1, kOff = 2, kLocked = 8, kPlotted = 16, kWeightBits = 0x1F, kWeightAt = 5;
    layoutEntryName(fields, layer.name, layer.xref);
    if (fields.version() <= Version::R14) {
        fields.bit(layer.frozen);
        fields.bit(layer.off);
        fields.fixedBit(false); // Frozen in new viewports.
        fields.bit(layer.locked);
    } else {
        unsigned state = (layer.frozen ? kFrozen : 0) | (layer.off ? kOff : 0) |
                         (layer.locked ? kLocked : 0) | (layer.plotted ? kPlotted : 0) |
                         static_cast<unsigned>(lineweightCode(layer.lineweight)) << kWeightAt;
        fields.bitShort(state);
        if constexpr (Fields::kReads) {
            layer.frozen = (state & kFrozen) != 0;
            layer.off = (state & kOff) != 0;
            layer.locked = (state & kLocked) != 0;
            layer.plotted = (state & kPlotted) != 0;
            layer.lineweight = lineweightFromCode(state >> kWeightAt & kWeightBits);
        }
    }
    fields.ownColor(layer.color);
    fields.noHandle(); // The external reference.
    if (fields.version() >= Version::R2000)
        fields.plotStyle();
    if (fields.version() >= Version::R2007)
        fields.noHandle(); // Material.
    fields.ownLinetype(layer.linetype);
}

/// A block's header up to its handles. `name` is the one that it tells; an anonymous block has a number
/// besides. `owned(fields)` handles how many entities it owns, `inserts(fields)` how often it is inserted,
/// and `picture(fields)` its picture.
template <class Fields>
void layoutBlockHeader(Fields& fields, Of<BlockRecord> auto& block, auto& name, bool hasDefinitions,
                       auto owned, auto inserts, auto picture)
{
    bool dependent = false;
    layoutEntryName(fields, name, dependent);
    fields.bit(block.anonymous);
    fields.fixedBit(hasDefinitions); // Of attributes.
    fields.bit(block.xref);
    fields.bit(block.xrefOverlay);
    if (fields.version() >= Version::R2000)
        fields.fixedBit(false); // Loaded.
    if (fields.version() >= Version::R2004)
        owned(fields);
    fields.bitPoint3(block.base);
    fields.text(block.xrefPath);
    if (fields.version() >= Version::R2000) {
        inserts(fields);
        fields.text(block.description);
        picture(fields);
    }
    if (fields.version() >= Version::R2007)
        fields.bitShort(block.units);
}

/// A linetype up to its dashes, and each of these. A dash tells in `place` its shape, or where its text
/// stands in the area of texts, and in `flags` which of the two it is.
inline constexpr unsigned kDashAbsolute = 1, kDashText = 2, kDashShape = 4;
inline constexpr std::size_t kMostDashes = 255, kDashTextArea = 256;

void layoutLinetypeHead(auto& fields, Of<Linetype> auto& linetype)
{
    bool dependent = false;
    layoutEntryName(fields, linetype.name, dependent);
    fields.text(linetype.description);
    fields.bitDouble(linetype.patternLength);
    fields.fixedChar('A'); // Alignment.
    fields.charCount(linetype.dashes);
}

void layoutDash(auto& fields, Of<LinetypeDash> auto& dash, auto&& place, auto&& flags)
{
    fields.bitDouble(dash.length);
    fields.bitShort(place);
    fields.rawPoint2(dash.offset);
    fields.bitDouble(dash.scale);
    fields.bitDouble(dash.rotation);
    fields.bitShort(flags);
}

void layout(auto& fields, Of<TextStyle> auto& style)
{
    constexpr double kUsualHeight = 0.2;
    bool dependent = false;
    layoutEntryName(fields, style.name, dependent);
    fields.bit(style.shapeFile);
    fields.bit(style.vertical);
    fields.bitDouble(style.height);
    fields.bitDouble(style.widthFactor);
    fields.bitDouble(style.oblique);
    unsigned generation = (style.backward ? kBackward : 0) | (style.upsideDown ? kUpsideDown : 0);
    fields.rawChar(generation);
    if constexpr (std::remove_reference_t<decltype(fields)>::kReads) {
        style.backward = (generation & kBackward) != 0;
        style.upsideDown = (generation & kUpsideDown) != 0;
    }
    fields.fixedDouble(style.height != 0 ? style.height : kUsualHeight); // The height that was used last.
    fields.text(style.font);
    fields.text(style.bigFont);
}

/// Flags of a multiline style: as the file has them, and as MLineStyle names them.
inline constexpr std::pair<unsigned, std::uint32_t> kMLineStyleFlags[] = {
    {1, 2}, {2, 1}, {16, 16}, {32, 64}, {64, 32}, {256, 256}, {512, 1024}, {1024, 512}};

/// `linetype(fields, element)` handles what tells an element's linetype: before R2018 its place in their
/// table.
template <class Fields> void layoutMLineStyle(Fields& fields, Of<MLineStyle> auto& style, auto linetype)
{
    fields.text(style.name);
    fields.fixedText(); // Description.
    unsigned stored = 0;
    for (const auto& [inFile, named] : kMLineStyleFlags)
        stored |= (style.flags & named) != 0 ? inFile : 0;
    fields.bitShort(stored);
    if constexpr (Fields::kReads) {
        style.flags = 0;
        for (const auto& [inFile, named] : kMLineStyleFlags)
            style.flags |= (stored & inFile) != 0 ? named : 0;
    }
    fields.color(style.fill);
    fields.bitDouble(style.startAngle);
    fields.bitDouble(style.endAngle);
    fields.charCount(style.elements);
    for (auto& element : style.elements) {
        fields.bitDouble(element.offset);
        fields.color(element.color);
        linetype(element);
    }
}

/// How a layout is printed.
template <class Fields> void layoutPlotSettings(Fields& fields, Of<Layout> auto& sheet)
{
    constexpr int kModelFlags = 0x6B0, kPaperFlags = 0x2B0, kLayoutArea = 5, kOneToOne = 16;
    constexpr double kMargin = 6.35, kLetterWidth = 215.9, kLetterHeight = 279.4;
    fields.fixedText();              // Page setup.
    fields.fixedText("none_device"); // Printer.
    fields.fixedShort(sheet.model ? kModelFlags : kPaperFlags);
    for (int i = 0; i < 4; ++i)
        fields.fixedDouble(kMargin);
    double width = sheet.paperWidth > 0 ? sheet.paperWidth : kLetterWidth;
    double height = sheet.paperHeight > 0 ? sheet.paperHeight : kLetterHeight;
    fields.bitDouble(width);
    fields.bitDouble(height);
    if constexpr (Fields::kReads) {
        sheet.paperWidth = width;
        sheet.paperHeight = height;
    }
    fields.fixedText("ANSI_A_(8.50_x_11.00_Inches)");
    fields.fixedBitPoint2({0, 0});                    // Origin.
    fields.fixedShort(0);                             // Units.
    fields.fixedShort(sheet.model ? 1 : 0);           // Rotation.
    fields.fixedShort(sheet.model ? 0 : kLayoutArea); // What is printed: the display, or the layout.
    fields.fixedBitPoint2({0, 0});                    // The window's corners.
    fields.fixedBitPoint2({0, 0});
    if (fields.version() <= Version::R2000)
        fields.fixedText(); // The view's name.
    fields.fixedDouble(1);  // Scale: two parts.
    fields.fixedDouble(1);
    fields.fixedText();                             // Style sheet.
    fields.fixedShort(sheet.model ? 0 : kOneToOne); // Standard scale.
    fields.fixedDouble(1);                          // Its factor.
    fields.fixedBitPoint2({0, 0});                  // Origin of the image.
    if (fields.version() >= Version::R2004) {
        for (int i = 0; i < 3; ++i)
            fields.fixedShort(0); // Shading.
        fields.noHandle();        // The view.
    }
    if (fields.version() >= Version::R2007)
        fields.noHandle(); // Visual style.
}

void layout(auto& fields, Of<Layout> auto& sheet)
{
    layoutPlotSettings(fields, sheet);
    fields.text(sheet.name);
    fields.bitLong(sheet.tabOrder);
    fields.fixedShort(1);          // Flags.
    fields.fixedPoint3({0, 0, 0}); // Insertion base.
    fields.rawPoint2(sheet.limitsMin);
    fields.rawPoint2(sheet.limitsMax);
    fields.fixedPoint3({0, 0, 0}); // The user's coordinates: origin, axes, elevation, kind of view.
    fields.fixedPoint3({1, 0, 0});
    fields.fixedPoint3({0, 1, 0});
    fields.fixedDouble(0);
    fields.fixedShort(0);
    fields.bitPoint3(sheet.extentsMin);
    fields.bitPoint3(sheet.extentsMax);
    fields.softHandle(sheet.block);
}

} // namespace zv::dwg
