#include "SceneMaker.h"

namespace zv::dwg {
namespace {

TEST(SceneBlocks, InsertScalesTurnsAndMoves)
{
    SceneMaker m;
    const Handle block = m.block(u"B");
    m.document.blocks[1].base = {1, 0, 0};
    m.add(Line{{1, 0, 0}, {2, 0, 0}}, block);
    Insert insert;
    insert.block = block;
    insert.position = {10, 10, 0};
    insert.scale = {2, 3, 1};
    insert.rotation = kPi / 2;
    m.add(insert);
    expectBox(m.scene().bounds, box(10, 10, 10, 12));
}

TEST(SceneBlocks, CircleInASquashedBlockIsAnEllipse)
{
    SceneMaker m;
    const Handle block = m.block(u"B");
    m.add(Circle{{0, 0, 0}, 1}, block);
    Insert insert;
    insert.block = block;
    insert.scale = {4, 2, 1};
    m.add(insert);
    expectBox(m.scene().bounds, box(-4, -2, 4, 2));
}

TEST(SceneBlocks, PointsOfADimensionAreDotsInEveryPointMode)
{
    SceneMaker m;
    m.document.header.pointMode = 64;
    m.document.header.pointSize = 10;
    const Handle block = m.block(u"*D1");
    m.add(PointShape{{1, 1, 0}}, block);
    Dimension dimension;
    dimension.block = block;
    m.add(dimension);
    expectBox(m.scene().bounds, box(1, 1, 1, 1));
}

TEST(SceneBlocks, StoredPicturesStandInTheirPlaceWithTheirOwnLook)
{
    SceneMaker m;
    const Handle red = m.layer(u"RED", 1), hidden = m.layer(u"HIDDEN", 2);
    m.document.layers.back().frozen = true;
    StoredPicture picture;
    Outline area;
    area.closed = area.filled = true;
    area.rings = {{{0, 0, 0}, {2, 0, 0}, {2, 1, 0}}};
    PictureFigure figure;
    figure.shape = area;
    figure.layer = red;
    figure.place.origin = {10, 0, 0};
    picture.figures.push_back(figure);
    figure.layer = hidden;
    picture.figures.push_back(figure);
    area.filled = false;
    figure.shape = area;
    figure.layer = red;
    figure.color = {Color::Kind::Index, 3, 0};
    picture.figures.push_back(figure);
    m.add(picture);
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 2u);
    EXPECT_EQ(scene.items[0].kind, SceneItem::Kind::Fill);
    EXPECT_EQ(scene.items[0].color.rgb, 0xff0000u);
    EXPECT_EQ(scene.items[1].kind, SceneItem::Kind::Stroke);
    EXPECT_EQ(scene.items[1].color.rgb, 0x00ff00u);
    expectBox(scene.bounds, box(10, 0, 12, 1));
}

TEST(SceneBlocks, PolygonsAreFilledInTheirFillColourInsideTheirLines)
{
    SceneMaker m;
    MPolygon polygon;
    polygon.area.solid = true;
    polygon.fill = {Color::Kind::Index, 3, 0};
    HatchLoop loop;
    for (const Point3 p : {Point3{0, 0, 0}, Point3{4, 0, 0}, Point3{4, 4, 0}})
        loop.polyline.push_back({p});
    polygon.area.loops = {loop};
    m.add(polygon).color = {Color::Kind::Index, 1, 0};
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 2u);
    EXPECT_EQ(scene.items[0].kind, SceneItem::Kind::Fill);
    EXPECT_EQ(scene.items[0].color.rgb, 0x00ff00u);
    EXPECT_EQ(scene.items[1].kind, SceneItem::Kind::Stroke);
    EXPECT_EQ(scene.items[1].color.rgb, 0xff0000u);
}

TEST(SceneBlocks, ArraysRepeatTheBlock)
{
    SceneMaker m;
    const Handle block = m.block(u"B");
    m.add(Line{{0, 0, 0}, {1, 0, 0}}, block);
    Insert insert;
    insert.block = block;
    insert.columns = 3;
    insert.rows = 2;
    insert.columnSpacing = 10;
    insert.rowSpacing = 5;
    m.add(insert);
    const Scene scene = m.scene();
    EXPECT_EQ(scene.items.size(), 6u);
    expectBox(scene.bounds, box(0, 0, 21, 5));
}

TEST(SceneBlocks, LayerZeroTakesTheInsertsLayer)
{
    SceneMaker m;
    const Handle red = m.layer(u"RED", 1);
    const Handle block = m.block(u"B");
    m.add(Line{{0, 0, 0}, {1, 0, 0}}, block);
    Insert insert;
    insert.block = block;
    m.add(insert).layer = red;
    EXPECT_EQ(m.scene().items.at(0).color.rgb, 0xff0000u);
}

