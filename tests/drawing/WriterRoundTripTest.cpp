#include "drawing/Describe.h"
#include "drawing/EveryKind.h"
#include "drawing/Reader.h"
#include "drawing/Writer.h"
#include "drawing/bits/BitReader.h"
#include "drawing/container/Container.h"
#include "drawing/preview/Preview.h"
#include "drawing/properties/PropertiesReader.h"
#include "drawing/records/ObjectMap.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <set>
#include <utility>

namespace zv::dwg {
namespace {
/// A document written and read again, with the bytes between.
struct RoundTrip {
    explicit RoundTrip(const Document& document, const WriteOptions& options = {})
    {
        auto written = writeDocument(document, options);
        EXPECT_TRUE(written.ok()) << (written.ok() ? "" : written.error().text);
        if (!written)
            return;
        bytes = *written;
        auto read = readDocument(source());
        EXPECT_TRUE(read.ok()) << (read.ok() ? "" : read.error().text);
        if (read)
            back = std::move(*read);
    }
    MemorySource source() const { return MemorySource(std::as_bytes(std::span(bytes.data(), bytes.size()))); }

    std::string bytes;
    Document back;
};

template <class Entry> const Entry* named(const std::vector<Entry>& entries, std::u16string_view name)
{
    const auto found =
        std::find_if(entries.begin(), entries.end(), [&](const Entry& entry) { return entry.name == name; });
    return found == entries.end() ? nullptr : &*found;
}

TEST(WriterRoundTrip, EveryKindOfEntityComesBackInItsPlaceWithItsValues)
{
    const Document document = test::everyKind();
    const RoundTrip trip(document);
    EXPECT_TRUE(trip.back.damage.empty());
    EXPECT_TRUE(trip.back.skipped.empty());
    for (const BlockRecord& block : document.blocks) {
        const BlockRecord* back = named(trip.back.blocks, block.name);
        ASSERT_NE(back, nullptr);
        ASSERT_EQ(back->entities.size(), block.entities.size());
        for (std::size_t i = 0; i < block.entities.size(); ++i)
            EXPECT_EQ(test::describe(back->entities[i].geometry), test::describe(block.entities[i].geometry))
                << back->entities[i].kind;
        ASSERT_EQ(back->attributes.size(), block.attributes.size());
        for (std::size_t i = 0; i < block.attributes.size(); ++i)
            EXPECT_EQ(test::describe(back->attributes[i].geometry),
                      test::describe(block.attributes[i].geometry));
    }
}

template <std::size_t... kinds> std::vector<Geometry> eachShape(std::index_sequence<kinds...>)
{
    return {Geometry(std::in_place_index<kinds>)...};
}

TEST(WriterRoundTrip, EveryKindThatIsWrittenIsAmongThoseOfTheseTests)
{
    std::set<std::size_t> there;
    for (const BlockRecord& block : test::everyKind().blocks) {
        for (const auto* entities : {&block.entities, &block.attributes}) {
            for (const Entity& entity : *entities)
                there.insert(entity.geometry.index());
        }
    }
    for (const Geometry& shape : eachShape(std::make_index_sequence<std::variant_size_v<Geometry>>())) {
        const bool isWritten = writeDocument(test::documentOf(shape), {}).ok();
        EXPECT_TRUE(there.contains(shape.index()) || !isWritten) << "shape " << shape.index();
    }
}

TEST(WriterRoundTrip, TheMarksOfAnEntityComeBack)
{
    Document document = test::everyKind();
    Entity& entity = document.blocks[document.modelSpace].entities.front();
    entity.handle = 0x500;
    entity.kind = "LINE";
    entity.layer = test::kWallLayer;
    entity.linetype = test::kDashed;
    entity.linetypeScale = 2;
    entity.lineweight = 35;
    entity.color = {Color::Kind::Index, 1, 0};
    entity.invisible = true;
    const RoundTrip trip(document);
    EXPECT_EQ(test::describe(trip.back.blocks[trip.back.modelSpace].entities.front()),
              test::describe(entity));
}

/// Whether each entry of a table is among those that came back, with all its values.
template <class Entry> void expectAll(const std::vector<Entry>& back, const std::vector<Entry>& written)
{
    for (const Entry& entry : written) {
        const Entry* found = named(back, entry.name);
        EXPECT_EQ(found != nullptr ? test::describe(*found) : "left out", test::describe(entry));
    }
}

TEST(WriterRoundTrip, TablesComeBackWithAllTheirValues)
{
    const Document document = test::everyKind();
    const RoundTrip trip(document);
    expectAll(trip.back.layers, document.layers);
    expectAll(trip.back.linetypes, document.linetypes);
    expectAll(trip.back.textStyles, document.textStyles);
    expectAll(trip.back.dimensionStyles, document.dimensionStyles);
    EXPECT_NE(named(trip.back.layers, u"0"), nullptr) << "every drawing has it";
}

TEST(WriterRoundTrip, StylesOfMultilinesComeBackWithAllTheirValues)
{
    const Document document = test::everyKind();
    const RoundTrip trip(document);
    expectAll(trip.back.mlineStyles, document.mlineStyles);
}

TEST(WriterRoundTrip, AGradientBecomesASolidFillOfTheColourInItsMiddle)
{
    Hatch gradient;
    gradient.gradient = true;
    gradient.loops.push_back({3, {}, {{{0, 0, 0}}, {{4, 0, 0}}, {{4, 4, 0}}}, true});
    gradient.gradientColor1 = {Color::Kind::True, 0, 0xFF0000};
    gradient.gradientColor2 = {Color::Kind::Index, 2, 0}; // yellow
    const auto colorOf = [](const Hatch& hatch) {
        const RoundTrip trip(test::documentOf(hatch));
        const Entity& entity = trip.back.blocks[trip.back.modelSpace].entities.front();
        const auto* back = std::get_if<Hatch>(&entity.geometry);
        EXPECT_TRUE(back != nullptr && back->solid && !back->gradient && back->loops.size() == 1);
        return entity.color;
    };
    EXPECT_EQ(colorOf(gradient).index, 30) << "orange";
    gradient.gradientOneColor = true;
    EXPECT_EQ(colorOf(gradient).index, 1) << "a single colour stands for itself";
    gradient.gradientColor1 = {};
    EXPECT_EQ(colorOf(gradient).kind, Color::Kind::ByLayer);
}

TEST(WriterRoundTrip, BlocksKeepTheirBasePointDescriptionAndReference)
{
    const RoundTrip trip(test::everyKind());
    const BlockRecord* door = named(trip.back.blocks, u"DOOR");
    ASSERT_NE(door, nullptr);
    EXPECT_EQ(door->base.x, 1);
    EXPECT_EQ(door->description, u"A door");
    const BlockRecord* reference = named(trip.back.blocks, u"SITE");
    ASSERT_NE(reference, nullptr);
    EXPECT_TRUE(reference->xref);
    EXPECT_EQ(reference->xrefPath, u"C:\\Plans\\Site.dwg");
    const BlockRecord* dimension = named(trip.back.blocks, u"*D7");
    ASSERT_NE(dimension, nullptr);
    EXPECT_TRUE(dimension->anonymous);
}

/// Makes every variable another one than a new drawing has. Handles keep what they lead to.
struct Altered : FieldsPassedOver {
    void value(bool& value) const { value = !value; }
    void value(int& value) const { value += 3; }
    void value(Point2& value) const { value = {value.x + 1.5, value.y - 2.5}; }
    void value(Point3& value) const { value = {1.25, -2.5, 3.75}; }
    void number(double& value) const { value += 7.125; }
};

TEST(WriterRoundTrip, EveryHeaderVariableComesBack)
{
    Document document = test::everyKind();
    visit(Altered(), document.header);
    document.header.measurement = 1; // Not any number.
    document.header.currentLayer = test::kWallLayer;
    document.header.currentTextStyle = document.textStyles.back().handle;
    document.header.currentDimensionStyle = document.dimensionStyles.back().handle;
    const RoundTrip trip(document);
    EXPECT_EQ(trip.back.version, Version::R2000);
    EXPECT_GT(trip.back.header.handleSeed, 0u);
    document.header.handleSeed = trip.back.header.handleSeed;
    EXPECT_EQ(test::describe(trip.back.header), test::describe(document.header));
}

TEST(WriterRoundTrip, AnEmptyDocumentBecomesADrawingWithItsSpaces)
{
    const RoundTrip trip{Document{}};
    EXPECT_NE(named(trip.back.blocks, u"*Model_Space"), nullptr);
    EXPECT_NE(named(trip.back.blocks, u"*Paper_Space"), nullptr);
    EXPECT_NE(named(trip.back.layouts, u"Model"), nullptr);
    EXPECT_NE(named(trip.back.layouts, u"Layout1"), nullptr);
    EXPECT_FALSE(readProperties(trip.source())->has_value());
    const auto previews = readPreviews(trip.source());
    ASSERT_TRUE(previews.ok());
    EXPECT_TRUE(previews->empty());
}

TEST(WriterRoundTrip, WhatWasReadCanBeWrittenAgain)
{
    const RoundTrip first(test::everyKind());
    const RoundTrip second(first.back);
    ASSERT_EQ(second.back.blocks.size(), first.back.blocks.size());
    for (std::size_t i = 0; i < first.back.blocks.size(); ++i) {
        ASSERT_EQ(second.back.blocks[i].entities.size(), first.back.blocks[i].entities.size());
        for (std::size_t k = 0; k < first.back.blocks[i].entities.size(); ++k)
            EXPECT_EQ(second.back.blocks[i].entities[k].handle, first.back.blocks[i].entities[k].handle);
    }
}

TEST(WriterRoundTrip, HandlesThatAreTakenTwiceAreGivenAnew)
{
    Document document = test::documentOf(Line{{0, 0, 0}, {1, 0, 0}});
    Entity same = document.blocks.front().entities.front();
    same.handle = 0x500;
    document.blocks.front().entities = {same, same};
    const RoundTrip trip(document);
    const std::vector<Entity>& back = trip.back.blocks[trip.back.modelSpace].entities;
    ASSERT_EQ(back.size(), 2u);
    EXPECT_EQ(back[0].handle, 0x500u);
    EXPECT_NE(back[1].handle, 0x500u);
}

TEST(WriterRoundTrip, PropertiesComeBackInOrderAndInUnicode)
{
    WriteOptions options;
    Properties& properties = options.properties.emplace();
    properties = {
        u"Title",    u"Subject", u"\u00C5ngstr\u00F6m", u"Two\r\nlines", u"door, \u6249", u"me", u"3",
        u"http://x", {}};
    properties.custom = {{u"Scale", u"48"}, {u"Units", u"in=inch"}};
    const RoundTrip trip(Document{}, options);
    const auto read = readProperties(trip.source());
    ASSERT_TRUE(read.ok());
    ASSERT_TRUE(read->has_value());
    EXPECT_EQ(test::describe(**read), test::describe(properties));
}

TEST(WriterRoundTrip, ThePreviewComesBackPixelForPixel)
{
    WriteOptions options;
    Pixels& pixels = options.preview.emplace();
    pixels = {5, 3, {}};
    for (int i = 0; i < 15; ++i)
        pixels.bgra.insert(pixels.bgra.end(),
                           {static_cast<std::uint8_t>(i), static_cast<std::uint8_t>(i * 9), 77, 255});
    const RoundTrip trip(Document{}, options);
    const auto previews = readPreviews(trip.source());
    ASSERT_TRUE(previews.ok());
    ASSERT_EQ(previews->size(), 1u);
    const PreviewImage& image = previews->front();
    EXPECT_EQ(image.kind, PreviewKind::Bmp);
    EXPECT_EQ(image.bits, 24);
    const auto decoded = decodeBitmap(image.bytes);
    ASSERT_TRUE(decoded.ok());
    EXPECT_EQ(decoded->width, 5);
    EXPECT_EQ(decoded->height, 3);
    EXPECT_EQ(decoded->bgra, pixels.bgra);
}

/// Puts another handle of one byte in the place of the second handle from the end of the table of blocks.
void leaveModelSpaceOut(std::string& bytes, Handle model)
{
    const MemorySource source(std::as_bytes(std::span(bytes)));
    const auto container = Container::open(source);
    ASSERT_TRUE(container.ok());
    const auto section = (*container)->section(Section::ObjectMap);
    ASSERT_TRUE(section.ok());
    const auto map = ObjectMap::read(*section);
    ASSERT_TRUE(map.ok());
    constexpr Handle kTableOfBlocks = 1;
    constexpr std::uint64_t kOwnedByOneByte = 0x31;
    const std::size_t start = map->places()[map->find(kTableOfBlocks)].offset;
    for (std::size_t at = start * 8; at < (start + 64) * 8; ++at) {
        BitReader in(std::as_bytes(std::span(bytes)));
        in.seek(at);
        if (in.bits(16) != (kOwnedByOneByte << 8 | model))
            continue;
        for (std::size_t bit = at + 8; bit < at + 16; ++bit)
            bytes[bit / 8] &= static_cast<char>(~(0x80 >> bit % 8));
        return;
    }
    FAIL() << "the table does not name it";
}

TEST(WriterRoundTrip, AModelSpaceThatTheTableOfBlocksLeavesOutIsFoundByTheHeader)
{
    const RoundTrip trip(test::documentOf(Line{}));
    std::string bytes = trip.bytes;
    leaveModelSpaceOut(bytes, trip.back.blocks[trip.back.modelSpace].handle);
    const auto read = readDocument(MemorySource(std::as_bytes(std::span(bytes))));
    ASSERT_TRUE(read.ok()) << read.error().text;
    EXPECT_EQ(read->blocks[read->modelSpace].name, u"*Model_Space");
    EXPECT_EQ(read->blocks[read->modelSpace].entities.size(), 1u);
    EXPECT_EQ(read->blocks.size(), trip.back.blocks.size());
}

TEST(WriterRoundTrip, ManyObjectsSpreadOverSeveralPiecesOfTheObjectMap)
{
    Document document = test::documentOf(Line{});
    std::vector<Entity>& entities = document.blocks.front().entities;
    for (int i = 0; i < 3000; ++i) {
        Entity entity;
        entity.geometry = Circle{{static_cast<double>(i), 0, 0}, 1};
        entities.push_back(entity);
    }
    const RoundTrip trip(document);
    EXPECT_EQ(trip.back.blocks[trip.back.modelSpace].entities.size(), 3001u);
}
} // namespace
} // namespace zv::dwg
