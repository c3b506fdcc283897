#include "drawing/Writer.h"

#include "DrawingBuilder.h"
#include "drawing/Container.h"
#include "drawing/EveryKind.h"
#include "drawing/Preview.h"
#include "drawing/PropertiesReader.h"
#include "drawing/Reader.h"
#include "drawing/write/GapTree.h"
#include "platform/Files.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace zv::dwg {
namespace {

MemorySource sourceOf(const std::string& file)
{
    return MemorySource(std::as_bytes(std::span(file.data(), file.size())));
}

Properties someProperties(std::size_t commentLength = 20)
{
    Properties p;
    p.title = u"New t\u00EFtle";
    p.author = u"Ann";
    p.comments = Text(commentLength, u'c') + u"\u4E2D";
    p.keywords = u"stair, steel";
    p.custom = {{u"Scale", u"48"}, {u"A", u"=1"}};
    return p;
}

void expectProperties(const std::string& file, const Properties& wanted)
{
    const auto read = readProperties(sourceOf(file));
    ASSERT_TRUE(read.ok()) << read.error().text;
    ASSERT_TRUE(read->has_value());
    EXPECT_EQ((*read)->title, wanted.title);
    EXPECT_EQ((*read)->author, wanted.author);
    EXPECT_EQ((*read)->comments, wanted.comments);
    EXPECT_EQ((*read)->keywords, wanted.keywords);
    EXPECT_EQ((*read)->subject, wanted.subject);
    ASSERT_GE((*read)->custom.size(), wanted.custom.size());
    for (std::size_t i = 0; i < wanted.custom.size(); ++i)
        EXPECT_EQ((*read)->custom[i], wanted.custom[i]);
}

/// The file with other properties; they must be replaceable.
std::string replaced(const std::string& file, const Properties& properties)
{
    const auto result = replaceProperties(file, properties);
    EXPECT_TRUE(result.ok()) << (result.ok() ? "" : result.error().text);
    return result.ok() ? *result : std::string();
}

/// Whether two files are the same drawing, entity by entity, with the same picture.
void expectSameDrawing(const std::string& a, const std::string& b)
{
    const auto before = readDocument(sourceOf(a)), after = readDocument(sourceOf(b));
    ASSERT_TRUE(before.ok() && after.ok());
    EXPECT_EQ(after->damage, before->damage);
    EXPECT_EQ(after->layers.size(), before->layers.size());
    ASSERT_EQ(after->blocks.size(), before->blocks.size());
    for (std::size_t i = 0; i < before->blocks.size(); ++i) {
        const std::vector<Entity>&was = before->blocks[i].entities, &is = after->blocks[i].entities;
        ASSERT_EQ(is.size(), was.size());
        for (std::size_t k = 0; k < was.size(); ++k)
            EXPECT_EQ(is[k].handle, was[k].handle);
    }
    const auto pictures = readPreviews(sourceOf(a)), kept = readPreviews(sourceOf(b));
    ASSERT_EQ(kept.ok(), pictures.ok());
    if (pictures) {
        ASSERT_EQ(kept->size(), pictures->size());
        for (std::size_t i = 0; i < pictures->size(); ++i)
            EXPECT_EQ((*kept)[i].bytes, (*pictures)[i].bytes);
    }
}

TEST(ReplaceProperties, AddsTheRecordToADrawingOf2000)
{
    const auto file = writeDocument(test::everyKind(), {});
    ASSERT_TRUE(file.ok());
    const std::string changed = replaced(*file, someProperties());
    expectProperties(changed, someProperties());
    expectSameDrawing(*file, changed);
}

TEST(ReplaceProperties, ReplacesTheRecordOfADrawingOf2000)
{
    WriteOptions options;
    options.properties.emplace().comments = u"old";
    options.preview = Pixels{2, 2, std::vector<std::uint8_t>(16, 9)};
    const auto file = writeDocument(test::everyKind(), options);
    ASSERT_TRUE(file.ok());
    const std::string once = replaced(*file, someProperties(3000)), twice = replaced(once, someProperties(1));
    expectProperties(once, someProperties(3000));
    expectProperties(twice, someProperties(1));
    expectSameDrawing(*file, twice);
    // Nothing has moved: all that changed in the old bytes are numbers in the two heads.
    std::size_t differing = 0;
    for (std::size_t i = 0; i < file->size(); ++i)
        differing += (*file)[i] != once[i] ? 1 : 0;
    EXPECT_LT(differing, 32u);
}

TEST(ReplaceProperties, ReplacesTheSummaryOfLaterVersions)
{
    const std::string oldSummary = std::string(16, '\0') + std::string(24, '\7') + std::string(10, '\0');
    const std::string objects(5000, 'o');
    for (const char* version : {"AC1018", "AC1024", "AC1027", "AC1032"}) {
        const std::string file =
            buildR2004(version, {{"AcDb:SummaryInfo", oldSummary, 0x100}, {"AcDb:Header", objects, 0x400}});
        for (const std::size_t length : {std::size_t{0}, std::size_t{100}, std::size_t{5000}}) {
            const std::string once = replaced(file, someProperties(7)),
                              changed = replaced(once, someProperties(length));
            expectProperties(changed, someProperties(length));
            const auto source = sourceOf(changed);
            const auto container = Container::open(source);
            ASSERT_TRUE(container.ok()) << container.error().text;
            const auto kept = (*container)->section(Section::Header);
            ASSERT_TRUE(kept.ok());
            EXPECT_EQ(std::string(reinterpret_cast<const char*>(kept->data()), kept->size()), objects);
        }
    }
}

TEST(ReplaceProperties, RefusesWithAReason)
{
    EXPECT_EQ(replaceProperties("no drawing at all", {}).error().code, ErrorCode::Damaged);
    const std::string later = buildR2007({{"AcDb:SummaryInfo", std::string(64, '\0'), 0x100}});
    EXPECT_EQ(replaceProperties(later, {}).error().code, ErrorCode::Unsupported);
    const std::string without = buildR2004("AC1027", {{"AcDb:Header", "h", 0x100}});
    EXPECT_EQ(replaceProperties(without, {}).error().code, ErrorCode::Unsupported);
    const auto file = writeDocument({}, {});
    ASSERT_TRUE(file.ok());
    Properties many;
    many.custom.resize(11);
    EXPECT_EQ(replaceProperties(*file, many).error().code, ErrorCode::Unsupported);
}

TEST(ReplaceProperties, IsSafeOnAFileCutAnywhere)
{
    const auto file = writeDocument({}, {});
    ASSERT_TRUE(file.ok());
    for (std::size_t size = 0; size < file->size(); size += 7)
        (void)replaceProperties(file->substr(0, size), someProperties());
    const std::string later = buildR2004("AC1027", {{"AcDb:SummaryInfo", std::string(64, '\0'), 0x100}});
    for (std::size_t size = 0; size < later.size(); ++size)
        (void)replaceProperties(later.substr(0, size), someProperties());
}

TEST(ReplaceProperties, KeepsRealDrawingsAsTheyAre)
{
    namespace fs = std::filesystem;
    const fs::path folder = ZELVORA_REAL_DRAWINGS;
    if (!fs::exists(folder))
        GTEST_SKIP() << "no drawings in " << folder;
    int tried = 0;
    for (const char* version : {"2000", "2004", "2010", "2013", "2018"}) {
        if (!fs::exists(folder / version))
            continue;
        for (const auto& entry : fs::directory_iterator(folder / version)) {
            const auto file = readFile(entry.path().string());
            if (entry.path().extension() != ".dwg" || !file)
                continue;
            const auto changed = replaceProperties(*file, someProperties());
            if (!changed) {
                EXPECT_EQ(changed.error().code, ErrorCode::Unsupported) << entry.path();
                continue;
            }
            SCOPED_TRACE(entry.path());
            expectProperties(*changed, someProperties());
            expectSameDrawing(*file, *changed);
            ++tried;
        }
    }
    EXPECT_GT(tried, 0);
}

TEST(GapTree, OrdersGapsBySizeAndHangsEqualOnesBehindOneAnother)
{
    GapTree tree;
    EXPECT_EQ(tree.root(), 0);
    tree.add(-1, 100);
    tree.add(-2, 50);
    tree.add(-3, 200);
    tree.add(-4, 100);
    EXPECT_EQ(tree.root(), -1);
    EXPECT_EQ(tree.smallest(), -2);
    EXPECT_EQ(tree.largest(), -3);
    EXPECT_EQ(tree.fields(-1), (std::array<std::int32_t, 4>{0, -2, -3, -4}));
    EXPECT_EQ(tree.fields(-4), (std::array<std::int32_t, 4>{-1, 0, 0, 0}));
}

} // namespace
} // namespace zv::dwg
