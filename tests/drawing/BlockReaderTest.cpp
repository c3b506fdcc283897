#include "drawing/read/BlockReader.h"
#include "support/TestRecord.h"

#include <gtest/gtest.h>

namespace zv::dwg {
namespace {

constexpr Handle kLayer = 0x10, kModel = 0x20;
constexpr int kLineType = 0x13, kCircleType = 0x12, kPolylineType = 0x0F, kVertexType = 0x0A, kInsertType = 7;

/// A drawing of one block, put together record by record.
class TestDrawing {
public:
    explicit TestDrawing(Version version) : m_version(version) {}

    void add(Handle handle, const TestRecord& record) { addBytes(handle, record.framed()); }
    void addBytes(Handle handle, const std::string& bytes)
    {
        m_places.emplace_back(handle, m_objects.size());
        m_objects += bytes;
    }
    /// A circle, whose radius tells which one it is.
    void addCircle(Handle handle, Handle previous, Handle next)
    {
        TestRecord circle(m_version, kCircleType, handle);
        circle.beginEntity(kLayer, 0, previous, next);
        circle.fields.bitPoint3({0, 0, 0});
        circle.fields.bitDouble(static_cast<double>(handle));
        if (m_version < Version::R2000) {
            circle.fields.bitDouble(0);
            circle.fields.bitPoint3(kZAxis);
        } else {
            circle.fields.thickness(0);
            circle.fields.extrusion(kZAxis);
        }
        add(handle, circle);
    }

    /// Reads the block that owns these entities, or whose chain goes from the first to the last of them.
    const BlockRecord& read(const std::vector<Handle>& entities)
    {
        auto map = ObjectMap::read(std::as_bytes(std::span(mapBytes())));
        EXPECT_TRUE(map);
        RecordStore store(std::as_bytes(std::span(m_objects)), std::move(*map), ClassTable(), m_version, 30,
                          m_document.damage);
        BlockHeader block;
        block.block.handle = kModel;
        block.owned = entities;
        block.first = entities.front();
        block.last = entities.back();
        m_document.blocks.push_back(block.block);
        m_document.blockIndex.emplace(kModel, 0);
        BlockReader reader(store, m_document, HeaderHandles());
        reader.add(block);
        reader.readEntities();
        return m_document.blocks[0];
    }
    const std::vector<std::string>& damage() const { return m_document.damage; }
    bool chained() const { return m_version <= Version::R2000; }

private:
    const std::string& mapBytes()
    {
        std::string part;
        Handle handle = 0;
        std::int64_t offset = 0;
        std::sort(m_places.begin(), m_places.end());
        for (const auto& [next, place] : m_places) {
            putModularCharUnsigned(part, next - handle);
            putModularChar(part, static_cast<std::int64_t>(place) - offset);
            handle = next;
            offset = static_cast<std::int64_t>(place);
        }
        const std::size_t size = part.size() + 2;
        m_map = {static_cast<char>(size >> 8), static_cast<char>(size)};
        m_map += part + std::string(2, '\0') + std::string("\0\2\0\0", 4);
        return m_map;
    }

