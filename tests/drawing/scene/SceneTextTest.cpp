#include "SceneMaker.h"

namespace zv::dwg {
namespace {

TextLine textLine(const Text& text)
{
    TextLine line;
    line.text = text;
    line.height = 9;
    return line;
}

TEST(SceneText, HeightIsThatOfCapitals)
{
    SceneMaker m;
    m.add(textLine(u"H"));
    expectBox(m.scene().bounds, box(0, 0, 6, 9));
}

TEST(SceneText, EveryHorizontalAlignment)
{
    const auto bounds = [](HorizontalAlign h, VerticalAlign v) {
        SceneMaker m;
        TextLine line = textLine(u"H");
        line.alignment = {100, 50, 0};
        line.horizontal = h;
        line.vertical = v;
        m.add(line);
        return m.scene().bounds;
    };
    expectBox(bounds(HorizontalAlign::Center, VerticalAlign::Baseline), box(97, 50, 103, 59));
    expectBox(bounds(HorizontalAlign::Right, VerticalAlign::Baseline), box(94, 50, 100, 59));
    expectBox(bounds(HorizontalAlign::Middle, VerticalAlign::Baseline), box(97, 45.5, 103, 54.5));
    expectBox(bounds(HorizontalAlign::Left, VerticalAlign::Top), box(100, 41, 106, 50));
    expectBox(bounds(HorizontalAlign::Left, VerticalAlign::Middle), box(100, 45.5, 106, 54.5));
    expectBox(bounds(HorizontalAlign::Right, VerticalAlign::Bottom), box(94, 53, 100, 62));
}

TEST(SceneText, AlignedFillsItsLengthByHeightAndFitByWidth)
{
    SceneMaker m;
    TextLine line = textLine(u"H");
    line.alignment = {12, 0, 0};
    line.horizontal = HorizontalAlign::Aligned;
    m.add(line);
    expectBox(m.scene().bounds, box(0, 0, 12, 18));
    SceneMaker fit;
    line.horizontal = HorizontalAlign::Fit;
    fit.add(line);
    expectBox(fit.scene().bounds, box(0, 0, 12, 9));
}

TEST(SceneText, WidthFactorSlantAndTurn)
{
    SceneMaker m;
    TextLine line = textLine(u"H");
    line.widthFactor = 2;
    m.add(line);
    expectBox(m.scene().bounds, box(0, 0, 12, 9));
    SceneMaker slanted;
    line.widthFactor = 1;
    line.oblique = kPi / 4;
    slanted.add(line);
    expectBox(slanted.scene().bounds, box(0, 0, 15, 9));
    SceneMaker turned;
    line.oblique = 0;
    line.rotation = kPi / 2;
    turned.add(line);
    expectBox(turned.scene().bounds, box(-9, 0, 0, 6));
}

TEST(SceneText, BackwardAndUpsideDownAreMirrored)
{
    SceneMaker m;
    TextLine line = textLine(u"H");
    line.backward = line.upsideDown = true;
    m.add(line);
    expectBox(m.scene().bounds, box(-6, -9, 0, 0));
}

TEST(SceneText, MarkedPartsAreUnderlined)
{
    SceneMaker m;
    m.add(textLine(u"%%uA%%u"));
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 2u);
    EXPECT_EQ(scene.items[1].kind, SceneItem::Kind::Stroke);
    EXPECT_LT(scene.items[1].bounds.max.y, 0);
}

TEST(SceneText, TextWithoutAHeightIsLeftOut)
{
    SceneMaker m;
    TextLine line = textLine(u"H");
    line.height = 0;
    m.add(line);
    EXPECT_TRUE(m.scene().items.empty());
}

MText multi(const Text& text, int attachment = 1)
{
    MText out;
    out.text = text;
    out.height = 9;
    out.attachment = attachment;
    return out;
}

Box boundsOf(const MText& text)
{
    SceneMaker m;
    m.add(text);
    return m.scene().bounds;
}

TEST(SceneText, EveryAttachmentHangsFromItsPoint)
{
    // One letter of 6 by 9; the frame of the text is as wide as its advance of 9.
    expectBox(boundsOf(multi(u"H", 1)), box(0, -9, 6, 0));
    expectBox(boundsOf(multi(u"H", 2)), box(-4.5, -9, 1.5, 0));
    expectBox(boundsOf(multi(u"H", 3)), box(-9, -9, -3, 0));
    expectBox(boundsOf(multi(u"H", 4)), box(0, -4.5, 6, 4.5));
    expectBox(boundsOf(multi(u"H", 5)), box(-4.5, -4.5, 1.5, 4.5));
    expectBox(boundsOf(multi(u"H", 7)), box(0, 0, 6, 9));
    expectBox(boundsOf(multi(u"H", 9)), box(-9, 0, -3, 9));
    EXPECT_TRUE(boundsOf(multi(u"H", 12)).empty());
}

TEST(SceneText, LinesAreFiveThirdsApart)
{
    expectBox(boundsOf(multi(u"H\\PH")), box(0, -24, 6, 0));
}

TEST(SceneText, WordsWrapAtTheWidth)
{
    MText text = multi(u"HH HH");
    text.width = 30;
    const Box found = boundsOf(text);
    EXPECT_NEAR(found.min.y, -24, 1e-9);
    EXPECT_NEAR(found.max.x, 15, 1e-9);
}

TEST(SceneText, AWordWiderThanTheFrameStandsAlone)
{
    MText text = multi(u"HHHHHHHH");
    text.width = 10;
    EXPECT_NEAR(boundsOf(text).min.y, -9, 1e-9);
}

TEST(SceneText, TextTurnsWithItsAxis)
{
    MText text = multi(u"H");
    text.xAxis = {0, 1, 0};
    expectBox(boundsOf(text), box(0, 0, 9, 6));
}

TEST(SceneText, ColoursMakeRunsOfTheirOwn)
{
    SceneMaker m;
    m.add(multi(u"a{\\C1;b}c"));
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 3u);
    EXPECT_EQ(scene.items[1].color.rgb, 0xff0000u);
    EXPECT_TRUE(scene.items[2].color.foreground);
}

TEST(SceneText, FractionHasABarBetweenItsParts)
{
    SceneMaker m;
    m.add(multi(u"\\S1/2;"));
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 2u);
    EXPECT_EQ(scene.items[0].count, 2u);
    EXPECT_NEAR(scene.items[1].bounds.min.y, -4.5, 1e-9);
}

TEST(SceneText, BackgroundIsMaskedFirst)
{
    SceneMaker m;
    MText text = multi(u"H");
    text.backgroundFill = true;
    m.add(text);
    EXPECT_EQ(m.scene().items.at(0).kind, SceneItem::Kind::Mask);
    text.backgroundColor = {Color::Kind::Index, 1, 0};
    SceneMaker filled;
    filled.add(text);
    EXPECT_EQ(filled.scene().items.at(0).kind, SceneItem::Kind::Fill);
}

TEST(SceneText, ToleranceIsCellsWithFrames)
{
    SceneMaker m;
    Tolerance tolerance;
    tolerance.text = u"A%%v0.1%%vB";
    tolerance.height = 1;
    m.add(tolerance);
    const Scene scene = m.scene();
    EXPECT_EQ(scene.items.size(), 4u);
    EXPECT_GT(scene.bounds.width(), 6);
}

TEST(SceneText, AVeryLongTextEnds)
{
    SceneMaker m;
    m.add(multi(Text(3000000, u'x')));
    m.scene();
    SceneMaker line;
    line.add(textLine(Text(3000000, u'x')));
    line.scene();
}

} // namespace
} // namespace zv::dwg