TEST(SceneBlocks, ByBlockTakesTheInsertsColourThroughTwoLevels)
{
    SceneMaker m;
    const Handle inner = m.block(u"IN"), outer = m.block(u"OUT");
    m.add(Line{{0, 0, 0}, {1, 0, 0}}, inner).color.kind = Color::Kind::ByBlock;
    Insert nested;
    nested.block = inner;
    m.add(nested, outer).color.kind = Color::Kind::ByBlock;
    Insert insert;
    insert.block = outer;
    m.add(insert).color = {Color::Kind::Index, 3, 0};
    EXPECT_EQ(m.scene().items.at(0).color.rgb, 0x00ff00u);
}

TEST(SceneBlocks, FrozenLayersHideInsertsAndOffLayersOnlyTheirOwn)
{
    SceneMaker m;
    const Handle shown = m.layer(u"SHOWN", 1), hidden = m.layer(u"HIDDEN", 2);
    const Handle block = m.block(u"B");
    m.add(Line{{0, 0, 0}, {1, 0, 0}}, block).layer = shown;
    m.add(Line{{0, 5, 0}, {1, 5, 0}}, block);
    Insert insert;
    insert.block = block;
    m.add(insert).layer = hidden;
    EXPECT_EQ(m.scene().items.size(), 2u);
    m.document.layers[2].off = true;
    EXPECT_EQ(m.scene().items.size(), 1u);
    m.document.layers[2].frozen = true;
    EXPECT_EQ(m.scene().items.size(), 0u);
}

TEST(SceneBlocks, LayersWithoutPlotAreLeftOutOfPlots)
{
    SceneMaker m;
    m.add(Line{{0, 0, 0}, {1, 0, 0}});
    m.document.layers[0].plotted = false;
    EXPECT_EQ(m.scene().items.size(), 1u);
    SceneOptions options;
    options.plotted = true;
    EXPECT_EQ(m.scene(options).items.size(), 0u);
}

TEST(SceneBlocks, ColourSevenContrastsAndTrueColourStays)
{
    SceneMaker m;
    m.add(Line{{0, 0, 0}, {1, 0, 0}});
    m.add(Line{{0, 0, 0}, {1, 0, 0}}).color = {Color::Kind::True, 7, 0x123456};
    const Scene scene = m.scene();
    EXPECT_TRUE(scene.items[0].color.foreground);
    EXPECT_FALSE(scene.items[1].color.foreground);
    EXPECT_EQ(scene.items[1].color.rgb, 0x123456u);
}

TEST(SceneBlocks, LineweightsByLayerAndByBlock)
{
    SceneMaker m;
    m.document.layers[0].lineweight = 50;
    m.add(Line{{0, 0, 0}, {1, 0, 0}});
    const Handle block = m.block(u"B");
    m.add(Line{{0, 0, 0}, {1, 0, 0}}, block).lineweight = kLineweightByBlock;
    Insert insert;
    insert.block = block;
    m.add(insert).lineweight = 70;
    const Scene scene = m.scene();
    EXPECT_EQ(scene.items[0].lineweight, 50);
    EXPECT_EQ(scene.items[1].lineweight, 70);
}

TEST(SceneBlocks, ABlockThatHoldsItselfEnds)
{
    SceneMaker m;
    const Handle block = m.block(u"B");
    m.add(Line{{0, 0, 0}, {1, 0, 0}}, block);
    Insert insert;
    insert.block = block;
    m.add(insert, block);
    m.add(insert, block);
    m.add(insert);
    EXPECT_EQ(m.scene().items.size(), 1u);
}

TEST(SceneBlocks, ABombOfBlocksStopsAtItsBudget)
{
    SceneMaker m;
    Handle inner = m.block(u"L0");
    for (int level = 1; level < 20; ++level) {
        const Handle outer = m.block(u"L");
        Insert insert;
        insert.block = inner;
        insert.columns = insert.rows = 30000;
        m.add(insert, outer);
        inner = outer;
    }
    Insert insert;
    insert.block = inner;
    m.add(insert);
    EXPECT_FALSE(m.scene().complete);
}

TEST(SceneBlocks, AttributesAreDrawnAndDefinitionsAreNot)
{
    SceneMaker m;
    const Handle block = m.block(u"B");
    Attribute definition;
    definition.text.text = u"default";
    definition.tag = u"TAG";
    m.add(definition, block).kind = "ATTDEF";
    Insert insert;
    insert.block = block;
    insert.attributes = {0, 99};
    m.add(insert);
    Entity value;
    value.kind = "ATTRIB";
    value.layer = m.document.layers[0].handle;
    Attribute attribute;
    attribute.text.text = u"value";
    value.geometry = attribute;
    m.document.blocks[0].attributes.push_back(value);
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 1u);
    EXPECT_EQ(scene.items[0].count, 5u);
}

