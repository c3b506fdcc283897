#pragma once

#include "drawing/records/DimensionStyleLayout.h"
#include "drawing/records/HeaderVariables.h"

#include <string>

/// The header variables in the order of the file, for reading and for writing. What is fixed is what a new
/// drawing has.
namespace zv::dwg {

/// What a written header tells beside its variables and the objects that it names.
struct HeaderOrigin {
    std::int32_t day = 0, milliseconds = 0; ///< When it is written: Julian day, and into that day.
    std::string hyperlinkBase;              ///< In the file's code page.
};

template <class Fields> void layoutHeaderStart(Fields& fields)
{
    const Version version = fields.version();
    if constexpr (Fields::kReads) {
        if (version >= Version::R2013)
            fields.reader().bitLongLong(); // REQUIREDVERSIONS
    }
    fields.fixedDoubles({412148564080.0, 1, 1, 1}); // Names of four units, and the factors between them.
    fields.fixedText("m");
    fields.fixedTexts(3);
    fields.fixedLongs({24, 0});
    if (version <= Version::R14)
        fields.fixedShort(0);
    if (version <= Version::R2000)
        fields.noHandle(); // The current viewport's header.
}

void layoutHeaderSwitches(auto& fields, auto& fillMode, auto& quickText, auto& paperSpaceLinetypeScaling,
                          auto& mirrorText, auto& modelTab)
{
    const bool old = fields.version() <= Version::R14;
    fields.fixedBits({true, true}); // DIMASO, DIMSHO
    if (old)
        fields.fixedBit(false);             // DIMSAV
    fields.fixedBits({false, false, true}); // PLINEGEN, ORTHOMODE, REGENMODE
    fields.bit(fillMode);
    fields.bit(quickText);
    fields.bit(paperSpaceLinetypeScaling);
    fields.fixedBit(false); // LIMCHECK
    if (old)
        fields.fixedBit(false); // BLIPMODE
    if (fields.version() >= Version::R2004)
        fields.fixedBit(false);
    fields.fixedBits({true, false, false, false}); // USRTIMER, SKPOLY, ANGDIR, SPLFRAME
    if (old)
        fields.fixedBits({0, 0}); // ATTREQ, ATTDIA
    fields.bit(mirrorText);
    fields.fixedBit(true); // WORLDVIEW
    if (old)
        fields.fixedBit(false);      // WIREFRAME
    fields.bit(modelTab);            // TILEMODE
    fields.fixedBits({false, true}); // PLIMCHECK, VISRETAIN
    if (old)
        fields.fixedBit(false);       // DELOBJ
    fields.fixedBits({false, false}); // DISPSILH, PELLIPSE
}

void layoutHeaderModes(auto& fields, auto& pointMode)
{
    const bool old = fields.version() <= Version::R14;
    fields.fixedShort(1); // PROXYGRAPHICS
    if (old)
        fields.fixedShort(0);               // DRAGMODE
    fields.fixedShorts({3020, 2, 4, 0, 0}); // TREEDEPTH, LUNITS, LUPREC, AUNITS, AUPREC
    if (old)
        fields.fixedShort(0); // OSMODE
    fields.fixedShort(1);     // ATTMODE
    if (old)
        fields.fixedShort(0); // COORDS
    fields.bitShort(pointMode);
    if (old)
        fields.fixedShort(0); // PICKSTYLE
    if (fields.version() >= Version::R2004)
        fields.fixedLongs({0, 0, 0});
    fields.fixedShorts({0, 0, 0, 0, 0}); // USERI1 to USERI5
    fields.fixedShorts({8, 6, 6, 6});    // SPLINESEGS, SURFU, SURFV, SURFTYPE
    fields.fixedShorts({6, 6, 6, 3});    // SURFTAB1, SURFTAB2, SPLINETYPE, SHADEDGE
    fields.fixedShorts({70, 0, 64});     // SHADEDIF, UNITMODE, MAXACTVP
    fields.fixedShorts({4, 0, 50});      // ISOLINES, CMLJUST, TEXTQLTY
}

void layoutHeaderNumbers(auto& fields, auto& linetypeScale, auto& textSize, auto& pointSize,
                         auto& currentEntityLinetypeScale)
{
    fields.marked(HeaderPlace::LinetypeScale, [&] { fields.bitDouble(linetypeScale); });
    fields.bitDouble(textSize);
    fields.fixedDoubles({0.05, 0.1, 0, 0, 0}); // TRACEWID, SKETCHINC, FILLETRAD, THICKNESS, ANGBASE
    fields.bitDouble(pointSize);
    fields.fixedDouble(0);                // PLINEWID
    fields.fixedDoubles({0, 0, 0, 0, 0}); // USERR1 to USERR5
    fields.fixedDoubles({0, 0, 0, 0});    // CHAMFERA to CHAMFERD
    fields.fixedDoubles({0.5, 1});        // FACETRES, CMLSCALE
    fields.bitDouble(currentEntityLinetypeScale);
    fields.fixedText("."); // MENUNAME
}

void layoutHeaderTimes(auto& fields, const HeaderOrigin& origin)
{
    for (int i = 0; i < 2; ++i)
        fields.fixedLongs({origin.day, origin.milliseconds}); // TDCREATE, TDUPDATE
    if (fields.version() >= Version::R2004)
        fields.fixedLongs({0, 0, 0});
    fields.fixedLongs({0, 0, 0, 0}); // TDINDWG, TDUSRTIMER
}

void layoutHeaderCurrent(auto& fields, auto& handleSeed, auto& layer, auto& textStyle, auto& dimensionStyle,
                         auto& linetype, auto& mlineStyle)
{
    constexpr int kColorByLayer = 256;
    fields.fixedColor(kColorByLayer); // CECOLOR
    fields.marked(HeaderPlace::HandleSeed, [&] { fields.nextHandle(handleSeed); });
    fields.marked(HeaderPlace::CurrentLayer, [&] { fields.handle(layer, Table::Layer); });
    fields.handle(textStyle, Table::TextStyle);
    fields.handle(linetype, Table::Linetype);
    if (fields.version() >= Version::R2007)
        fields.noHandle(); // CMATERIAL
    fields.handle(dimensionStyle, Table::DimensionStyle);
    fields.handle(mlineStyle, Table::MLineStyle);
    if (fields.version() >= Version::R2000)
        fields.fixedDouble(0); // PSVPSCALE
}

/// What paper space and model space have each.
void layoutHeaderSpace(auto& fields, auto& insertionBase, auto& extentsMin, auto& extentsMax, auto& limitsMin,
                       auto& limitsMax)
{
    fields.bitPoint3(insertionBase);
    fields.marked(HeaderPlace::Extents, [&] {
        fields.bitPoint3(extentsMin);
        fields.bitPoint3(extentsMax);
    });
    fields.rawPoint2(limitsMin);
    fields.rawPoint2(limitsMax);
    fields.fixedDouble(0);         // ELEVATION
    fields.fixedPoint3({0, 0, 0}); // UCSORG, UCSXDIR, UCSYDIR
    fields.fixedPoint3({1, 0, 0});
    fields.fixedPoint3({0, 1, 0});
    fields.noHandle(); // UCSNAME
    if (fields.version() <= Version::R14)
        return;
    fields.noHandle();    // UCSORTHOREF
    fields.fixedShort(0); // UCSORTHOVIEW
    fields.noHandle();    // UCSBASE
    for (int i = 0; i < 6; ++i)
        fields.fixedPoint3({0, 0, 0}); // UCSORGTOP to UCSORGBACK
}

void layoutHeaderTables(auto& fields, Of<HeaderHandles> auto& handles, const HeaderOrigin& origin)
{
    // The last seven stand before the tables and behind them.
    auto& [blockControl, layerControl, styleControl, linetypeControl, viewControl, ucsControl, vportControl,
           applicationControl, dimensionStyleControl, viewportHeaderControl, groups, mlineStyles,
           namedObjects, layouts, plotSettings, plotStyles, currentLinetype, currentMLineStyle,
           paperSpaceBlock, modelSpaceBlock, byLayer, byBlock, continuous] = handles;
    const Version version = fields.version();
    for (auto* table : {&blockControl, &layerControl, &styleControl, &linetypeControl, &viewControl,
                        &ucsControl, &vportControl, &applicationControl, &dimensionStyleControl})
        fields.owned(*table);
    if (version <= Version::R2000)
        fields.owned(viewportHeaderControl);
    fields.pointer(groups);
    fields.pointer(mlineStyles);
    fields.owned(namedObjects);
    if (version >= Version::R2000) {
        fields.fixedShorts({1, 70}); // TSTACKALIGN, TSTACKSIZE
        fields.fixedText(origin.hyperlinkBase);
        fields.fixedText(); // STYLESHEET
        fields.pointer(layouts);
        fields.pointer(plotSettings);
        fields.pointer(plotStyles);
    }
    if (version >= Version::R2004)
        noHandles(fields, 2); // Materials, colours.
    if (version >= Version::R2007)
        fields.noHandle(); // Visual styles.
    if (version >= Version::R2013)
        fields.noHandle();
}

template <class Fields> void layoutHeaderFlags(Fields& fields, auto& lineweightDisplay, auto& insertionUnits)
{
    constexpr int kPlotStyleByHandle = 3;
    // New entities' lineweight ByLayer, plot styles by colour, long names.
    constexpr std::int32_t kUsual = 0x281D | 0x400, kLineweightsHidden = 0x200;
    if (fields.version() >= Version::R2000) {
        std::int32_t flags = kUsual | (lineweightDisplay ? 0 : kLineweightsHidden);
        fields.bitLong(flags);
        if constexpr (Fields::kReads)
            lineweightDisplay = (flags & kLineweightsHidden) == 0;
        fields.marked(HeaderPlace::InsertionUnits, [&] { fields.bitShort(insertionUnits); });
        int plotStyle = 0; // CEPSNTYPE
        fields.bitShort(plotStyle);
        if (plotStyle == kPlotStyleByHandle)
            fields.noHandle();
        for (int i = 0; i < 2; ++i) // FINGERPRINTGUID, VERSIONGUID
            fields.fixedText("{00000000-0000-0000-0000-000000000000}");
    }
    if (fields.version() >= Version::R2004) {
        fields.fixedChars({0, 0, 0, 0, 0, 0}); // SORTENTS, INDEXCTL, HIDETEXT, XCLIPFRAME, DIMASSOC, HALOGAP
        fields.fixedShorts({0, 0});            // OBSCUREDCOLOR, INTERSECTIONCOLOR
        fields.fixedChars({0, 0});             // OBSCUREDLTYPE, INTERSECTIONDISPLAY
        fields.fixedText();                    // PROJECTNAME
    }
}

/// `style` is the dimension style in force, whose variables the header has with a scale of its own.
template <class Fields>
void layoutHeader(Fields& fields, Of<HeaderVariables> auto& header, Of<HeaderHandles> auto& handles,
                  DimensionStyle style, const HeaderOrigin& origin)
{
    auto& [insertionBase, extentsMin, extentsMax, limitsMin, limitsMax, linetypeScale,
           currentEntityLinetypeScale, pointSize, pointMode, textSize, dimScale, insertionUnits, measurement,
           fillMode, mirrorText, quickText, lineweightDisplay, paperSpaceLinetypeScaling, modelTab,
           currentLayer, currentTextStyle, currentDimensionStyle, handleSeed] = header;
    layoutHeaderStart(fields);
    layoutHeaderSwitches(fields, fillMode, quickText, paperSpaceLinetypeScaling, mirrorText, modelTab);
    layoutHeaderModes(fields, pointMode);
    layoutHeaderNumbers(fields, linetypeScale, textSize, pointSize, currentEntityLinetypeScale);
    layoutHeaderTimes(fields, origin);
    layoutHeaderCurrent(fields, handleSeed, currentLayer, currentTextStyle, currentDimensionStyle,
                        handles.currentLinetype, handles.currentMLineStyle);
    HeaderVariables paper; // Nothing is kept of it; what is written are the values of a new drawing.
    layoutHeaderSpace(fields, paper.insertionBase, paper.extentsMin, paper.extentsMax, paper.limitsMin,
                      paper.limitsMax);
    layoutHeaderSpace(fields, insertionBase, extentsMin, extentsMax, limitsMin, limitsMax);
    // The system of measurement stands in a section of its own.
    layoutDimensionVariables(fields, dimScale, style.arrowSize, style.textHeight, style.textStyle,
                             measurement != 0);
    layoutHeaderTables(fields, handles, origin);
    layoutHeaderFlags(fields, lineweightDisplay, insertionUnits);
    fields.pointer(handles.paperSpaceBlock);
    fields.pointer(handles.modelSpaceBlock);
    fields.pointer(handles.byLayer);
    fields.pointer(handles.byBlock);
    fields.pointer(handles.continuous);
    // Nothing that a reader needs stands behind them.
    if constexpr (!Fields::kReads)
        fields.fixedShorts({-1, -1, -1, -1});
}

} // namespace zv::dwg
