#include "SceneMaker.h"

namespace zv::dwg {
namespace {

TEST(SceneCurves, LineFromAboveIgnoresHeight)
{
    SceneMaker m;
    m.add(Line{{1, 2, 3}, {4, 6, 9}});
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 1u);
    expectBox(scene.bounds, box(1, 2, 4, 6));
}

TEST(SceneCurves, CircleHasItsExactBounds)
{
    SceneMaker m;
    m.add(Circle{{10, 20, 0}, 5});
    expectBox(m.scene().bounds, box(5, 15, 15, 25));
}

TEST(SceneCurves, CircleTurnedOverKeepsItsPlaceMirrored)
{
    SceneMaker m;
    Circle circle{{10, 20, 0}, 5};
    circle.normal = {0, 0, -1};
    m.add(circle);
    expectBox(m.scene().bounds, box(-15, 15, -5, 25));
}

TEST(SceneCurves, CircleSeenFromTheSideIsALine)
{
    SceneMaker m;
    Circle circle{{0, 0, 0}, 5};
    circle.normal = {1, 0, 0};
    m.add(circle);
    expectBox(m.scene().bounds, box(0, -5, 0, 5));
}

TEST(SceneCurves, ArcRunsCounterClockwise)
{
    SceneMaker m;
    m.add(Arc{{0, 0, 0}, 2, 0, kPi / 2});
    expectBox(m.scene().bounds, box(0, 0, 2, 2));
    SceneMaker wrap;
    wrap.add(Arc{{0, 0, 0}, 2, 3 * kPi / 2, kPi / 2});
    expectBox(wrap.scene().bounds, box(0, -2, 2, 2));
}

TEST(SceneCurves, EllipseByParameters)
{
    SceneMaker m;
    Ellipse ellipse;
    ellipse.majorAxis = {4, 0, 0};
    ellipse.axisRatio = 0.5;
    ellipse.endParameter = kPi;
    m.add(ellipse);
    expectBox(m.scene().bounds, box(-4, 0, 4, 2));
}

TEST(SceneCurves, BulgeOfOneIsAHalfCircle)
{
    SceneMaker m;
    Polyline line;
    line.vertices.resize(2);
    line.vertices[0].bulge = 1;
    line.vertices[1].position = {4, 0, 0};
    m.add(line);
    const Scene scene = m.scene();
    expectBox(scene.bounds, box(0, -2, 4, 0));
    EXPECT_NEAR(strokeLength(scene, scene.items[0]), 2 * kPi, 1e-2);
}

TEST(SceneCurves, ClosedPolylineComesBack)
{
    SceneMaker m;
    Polyline line;
    for (const Point3 p : {Point3{0, 0, 0}, Point3{3, 0, 0}, Point3{3, 4, 0}})
        line.vertices.push_back({p});
    line.closed = true;
    m.add(line);
    const Scene scene = m.scene();
    EXPECT_NEAR(strokeLength(scene, scene.items[0]), 12, 1e-9);
}

TEST(SceneCurves, PolylineInSpaceKeepsItsVertices)
{
    SceneMaker m;
    Polyline line;
    line.threeD = true;
    for (const Point3 p : {Point3{0, 0, 5}, Point3{3, 0, 6}, Point3{3, 4, 7}})
        line.vertices.push_back({p});
    line.closed = true;
    m.add(line);
    const Scene scene = m.scene();
    expectBox(scene.bounds, box(0, 0, 3, 4));
    EXPECT_NEAR(strokeLength(scene, scene.items[0]), 12, 1e-9);
}

TEST(SceneCurves, WidePolylineIsAnArea)
{
    SceneMaker m;
    Polyline line;
    for (const Point3 p : {Point3{0, 0, 0}, Point3{10, 0, 0}})
        line.vertices.push_back({p});
    line.constantWidth = 2;
    m.add(line);
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 1u);
    EXPECT_EQ(scene.items[0].kind, SceneItem::Kind::Fill);
    expectBox(scene.bounds, box(0, -1, 10, 1));
}

TEST(SceneCurves, WideCornersAreMitred)
{
    SceneMaker m;
    Polyline line;
    for (const Point3 p : {Point3{0, 0, 0}, Point3{10, 0, 0}, Point3{10, 10, 0}})
        line.vertices.push_back({p});
    line.constantWidth = 2;
    m.add(line);
    expectBox(m.scene().bounds, box(0, -1, 11, 10));
}

