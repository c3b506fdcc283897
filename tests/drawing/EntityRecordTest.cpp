#include "drawing/entities/EntityRecord.h"
#include "drawing/entities/DimensionLayouts.h"
#include "drawing/entities/HatchLayouts.h"
#include "drawing/entities/InsertLayouts.h"
#include "drawing/entities/TextLayouts.h"
#include "support/TestRecord.h"

#include <gtest/gtest.h>

namespace zv::dwg {
namespace {

constexpr Handle kLayer = 0x10, kStyle = 0x11, kBlock = 0x20;

std::optional<OpenRecord> opened(const std::string& bytes, Version version)
{
    return openRecord(std::as_bytes(std::span(bytes)), 0, version, 30);
}

/// The entity of a record; no value when it cannot be read.
std::optional<EntityRecord> readEntity(const std::string& bytes, Version version, EntityReader read)
{
    auto record = opened(bytes, version);
    if (!record)
        return {};
    EntityRecord entity;
    entity.header = readEntityHeader(record->in);
    read(record->in, entity);
    if (!record->in.ok())
        return {};
    return entity;
}

/// The fields of a text in several lines, up to the columns of R2018.
void writeMText(TestRecord& text)
{
    text.fields.bitPoint3({1, 2, 0});
    text.fields.bitPoint3(kZAxis);
    text.fields.bitPoint3({0, 1, 0});
    text.fields.bitDouble(40);
    if (!text.before(Version::R2007))
        text.fields.bitDouble(12);
    text.fields.bitDouble(2.5);
    text.fields.bitShort(5);
    text.fields.bitShort(1);
    text.fields.bitDouble(0);
    text.fields.bitDouble(0);
    text.text("{\\H3;Top}\\PBase");
    text.pointer(kStyle);
    if (!text.before(Version::R2000)) {
        text.fields.bitShort(2);
        text.fields.bitDouble(1.5);
        text.fields.bit(false);
    }
    if (!text.before(Version::R2004))
        text.fields.bitLong(2);
}

class EntityRecordTest : public ::testing::TestWithParam<Version> {
protected:
    /// Reads the record, and tries all that is left of it when it is cut short.
    template <class Shape> Shape read(const TestRecord& record, EntityReader reader)
    {
        const std::string payload = record.payload();
        for (std::size_t size = 1; size < payload.size(); ++size) {
            const bool found =
                readEntity(record.framed(payload.substr(0, size)), record.version(), reader).has_value();
            // From R2010 on the handles are told from the end, so that other bits can be taken for them.
            if (record.before(Version::R2010)) {
                EXPECT_FALSE(found) << "cut after byte " << size;
            }
        }
        const std::string whole = record.framed();
        for (std::size_t size = 0; size + 2 < whole.size(); ++size)
            EXPECT_FALSE(opened(whole.substr(0, size), record.version())) << "stream cut after byte " << size;
        const auto entity = readEntity(whole, record.version(), reader);
        if (!entity) {
            ADD_FAILURE() << "the record is not read";
            return {};
        }
        EXPECT_EQ(entity->header.layer, kLayer);
        m_chain = entity->chain;
        return std::get<Shape>(entity->geometry);
    }
    TestRecord record(int type) const { return TestRecord(GetParam(), type, 0x30); }

