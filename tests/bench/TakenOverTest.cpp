#include "BenchFixture.h"

#include "Similarity.h"

#include "drawing/geometry/Transform.h"

#include <algorithm>

namespace zv::bench {

namespace {

using namespace zv::dwg;

/// Twice as large, a quarter turn, and moved.
const Similarity kMap{2, kPi / 2, {100, 50, 0}};

void expectAt(const Point3& point, double x, double y)
{
    EXPECT_NEAR(point.x, x, 1e-9);
    EXPECT_NEAR(point.y, y, 1e-9);
}

template <class Shape> Shape placed(Shape shape)
{
    Geometry geometry = std::move(shape);
    transform(geometry, kMap);
    return std::get<Shape>(geometry);
}

TEST(ExplodedInsertion, TakesTheLandingsOfAMultileaderAlong)
{
    MultiLeader leader;
    leader.lines = {{{0, 0, 0}, {1, 0, 0}}};
    leader.landings = {{{{1, 0, 0}, {2, 0, 0}}}};
    leader.text.insertion = {3, 0, 0};
    leader = placed(leader);
    expectAt(leader.lines[0][1], 100, 52);
    expectAt(leader.landings[0][0], 100, 52);
    expectAt(leader.landings[0][1], 100, 54);
    expectAt(leader.text.insertion, 100, 56);
}

TEST(ExplodedInsertion, TakesTheLinesAndColumnsOfAnAttributeAlong)
{
    Attribute attribute;
    MText lines;
    lines.insertion = {1, 0, 0};
    lines.height = 2;
    lines.columns = 1;
    lines.columnWidth = 10;
    lines.columnGap = 1;
    lines.columnHeights = {4, 5};
    attribute.lines = {lines};
    attribute = placed(attribute);
    const MText& moved = attribute.lines[0];
    expectAt(moved.insertion, 100, 52);
    expectAt(moved.xAxis, 0, 1);
    EXPECT_EQ(moved.height, 4);
    EXPECT_EQ(moved.columnWidth, 20);
    EXPECT_EQ(moved.columnGap, 2);
    EXPECT_EQ(moved.columnHeights, (std::vector<double>{8, 10}));
}

template <class Row> const Row& rowOf(const std::vector<Row>& table, std::u16string_view name)
{
    return *std::find_if(table.begin(), table.end(), [name](const Row& row) { return row.name == name; });
}

/// Adds a row that has a handle to a table of the document, among others that move the handles on.
template <class Row> Handle addRow(Document& document, std::vector<Row>& table, const Text& name)
{
    for (const Text& added : {Text(u"other"), name}) {
        Row row;
        row.name = added;
        row.handle = giveHandle(document);
        table.push_back(row);
    }
    reindex(document);
    return table.back().handle;
}

TEST(TakenOver, TheLinesOfAnAttributeLeadToTheStyleInTheNewDrawing)
{
    Document from = emptyDocument(), into = emptyDocument();
    giveHandle(into);
    Attribute attribute;
    attribute.lines.emplace_back();
    attribute.lines[0].style = addRow(from, from.textStyles, u"Office");
    from.blocks[from.modelSpace].entities.push_back(newEntity(from, "ATTDEF", attribute, 0));
    const auto block = importAsBlock(into, from, u"Bolt");
    ASSERT_TRUE(block);
    const Entity& taken = into.block(*block)->entities.at(0);
    EXPECT_EQ(std::get<Attribute>(taken.geometry).lines.at(0).style,
              rowOf(into.textStyles, u"Office").handle);
}

TEST(TakenOver, TheStyleOfAMultilineLeadsToTheLinetypesInTheNewDrawing)
{
    Document from = emptyDocument(), into = emptyDocument();
    giveHandle(into);
    MLineStyleElement element;
    element.linetype = addRow(from, from.linetypes, u"DASHED");
    const Handle style = addRow(from, from.mlineStyles, u"WALL");
    from.mlineStyles.back().elements = {element};
    MLine line;
    line.style = style;
    from.blocks[from.modelSpace].entities.push_back(newEntity(from, "MLINE", line, 0));
    ASSERT_TRUE(importAsBlock(into, from, u"Wall"));
    EXPECT_EQ(rowOf(into.mlineStyles, u"WALL").elements.at(0).linetype,
              rowOf(into.linetypes, u"DASHED").handle);
}

} // namespace

} // namespace zv::bench