    Version m_version;
    std::string m_objects = std::string(4, '\0'), m_map;
    std::vector<std::pair<Handle, std::size_t>> m_places;
    Document m_document;
};

std::vector<Handle> handlesOf(const BlockRecord& block)
{
    std::vector<Handle> handles;
    for (const Entity& entity : block.entities)
        handles.push_back(entity.handle);
    return handles;
}

class BlockReaderTest : public ::testing::TestWithParam<Version> {};
INSTANTIATE_TEST_SUITE_P(Versions, BlockReaderTest, ::testing::ValuesIn(kVersions));

TEST_P(BlockReaderTest, KeepsTheOrderOfTheBlock)
{
    TestDrawing drawing(GetParam());
    drawing.addCircle(0x33, 0, 0x31);
    drawing.addCircle(0x31, 0x33, 0x32);
    drawing.addCircle(0x32, 0x31, 0);
    const BlockRecord& block = drawing.read({0x33, 0x31, 0x32});
    EXPECT_EQ(handlesOf(block), (std::vector<Handle>{0x33, 0x31, 0x32}));
    EXPECT_EQ(block.entities[0].kind, "CIRCLE");
    EXPECT_EQ(block.entities[0].layer, kLayer);
    EXPECT_EQ(std::get<Circle>(block.entities[1].geometry).radius, 0x31);
    EXPECT_TRUE(drawing.damage().empty());
}

TEST_P(BlockReaderTest, TakesEachEntityOnceHoweverOftenItIsNamed)
{
    TestDrawing drawing(GetParam());
    // The chain runs in a circle and never comes to its last entity.
    drawing.addCircle(0x31, 0, 0x32);
    drawing.addCircle(0x32, 0x31, 0x31);
    const BlockRecord& block = drawing.read({0x31, 0x32, 0x31, 0x32, 0x99});
    EXPECT_EQ(handlesOf(block), (std::vector<Handle>{0x31, 0x32}));
}

TEST_P(BlockReaderTest, KeepsADamagedEntityAsUnknown)
{
    TestDrawing drawing(GetParam());
    drawing.addCircle(0x31, 0, 0x32);
    TestRecord empty(GetParam(), kCircleType, 0x32);
    empty.beginEntity(kLayer, 0, 0x31, 0x33);
    drawing.add(0x32, empty);
    drawing.addCircle(0x33, 0x32, 0);
    const BlockRecord& block = drawing.read({0x31, 0x32, 0x33});
    ASSERT_EQ(block.entities.size(), 3u);
    EXPECT_TRUE(std::holds_alternative<Unknown>(block.entities[1].geometry));
    EXPECT_EQ(block.entities[1].kind, "CIRCLE");
    ASSERT_EQ(drawing.damage().size(), 1u);
    EXPECT_EQ(drawing.damage()[0], "CIRCLE 32 is damaged");
}

TEST_P(BlockReaderTest, FindsEntitiesBehindABreak)
{
    TestDrawing drawing(GetParam());
    drawing.addCircle(0x31, 0, 0x32);
    // A record that says it is longer than the stream.
    drawing.addCircle(0x33, 0x32, 0);
    drawing.addBytes(0x32, std::string("\xFF\x7F\x01", 3));
    const BlockRecord& block = drawing.read({0x31, 0x32, 0x33});
    EXPECT_EQ(handlesOf(block), (std::vector<Handle>{0x31, 0x33}));
    EXPECT_FALSE(drawing.damage().empty());
}

TEST_P(BlockReaderTest, GathersTheVerticesOfAPolyline)
{
    TestDrawing drawing(GetParam());
    TestRecord line(GetParam(), kPolylineType, 0x31);
    line.beginEntity(kLayer);
    line.fields.bitShort(1);
    line.fields.bitShort(0);
    line.fields.bitDouble(0);
    line.fields.bitDouble(0);
    if (line.before(Version::R2000)) {
        line.fields.bitDouble(0);
        line.fields.bitDouble(5);
        line.fields.bitPoint3(kZAxis);
    } else {
        line.fields.thickness(0);
        line.fields.bitDouble(5);
        line.fields.extrusion(kZAxis);
    }
    if (!line.before(Version::R2004))
        line.fields.bitLong(3);
    // A polyline that names itself among its vertices.
    for (const Handle vertex : {0x41, 0x42, 0x31}) {
        if (!line.before(Version::R2004) || vertex != 0x31)
            line.handles.handle(4, vertex);
    }
    line.handles.handle(3, 0);
    drawing.add(0x31, line);
    for (const Handle handle : {0x41, 0x42}) {
        TestRecord vertex(GetParam(), kVertexType, handle);
        vertex.beginEntity(kLayer, 0x31, handle - 1, handle + 1);
        vertex.fields.rawChar(0);
        vertex.fields.bitPoint3({static_cast<double>(handle), 2, 0});
        vertex.fields.bitDouble(-0.5);
        vertex.fields.bitDouble(1);
        if (!line.before(Version::R2010))
            vertex.fields.bitLong(0);
        vertex.fields.bitDouble(0);
        drawing.add(handle, vertex);
    }
    const BlockRecord& block = drawing.read({0x31});
    ASSERT_EQ(block.entities.size(), 1u);
    const auto& shape = std::get<Polyline>(block.entities[0].geometry);
    EXPECT_TRUE(shape.closed);
    ASSERT_EQ(shape.vertices.size(), 2u);
    EXPECT_EQ(shape.vertices[1].position.x, 0x42);
    EXPECT_EQ(shape.vertices[1].position.z, 5);
    EXPECT_EQ(shape.vertices[1].startWidth, 0.5);
    EXPECT_EQ(shape.vertices[1].endWidth, 0.5);
    EXPECT_EQ(shape.vertices[1].bulge, 1);
}

TEST_P(BlockReaderTest, CountsAnEntityOfAClassThatIsNotThere)
{
    TestDrawing drawing(GetParam());
    TestRecord other(GetParam(), 777, 0x31);
    other.beginEntity(kLayer);
    drawing.add(0x31, other);
    const BlockRecord& block = drawing.read({0x31});
    ASSERT_EQ(block.entities.size(), 1u);
    EXPECT_EQ(block.entities[0].kind, "UNKNOWN");
    EXPECT_TRUE(std::holds_alternative<Unknown>(block.entities[0].geometry));
}

TEST_P(BlockReaderTest, ShowsAnEntityOfAnotherProgramByThePictureThatItCarries)
{
    TestDrawing drawing(GetParam());
    TestRecord other(GetParam(), 777, 0x31);
    other.beginEntity(kLayer);
    // One polyline of one point.
    BitWriter picture;
    for (const std::uint32_t number : {44, 1, 36, 6, 1})
        picture.rawLong(number);
    for (const double value : {1.0, 2.0, 3.0})
        picture.rawDouble(value);
    other.picture = picture.bytes();
    drawing.add(0x31, other);
    const BlockRecord& block = drawing.read({0x31});
    ASSERT_EQ(block.entities.size(), 1u);
    const auto* shown = std::get_if<StoredPicture>(&block.entities[0].geometry);
    ASSERT_NE(shown, nullptr);
    ASSERT_EQ(shown->figures.size(), 1u);
    EXPECT_EQ(shown->figures[0].layer, kLayer);
    EXPECT_EQ(std::get<Outline>(shown->figures[0].shape).rings.at(0).at(0).z, 3);
    EXPECT_TRUE(drawing.damage().empty());
}

} // namespace
} // namespace zv::dwg