TEST(SceneBlocks, ADefinitionByItselfShowsItsTag)
{
    SceneMaker m;
    Attribute definition;
    definition.tag = u"TAG";
    m.add(definition).kind = "ATTDEF";
    EXPECT_EQ(m.scene().items.at(0).count, 3u);
}

TEST(SceneBlocks, DimensionIsDrawnByItsBlock)
{
    SceneMaker m;
    const Handle block = m.block(u"*D1");
    m.add(Line{{0, 0, 0}, {7, 0, 0}}, block);
    Dimension dimension;
    dimension.block = block;
    m.add(dimension);
    expectBox(m.scene().bounds, box(0, 0, 7, 0));
}

TEST(SceneBlocks, DimensionWithoutItsBlockIsDrawnPlainly)
{
    SceneMaker m;
    Dimension dimension;
    dimension.point13 = {0, 0, 0};
    dimension.point14 = {10, 0, 0};
    dimension.definitionPoint = {10, 3, 0};
    dimension.textPosition = {5, 3, 0};
    m.add(dimension);
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 2u);
    EXPECT_NEAR(strokeLength(scene, scene.items[0]), 16, 1e-9);
    EXPECT_EQ(scene.items[1].count, 2u) << "the measured 10";
}

TEST(SceneBlocks, LeaderHasAnArrowAndMultileaderItsText)
{
    SceneMaker m;
    Leader leader;
    leader.points = {{0, 0, 0}, {5, 5, 0}, {8, 5, 0}};
    m.add(leader);
    MultiLeader multi;
    multi.lines = {{{0, 0, 0}, {3, 3, 0}}};
    multi.arrowSize = 0.5;
    multi.hasText = true;
    multi.text.text = u"AB";
    m.add(multi);
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 5u);
    EXPECT_EQ(scene.items[1].kind, SceneItem::Kind::Fill);
    EXPECT_EQ(scene.items[4].kind, SceneItem::Kind::Glyphs);
}

TEST(SceneBlocks, MultilineDrawsEachElement)
{
    SceneMaker m;
    MLine line;
    for (const double x : {0.0, 10.0}) {
        MLineVertex v;
        v.position = {x, 0, 0};
        v.miter = {0, 1, 0};
        v.elements = {{0.5, 0.0}, {-0.5, 0.0}};
        line.vertices.push_back(v);
    }
    m.add(line);
    const Scene scene = m.scene();
    EXPECT_EQ(scene.items.size(), 2u);
    expectBox(scene.bounds, box(0, -0.5, 10, 0.5));
}

TEST(SceneBlocks, WipeoutMasksInDrawingOrder)
{
    SceneMaker m;
    m.add(Line{{0, 0, 0}, {10, 0, 0}});
    Wipeout wipeout;
    wipeout.insertion = {2, -1, 0};
    wipeout.uVector = {2, 0, 0};
    wipeout.vVector = {0, 2, 0};
    wipeout.pixels = {1, 1};
    wipeout.clip = {{-0.5, -0.5}, {0.5, 0.5}};
    wipeout.frame = false;
    m.add(wipeout);
    m.add(Line{{0, 1, 0}, {10, 1, 0}});
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 3u);
    EXPECT_EQ(scene.items[1].kind, SceneItem::Kind::Mask);
    expectBox(scene.items[1].bounds, box(2, -1, 4, 1));
}

TEST(SceneBlocks, ViewportShowsTheModelInItsFrame)
{
    SceneMaker m;
    m.add(Line{{0, 0, 0}, {100, 0, 0}});
    const Handle paper = m.block(u"*Paper_Space");
    Viewport view;
    view.center = {5, 5, 0};
    view.width = view.height = 10;
    view.viewCenter = {50, 0};
    view.viewHeight = 100;
    view.id = 2;
    m.add(view, paper);
    SceneOptions options;
    options.block = paper;
    const Scene scene = m.scene(options);
    ASSERT_EQ(scene.items.size(), 2u) << "the view's border and the line in it";
    EXPECT_EQ(scene.items[0].clip, -1);
    EXPECT_EQ(scene.items[1].clip, 0);
    expectBox(scene.items[1].bounds, box(0, 5, 10, 5));
    expectBox(scene.bounds, box(0, 0, 10, 10));
}

TEST(SceneBlocks, EmptyDrawingGivesAnEmptyScene)
{
    SceneMaker m;
    EXPECT_TRUE(m.scene().bounds.empty());
    FontFolder fonts{std::string()};
    EXPECT_TRUE(buildScene(Document(), fonts).items.empty());
}

} // namespace
} // namespace zv::dwg