TEST(SceneCurves, FrameOfAFittedCurveIsNotDrawn)
{
    SceneMaker m;
    Polyline line;
    for (const Point3 p : {Point3{0, 0, 0}, Point3{1, 0, 0}, Point3{100, 0, 0}})
        line.vertices.push_back({p});
    line.vertices[2].splineFrame = true;
    m.add(line);
    expectBox(m.scene().bounds, box(0, 0, 1, 0));
}

TEST(SceneCurves, SplineOfDegreeThreeFollowsItsControlPoints)
{
    SceneMaker m;
    Spline spline;
    spline.knots = {0, 0, 0, 0, 1, 1, 1, 1};
    spline.controlPoints = {{0, 0, 0}, {0, 4, 0}, {4, 4, 0}, {4, 0, 0}};
    m.add(spline);
    expectBox(m.scene().bounds, box(0, 0, 4, 3));
}

TEST(SceneCurves, RationalSplineIsAnExactArc)
{
    SceneMaker m;
    Spline spline;
    spline.degree = 2;
    spline.rational = true;
    spline.knots = {0, 0, 0, 1, 1, 1};
    spline.controlPoints = {{1, 0, 0}, {1, 1, 0}, {0, 1, 0}};
    spline.weights = {1, std::sqrt(0.5), 1};
    m.add(spline);
    const Scene scene = m.scene();
    for (const PathElement& e : scene.path.elements)
        EXPECT_NEAR(length(e.to), 1, 1e-9);
}

TEST(SceneCurves, SplineOfFitPointsGoesThroughThem)
{
    SceneMaker m;
    Spline spline;
    spline.fitPoints = {{0, 0, 0}, {5, 3, 0}, {10, 0, 0}};
    m.add(spline);
    const Scene scene = m.scene();
    expectBox(scene.bounds, box(0, 0, 10, 3), 0.01);
}

TEST(SceneCurves, SplineThatDoesNotFitIsLeftOut)
{
    SceneMaker m;
    Spline spline;
    spline.knots = {0, 1, 0};
    spline.controlPoints.resize(4);
    m.add(spline);
    EXPECT_TRUE(m.scene().items.empty());
}

TEST(SceneCurves, SolidCrossesItsLastCorners)
{
    SceneMaker m;
    Solid solid;
    solid.corners = {{{0, 0, 0}, {2, 0, 0}, {0, 2, 0}, {2, 2, 0}}};
    m.add(solid);
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 1u);
    EXPECT_EQ(scene.items[0].kind, SceneItem::Kind::Fill);
    EXPECT_NEAR(scene.path.elements[2].to.x, 2, 0);
    EXPECT_NEAR(scene.path.elements[2].to.y, 2, 0);
}

TEST(SceneCurves, HiddenEdgesOfAFaceAreNotDrawn)
{
    SceneMaker m;
    Face3D face;
    face.corners = {{{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}};
    face.hiddenEdges = 0b0101;
    m.add(face);
    const Scene scene = m.scene();
    EXPECT_NEAR(strokeLength(scene, scene.items[0]), 4, 1e-9);
}

TEST(SceneCurves, MeshIsANet)
{
    SceneMaker m;
    Mesh mesh;
    mesh.m = mesh.n = 2;
    mesh.vertices = {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}, {1, 1, 0}};
    m.add(mesh);
    const Scene scene = m.scene();
    EXPECT_NEAR(strokeLength(scene, scene.items[0]), 4, 1e-9);
}

TEST(SceneCurves, MeshWhoseCountsLieIsLeftOut)
{
    SceneMaker m;
    Mesh mesh;
    mesh.m = mesh.n = 2000000000;
    mesh.vertices.resize(4);
    m.add(mesh);
    Mesh faces;
    faces.vertices.resize(3);
    faces.faces = {{{1, 2, 9, 0}}, {{-2147483647 - 1, 1, 2, 3}}};
    m.add(faces);
    EXPECT_LE(m.scene().items.size(), 1u);
}

