#include "drawing/EveryKind.h"

namespace zv::dwg::test {

namespace {
Entity entityOf(Geometry geometry)
{
    Entity entity;
    entity.geometry = std::move(geometry);
    return entity;
}

TextLine textLine(Text text)
{
    TextLine line;
    line.text = std::move(text);
    line.insertion = {1, 2, 0};
    line.height = 2.5;
    line.style = kNotes;
    return line;
}

Hatch patternHatch()
{
    Hatch hatch;
    hatch.pattern = u"ANSI31";
    hatch.scale = 2;
    hatch.lines = {{0.7853981633974483, {0, 0}, {-0.5, 0.5}, {}}, {0, {1, 0}, {0, 1}, {0.5, -0.25, 0}}};
    HatchLoop outer;
    outer.flags = 3;
    outer.polyline = {{{0, 0, 0}}, {{10, 0, 0}, 1}, {{10, 10, 0}}, {{0, 10, 0}}};
    HatchLoop edges;
    edges.flags = 16;
    HatchEdge line;
    line.start = {2, 2};
    line.end = {4, 2};
    HatchEdge arc;
    arc.kind = HatchEdge::Kind::Arc;
    arc.center = {3, 2};
    arc.radius = 1;
    arc.endAngle = 3.141592653589793;
    HatchEdge ellipse;
    ellipse.kind = HatchEdge::Kind::Ellipse;
    ellipse.center = {3, 2};
    ellipse.majorAxis = {1, 0};
    ellipse.axisRatio = 0.5;
    ellipse.endAngle = 3.141592653589793;
    ellipse.counterClockwise = false;
    edges.edges = {line, arc, ellipse};
    hatch.loops = {outer, edges};
    return hatch;
}

void addCurves(std::vector<Entity>& out)
{
    out.push_back(entityOf(Line{{0, 0, 0}, {100, 50, 0}}));
    out.push_back(entityOf(Line{{1, 2, 3}, {4, 5, 6}, 1.5, {0, 0, -1}}));
    out.push_back(entityOf(PointShape{{7, 8, 0}}));
    out.push_back(entityOf(Circle{{10, 10, 0}, 5}));
    out.push_back(entityOf(Arc{{20, 10, 0}, 5, 0.5, 2.5}));
    out.push_back(entityOf(Ellipse{{30, 10, 0}, {5, 1, 0}, kZAxis, 0.5, 0.25, 4}));
    Spline spline;
    spline.knots = {0, 0, 0, 0, 1, 1, 1, 1};
    spline.controlPoints = {{0, 0, 0}, {1, 2, 0}, {3, 2, 0}, {4, 0, 0}};
    out.push_back(entityOf(spline));
    spline.rational = true;
    spline.weights = {1, 0.5, 2, 1};
    out.push_back(entityOf(spline));
    Spline fitted;
    fitted.fitPoints = {{0, 0, 0}, {5, 5, 0}, {9, 1, 0}};
    out.push_back(entityOf(fitted));
    out.push_back(entityOf(Ray{{0, 0, 0}, {1, 0, 0}, false}));
    out.push_back(entityOf(Ray{{0, 0, 0}, {0, 1, 0}, true}));
}

void addPolylines(std::vector<Entity>& out)
{
    Polyline light;
    light.vertices = {{{0, 0, 0}, 0.5}, {{10, 0, 0}, 0, 1, 2}, {{10, 10, 0}}};
    light.closed = true;
    light.elevation = 3;
    for (PolylineVertex& vertex : light.vertices)
        vertex.position.z = 3;
    out.push_back(entityOf(light));
    Polyline heavy = light;
    heavy.lightweight = false;
    out.push_back(entityOf(heavy));
    Polyline spatial;
    spatial.threeD = true;
    spatial.lightweight = false;
    spatial.vertices = {{{0, 0, 0}}, {{1, 1, 1}}, {{2, 0, 5}}};
    out.push_back(entityOf(spatial));
    Mesh mesh;
    mesh.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 1}};
    mesh.m = mesh.n = 2;
    out.push_back(entityOf(mesh));
    mesh.m = mesh.n = 0;
    mesh.faces = {{1, 2, -4, 3}};
    out.push_back(entityOf(mesh));
}

