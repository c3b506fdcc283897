#include "drawing/Amend.h"

#include "Describe.h"
#include "drawing/EveryKind.h"
#include "drawing/Reader.h"
#include "drawing/bits/BitReader.h"
#include "drawing/container/Container.h"
#include "drawing/preview/Preview.h"
#include "drawing/properties/PropertiesReader.h"
#include "drawing/records/ObjectMap.h"
#include "drawing/write/AmendFile.h"
#include "drawing/write/Bytes.h"
#include "support/RealDrawings.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <map>
#include <utility>

namespace zv::dwg {
namespace {

MemorySource sourceOf(const std::string& file)
{
    return MemorySource(bytesOf(file));
}

Document readWhole(const std::string& file)
{
    auto read = readDocument(sourceOf(file));
    EXPECT_TRUE(read) << (read ? "" : read.error().text);
    return read ? std::move(*read) : Document();
}

Entity newCircle(Document& document)
{
    Entity entity;
    entity.handle = document.header.handleSeed++;
    entity.kind = "CIRCLE";
    entity.layer = document.layers.front().handle;
    entity.geometry = Circle{{1, 2, 0}, 3, 0, kZAxis};
    return entity;
}

std::vector<Entity>& model(Document& document)
{
    return document.blocks[document.modelSpace].entities;
}

/// Each record's bytes by its handle.
std::map<Handle, std::string> recordsOf(const std::string& file)
{
    const MemorySource source = sourceOf(file);
    const auto container = Container::open(source);
    const auto section = (*container)->section(Section::ObjectMap);
    const auto map = ObjectMap::read(*section);
    std::map<Handle, std::string> records;
    for (const ObjectPlace& place : map->places()) {
        BitReader in(bytesOf(std::string_view(file).substr(place.offset)));
        const std::size_t size = in.modularShort();
        records[place.handle] = file.substr(place.offset, in.position() / 8 + size);
    }
    return records;
}

/// What entities say of themselves, in order.
std::vector<std::string> contentOf(const Document& document)
{
    std::vector<std::string> content;
    for (const BlockRecord& block : document.blocks) {
        content.push_back("block " + std::to_string(block.handle));
        for (const Entity& entity : block.entities) {
            Geometry shape = entity.geometry;
            if (auto* insert = std::get_if<Insert>(&shape)) {
                for (const std::uint32_t index : std::exchange(insert->attributes, {}))
                    content.push_back("attribute " + test::describe(block.attributes[index].geometry));
            }
            content.push_back(std::to_string(entity.handle) + " " + entity.kind + " " +
                              test::describe(shape));
        }
    }
    return content;
}

/// The file made to hold `document`; empty, with a failure, when it cannot be.
std::string amended(const std::string& file, const Document& document, const WriteOptions& options = {})
{
    const auto result = amendDocument(file, document, options);
    EXPECT_TRUE(result) << (result ? "" : result.error().text);
    return result ? *result : file;
}

Pixels square(int side)
{
    return {side, side, std::vector<std::uint8_t>(static_cast<std::size_t>(side * side) * 4, 0x7F)};
}

/// Every drawing of others that is kept as AC1015.
class AmendReal : public testing::Test {
protected:
    void SetUp() override
    {
        if (m_drawings.missing())
            GTEST_SKIP() << "no drawings in " << m_drawings.folder;
    }
    template <class Check> void forEach(Check check) const
    {
        for (const auto& [name, values] : *m_drawings.expected.object()) {
            const std::string bytes = m_drawings.bytesOf(name);
            if (bytes.starts_with("AC1015"))
                check(name, bytes);
        }
    }
    RealDrawings m_drawings;
};

TEST_F(AmendReal, UnchangedDrawingKeepsEveryRecord)
{
    forEach([](const std::string& name, const std::string& file) {
        const std::string again = amended(file, readWhole(file));
        EXPECT_EQ(recordsOf(again), recordsOf(file)) << name;
    });
}

TEST_F(AmendReal, NewEntityChangesNoMoreThanItsNeighbourAndTheSpace)
{
    forEach([](const std::string& name, const std::string& file) {
        Document document = readWhole(file);
        model(document).push_back(newCircle(document));
        const Handle circle = model(document).back().handle;
        const std::string again = amended(file, document);
        const auto before = recordsOf(file), after = recordsOf(again);
        EXPECT_EQ(after.size(), before.size() + 1) << name;
        std::size_t changed = 0;
        for (const auto& [handle, record] : before)
            changed += after.contains(handle) && after.at(handle) != record ? 1 : 0;
        EXPECT_LE(changed, 2U) << name;
        const Document read = readWhole(again);
        EXPECT_TRUE(read.damage.empty()) << name << ": " << read.damage.front();
        EXPECT_EQ(contentOf(read), contentOf(document)) << name;
        EXPECT_GT(read.header.handleSeed, circle) << name;
    });
}

TEST_F(AmendReal, EntitiesComeAndGoManyTimes)
{
    forEach([](const std::string& name, const std::string& file) {
        std::string now = file;
        for (int round = 0; round < 3; ++round) {
            Document document = readWhole(now);
            if (!model(document).empty())
                model(document).erase(model(document).begin());
            model(document).push_back(newCircle(document));
            now = amended(now, document);
            const Document read = readWhole(now);
            EXPECT_TRUE(read.damage.empty()) << name << ": " << read.damage.front();
            EXPECT_EQ(contentOf(read), contentOf(document)) << name;
        }
    });
}

TEST_F(AmendReal, SavingAgainGathersNoOldParts)
{
    constexpr std::size_t kHeaderRoom = 1024; // The header variables alone stand before the records.
    forEach([](const std::string& name, const std::string& file) {
        Document document = readWhole(file);
        model(document).push_back(newCircle(document));
        WriteOptions options;
        options.preview = square(100);
        const std::string first = amended(file, document, options);
        const std::string again = amended(first, document, options);
        EXPECT_LT(again.size(), first.size() + kHeaderRoom) << name;
        EXPECT_EQ(recordsOf(again), recordsOf(first)) << name;
    });
}

TEST_F(AmendReal, OnlyOnePictureIsFoundBySearching)
{
    forEach([](const std::string& name, const std::string& file) {
        for (const int side : {2, 400}) { // One that fits in the place of the old one, one that does not.
            WriteOptions options;
            options.preview = square(side);
            const std::string again = amended(file, readWhole(file), options);
            const std::string start = previewSection(nullptr, 0).substr(0, 16);
            const std::size_t found = again.find(start);
            EXPECT_NE(found, std::string::npos) << name;
            EXPECT_EQ(again.find(start, found + 1), std::string::npos) << name;
            const auto previews = readPreviews(sourceOf(again));
            ASSERT_TRUE(previews) << name;
            ASSERT_EQ(previews->size(), 1U) << name;
            EXPECT_EQ(decodeBitmap(previews->front().bytes)->width, side) << name;
        }
    });
}

TEST_F(AmendReal, PropertiesScalesAndPreviewAreReplaced)
{
    forEach([](const std::string& name, const std::string& file) {
        Document document = readWhole(file);
        document.header.dimScale = 48;
        document.header.linetypeScale = 0.25;
        document.header.insertionUnits = 6;
        document.header.currentLayer = document.layers.back().handle;
        WriteOptions options;
        options.properties.emplace().comments = u"changed";
        options.preview.emplace().width = 4;
        options.preview->height = 2;
        options.preview->bgra.assign(4 * 2 * 4, 0x7F);
        const std::string again = amended(file, document, options);
        const Document read = readWhole(again);
        EXPECT_EQ(read.header.dimScale, 48) << name;
        EXPECT_EQ(read.header.linetypeScale, 0.25) << name;
        EXPECT_EQ(read.header.insertionUnits, 6) << name;
        EXPECT_EQ(read.header.currentLayer, document.header.currentLayer) << name;
        EXPECT_EQ((*readProperties(sourceOf(again)))->comments, u"changed") << name;
        const auto previews = readPreviews(sourceOf(again));
        ASSERT_TRUE(previews) << name;
        EXPECT_EQ(previews->size(), 1U) << name;
        EXPECT_EQ(contentOf(read), contentOf(document)) << name;
    });
}

TEST(Amend, NewTablesAndBlocksComeWithTheirContent)
{
    const std::string file = writeDocument(Document(), {}).valueOr("");
    Document document = readWhole(file);
    const Document other = test::everyKind();
    // Every kind in a block of its own, with the tables that it needs.
    Handle seed = 0x1000;
    const auto take = [&seed](auto& into, const auto& from) {
        for (const auto& entry : from) {
            const bool there = std::any_of(into.begin(), into.end(),
                                           [&](const auto& each) { return each.name == entry.name; });
            if (!there) {
                into.push_back(entry);
                seed = std::max(seed, entry.handle + 1);
            }
        }
    };
    take(document.layers, other.layers);
    take(document.linetypes, other.linetypes);
    take(document.textStyles, other.textStyles);
    take(document.dimensionStyles, other.dimensionStyles);
    take(document.mlineStyles, other.mlineStyles);
    take(document.blocks, other.blocks);
    for (std::size_t i = 0; i < document.blocks.size(); ++i)
        document.blockIndex[document.blocks[i].handle] = i;
    for (const Entity& entity : other.blocks[other.modelSpace].entities) {
        const bool isWipeout = std::holds_alternative<Wipeout>(entity.geometry);
        if (!isWipeout)
            model(document).push_back(entity);
    }
    document.blocks[document.modelSpace].attributes = other.blocks[other.modelSpace].attributes;
    for (BlockRecord& block : document.blocks) {
        for (Entity& entity : block.entities)
            entity.handle = seed++;
        for (Entity& entity : block.attributes)
            entity.handle = seed++;
    }
    document.header.handleSeed = seed;
    const Document read = readWhole(amended(file, document));
    EXPECT_TRUE(read.damage.empty()) << read.damage.front();
    EXPECT_EQ(read.layers.size(), document.layers.size());
    EXPECT_EQ(read.linetypes.size(), document.linetypes.size());
    EXPECT_EQ(read.textStyles.size(), document.textStyles.size());
    EXPECT_EQ(read.mlineStyles.size(), document.mlineStyles.size());
    ASSERT_EQ(read.blocks.size(), document.blocks.size());
    for (const BlockRecord& block : document.blocks) {
        const BlockRecord* const again = read.block(block.handle);
        ASSERT_NE(again, nullptr);
        EXPECT_EQ(again->entities.size(), block.entities.size());
        for (std::size_t i = 0; i < again->entities.size(); ++i)
            EXPECT_EQ(test::describe(again->entities[i].geometry),
                      test::describe(block.entities[i].geometry));
    }
}

TEST(Amend, RemovedBlockLeavesNothingBehind)
{
    Document document;
    document.header.handleSeed = 0x200;
    BlockRecord block;
    block.handle = 0x100;
    block.name = u"Door";
    block.entities.push_back(newCircle(*[&] {
        static Document layers;
        layers.layers.resize(1);
        return &layers;
    }()));
    block.entities.back().handle = 0x101;
    block.entities.back().layer = 0;
    document.blocks.push_back(block);
    const std::string file = writeDocument(document, {}).valueOr("");
    Document read = readWhole(file);
    const std::size_t records = recordsOf(file).size();
    std::erase_if(read.blocks, [](const BlockRecord& each) { return each.handle == 0x100; });
    read.blockIndex.clear();
    for (std::size_t i = 0; i < read.blocks.size(); ++i) {
        read.blockIndex[read.blocks[i].handle] = i;
        if (read.blocks[i].name == u"*Model_Space")
            read.modelSpace = i;
    }
    const std::string again = amended(file, read);
    EXPECT_EQ(recordsOf(again).size(), records - 4); // Head, BLOCK, circle, ENDBLK.
    EXPECT_EQ(readWhole(again).block(0x100), nullptr);
}

TEST(Amend, ANewObjectTakesNoHandleOfAnother)
{
    const std::string file = writeDocument(Document(), {}).valueOr("");
    Document document = readWhole(file);
    model(document).push_back(newCircle(document));
    model(document).back().handle = recordsOf(file).begin()->first;
    const auto result = amendDocument(file, document, {});
    ASSERT_FALSE(result);
    EXPECT_EQ(result.error().code, ErrorCode::Damaged);
}

TEST(Amend, SeedThatObjectsHaveAlreadyIsReadAsTheNextOne)
{
    const std::string file = writeDocument(Document(), {}).valueOr("");
    const MemorySource source = sourceOf(file);
    const auto container = Container::open(source);
    const auto header = readHeaderVariables(**container);
    ASSERT_TRUE(header);
    AmendedFile low(file, file.size());
    ASSERT_TRUE(low.replaceHeader(header->places, header->variables, 0x10));
    EXPECT_EQ(readWhole(low.finished()).header.handleSeed, recordsOf(file).rbegin()->first + 1);
}

TEST(Amend, OtherVersionIsRefused)
{
    const std::string file = writeDocument(Document(), {}).valueOr("");
    EXPECT_TRUE(amendDocument(file, readWhole(file), {}));
    EXPECT_FALSE(amendDocument("AC1009 no drawing", Document(), {}));
}

} // namespace
} // namespace zv::dwg