TEST(SceneCurves, EndlessLinesEndALittleOutside)
{
    SceneMaker m;
    m.add(Circle{{0, 0, 0}, 10});
    m.add(Ray{{0, 0, 0}, {1, 0, 0}, false});
    m.add(Ray{{0, 5, 0}, {0, 1, 0}, true});
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 3u);
    expectBox(scene.items[1].bounds, box(0, 0, 15, 0));
    expectBox(scene.items[2].bounds, box(0, -15, 0, 15));
}

TEST(SceneCurves, PointMarksByMode)
{
    for (const auto& [mode, size, width] : {std::tuple{0, 0.0, 0.0},
                                            {2, 2.0, 4.0},
                                            {3, 2.0, 4.0},
                                            {34, 2.0, 4.0},
                                            {32, 2.0, 2.0},
                                            {64, 2.0, 2.0}}) {
        SceneMaker m;
        m.document.header.pointMode = mode;
        m.document.header.pointSize = size;
        m.add(PointShape{{1, 1, 0}});
        EXPECT_NEAR(m.scene().bounds.width(), width, 1e-9) << mode;
    }
}

TEST(SceneCurves, PointsOfModeOneAreNotSeen)
{
    SceneMaker m;
    m.document.header.pointMode = 1;
    m.add(PointShape{{1, 1, 0}});
    EXPECT_TRUE(m.scene().items.empty());
}

TEST(SceneCurves, DashesFollowTheLinetype)
{
    SceneMaker m;
    const Handle dashed = m.linetype(u"DASHED", {2, -1});
    m.add(Line{{0, 0, 0}, {32, 0, 0}}).linetype = dashed;
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 1u);
    // Ten gaps of 1 are left out, and a dash stands at each end.
    EXPECT_NEAR(strokeLength(scene, scene.items[0]), 22, 1e-9);
    expectBox(scene.bounds, box(0, 0, 32, 0));
}

TEST(SceneCurves, DashesGrowWithTheScales)
{
    SceneMaker m;
    m.document.header.linetypeScale = 2;
    const Handle dashed = m.linetype(u"DASHED", {2, -1});
    Entity& line = m.add(Line{{0, 0, 0}, {32, 0, 0}});
    line.linetype = dashed;
    line.linetypeScale = 2;
    const Scene scene = m.scene();
    EXPECT_NEAR(strokeLength(scene, scene.items[0]), 32 - 2 * 4, 1e-9);
}

TEST(SceneCurves, LinesShorterThanThePatternAreWhole)
{
    SceneMaker m;
    m.add(Line{{0, 0, 0}, {2, 0, 0}}).linetype = m.linetype(u"DASHED", {2, -1});
    const Scene scene = m.scene();
    EXPECT_NEAR(strokeLength(scene, scene.items[0]), 2, 1e-9);
}

TEST(SceneCurves, TinyDashesGiveAWholeLine)
{
    SceneMaker m;
    m.add(Line{{0, 0, 0}, {1e9, 0, 0}}).linetype = m.linetype(u"DASHED", {1e-9, -1e-9});
    EXPECT_LT(m.scene().path.elements.size(), 10u);
}

TEST(SceneCurves, TextInALinetypeIsPlacedInItsGaps)
{
    SceneMaker m;
    const Handle gas = m.linetype(u"GAS", {4, -1, -1});
    m.document.linetypes[0].dashes[1].text = u"GAS";
    m.add(Line{{0, 0, 0}, {60, 0, 0}}).linetype = gas;
    const Scene scene = m.scene();
    ASSERT_EQ(scene.items.size(), 2u);
    EXPECT_EQ(scene.items[1].kind, SceneItem::Kind::Glyphs);
    EXPECT_EQ(scene.items[1].count, 30u);
}

TEST(SceneCurves, NumbersThatAreNoneAreLeftOut)
{
    SceneMaker m;
    const double nan = std::nan(""), inf = HUGE_VAL;
    m.add(Line{{nan, 0, 0}, {1, 1, 0}});
    m.add(Circle{{0, 0, 0}, inf});
    m.add(Arc{{0, 0, 0}, 1, nan, inf});
    m.add(Line{{1e300, 0, 0}, {1, 1, 0}});
    EXPECT_TRUE(m.scene().items.empty());
}

} // namespace
} // namespace zv::dwg
