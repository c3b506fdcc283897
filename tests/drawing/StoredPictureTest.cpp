#include "drawing/entities/StoredPicture.h"
#include "drawing/write/BitWriter.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zv::dwg {
namespace {

constexpr Handle kOwnLayer = 0x10, kSecondLayer = 0x11, kDashed = 0x21, kRomans = 0x31;
constexpr double kTurn = 6.283185307179586;

/// The bytes of a picture, put together chunk by chunk.
class TestPicture {
public:
    BitWriter& chunk(std::uint32_t kind)
    {
        finish();
        m_kind = kind;
        return m_fields;
    }
    TestPicture& number(std::uint32_t kind, std::uint32_t value)
    {
        chunk(kind).rawLong(value);
        return *this;
    }
    std::string bytes()
    {
        finish();
        std::string out;
        putLong(out, static_cast<std::uint32_t>(m_chunks.size() + 8));
        putLong(out, m_count);
        return out + m_chunks;
    }

private:
    void finish()
    {
        if (m_kind == 0)
            return;
        putLong(m_chunks, static_cast<std::uint32_t>(m_fields.bytes().size() + 8));
        putLong(m_chunks, m_kind);
        m_chunks += m_fields.bytes();
        m_fields = {};
        m_kind = 0;
        ++m_count;
    }

    BitWriter m_fields;
    std::string m_chunks;
    std::uint32_t m_kind = 0, m_count = 0;
};

void point(BitWriter& out, Point3 p)
{
    for (const double value : {p.x, p.y, p.z})
        out.rawDouble(value);
}

void points(BitWriter& out, const std::vector<Point3>& all)
{
    out.rawLong(static_cast<std::uint32_t>(all.size()));
    for (const Point3& p : all)
        point(out, p);
}

Document document(Version version = Version::R2000)
{
    Document made;
    made.version = version;
    made.layers.resize(2);
    made.layers[0].handle = kOwnLayer;
    made.layers[1].handle = kSecondLayer;
    made.linetypes.resize(2);
    made.linetypes[1].handle = kDashed;
    made.textStyles.resize(1);
    made.textStyles[0].handle = kRomans;
    made.textStyles[0].font = u"Romans.shx";
    return made;
}

/// Reads the picture, and tries all that is left of it when it is cut short.
std::vector<PictureFigure> read(TestPicture& picture, Version version = Version::R2000)
{
    const Document from = document(version);
    Entity entity;
    entity.layer = kOwnLayer;
    entity.color = {Color::Kind::Index, 3, 0};
    const std::string bytes = picture.bytes();
    bool complete = true;
    const auto all = readStoredPicture(std::as_bytes(std::span(bytes)), from, entity, complete);
    EXPECT_TRUE(complete);
    for (std::size_t size = 0; size < bytes.size(); ++size) {
        const std::string cut = bytes.substr(0, size);
        const auto part = readStoredPicture(std::as_bytes(std::span(cut)), from, entity, complete);
        EXPECT_LE(part.figures.size(), all.figures.size()) << "cut after byte " << size;
    }
    return all.figures;
}

TEST(StoredPicture, LooksHoldForTheFiguresThatFollow)
{
    TestPicture picture;
    points(picture.chunk(6), {{0, 0, 0}, {1, 0, 0}});
    picture.number(14, 1).number(16, 1).number(18, 1).number(23, 50);
    picture.chunk(24).rawDouble(2.5);
    points(picture.chunk(6), {{0, 1, 0}, {1, 1, 0}});
    picture.number(22, 0xC2112233);
    points(picture.chunk(6), {{0, 2, 0}, {1, 2, 0}});
    picture.number(14, 0).number(16, 99).number(18, 32767);
    points(picture.chunk(6), {{0, 3, 0}, {1, 3, 0}});
    const auto figures = read(picture);
    ASSERT_EQ(figures.size(), 4u);
    EXPECT_EQ(figures[0].layer, kOwnLayer);
    EXPECT_EQ(figures[0].color.index, 3);
    EXPECT_EQ(figures[1].layer, kSecondLayer);
    EXPECT_EQ(figures[1].color.index, 1);
    EXPECT_EQ(figures[1].linetype, kDashed);
    EXPECT_EQ(figures[1].lineweight, 50);
    EXPECT_EQ(figures[1].linetypeScale, 2.5);
    EXPECT_EQ(figures[2].color.rgb, 0x112233u);
    // As the block has it: the entity stands for that.
    EXPECT_EQ(figures[3].color.index, 3);
    EXPECT_EQ(figures[3].layer, kOwnLayer);
    EXPECT_EQ(figures[3].linetype, 0u);
}

TEST(StoredPicture, FillsTheNextFigureOnly)
{
    TestPicture picture;
    picture.number(20, 1);
    points(picture.chunk(7), {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}});
    points(picture.chunk(7), {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}});
    const auto figures = read(picture);
    ASSERT_EQ(figures.size(), 2u);
    EXPECT_TRUE(std::get<Outline>(figures[0].shape).filled);
    EXPECT_TRUE(std::get<Outline>(figures[0].shape).closed);
    EXPECT_FALSE(std::get<Outline>(figures[1].shape).filled);
}