void addTexts(std::vector<Entity>& out)
{
    out.push_back(entityOf(textLine(u"Plain \u00BD \u2300 \u4E2D")));
    TextLine aligned = textLine(u"Middle");
    aligned.alignment = {5, 5, 0};
    aligned.horizontal = HorizontalAlign::Center;
    aligned.vertical = VerticalAlign::Middle;
    aligned.rotation = 0.5;
    aligned.oblique = 0.2;
    aligned.widthFactor = 0.8;
    aligned.backward = true;
    out.push_back(entityOf(aligned));
    MText text;
    text.text = u"{\\fArial|b1;Bold}\\PSecond";
    text.insertion = {0, 20, 0};
    text.height = 2.5;
    text.width = 50;
    text.attachment = 5;
    text.style = kNotes;
    out.push_back(entityOf(text));
    Tolerance tolerance;
    tolerance.text = u"{\\Fgdt;j}%%v0.1";
    tolerance.style = kOfficeDimensions;
    out.push_back(entityOf(tolerance));
    Shape figure;
    figure.position = {3, 4, 5};
    figure.size = 2.5;
    figure.rotation = 0.75;
    figure.widthFactor = 1.5;
    figure.oblique = 0.25;
    figure.number = 132;
    figure.style = kNotes;
    out.push_back(entityOf(figure));
}

void addFaces(std::vector<Entity>& out)
{
    const std::array<Point3, 4> corners{{{0, 0, 0}, {10, 0, 0}, {0, 10, 0}, {10, 10, 0}}};
    out.push_back(entityOf(Solid{corners}));
    out.push_back(entityOf(Solid{corners, true}));
    out.push_back(entityOf(Face3D{{{{0, 0, 1}, {10, 0, 2}, {10, 10, 3}, {0, 10, 4}}}, 5}));
    out.push_back(entityOf(patternHatch()));
    Hatch solid;
    solid.pattern = u"SOLID";
    solid.solid = true;
    solid.loops.push_back({3, {}, {{{0, 0, 0}}, {{4, 0, 0}}, {{4, 4, 0}}}, true});
    out.push_back(entityOf(solid));
    Wipeout wipeout;
    wipeout.uVector = {5, 0, 0};
    wipeout.vVector = {0, 5, 0};
    wipeout.pixels = {1, 1};
    wipeout.clip = {{-0.5, -0.5}, {0.5, -0.5}, {0.5, 0.5}, {-0.5, -0.5}};
    out.push_back(entityOf(wipeout));
}

