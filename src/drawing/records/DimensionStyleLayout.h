#pragma once

#include "drawing/records/HeaderVariables.h"
#include "drawing/records/TableLayouts.h"

/// The variables of dimensions, which stand in the header and in each dimension style.
namespace zv::dwg {

/// Handles to things that the writer never has.
void noHandles(auto& fields, int count)
{
    for (int i = 0; i < count; ++i)
        fields.noHandle();
}

/// Until R14.
void layoutDimensionSwitchesR14(auto& fields, auto& textStyle)
{
    fields.fixedBits({0, 0, 0, 0, 0, 0}); // DIMTOL, DIMLIM, DIMTIH, DIMTOH, DIMSE1, DIMSE2
    fields.fixedBits({0, 0, 0, 0, 0});    // DIMALT, DIMTOFL, DIMSAH, DIMTIX, DIMSOXD
    fields.fixedChars({0, 0});            // DIMALTD, DIMZIN
    fields.fixedBits({0, 0});             // DIMSD1, DIMSD2
    fields.fixedChars({0, 0, 0});         // DIMTOLJ, DIMJUST, DIMFIT
    fields.fixedBit(false);               // DIMUPT
    fields.fixedChars({0, 0, 0, 0});      // DIMTZIN, DIMALTZ, DIMALTTZ, DIMTAD
    fields.fixedShorts({0, 0, 0});        // DIMUNIT, DIMAUNIT, DIMDEC
    fields.fixedShorts({0, 0, 0});        // DIMTDEC, DIMALTU, DIMALTTD
    fields.handle(textStyle, Table::TextStyle);
}

/// How dimensions state their values; from R2000 on.
void layoutDimensionUnits(auto& fields, bool metric)
{
    const int places = metric ? 2 : 4;
    fields.fixedShorts({0, places, places}); // DIMADEC, DIMDEC, DIMTDEC
    fields.fixedShorts({2, 2, 0, 0, 2});     // DIMALTU, DIMALTTD, DIMAUNIT, DIMFRAC, DIMLUNIT
    fields.fixedShorts({'.', 0, 0});         // DIMDSEP, DIMTMOVE, DIMJUST
    fields.fixedBits({0, 0});                // DIMSD1, DIMSD2
    fields.fixedShorts({1, 0, 0, 0});        // DIMTOLJ, DIMTZIN, DIMALTZ, DIMALTTZ
    fields.fixedBit(false);                  // DIMUPT
    fields.fixedShort(3);                    // DIMATFIT
    if (fields.version() >= Version::R2007)
        fields.fixedBit(false); // DIMFXLON
    if (fields.version() >= Version::R2010) {
        fields.fixedBit(false); // DIMTXTDIRECTION
        for (int i = 0; i < 2; ++i) {
            fields.fixedDouble(0); // DIMALTMZF, DIMMZF
            fields.fixedText();    // DIMALTMZS, DIMMZS
        }
    }
}

/// `metric` chooses how a written one states and places its values.
template <class Fields>
void layoutDimensionVariables(Fields& fields, auto& scale, auto& arrowSize, auto& textHeight, auto& textStyle,
                              bool metric)
{
    const Version version = fields.version();
    const bool old = version <= Version::R14, recent = version >= Version::R2007;
    if (old)
        layoutDimensionSwitchesR14(fields, textStyle);
    else
        fields.fixedTexts(2); // DIMPOST, DIMAPOST
    fields.marked(HeaderPlace::DimScale, [&] { fields.bitDouble(scale); });
    fields.bitDouble(arrowSize);
    fields.fixedDoubles({arrowSize / 3, arrowSize * 2, arrowSize}); // DIMEXO, DIMDLI, DIMEXE
    fields.fixedDoubles({0, 0, 0, 0});                              // DIMRND, DIMDLE, DIMTP, DIMTM
    if (recent) {
        fields.fixedDoubles({0, 0}); // DIMFXL, DIMJOGANG
        fields.fixedShort(0);        // DIMTFILL
        fields.fixedColor(0);        // DIMTFILLCLR
    }
    if (!old) {
        fields.fixedBits({false, false, !metric, !metric, false, false}); // DIMTOL to DIMSE2, as above
        fields.fixedShorts({metric ? 1 : 0, metric ? 8 : 0, 0});          // DIMTAD, DIMZIN, DIMAZIN
    }
    if (recent)
        fields.fixedShort(0); // DIMARCSYM
    fields.bitDouble(textHeight);
    fields.fixedDoubles({textHeight / 2, 0, 25.4, 1}); // DIMCEN, DIMTSZ, DIMALTF, DIMLFAC
    fields.fixedDoubles({0, 1, textHeight / 2});       // DIMTVP, DIMTFAC, DIMGAP
    if (old) {
        fields.fixedTexts(5); // DIMPOST, DIMAPOST, DIMBLK, DIMBLK1, DIMBLK2
    } else {
        fields.fixedDouble(0);          // DIMALTRND
        fields.fixedBit(false);         // DIMALT
        fields.fixedShort(2);           // DIMALTD
        fields.fixedBits({0, 0, 0, 0}); // DIMTOFL, DIMSAH, DIMTIX, DIMSOXD
    }
    for (int i = 0; i < 3; ++i)
        fields.fixedColor(0); // DIMCLRD, DIMCLRE, DIMCLRT: ByBlock.
    if (old)
        return;
    layoutDimensionUnits(fields, metric);
    fields.handle(textStyle, Table::TextStyle);
    noHandles(fields, 4); // DIMLDRBLK, DIMBLK, DIMBLK1, DIMBLK2
    if (recent)
        noHandles(fields, 3);                                     // DIMLTYPE, DIMLTEX1, DIMLTEX2
    fields.fixedShorts({kLineweightByBlock, kLineweightByBlock}); // DIMLWD, DIMLWE
}

void layout(auto& fields, Of<DimensionStyle> auto& style, bool metric)
{
    // The handle stands in the record's frame.
    auto& [handle, name, scale, arrowSize, textHeight, textStyle] = style;
    bool dependent = false;
    layoutEntryName(fields, name, dependent);
    fields.noHandle(); // The external reference.
    layoutDimensionVariables(fields, scale, arrowSize, textHeight, textStyle, metric);
    fields.fixedBit(false);
}

} // namespace zv::dwg