TEST(StoredPicture, RoundFiguresAreEllipses)
{
    TestPicture picture;
    BitWriter& circle = picture.chunk(2);
    point(circle, {1, 2, 3});
    circle.rawDouble(4);
    point(circle, kZAxis);
    BitWriter& arc = picture.chunk(4);
    point(arc, {0, 0, 0});
    arc.rawDouble(2);
    point(arc, kZAxis);
    point(arc, {0, 1, 0});
    arc.rawDouble(1.5);
    arc.rawLong(0);
    BitWriter& through = picture.chunk(5);
    for (const Point3 p : {Point3{1, 0, 0}, Point3{0, 1, 0}, Point3{-1, 0, 0}})
        point(through, p);
    through.rawLong(0);
    const auto figures = read(picture);
    ASSERT_EQ(figures.size(), 3u);
    const auto& whole = std::get<Ellipse>(figures[0].shape);
    EXPECT_NEAR(std::hypot(whole.majorAxis.x, whole.majorAxis.y), 4, 1e-12);
    EXPECT_NEAR(whole.endParameter - whole.startParameter, kTurn, 1e-12);
    const auto& part = std::get<Ellipse>(figures[1].shape);
    EXPECT_NEAR(part.majorAxis.y, 2, 1e-12);
    EXPECT_EQ(part.endParameter, 1.5);
    const auto& half = std::get<Ellipse>(figures[2].shape);
    EXPECT_NEAR(half.center.x, 0, 1e-12);
    EXPECT_NEAR(half.center.y, 0, 1e-12);
    EXPECT_NEAR(half.majorAxis.x, 1, 1e-12);
    EXPECT_NEAR(half.endParameter, kTurn / 2, 1e-12);
}

TEST(StoredPicture, ThreePointsInALineAreALine)
{
    TestPicture picture;
    BitWriter& through = picture.chunk(3);
    for (const double x : {0.0, 1.0, 2.0})
        point(through, {x, 0, 0});
    const auto figures = read(picture);
    ASSERT_EQ(figures.size(), 1u);
    EXPECT_EQ(std::get<Outline>(figures[0].shape).rings.at(0).size(), 3u);
}

TEST(StoredPicture, MatricesAreJoinedUntilTheyAreTakenAway)
{
    TestPicture picture;
    const auto push = [&](double scale, double x) {
        BitWriter& matrix = picture.chunk(29);
        for (const double value :
             {scale, 0.0, 0.0, x, 0.0, scale, 0.0, 0.0, 0.0, 0.0, scale, 0.0, 0.0, 0.0, 0.0, 1.0})
            matrix.rawDouble(value);
    };
    const auto line = [&] { points(picture.chunk(6), {{0, 0, 0}, {1, 0, 0}}); };
    push(2, 10);
    push(3, 1);
    line();
    picture.chunk(31);
    line();
    picture.chunk(31);
    picture.chunk(31);
    line();
    const auto figures = read(picture);
    ASSERT_EQ(figures.size(), 3u);
    EXPECT_EQ(figures[0].place.origin.x, 12);
    EXPECT_EQ(figures[0].place.x.x, 6);
    EXPECT_EQ(figures[1].place.origin.x, 10);
    EXPECT_EQ(figures[2].place.origin.x, 0);
    EXPECT_EQ(figures[2].place.x.x, 1);
}

TEST(StoredPicture, MeshesAndShells)
{
    TestPicture picture;
    BitWriter& mesh = picture.chunk(8);
    mesh.rawLong(2);
    mesh.rawLong(2);
    for (int i = 0; i < 4; ++i)
        point(mesh, {double(i), 0, 0});
    mesh.rawLong(0);
    BitWriter& shell = picture.chunk(9);
    points(shell, {{0, 0, 0}, {1, 0, 0}, {1, 1, 0}, {0, 1, 0}});
    shell.rawLong(8);
    for (const std::int32_t entry : {3, 0, 1, 2, -3, 1, 2, 3})
        shell.rawLong(static_cast<std::uint32_t>(entry));
    const auto figures = read(picture);
    ASSERT_EQ(figures.size(), 2u);
    EXPECT_EQ(std::get<Mesh>(figures[0].shape).vertices.size(), 4u);
    const auto& faces = std::get<Outline>(figures[1].shape);
    ASSERT_EQ(faces.rings.size(), 2u);
    EXPECT_EQ(faces.rings[1].at(2).y, 1);
}

