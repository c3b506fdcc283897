#include "SceneMaker.h"

namespace zv::dwg {
namespace {

HatchLoop square(double low, double high)
{
    HatchLoop loop;
    loop.flags = 2;
    for (const Point3 p :
         {Point3{low, low, 0}, Point3{high, low, 0}, Point3{high, high, 0}, Point3{low, high, 0}})
        loop.polyline.push_back({p});
    return loop;
}

HatchPatternLine lines(double angle, Point2 offset, std::vector<double> dashes = {})
{
    return {angle, {0, 0}, offset, std::move(dashes)};
}

double patternLength(const Hatch& hatch)
{
    SceneMaker m;
    m.add(hatch);
    const Scene scene = m.scene();
    return scene.items.empty() ? 0 : strokeLength(scene, scene.items[0]);
}

TEST(Hatch, SolidIsFilled)
{
    SceneMaker m;
    Hatch hatch;
    hatch.solid = true;
    hatch.loops = {square(0, 10), square(2, 8)};
    m.add(hatch);
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 1u);
    EXPECT_EQ(scene.items[0].kind, SceneItem::Kind::Fill);
    expectBox(scene.bounds, box(0, 0, 10, 10));
}

TEST(Hatch, LinesStayInsideTheLoops)
{
    Hatch hatch;
    hatch.loops = {square(0.5, 10.5)};
    hatch.lines = {lines(0, {0, 1})};
    EXPECT_NEAR(patternLength(hatch), 100, 1e-6);
    hatch.lines = {lines(kPi / 2, {1, 0})};
    EXPECT_NEAR(patternLength(hatch), 100, 1e-6);
}

TEST(Hatch, IslandsByStyle)
{
    Hatch hatch;
    hatch.lines = {lines(0, {0, 1})};
    hatch.loops = {square(0.5, 10.5), square(2.5, 8.5), square(4.5, 6.5)};
    EXPECT_NEAR(patternLength(hatch), 100 - 36 + 4, 1e-6);
    hatch.style = 1;
    EXPECT_NEAR(patternLength(hatch), 100 - 36, 1e-6);
    hatch.style = 2;
    EXPECT_NEAR(patternLength(hatch), 100, 1e-6);
}

TEST(Hatch, DashesStartAtThePatternsOrigin)
{
    Hatch hatch;
    hatch.loops = {square(0.5, 10.5)};
    hatch.lines = {lines(0, {0, 1}, {1, -1})};
    // Each line of 10 from 0.5 on holds 0.5 and four dashes, and 0.5 of the last.
    EXPECT_NEAR(patternLength(hatch), 50, 1e-6);
}

TEST(Hatch, ArcsAndEllipsesBoundToo)
{
    Hatch hatch;
    HatchLoop loop;
    HatchEdge arc;
    arc.kind = HatchEdge::Kind::Arc;
    arc.radius = 5;
    arc.endAngle = 2 * kPi;
    loop.edges = {arc};
    hatch.loops = {loop};
    hatch.solid = true;
    SceneMaker m;
    m.add(hatch);
    expectBox(m.scene().bounds, box(-5, -5, 5, 5));
    arc.kind = HatchEdge::Kind::Ellipse;
    arc.majorAxis = {0, 4};
    arc.axisRatio = 0.5;
    hatch.loops[0].edges = {arc};
    SceneMaker e;
    e.add(hatch);
    expectBox(e.scene().bounds, box(-2, -4, 2, 4));
}

TEST(Hatch, ClockwiseArcsCountTheirAnglesBackwards)
{
    Hatch hatch;
    HatchLoop loop;
    HatchEdge arc;
    arc.kind = HatchEdge::Kind::Arc;
    arc.radius = 5;
    arc.startAngle = 0;
    arc.endAngle = kPi / 2;
    arc.counterClockwise = false;
    loop.edges = {arc};
    hatch.loops = {loop};
    hatch.solid = true;
    SceneMaker m;
    m.add(hatch);
    expectBox(m.scene().bounds, box(0, -5, 5, 0));
}

TEST(Hatch, GradientBlendsTwoColours)
{
    SceneMaker m;
    Hatch hatch;
    hatch.solid = hatch.gradient = true;
    hatch.gradientColor1 = {Color::Kind::True, 0, 0x112233};
    hatch.gradientColor2 = {Color::Kind::True, 0, 0x445566};
    hatch.loops = {square(0, 1)};
    m.add(hatch);
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 1u);
    EXPECT_EQ(scene.items[0].kind, SceneItem::Kind::Gradient);
    EXPECT_EQ(scene.items[0].color2.rgb, 0x445566u);
}

TEST(Hatch, TooDenseAPatternBecomesATone)
{
    SceneMaker m;
    Hatch hatch;
    hatch.loops = {square(0, 1e6)};
    hatch.lines = {lines(0, {0, 1e-6})};
    m.add(hatch);
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 1u);
    EXPECT_EQ(scene.items[0].kind, SceneItem::Kind::Fill);
    EXPECT_LT(scene.items[0].color.alpha, 255);
}

TEST(Hatch, EmptyAndBrokenLoopsAreLeftOut)
{
    SceneMaker m;
    Hatch hatch;
    hatch.solid = true;
    hatch.loops.resize(3);
    m.add(hatch);
    hatch.lines = {lines(std::nan(""), {0, 0})};
    hatch.solid = false;
    m.add(hatch);
    EXPECT_TRUE(m.scene().items.empty());
}

} // namespace
} // namespace zv::dwg
