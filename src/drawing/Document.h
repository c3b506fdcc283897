#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <unordered_map>
#include <variant>
#include <vector>

/// A drawing in memory, the same for every version of the file: what the reader fills, the writer writes and
/// the scene draws. Lengths are drawing units, angles radians counter-clockwise, texts Unicode. Entities
/// whose points are in their own plane (OCS) say so; the normal is that plane's extrusion direction.
namespace zv::dwg {

using Handle = std::uint64_t; ///< 0 is no object.
using Text = std::u16string;

enum class Version { R13, R14, R2000, R2004, R2007, R2010, R2013, R2018 }; ///< AC1012 to AC1032, in order.

struct Point2 {
    double x = 0, y = 0;
};
struct Point3 {
    double x = 0, y = 0, z = 0;
};
inline constexpr Point3 kZAxis{0, 0, 1};

struct Color {
    enum class Kind : std::uint8_t { ByLayer, ByBlock, Index, True };
    Kind kind = Kind::ByLayer;
    std::uint8_t index = 7; ///< AutoCAD colour index, 1 to 255, for Kind::Index.
    std::uint32_t rgb = 0;  ///< 0xRRGGBB, for Kind::True.
};

/// Lineweights in hundredths of a millimetre, or one of these.
inline constexpr int kLineweightByLayer = -1, kLineweightByBlock = -2, kLineweightDefault = -3;

// ---- shapes
// ----------------------------------------------------------------------------------------------------

struct Line {
    Point3 start, end;
    double thickness = 0;
    Point3 normal = kZAxis;
};
struct PointShape {
    Point3 position;
    double thickness = 0;
    Point3 normal = kZAxis;
    double xAxisAngle = 0;
};
struct Circle { ///< Centre in OCS.
    Point3 center;
    double radius = 0;
    double thickness = 0;
    Point3 normal = kZAxis;
};
struct Arc { ///< Centre in OCS; counter-clockwise from start to end angle.
    Point3 center;
    double radius = 0;
    double startAngle = 0, endAngle = 0;
    double thickness = 0;
    Point3 normal = kZAxis;
};
struct Ellipse { ///< WCS. Parameters run from start to end.
    Point3 center;
    Point3 majorAxis; ///< From the centre to the end of the major axis.
    Point3 normal = kZAxis;
    double axisRatio = 1;
    double startParameter = 0, endParameter = 6.283185307179586;
};
struct Spline {
    int degree = 3;
    bool rational = false, closed = false, periodic = false;
    std::vector<double> knots;
    std::vector<Point3> controlPoints;
    std::vector<double> weights;     ///< As many as control points when rational, else empty.
    std::vector<Point3> fitPoints;   ///< Alone when the file has no control points.
    Point3 startTangent, endTangent; ///< Of a fit-point spline; zero when not given.
};
struct PolylineVertex {
    Point3 position;
    double bulge = 0;
    double startWidth = 0, endWidth = 0;
    bool splineFrame = false; ///< A control point of a fitted curve; it is not drawn.
};
/// LWPOLYLINE and 2D POLYLINE (OCS, elevation in z) and 3D POLYLINE (WCS).
struct Polyline {
    std::vector<PolylineVertex> vertices;
    bool closed = false;
    bool threeD = false;
    bool lightweight = true;  ///< LWPOLYLINE, else POLYLINE with its own vertex objects.
    bool plinegen = false;    ///< The linetype runs through the vertices.
    double constantWidth = 0; ///< Of all segments, where the vertices have none.
    double elevation = 0;
    double thickness = 0;
    Point3 normal = kZAxis;
};
/// A polygon mesh (m x n vertices) or a polyface mesh (faces by 1-based vertex number, negative: edge not
/// seen).
struct Mesh {
    std::vector<Point3> vertices;
    int m = 0, n = 0;
    bool closedM = false, closedN = false;
    std::vector<std::array<int, 4>> faces;
};
enum class HorizontalAlign { Left, Center, Right, Aligned, Middle, Fit };
enum class VerticalAlign { Baseline, Bottom, Middle, Top };
struct TextLine { ///< TEXT; points in OCS.
    Text text;
    Point3 insertion;
    Point3 alignment; ///< Used unless Left and Baseline.
    double height = 1;
    double rotation = 0;
    double widthFactor = 1;
    double oblique = 0;
    bool backward = false, upsideDown = false;
    HorizontalAlign horizontal = HorizontalAlign::Left;
    VerticalAlign vertical = VerticalAlign::Baseline;
    Handle style = 0;
    double thickness = 0;
    Point3 normal = kZAxis;
};
struct MText { ///< Insertion and direction in WCS. The text holds its formatting codes.
    Text text;
    Point3 insertion;
    Point3 xAxis{1, 0, 0};
    Point3 normal = kZAxis;
    double height = 1;
    double width = 0;   ///< 0: no wrapping.
    int attachment = 1; ///< 1 top left ... 9 bottom right, row by row.
    int direction = 1;  ///< 1 left to right, 3 top to bottom, 5 by style.
    double lineSpacing = 1;
    int lineSpacingStyle = 1; ///< 1 at least, 2 exactly.
    bool backgroundFill = false;
    double backgroundScale = 1.5;
    Color backgroundColor;
    bool backgroundWindowColor = false; ///< The fill has the colour of the window.
    double boxHeight = 0;               ///< 0: as high as the text.
    int columns = 0;                    ///< 0: none.
    double columnWidth = 0, columnGap = 0;
    std::vector<double> columnHeights; ///< Where each column has its own.
    Handle style = 0;
};
struct Attribute { ///< ATTRIB and ATTDEF.
    TextLine text; ///< Its text is the value (ATTRIB) or the default (ATTDEF).
    Text tag, prompt;
    bool invisible = false, constant = false, verify = false, preset = false;
    std::vector<MText> lines; ///< Its text in several lines: one, or none.
};
struct Insert { ///< INSERT and MINSERT; position in OCS.
    Handle block = 0;
    Point3 position;
    Point3 scale{1, 1, 1};
    double rotation = 0;
    Point3 normal = kZAxis;
    int columns = 1, rows = 1;
    double columnSpacing = 0, rowSpacing = 0;
    std::vector<std::uint32_t> attributes; ///< Indices into BlockRecord::attributes of the owner.
};
struct Dimension {
    Handle block = 0; ///< The anonymous block that draws it.
    Point3 insertion; ///< Of that block, OCS; normally 0,0,0.
    int type =
        0;     ///< 0 rotated, 1 aligned, 2 angular, 3 diameter, 4 radius, 5 three-point angular, 6 ordinate.
    Text text; ///< Override; empty: measured.
    Point3 definitionPoint, textPosition; ///< Code 10 and 11.
    Point3 point13, point14, point15, point16;
    double rotation = 0;
    double measurement = 0;
    Handle style = 0;
    Point3 normal = kZAxis;
};
struct Solid { ///< SOLID and TRACE; corners in OCS, in file order (third and fourth cross over).
    std::array<Point3, 4> corners;
    bool trace = false;
    double thickness = 0;
    Point3 normal = kZAxis;
};
struct Face3D {
    std::array<Point3, 4> corners;
    std::uint16_t hiddenEdges = 0; ///< Bit k: the edge that starts at corner k is not seen.
};
struct Ray { ///< RAY and XLINE.
    Point3 start, direction;
    bool bothWays = false;
};
struct HatchEdge {
    enum class Kind : std::uint8_t { Line, Arc, Ellipse, Spline };
    Kind kind = Kind::Line;
    Point2 start, end; ///< Line.
    Point2 center;     ///< Arc, ellipse.
    double radius = 0; ///< Arc.
    Point2 majorAxis;  ///< Ellipse.
    double axisRatio = 1;
    double startAngle = 0, endAngle = 0; ///< As stored; with counterClockwise false they run mirrored.
    bool counterClockwise = true;
    Spline spline; ///< z is 0.
};
struct HatchLoop {
    std::uint32_t flags = 0;              ///< 1 external, 2 polyline, 4 derived, 8 text box, 16 outermost.
    std::vector<HatchEdge> edges;         ///< Unless polyline.
    std::vector<PolylineVertex> polyline; ///< z is 0.
    bool closed = true;
};
struct HatchPatternLine {
    double angle = 0;
    Point2 base, offset;
    std::vector<double> dashes; ///< Negative: gap; 0: dot. Empty: continuous.
};
struct Hatch { ///< Loops in OCS at `elevation`. The pattern lines hold scale and angle already.
    Text pattern;
    bool solid = false;
    bool gradient = false;
    Text gradientName; ///< "LINEAR", "SPHERICAL"...
    Color gradientColor1, gradientColor2;
    bool gradientOneColor = false; ///< The second one is the first, made lighter by the tint (0 to 1).
    double gradientAngle = 0, gradientShift = 0, gradientTint = 0;
    int style = 0; ///< 0 normal (odd parity), 1 outer, 2 ignore.
    double angle = 0, scale = 1;
    bool doubled = false;
    double elevation = 0;
    Point3 normal = kZAxis;
    std::vector<HatchLoop> loops;
    std::vector<HatchPatternLine> lines;
};
struct MPolygon { ///< A filled area whose loops are drawn as lines too.
    Hatch area;
    Color fill; ///< The lines have the entity's colour.
};
struct Leader {
    std::vector<Point3> points;
    bool arrow = true;
    bool splined = false;
    Handle style = 0;
    Point3 normal = kZAxis;
};
/// MULTILEADER, as far as it is drawn: its leader lines, its text, its block.
struct MultiLeader {
    std::vector<std::vector<Point3>> lines;      ///< Each from its arrow on.
    std::vector<std::array<Point3, 2>> landings; ///< Short lines from there to the content.
    double arrowSize = 0;
    bool hasText = false;
    Color textColor;
    MText text;
    Insert block; ///< block.block is 0 when it has none.
};
struct MLineVertex {
    Point3 position, direction, miter;
    std::vector<std::vector<double>>
        elements; ///< For each style element the distances along the miter and the dashes.
};
struct MLine {
    Handle style = 0;
    double scale = 1;
    int justification = 0; ///< 0 top, 1 zero, 2 bottom.
    Point3 normal = kZAxis;
    bool closed = false;
    bool noStartCap = false, noEndCap = false;
    std::vector<MLineVertex> vertices;
};
struct Wipeout {                        ///< WIPEOUT and IMAGE: a clipped parallelogram.
    Point3 insertion, uVector, vVector; ///< Of one pixel.
    Point2 pixels;                      ///< Size in pixels.
    std::vector<Point2> clip;           ///< In pixels, centre of the first pixel at 0,0; empty: whole.
    bool clipIsHole = false;            ///< What is inside the clip is left out.
    bool image = false;
    bool frame = true; ///< Of an image: its picture is shown too.
    Text file;         ///< Of an image: the picture, as its path is stored.
};
struct Viewport { ///< A view of the model on a paper layout.
    Point3 center;
    double width = 0, height = 0;
    Point2 viewCenter;
    double viewHeight = 0;
    Point3 viewTarget, viewDirection = kZAxis;
    double twist = 0;
    std::uint32_t flags = 0;
    int id = 0; ///< From 1 in each layout, in file order; 1 is the sheet of paper itself.
    bool on = true;
    std::vector<Handle> frozenLayers; ///< In this view only.
};
struct Shape { ///< A figure of an SHX file; position in OCS.
    Point3 position;
    double size = 1, rotation = 0, widthFactor = 1, oblique = 0;
    std::uint16_t number = 0;
    Handle style = 0;
    Point3 normal = kZAxis;
};
struct Tolerance {
    Text text;
    Point3 insertion, direction{1, 0, 0};
    Point3 normal = kZAxis;
    double height = 0; ///< 0: by style.
    Handle style = 0;
};
/// Lines through points in WCS; closed ones may be filled, by odd parity where they lie in each other.
struct Outline {
    std::vector<std::vector<Point3>> rings;
    bool closed = false, filled = false;
};
/// An affine map of space: the axes that the unit vectors become, and where the origin goes.
struct Placement {
    Point3 x{1, 0, 0}, y{0, 1, 0}, z{0, 0, 1}, origin;
};
/// One figure of a stored picture, with a look of its own.
struct PictureFigure {
    std::variant<Outline, Ellipse, Polyline, Mesh, TextLine, Ray> shape;
    Placement place; ///< From the shape's coordinates to the entity's.
    Handle layer = 0;
    Color color;
    Handle linetype = 0; ///< As Entity's.
    double linetypeScale = 1;
    int lineweight = kLineweightByLayer;
};
/// What an entity of a kind that is not known here looks like, as the program that made it has stored it.
struct StoredPicture {
    std::vector<PictureFigure> figures;
};
/// Known by name and length only: kinds of other programs that store no picture.
struct Unknown {};

using Geometry =
    std::variant<Unknown, Line, PointShape, Circle, Arc, Ellipse, Spline, Polyline, Mesh, TextLine, Attribute,
                 MText, Insert, Dimension, Solid, Face3D, Ray, Hatch, Leader, MultiLeader, MLine, Wipeout,
                 Viewport, Shape, Tolerance, MPolygon, StoredPicture>;

struct Entity {
    Handle handle = 0;
    std::string kind; ///< DXF name, "LINE"; of an unknown class its name in the class table.
    Handle layer = 0;
    Color color;
    Handle linetype = 0; ///< 0 ByLayer; else a Linetype, ByBlock and Continuous among them.
    double linetypeScale = 1;
    int lineweight = kLineweightByLayer;
    bool invisible = false;
    std::uint8_t alpha = 255; ///< 255 opaque; that of the layer where it has none of its own.
    Geometry geometry;
};

// ---- tables
// ----------------------------------------------------------------------------------------------------

struct Layer {
    Handle handle = 0;
    Text name;
    Color color{Color::Kind::Index, 7, 0};
    Handle linetype = 0;
    int lineweight = kLineweightDefault;
    bool off = false, frozen = false, locked = false, plotted = true;
    std::uint8_t alpha = 255; ///< 255 opaque.
    bool xref = false;        ///< Depends on an external reference.
};
struct LinetypeDash {
    double length = 0;       ///< Negative: gap; 0: dot.
    Text text;               ///< Set for a text element.
    std::uint16_t shape = 0; ///< Shape number, 0: none.
    Handle style = 0;
    double scale = 1, rotation = 0;
    Point2 offset;
    bool absoluteRotation = false;
};
struct Linetype {
    Handle handle = 0;
    Text name, description;
    double patternLength = 0;
    std::vector<LinetypeDash> dashes;
};
struct TextStyle {
    Handle handle = 0;
    Text name;
    Text font, bigFont; ///< File names as stored, "txt" or "arial.ttf".
    Text typeface;      ///< TrueType family, when stored in the extended data.
    bool bold = false, italic = false;
    bool shapeFile = false;
    bool vertical = false, backward = false, upsideDown = false;
    double height = 0; ///< Fixed height; 0: none.
    double widthFactor = 1, oblique = 0;
};
struct DimensionStyle {
    Handle handle = 0;
    Text name;
    double scale = 1; ///< dimscale.
    double arrowSize = 0.18;
    double textHeight = 0.18;
    Handle textStyle = 0;
};
struct MLineStyleElement {
    double offset = 0;
    Color color;
    Handle linetype = 0;
};
struct MLineStyle {
    Handle handle = 0;
    Text name;
    std::uint32_t flags =
        0; ///< 1 fill, 2 joints, 16 start square cap, 32 start inner arcs, 64 start round, 256/512/1024 end.
    Color fill;
    double startAngle = 1.5707963267948966, endAngle = 1.5707963267948966;
    std::vector<MLineStyleElement> elements;
};

struct BlockRecord {
    Handle handle = 0;
    Text name;
    Point3 base;
    bool layout = false; ///< Model space and the paper spaces.
    bool anonymous = false;
    bool xref = false, xrefOverlay = false;
    Text xrefPath;
    Text description;
    int units = 0; ///< INSUNITS.
    std::vector<Entity>
        entities; ///< In drawing order; attributes of inserts and vertices are not among them.
    std::vector<Entity> attributes; ///< ATTRIB entities of this block's inserts.
};
struct Layout {
    Handle handle = 0;
    Text name;
    Handle block = 0;
    int tabOrder = 0;
    bool model = false;
    double paperWidth = 0, paperHeight = 0; ///< Millimetres.
    Point2 limitsMin, limitsMax;
    Point3 extentsMin, extentsMax;
};

/// The header variables that this program uses. `extents` are as stored: empty when the lower is above the
/// upper.
struct HeaderVariables {
    Point3 insertionBase;
    Point3 extentsMin{1e20, 1e20, 1e20}, extentsMax{-1e20, -1e20, -1e20};
    Point2 limitsMin, limitsMax{12, 9};
    double linetypeScale = 1, currentEntityLinetypeScale = 1;
    double pointSize = 0;
    int pointMode = 0;
    double textSize = 0.2;
    double dimScale = 1;
    int insertionUnits = 0;
    int measurement = 0; ///< 0 English, 1 metric.
    bool fillMode = true, mirrorText = false, quickText = false, lineweightDisplay = false;
    bool paperSpaceLinetypeScaling = true;
    bool modelTab = true; ///< The model was shown last, else a layout.
    Handle currentLayer = 0, currentTextStyle = 0, currentDimensionStyle = 0;
    Handle handleSeed = 1;
};

/// The drawing's own description. Absent properties are empty texts.
struct Properties {
    Text title, subject, author, comments, keywords, lastSavedBy, revision, hyperlinkBase;
    std::vector<std::pair<Text, Text>> custom; ///< Name and value, in file order.
    bool operator==(const Properties&) const = default;
};

struct Document {
    Version version = Version::R2000;
    int codePage = 30; ///< The file's own number; 30 is ANSI 1252.
    HeaderVariables header;
    std::vector<Layer> layers;
    std::vector<Linetype> linetypes;
    std::vector<TextStyle> textStyles;
    std::vector<DimensionStyle> dimensionStyles;
    std::vector<MLineStyle> mlineStyles;
    std::vector<BlockRecord> blocks; ///< In table order, model and paper spaces among them.
    std::vector<Layout> layouts;
    std::unordered_map<Handle, std::size_t> blockIndex, layerIndex, linetypeIndex, textStyleIndex;
    std::size_t modelSpace = 0;                 ///< Index into blocks.
    std::map<std::string, std::size_t> skipped; ///< Kinds that are not drawn, with their counts.
    std::vector<std::string> damage; ///< What was left out because its record is damaged, in words.

    const BlockRecord* block(Handle handle) const
    {
        const auto found = blockIndex.find(handle);
        return found == blockIndex.end() ? nullptr : &blocks[found->second];
    }
};

} // namespace zv::dwg