void addMLines(std::vector<Entity>& out)
{
    MLine line;
    line.style = kWallStyle;
    line.scale = 2;
    line.justification = 1;
    line.noEndCap = true;
    line.vertices = {{{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {{1, 0}, {0.5, 0}, {0}}},
                     {{9, 0, 0}, {0, 1, 0}, {-0.7, 0.7, 0}, {{1.4, 0, 3, 4}, {0.7, 0}, {0}}}};
    out.push_back(entityOf(line));
    line.closed = true;
    line.noEndCap = false;
    out.push_back(entityOf(line));
}

void addDimensions(std::vector<Entity>& out)
{
    for (int type = 0; type <= 6; ++type) {
        Dimension dimension;
        dimension.block = kDimensionBlock;
        dimension.type = type;
        dimension.text = type == 0 ? u"<> TYP." : u"";
        // Each type has its own of the points.
        if (type != 3 && type != 4)
            dimension.point14 = {40, 10, 0};
        if (type >= 2 && type <= 5)
            dimension.point15 = {20, 0, 0};
        if (type == 2)
            dimension.point16 = {20, 20, 0};
        dimension.style = kOfficeDimensions;
        dimension.definitionPoint = {40, 20, 0};
        dimension.textPosition = {20, 20, 0};
        dimension.measurement = 40;
        out.push_back(entityOf(dimension));
    }
    Leader leader;
    leader.points = {{0, 0, 0}, {5, 5, 0}, {10, 5, 0}};
    leader.style = kOfficeDimensions;
    out.push_back(entityOf(leader));
}

void addInserts(BlockRecord& space)
{
    Insert plain;
    plain.block = kBlockHandle;
    plain.position = {50, 50, 0};
    space.entities.push_back(entityOf(plain));
    Insert scaled = plain;
    scaled.scale = {2, -3, 1};
    scaled.rotation = 1;
    space.entities.push_back(entityOf(scaled));
    Insert even = plain;
    even.scale = {0.5, 0.5, 0.5};
    even.columns = 3;
    even.rows = 2;
    even.columnSpacing = 10;
    even.rowSpacing = 20;
    space.entities.push_back(entityOf(even));
    Insert titled = plain;
    for (int i = 0; i < 2; ++i) {
        Attribute attribute;
        attribute.text = textLine(i == 0 ? u"A-101" : u"1:50");
        attribute.tag = i == 0 ? u"SHEET" : u"SCALE";
        titled.attributes.push_back(static_cast<std::uint32_t>(space.attributes.size()));
        space.attributes.push_back(entityOf(attribute));
    }
    space.entities.push_back(entityOf(titled));
    Insert referenced = plain;
    referenced.block = kXrefBlock;
    space.entities.push_back(entityOf(referenced));
}

void addTablesOf(Document& document)
{
    Layer wall;
    wall.handle = kWallLayer;
    wall.name = u"A-WALL";
    wall.color.index = 3;
    wall.linetype = kDashed;
    wall.lineweight = 50;
    wall.off = true;
    document.layers.push_back(wall);
    Linetype dashed;
    dashed.handle = kDashed;
    dashed.name = u"GAS_LINE";
    dashed.description = u"Gas ----GAS----";
    dashed.patternLength = 2;
    dashed.dashes.resize(2);
    dashed.dashes[0].length = 1;
    dashed.dashes[1].length = -1;
    dashed.dashes[1].text = u"GAS";
    dashed.dashes[1].style = kNotes;
    dashed.dashes[1].scale = 0.1;
    dashed.dashes[1].offset = {-0.1, -0.05};
    document.linetypes.push_back(dashed);
    TextStyle notes;
    notes.handle = kNotes;
    notes.name = u"NOTES";
    notes.font = u"arial.ttf";
    notes.typeface = u"Arial";
    notes.bold = true;
    notes.widthFactor = 0.9;
    document.textStyles.push_back(notes);
    DimensionStyle office;
    office.handle = kOfficeDimensions;
    office.name = u"OFFICE";
    office.scale = 48;
    office.arrowSize = 0.125;
    office.textHeight = 0.09375;
    office.textStyle = kNotes;
    document.dimensionStyles.push_back(office);
    MLineStyle wallLine;
    wallLine.handle = kWallStyle;
    wallLine.name = u"WALL";
    wallLine.flags = 1 | 16 | 1024;
    wallLine.fill = {Color::Kind::Index, 30, 0};
    wallLine.endAngle = 1;
    wallLine.elements = {{0.5, {}, 0}, {0, {Color::Kind::Index, 1, 0}, kDashed}, {-0.5, {}, 0}};
    document.mlineStyles.push_back(wallLine);
}

void addBlocks(Document& document)
{
    BlockRecord door;
    door.handle = kBlockHandle;
    door.name = u"DOOR";
    door.base = {1, 1, 0};
    door.description = u"A door";
    door.entities.push_back(entityOf(Arc{{0, 0, 0}, 36, 0, 1.57}));
    Attribute definition;
    definition.text = textLine(u"none");
    definition.tag = u"SHEET";
    definition.prompt = u"Sheet number?";
    definition.invisible = true;
    door.entities.push_back(entityOf(definition));
    BlockRecord dimension;
    dimension.handle = kDimensionBlock;
    dimension.name = u"*D7";
    dimension.anonymous = true;
    dimension.entities.push_back(entityOf(Line{{0, 20, 0}, {40, 20, 0}}));
    BlockRecord reference;
    reference.handle = kXrefBlock;
    reference.name = u"SITE";
    reference.xref = true;
    reference.xrefPath = u"C:\\Plans\\Site.dwg";
    document.blocks.insert(document.blocks.end(), {door, dimension, reference});
}

BlockRecord modelSpace()
{
    BlockRecord space;
    space.name = u"*Model_Space";
    space.layout = true;
    return space;
}
} // namespace

Document everyKind()
{
    Document document;
    addTablesOf(document);
    document.blocks.push_back(modelSpace());
    addBlocks(document);
    BlockRecord& space = document.blocks.front();
    addCurves(space.entities);
    addPolylines(space.entities);
    addTexts(space.entities);
    addFaces(space.entities);
    addMLines(space.entities);
    addDimensions(space.entities);
    addInserts(space);
    Entity& styled = space.entities.front();
    styled.layer = kWallLayer;
    styled.linetype = kDashed;
    styled.linetypeScale = 2;
    styled.lineweight = 35;
    styled.color = {Color::Kind::Index, 1, 0};
    BlockRecord paper;
    paper.name = u"*Paper_Space";
    paper.layout = true;
    Viewport view;
    view.center = {5, 5, 0};
    view.width = view.height = 8;
    view.viewHeight = 100;
    view.id = 1;
    paper.entities.push_back(entityOf(view));
    document.blocks.push_back(paper);
    document.header.extentsMin = {0, 0, 0};
    document.header.extentsMax = {100, 50, 0};
    return document;
}

Document documentOf(Geometry geometry)
{
    Document document;
    addTablesOf(document);
    document.blocks.push_back(modelSpace());
    addBlocks(document);
    document.blocks.front().entities.push_back(entityOf(std::move(geometry)));
    return document;
}

} // namespace zv::dwg::test
