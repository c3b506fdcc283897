#include "drawing/Writer.h"

#include "drawing/EveryKind.h"
#include "drawing/bits/BitReader.h"
#include "drawing/container/Container.h"
#include "drawing/records/ObjectMap.h"
#include "drawing/write/BitWriter.h"

#include <gtest/gtest.h>

namespace zv::dwg {
namespace {
std::span<const std::byte> bytesOf(const std::string& text)
{
    return std::as_bytes(std::span(text.data(), text.size()));
}

/// The file of a document that must be written.
std::string written(const Document& document, const WriteOptions& options = {})
{
    auto file = writeDocument(document, options);
    EXPECT_TRUE(file.ok()) << (file.ok() ? "" : file.error().text);
    return file.ok() ? *file : std::string();
}

std::uint32_t longAt(const std::string& file, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 4; i-- > 0;)
        value = value << 8 | static_cast<unsigned char>(file[at + i]);
    return value;
}

/// The object map as it stands in the file, without its last piece, which is empty.
std::string objectMapOf(const std::string& file)
{
    constexpr std::size_t kPartOfTheMap = 26 + 2 * 9, kLastPiece = 4;
    return file.substr(longAt(file, kPartOfTheMap), longAt(file, kPartOfTheMap + 4) - kLastPiece);
}

/// The handle that each piece of an object map begins with.
std::vector<Handle> firstHandles(const std::string& map)
{
    std::vector<Handle> handles;
    for (std::size_t at = 0; at + 2 < map.size();) {
        const std::size_t size =
            static_cast<unsigned char>(map[at]) << 8u | static_cast<unsigned char>(map[at + 1]);
        BitReader in(bytesOf(map).subspan(at + 2, size - 2));
        handles.push_back(in.modularCharUnsigned());
        at += size + 2;
    }
    return handles;
}

TEST(Writer, EveryNumberedPartLiesInTheFileAndTheHeadChecks)
{
    const std::string file = written(test::everyKind());
    ASSERT_GT(file.size(), 97u);
    EXPECT_EQ(file.substr(0, 6), "AC1015");
    ASSERT_EQ(longAt(file, 21), 6u);
    for (std::size_t part = 0; part < 6; ++part) {
        const std::uint32_t offset = longAt(file, 26 + part * 9), size = longAt(file, 30 + part * 9);
        EXPECT_LE(offset + size, file.size()) << part;
    }
    EXPECT_EQ(checkCode(file.substr(0, 79)),
              static_cast<unsigned char>(file[79]) | static_cast<unsigned char>(file[80]) << 8);
}

TEST(Writer, TheContainerFindsItsSections)
{
    const std::string file = written(test::everyKind());
    const MemorySource source(bytesOf(file));
    auto container = Container::open(source);
    ASSERT_TRUE(container.ok()) << container.error().text;
    EXPECT_EQ((*container)->version(), Version::R2000);
    EXPECT_EQ((*container)->codePage(), 30);
    for (const Section section : {Section::Header, Section::Classes, Section::ObjectMap, Section::Objects})
        EXPECT_TRUE((*container)->section(section).ok());
}

TEST(Writer, RecordsStandInTheOrderOfTheirHandles)
{
    const std::string file = written(test::everyKind());
    const MemorySource source(bytesOf(file));
    const auto container = Container::open(source);
    ASSERT_TRUE(container.ok());
    const auto section = (*container)->section(Section::ObjectMap);
    ASSERT_TRUE(section.ok());
    const auto map = ObjectMap::read(*section);
    ASSERT_TRUE(map.ok());
    const std::vector<ObjectPlace>& places = map->places();
    EXPECT_TRUE(std::is_sorted(places.begin(), places.end(), [](const ObjectPlace& a, const ObjectPlace& b) {
        return a.offset < b.offset;
    }));
}

/// The first handle beyond twice the object map's length, where there is one, begins a piece of it.
bool farHandleBeginsAPiece(const std::string& file)
{
    const MemorySource source(bytesOf(file));
    const auto container = Container::open(source);
    const auto section = (*container)->section(Section::ObjectMap);
    const auto map = ObjectMap::read(*section);
    const std::vector<Handle> pieces = firstHandles(objectMapOf(file));
    const std::size_t limit = 2 * (objectMapOf(file).size() + 4);
    for (const ObjectPlace& place : map->places()) {
        if (place.handle > limit)
            return std::find(pieces.begin(), pieces.end(), place.handle) != pieces.end();
    }
    return true;
}

TEST(Writer, TheFirstHandleBeyondTwiceTheObjectMapsLengthBeginsAPiece)
{
    for (Handle first = 0x200; first < 0x400; ++first) {
        Document document = test::documentOf(Circle{});
        std::vector<Entity>& entities = document.blocks.front().entities;
        // Long records and short ones, as the map's length hangs on them.
        Entity longer = entities.front();
        longer.kind = "TEXT";
        longer.geometry = TextLine{};
        std::get<TextLine>(longer.geometry).text = Text(60, u'x');
        for (Handle i = 0; i < 60; ++i) {
            entities.push_back(i % 3 == first % 3 ? longer : entities.front());
            entities.back().handle = first + i;
        }
        EXPECT_TRUE(farHandleBeginsAPiece(written(document))) << first;
    }
}

TEST(Writer, RefusesAnEntityOfUnknownKindByItsName)
{
    Document document = test::documentOf(Unknown{});
    document.blocks.front().entities.back().kind = "ACAD_PROXY_ENTITY";
    const auto file = writeDocument(document, {});
    ASSERT_FALSE(file.ok());
    EXPECT_EQ(file.error().code, ErrorCode::Unsupported);
    EXPECT_NE(file.error().text.find("ACAD_PROXY_ENTITY"), std::string::npos);
}

TEST(Writer, RefusesAnInsertOfABlockThatIsNotThere)
{
    Insert insert;
    insert.block = 0xBAD;
    EXPECT_FALSE(writeDocument(test::documentOf(insert), {}).ok());
    Insert attributed;
    attributed.block = test::kBlockHandle;
    attributed.attributes = {3};
    EXPECT_FALSE(writeDocument(test::documentOf(attributed), {}).ok());
}

TEST(Writer, RefusesADimensionWithoutItsBlock)
{
    EXPECT_FALSE(writeDocument(test::documentOf(Dimension{}), {}).ok());
}

TEST(Writer, RefusesAnImage)
{
    Wipeout image;
    image.image = true;
    EXPECT_FALSE(writeDocument(test::documentOf(image), {}).ok());
}

TEST(Writer, RefusesAMultilineWithoutItsStyle)
{
    EXPECT_EQ(writeDocument(test::documentOf(MLine{}), {}).error().text,
              "an MLINE without its style cannot be written");
}

TEST(Writer, RefusesAMultileaderByItsName)
{
    Document document = test::documentOf(MultiLeader{});
    document.blocks.front().entities.front().kind = "MULTILEADER";
    EXPECT_EQ(writeDocument(document, {}).error().text, "MULTILEADER cannot be written");
}

TEST(Writer, RefusesMoreThanTenCustomProperties)
{
    WriteOptions options;
    options.properties.emplace().custom.resize(11);
    const auto file = writeDocument({}, options);
    ASSERT_FALSE(file.ok());
    EXPECT_EQ(file.error().code, ErrorCode::Unsupported);
}

TEST(Writer, RefusesAPreviewWhosePixelsDoNotFitItsSize)
{
    WriteOptions options;
    options.preview = Pixels{4, 4, std::vector<std::uint8_t>(10)};
    EXPECT_FALSE(writeDocument({}, options).ok());
}
} // namespace
} // namespace zv::dwg