    OwnedChain m_chain;
};

INSTANTIATE_TEST_SUITE_P(Versions, EntityRecordTest, ::testing::ValuesIn(kVersions));

TEST_P(EntityRecordTest, Line)
{
    TestRecord line = record(0x13);
    line.beginEntity(kLayer);
    if (line.before(Version::R2000)) {
        line.fields.bitPoint3({1, 2, 3});
        line.fields.bitPoint3({4, 2, 5});
        line.fields.bitDouble(0.5);
        line.fields.bitPoint3(kZAxis);
    } else {
        line.fields.bit(false);
        const double pairs[][2] = {{1, 4}, {2, 2}, {3, 5}};
        for (const auto& [from, to] : pairs) {
            line.fields.rawDouble(from);
            line.fields.defaultDouble(to, from);
        }
        line.fields.thickness(0.5);
        line.fields.extrusion(kZAxis);
    }
    const Line shape = read<Line>(line, readShape<Line>);
    EXPECT_EQ(shape.start.x, 1);
    EXPECT_EQ(shape.end.x, 4);
    EXPECT_EQ(shape.end.y, 2);
    EXPECT_EQ(shape.end.z, 5);
    EXPECT_EQ(shape.thickness, 0.5);
    EXPECT_EQ(shape.normal.z, 1);
}

TEST_P(EntityRecordTest, Text)
{
    TestRecord text = record(1);
    text.beginEntity(kLayer);
    if (text.before(Version::R2000)) {
        text.fields.bitDouble(7);
        text.fields.rawPoint2({1, 2});
        text.fields.rawPoint2({3, 4});
        text.fields.bitPoint3(kZAxis);
        for (const double value : {0.0, 0.1, 0.2, 2.5, 0.8})
            text.fields.bitDouble(value);
        text.text("Gate");
        text.fields.bitShort(2);
        text.fields.bitShort(4);
        text.fields.bitShort(3);
    } else {
        text.fields.rawChar(0);
        text.fields.rawDouble(7);
        text.fields.rawPoint2({1, 2});
        text.fields.defaultDouble(3, 1);
        text.fields.defaultDouble(4, 2);
        text.fields.extrusion(kZAxis);
        text.fields.thickness(0);
        for (const double value : {0.1, 0.2, 2.5, 0.8})
            text.fields.rawDouble(value);
        text.text("Gate");
        text.fields.bitShort(2);
        text.fields.bitShort(4);
        text.fields.bitShort(3);
    }
    text.pointer(kStyle);
    const TextLine shape = read<TextLine>(text, readShape<TextLine>);
    EXPECT_EQ(shape.text, u"Gate");
    EXPECT_EQ(shape.insertion.z, 7);
    EXPECT_EQ(shape.alignment.y, 4);
    EXPECT_EQ(shape.oblique, 0.1);
    EXPECT_EQ(shape.rotation, 0.2);
    EXPECT_EQ(shape.height, 2.5);
    EXPECT_EQ(shape.widthFactor, 0.8);
    EXPECT_TRUE(shape.backward);
    EXPECT_EQ(shape.horizontal, HorizontalAlign::Middle);
    EXPECT_EQ(shape.vertical, VerticalAlign::Top);
    EXPECT_EQ(shape.style, kStyle);
}

TEST_P(EntityRecordTest, MText)
{
    TestRecord text = record(0x2C);
    text.beginEntity(kLayer);
    writeMText(text);
    if (!text.before(Version::R2018))
        text.fields.bit(false);
    const MText shape = read<MText>(text, readMText);
    EXPECT_EQ(shape.text, u"{\\H3;Top}\\PBase");
    EXPECT_EQ(shape.xAxis.y, 1);
    EXPECT_EQ(shape.width, 40);
    EXPECT_EQ(shape.height, 2.5);
    EXPECT_EQ(shape.attachment, 5);
    EXPECT_EQ(shape.style, kStyle);
    EXPECT_EQ(shape.lineSpacing, text.before(Version::R2000) ? 1 : 1.5);
    EXPECT_EQ(shape.backgroundWindowColor, !text.before(Version::R2004));
}

TEST_P(EntityRecordTest, MTextInColumns)
{
    TestRecord text = record(0x2C);
    if (text.before(Version::R2018)) {
        const auto number = [&text](std::uint16_t value) {
            text.extendedData.rawChar(70);
            text.extendedData.rawShort(value);
        };
        const auto real = [&text](double value) {
            text.extendedData.rawChar(40);
            text.extendedData.rawDouble(value);
        };
        text.extendedText("ACAD_MTEXT_COLUMN_INFO_BEGIN");
        for (const std::uint16_t value : {75, 2, 79, 0, 76, 2, 78, 0, 48})
            number(value);
        real(30);
        number(49);
        real(5);
        for (const std::uint16_t value : {50, 2})
            number(value);
        real(20);
        real(10);
        text.extendedText("ACAD_MTEXT_COLUMN_INFO_END");
    }
    text.beginEntity(kLayer);
    writeMText(text);
    if (!text.before(Version::R2018)) {
        text.fields.bit(true);
        text.fields.bitShort(0);
        text.fields.bit(true);
        text.pointer(0x12);
        text.fields.bitLong(1);
        text.fields.bitPoint3({1, 0, 0});
        text.fields.bitPoint3({0, 0, 0});
        for (int i = 0; i < 4; ++i)
            text.fields.bitDouble(0);
        text.fields.bitShort(2);
        text.fields.bitLong(2);
        text.fields.bitDouble(30);
        text.fields.bitDouble(5);
        text.fields.bit(false);
        text.fields.bit(false);
        text.fields.bitDouble(20);
        text.fields.bitDouble(10);
    }
    const MText shape = read<MText>(text, readMText);
    EXPECT_EQ(shape.columns, 2);
    EXPECT_EQ(shape.columnWidth, 30);
    EXPECT_EQ(shape.columnGap, 5);
    EXPECT_EQ(shape.columnHeights, (std::vector<double>{20, 10}));
}

TEST_P(EntityRecordTest, LightPolyline)
{
    TestRecord line = record(0x4D);
    line.beginEntity(kLayer);
    line.fields.bitShort(512 | 16 | 8);
    line.fields.bitDouble(3);
    line.fields.bitLong(3);
    line.fields.bitLong(3);
    const Point2 points[] = {{0, 0}, {10, 0}, {10, 5}};
    for (std::size_t i = 0; i < 3; ++i) {
        if (i == 0 || line.before(Version::R2000)) {
            line.fields.rawPoint2(points[i]);
        } else {
            line.fields.defaultDouble(points[i].x, points[i - 1].x);
            line.fields.defaultDouble(points[i].y, points[i - 1].y);
        }
    }
    for (const double bulge : {0.0, 1.0, -0.5})
        line.fields.bitDouble(bulge);
    const Polyline shape = read<Polyline>(line, readLightPolyline);
    ASSERT_EQ(shape.vertices.size(), 3u);
    EXPECT_TRUE(shape.closed);
    EXPECT_EQ(shape.elevation, 3);
    EXPECT_EQ(shape.vertices[2].position.x, 10);
    EXPECT_EQ(shape.vertices[2].position.y, 5);
    EXPECT_EQ(shape.vertices[2].position.z, 3);
    EXPECT_EQ(shape.vertices[1].bulge, 1);
    EXPECT_EQ(shape.vertices[2].bulge, -0.5);
}

TEST_P(EntityRecordTest, Spline)
{
    TestRecord spline = record(0x24);
    spline.beginEntity(kLayer);
    spline.fields.bitLong(1);
    if (!spline.before(Version::R2013)) {
        spline.fields.bitLong(0);
        spline.fields.bitLong(15);
    }
    spline.fields.bitLong(1);
    spline.fields.bits(0, 3);
    spline.fields.bitDouble(1e-7);
    spline.fields.bitDouble(1e-7);
    spline.fields.bitLong(4);
    spline.fields.bitLong(2);
    spline.fields.bit(true);
    for (const double knot : {0.0, 0.0, 1.0, 1.0})
        spline.fields.bitDouble(knot);
    for (const double x : {2.0, 6.0}) {
        spline.fields.bitPoint3({x, 0, 0});
        spline.fields.bitDouble(x);
    }
    const Spline shape = read<Spline>(spline, readShape<Spline>);
    EXPECT_EQ(shape.degree, 1);
    EXPECT_TRUE(shape.rational);
    EXPECT_EQ(shape.knots, (std::vector<double>{0, 0, 1, 1}));
    ASSERT_EQ(shape.controlPoints.size(), 2u);
    EXPECT_EQ(shape.controlPoints[1].x, 6);
    EXPECT_EQ(shape.weights, (std::vector<double>{2, 6}));
}

TEST_P(EntityRecordTest, SplineByFitPoints)
{
    TestRecord spline = record(0x24);
    spline.beginEntity(kLayer);
    spline.fields.bitLong(2);
    if (!spline.before(Version::R2013)) {
        spline.fields.bitLong(1 | 8);
        spline.fields.bitLong(0);
    }
    spline.fields.bitLong(3);
    spline.fields.bitDouble(0.5);
    spline.fields.bitPoint3({0, 1, 0});
    spline.fields.bitPoint3({1, 0, 0});
    spline.fields.bitLong(2);
    spline.fields.bitPoint3({1, 1, 1});
    spline.fields.bitPoint3({9, 8, 7});
    const Spline shape = read<Spline>(spline, readShape<Spline>);
    ASSERT_EQ(shape.fitPoints.size(), 2u);
    EXPECT_EQ(shape.fitPoints[1].y, 8);
    EXPECT_EQ(shape.startTangent.y, 1);
    EXPECT_TRUE(shape.controlPoints.empty());
}

TEST_P(EntityRecordTest, InsertWithAttributes)
{
    TestRecord insert = record(7);
    insert.beginEntity(kLayer);
    insert.fields.bitPoint3({1, 2, 3});
    if (insert.before(Version::R2000)) {
        insert.fields.bitPoint3({2, 3, 2});
    } else {
        insert.fields.bitPair(0);
        insert.fields.rawDouble(2);
        insert.fields.defaultDouble(3, 2);
        insert.fields.defaultDouble(2, 2);
    }
    insert.fields.bitDouble(0.25);
    insert.fields.bitPoint3(kZAxis);
    insert.fields.bit(true);
    if (!insert.before(Version::R2004))
        insert.fields.bitLong(2);
    insert.pointer(kBlock);
    insert.handles.handle(4, 0x41);
    insert.handles.handle(4, 0x42);
    const Insert shape = read<Insert>(insert, readInsert);
    EXPECT_EQ(shape.block, kBlock);
    EXPECT_EQ(shape.scale.x, 2);
    EXPECT_EQ(shape.scale.y, 3);
    EXPECT_EQ(shape.scale.z, 2);
    EXPECT_EQ(shape.rotation, 0.25);
    if (insert.before(Version::R2004)) {
        EXPECT_EQ(m_chain.first, 0x41u);
        EXPECT_EQ(m_chain.last, 0x42u);
    } else {
        EXPECT_EQ(m_chain.owned, (std::vector<Handle>{0x41, 0x42}));
    }
}

TEST_P(EntityRecordTest, Hatch)
{
    TestRecord hatch = record(0x4E);
    hatch.beginEntity(kLayer);
    if (!hatch.before(Version::R2004)) {
        hatch.fields.bitLong(0);
        hatch.fields.bitLong(0);
        hatch.fields.bitDouble(0);
        hatch.fields.bitDouble(0);
        hatch.fields.bitLong(0);
        hatch.fields.bitDouble(0);
        hatch.fields.bitLong(0);
        hatch.text("");
    }
    hatch.fields.bitDouble(1.5);
    hatch.fields.bitPoint3(kZAxis);
    hatch.text("ANSI31");
    hatch.fields.bit(false);
    hatch.fields.bit(true);
    hatch.fields.bitLong(2);
    // A polyline with bulges, then an arc and a line.
    hatch.fields.bitLong(2 | 1);
    hatch.fields.bit(true);
    hatch.fields.bit(true);
    hatch.fields.bitLong(2);
    for (const double x : {0.0, 4.0}) {
        hatch.fields.rawPoint2({x, 1});
        hatch.fields.bitDouble(1);
    }
    hatch.fields.bitLong(0);
    hatch.fields.bitLong(16);
    hatch.fields.bitLong(2);
    hatch.fields.rawChar(2);
    hatch.fields.rawPoint2({5, 6});
    for (const double value : {2.0, 0.0, 3.0})
        hatch.fields.bitDouble(value);
    hatch.fields.bit(false);
    hatch.fields.rawChar(1);
    hatch.fields.rawPoint2({7, 6});
    hatch.fields.rawPoint2({3, 6});
    hatch.fields.bitLong(0);
    hatch.fields.bitShort(1);
    hatch.fields.bitShort(1);
    hatch.fields.bitDouble(0.5);
    hatch.fields.bitDouble(2);
    hatch.fields.bit(false);
    hatch.fields.bitShort(1);
    hatch.fields.bitDouble(0.785);
    hatch.fields.bitPoint2({0, 0});
    hatch.fields.bitPoint2({-1, 1});
    hatch.fields.bitShort(2);
    hatch.fields.bitDouble(3);
    hatch.fields.bitDouble(-1);
    hatch.fields.bitLong(0);
    const Hatch shape = read<Hatch>(hatch, readShape<Hatch>);
    EXPECT_EQ(shape.pattern, u"ANSI31");
    EXPECT_EQ(shape.elevation, 1.5);
    EXPECT_EQ(shape.style, 1);
    ASSERT_EQ(shape.loops.size(), 2u);
    ASSERT_EQ(shape.loops[0].polyline.size(), 2u);
    EXPECT_EQ(shape.loops[0].polyline[1].bulge, 1);
    ASSERT_EQ(shape.loops[1].edges.size(), 2u);
    EXPECT_EQ(shape.loops[1].edges[0].kind, HatchEdge::Kind::Arc);
    EXPECT_FALSE(shape.loops[1].edges[0].counterClockwise);
    EXPECT_EQ(shape.loops[1].edges[1].end.x, 3);
    ASSERT_EQ(shape.lines.size(), 1u);
    EXPECT_EQ(shape.lines[0].dashes, (std::vector<double>{3, -1}));
}

TEST_P(EntityRecordTest, LinearDimension)
{
    TestRecord dimension = record(0x15);
    dimension.beginEntity(kLayer);
    if (!dimension.before(Version::R2010))
        dimension.fields.rawChar(0);
    dimension.fields.bitPoint3(kZAxis);
    dimension.fields.rawPoint2({5, 6});
    dimension.fields.bitDouble(0);
    dimension.fields.rawChar(1);
    dimension.text("<> mm");
    dimension.fields.bitDouble(0);
    dimension.fields.bitDouble(0);
    dimension.fields.bitPoint3({1, 1, 1});
    dimension.fields.bitDouble(0);
    if (!dimension.before(Version::R2000)) {
        dimension.fields.bitShort(5);
        dimension.fields.bitShort(1);
        dimension.fields.bitDouble(1);
        dimension.fields.bitDouble(12.5);
    }
    if (!dimension.before(Version::R2007))
        dimension.fields.bits(0, 3);
    dimension.fields.rawPoint2({0, 0});
    dimension.fields.bitPoint3({1, 0, 0});
    dimension.fields.bitPoint3({13.5, 0, 0});
    dimension.fields.bitPoint3({13.5, 6, 0});
    dimension.fields.bitDouble(0);
    dimension.fields.bitDouble(0.5);
    dimension.pointer(kStyle);
    dimension.pointer(kBlock);
    const Dimension shape = read<Dimension>(dimension, entityKind(objectType::kDimensionLinear)->read);
    EXPECT_EQ(shape.type, 0);
    EXPECT_EQ(shape.text, u"<> mm");
    EXPECT_EQ(shape.point14.x, 13.5);
    EXPECT_EQ(shape.definitionPoint.y, 6);
    EXPECT_EQ(shape.rotation, 0.5);
    EXPECT_EQ(shape.measurement, dimension.before(Version::R2000) ? 0 : 12.5);
    EXPECT_EQ(shape.style, kStyle);
    EXPECT_EQ(shape.block, kBlock);
}

TEST_P(EntityRecordTest, Face)
{
    TestRecord face = record(0x1C);
    face.beginEntity(kLayer);
    const Point3 corners[] = {{0, 0, 1}, {4, 0, 1}, {4, 4, 2}, {0, 4, 2}};
    if (face.before(Version::R2000)) {
        for (const Point3& corner : corners)
            face.fields.bitPoint3(corner);
    } else {
        face.fields.bit(false);
        face.fields.bit(false);
        for (const double value : {0.0, 0.0, 1.0})
            face.fields.rawDouble(value);
        for (std::size_t i = 1; i < 4; ++i) {
            face.fields.defaultDouble(corners[i].x, corners[i - 1].x);
            face.fields.defaultDouble(corners[i].y, corners[i - 1].y);
            face.fields.defaultDouble(corners[i].z, corners[i - 1].z);
        }
    }
    face.fields.bitShort(5);
    const Face3D shape = read<Face3D>(face, readShape<Face3D>);
    EXPECT_EQ(shape.corners[3].y, 4);
    EXPECT_EQ(shape.corners[3].z, 2);
    EXPECT_EQ(shape.hiddenEdges, 5);
}

TEST_P(EntityRecordTest, Image)
{
    TestRecord image = record(500);
    image.beginEntity(kLayer);
    image.fields.bitLong(0);
    image.fields.bitPoint3({1, 1, 0});
    image.fields.bitPoint3({0.5, 0, 0});
    image.fields.bitPoint3({0, 0.5, 0});
    image.fields.rawPoint2({640, 480});
    image.fields.bitShort(7);
    image.fields.bit(true);
    for (const std::uint8_t value : {50, 50, 0})
        image.fields.rawChar(value);
    if (!image.before(Version::R2010))
        image.fields.bit(false);
    image.fields.bitShort(1);
    image.fields.rawPoint2({-0.5, -0.5});
    image.fields.rawPoint2({639.5, 479.5});
    image.pointer(0x60);
    const Wipeout shape = read<Wipeout>(image, entityKind("IMAGE")->read);
    EXPECT_TRUE(shape.image);
    EXPECT_FALSE(read<Wipeout>(image, entityKind("WIPEOUT")->read).image);
    EXPECT_EQ(shape.pixels.x, 640);
    ASSERT_EQ(shape.clip.size(), 4u);
    EXPECT_EQ(shape.clip[2].x, 639.5);
    EXPECT_EQ(shape.clip[3].x, -0.5);
}

TEST_P(EntityRecordTest, MPolygon)
{
    TestRecord polygon = record(500);
    polygon.beginEntity(kLayer);
    polygon.fields.bitLong(1);
    if (!polygon.before(Version::R2004)) {
        polygon.fields.bitLong(0);
        polygon.fields.bitLong(0);
        polygon.fields.bitDouble(0);
        polygon.fields.bitDouble(0);
        polygon.fields.bitLong(0);
        polygon.fields.bitDouble(0);
        polygon.fields.bitLong(0);
        polygon.text("");
    }
    polygon.fields.bitDouble(1.5);
    polygon.fields.bitPoint3(kZAxis);
    polygon.text("SOLID");
    polygon.fields.bit(true);
    polygon.fields.bitLong(1);
    polygon.fields.bit(true);
    polygon.fields.bit(true);
    polygon.fields.bitLong(2);
    for (const double x : {0.0, 4.0}) {
        polygon.fields.rawPoint2({x, 1});
        polygon.fields.bitDouble(1);
    }
    polygon.fields.bitShort(1);
    polygon.fields.bitShort(polygon.before(Version::R2004) ? 3 : 0);
    if (!polygon.before(Version::R2004)) {
        polygon.fields.bitLong(static_cast<std::int32_t>(0xC3000003));
        polygon.fields.rawChar(0);
    }
    const MPolygon shape = read<MPolygon>(polygon, readMPolygon);
    EXPECT_TRUE(shape.area.solid);
    EXPECT_EQ(shape.area.elevation, 1.5);
    EXPECT_EQ(shape.fill.index, 3);
    ASSERT_EQ(shape.area.loops.size(), 1u);
    EXPECT_TRUE(shape.area.loops[0].closed);
    ASSERT_EQ(shape.area.loops[0].polyline.size(), 2u);
    EXPECT_EQ(shape.area.loops[0].polyline[1].position.x, 4);
    EXPECT_EQ(shape.area.loops[0].polyline[1].bulge, 1);
}

TEST_P(EntityRecordTest, Underlay)
{
    TestRecord underlay = record(500);
    underlay.beginEntity(kLayer);
    underlay.fields.bitPoint3(kZAxis);
    underlay.fields.bitPoint3({10, 20, 0});
    underlay.fields.bitDouble(1.5707963267948966);
    underlay.fields.bitPoint3({2, 2, 2});
    for (const std::uint8_t value : {3, 100, 0})
        underlay.fields.rawChar(value);
    underlay.fields.bitLong(2);
    underlay.fields.rawPoint2({0, 0});
    underlay.fields.rawPoint2({3, 4});
    const auto picture = read<StoredPicture>(underlay, readUnderlay);
    const auto& frame = std::get<Polyline>(picture.figures.at(0).shape);
    ASSERT_EQ(frame.vertices.size(), 4u);
    EXPECT_TRUE(frame.closed);
    EXPECT_NEAR(frame.vertices[2].position.x, 10 - 8, 1e-9);
    EXPECT_NEAR(frame.vertices[2].position.y, 20 + 6, 1e-9);
}

/// A solid whose model is text (before R2004) or binary, with one wire and a silhouette from above.
TestRecord solidRecord(TestRecord solid)
{
    solid.beginEntity(kLayer);
    BitWriter& fields = solid.fields;
    const auto wire = [&](double x, bool moved) {
        fields.rawChar(1);
        fields.bitLong(-1);
        solid.before(Version::R2004) ? fields.bitShort(256) : fields.bitLong(256);
        fields.bitLong(-1);
        fields.bitLong(2);
        fields.bitPoint3({x, 0, 0});
        fields.bitPoint3({x, 5, 0});
        fields.bit(moved);
        if (!moved)
            return;
        for (const Point3 axis : {Point3{1, 0, 0}, Point3{0, 1, 0}, Point3{0, 0, 1}, Point3{7, 0, 0}})
            fields.bitPoint3(axis);
        fields.bitDouble(2);
        fields.bits(0, 3);
    };
    fields.bit(false);
    fields.bit(true);
    if (solid.before(Version::R2004)) {
        fields.bitShort(1);
        fields.bitLong(6);
        fields.rawBytes("400 16");
        fields.bitLong(0);
    } else {
        fields.bitShort(2);
        fields.rawBytes("ACIS BinaryFile...End-of-ACIS-data");
    }
    fields.bit(true);
    fields.bit(true);
    fields.bitPoint3({1, 1, 1});
    fields.bitLong(4);
    fields.bit(true);
    fields.bitLong(1);
    wire(1, true);
    fields.bitLong(2);
    for (const Point3 direction : {kZAxis, Point3{1, 0, 0}}) {
        fields.bitLong(1);
        fields.bitPoint3({0, 0, 0});
        fields.bitPoint3(direction);
        fields.bitPoint3({0, 1, 0});
        fields.bit(false);
        fields.bit(true);
        fields.bitLong(1);
        wire(3, false);
    }
    return solid;
}

/// From R2013 on the model of a solid stands in a section of its own.
class SolidRecordTest : public EntityRecordTest {};

INSTANTIATE_TEST_SUITE_P(VersionsWithModels, SolidRecordTest,
                         ::testing::Values(Version::R13, Version::R14, Version::R2000, Version::R2004,
                                           Version::R2007, Version::R2010));

TEST_P(SolidRecordTest, ShowsItsWires)
{
    const std::string payload = solidRecord(record(0x26)).payload();
    const TestRecord solid = solidRecord(record(0x26));
    // Cut short the solid is one without wires.
    for (std::size_t size = 1; size < payload.size(); ++size)
        readEntity(solid.framed(payload.substr(0, size)), GetParam(), readModelGeometry);
    const auto entity = readEntity(solid.framed(), GetParam(), readModelGeometry);
    ASSERT_TRUE(entity);
    const auto& picture = std::get<StoredPicture>(entity->geometry);
    ASSERT_EQ(picture.figures.size(), 2u);
    EXPECT_EQ(picture.figures[0].place.origin.x, 7);
    EXPECT_EQ(picture.figures[0].place.x.x, 2);
    EXPECT_EQ(std::get<Outline>(picture.figures[0].shape).rings.at(0).at(1).y, 5);
    EXPECT_EQ(std::get<Outline>(picture.figures[1].shape).rings.at(0).at(0).x, 3);
}

TEST_P(EntityRecordTest, CountThatTheRecordCannotHoldIsRefused)
{
    TestRecord leader = record(0x2D);
    leader.beginEntity(kLayer);
    leader.fields.bit(false);
    leader.fields.bitShort(0);
    leader.fields.bitShort(0);
    leader.fields.bitLong(0x7FFFFFFF);
    leader.pointer(0);
    leader.pointer(kStyle);
    EXPECT_FALSE(readEntity(leader.framed(), GetParam(), readShape<Leader>));
}

} // namespace
} // namespace zv::dwg