TEST(StoredPicture, TextsOfAllKinds)
{
    TestPicture picture;
    const auto place = [](BitWriter& out) {
        point(out, {5, 6, 0});
        point(out, kZAxis);
        point(out, {0, 2, 0});
    };
    const auto sizes = [](BitWriter& out) {
        out.rawDouble(2.5);
        out.rawDouble(0.8);
        out.rawDouble(0);
    };
    const auto wide = [](BitWriter& out, std::string_view letters) {
        for (const char letter : letters)
            out.rawShort(static_cast<std::uint8_t>(letter));
        out.rawShort(0);
        if (letters.size() % 2 == 0)
            out.rawShort(0);
    };
    BitWriter& plain = picture.chunk(10);
    place(plain);
    sizes(plain);
    plain.rawBytes(std::string_view("Beam\0\0\0\0", 8));
    BitWriter& styled = picture.chunk(11);
    place(styled);
    styled.rawBytes(std::string_view("Slab\0\0\0\0", 8));
    styled.rawLong(4);
    styled.rawLong(0);
    sizes(styled);
    styled.rawDouble(1);
    for (const std::uint32_t flag : {1, 0, 0, 0, 0})
        styled.rawLong(flag);
    styled.rawBytes(std::string_view("romans.shx\0\0", 12));
    styled.rawBytes(std::string_view("\0\0\0\0", 4));
    BitWriter& unicode = picture.chunk(38);
    place(unicode);
    wide(unicode, "Wall");
    unicode.rawLong(4);
    unicode.rawLong(0);
    sizes(unicode);
    unicode.rawDouble(1);
    for (int i = 0; i < 9; ++i)
        unicode.rawLong(0);
    wide(unicode, "");
    wide(unicode, "ROMANS");
    wide(unicode, "");
    const auto figures = read(picture);
    ASSERT_EQ(figures.size(), 3u);
    const auto text = [&](std::size_t i) { return std::get<TextLine>(figures[i].shape); };
    EXPECT_EQ(text(0).text, u"Beam");
    EXPECT_EQ(text(0).height, 2.5);
    EXPECT_EQ(text(0).widthFactor, 0.8);
    EXPECT_EQ(figures[0].place.origin.y, 6);
    EXPECT_EQ(figures[0].place.x.y, 1);
    EXPECT_EQ(figures[0].place.y.x, -1);
    EXPECT_EQ(text(1).text, u"Slab");
    EXPECT_TRUE(text(1).backward);
    EXPECT_EQ(text(1).style, kRomans);
    EXPECT_EQ(text(2).text, u"Wall");
    EXPECT_EQ(text(2).style, kRomans);
}

TEST(StoredPicture, LightPolylinesAreReadAsTheEntityIs)
{
    TestPicture picture;
    BitWriter line;
    line.bitShort(512);
    line.bitLong(2);
    line.rawPoint2({1, 2});
    line.defaultDouble(4, 1);
    line.defaultDouble(2, 2);
    BitWriter& chunk = picture.chunk(33);
    chunk.rawLong(static_cast<std::uint32_t>(line.bytes().size()));
    chunk.rawBytes(line.bytes());
    const auto figures = read(picture);
    ASSERT_EQ(figures.size(), 1u);
    const auto& shape = std::get<Polyline>(figures[0].shape);
    EXPECT_TRUE(shape.closed);
    EXPECT_EQ(shape.vertices.at(1).position.x, 4);
}

TEST(StoredPicture, EndlessLinesGoThroughTheirSecondPoint)
{
    TestPicture picture;
    for (const std::uint32_t kind : {12, 13}) {
        BitWriter& line = picture.chunk(kind);
        point(line, {1, 1, 0});
        point(line, {1, 4, 0});
    }
    const auto figures = read(picture);
    ASSERT_EQ(figures.size(), 2u);
    EXPECT_TRUE(std::get<Ray>(figures[0].shape).bothWays);
    EXPECT_FALSE(std::get<Ray>(figures[1].shape).bothWays);
    EXPECT_EQ(std::get<Ray>(figures[1].shape).direction.y, 3);
}

TEST(StoredPicture, DamageEndsThePictureThere)
{
    TestPicture picture;
    points(picture.chunk(6), {{0, 0, 0}, {1, 0, 0}});
    picture.chunk(6).rawLong(1000);
    points(picture.chunk(6), {{0, 0, 0}, {1, 0, 0}});
    const std::string bytes = picture.bytes();
    bool complete = true;
    const auto found = readStoredPicture(std::as_bytes(std::span(bytes)), document(), {}, complete);
    EXPECT_FALSE(complete);
    EXPECT_EQ(found.figures.size(), 1u);
}

TEST(StoredPicture, CornersOutsideAShellAreRefused)
{
    TestPicture picture;
    BitWriter& shell = picture.chunk(9);
    points(shell, {{0, 0, 0}});
    shell.rawLong(2);
    shell.rawLong(1);
    shell.rawLong(7);
    const std::string bytes = picture.bytes();
    bool complete = true;
    EXPECT_TRUE(readStoredPicture(std::as_bytes(std::span(bytes)), document(), {}, complete).figures.empty());
    EXPECT_FALSE(complete);
}

} // namespace
} // namespace zv::dwg
