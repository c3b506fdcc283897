#include "drawing/Writer.h"

#include "Describe.h"
#include "DrawingBuilder.h"
#include "drawing/EveryKind.h"
#include "drawing/Reader.h"
#include "drawing/container/Container.h"
#include "drawing/preview/Preview.h"
#include "drawing/properties/PropertiesReader.h"
#include "drawing/write/Bytes.h"
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
    p.lastSavedBy = u"Zo\u00EB";
    p.keywords = u"stair, steel";
    p.custom = {{u"Scale", u"48"}, {u"A", u"=1"}};
    return p;
}

void expectProperties(const std::string& file, const Properties& wanted)
{
    const auto read = readProperties(sourceOf(file));
    ASSERT_TRUE(read.ok()) << read.error().text;
    ASSERT_TRUE(read->has_value());
    const Properties& got = **read;
    EXPECT_EQ(got.title, wanted.title);
    EXPECT_EQ(got.subject, wanted.subject);
    EXPECT_EQ(got.author, wanted.author);
    EXPECT_EQ(got.comments, wanted.comments);
    EXPECT_EQ(got.keywords, wanted.keywords);
    EXPECT_EQ(got.lastSavedBy, wanted.lastSavedBy);
    EXPECT_EQ(got.revision, wanted.revision);
    EXPECT_EQ(got.hyperlinkBase, wanted.hyperlinkBase);
    EXPECT_EQ(got.custom, wanted.custom);
}

/// The file with other properties; they must be replaceable.
std::string replaced(const std::string& file, const Properties& properties)
{
    const auto result = replaceProperties(file, properties);
    EXPECT_TRUE(result.ok()) << (result.ok() ? "" : result.error().text);
    return result.ok() ? *result : std::string();
}

/// The bytes of a section; a text that no section has when it cannot be read.
std::string sectionOf(const std::string& file, Section which)
{
    const auto source = sourceOf(file);
    const auto container = Container::open(source);
    if (!container)
        return "error: " + container.error().text;
    const auto bytes = (*container)->section(which);
    return bytes ? textOf(*bytes) : "error: " + bytes.error().text;
}

/// Whether two files are the same drawing, entity by entity, with the same picture, and from R2004 on byte by
/// byte.
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
        for (std::size_t k = 0; k < was.size(); ++k) {
            EXPECT_EQ(is[k].handle, was[k].handle);
            EXPECT_EQ(test::describe(is[k].geometry), test::describe(was[k].geometry));
        }
    }
    const auto pictures = readPreviews(sourceOf(a)), kept = readPreviews(sourceOf(b));
    ASSERT_EQ(kept.ok(), pictures.ok());
    if (pictures) {
        ASSERT_EQ(kept->size(), pictures->size());
        for (std::size_t i = 0; i < pictures->size(); ++i)
            EXPECT_EQ((*kept)[i].bytes, (*pictures)[i].bytes);
    }
    if (a.substr(0, 6) == "AC1015")
        return;
    for (const Section which : {Section::Header, Section::Classes, Section::ObjectMap, Section::Objects,
                                Section::Template, Section::AuxHeader, Section::Preview})
        EXPECT_EQ(sectionOf(b, which), sectionOf(a, which)) << static_cast<int>(which);
}

/// A file of the version with sections of a drawing, and with a summary if `summary` says so.
std::string builtFile(const std::string& version, bool summary)
{
    std::vector<BuiltSection> sections{{"AcDb:Header", std::string(5000, 'h'), 0x400},
                                       {"AcDb:AcDbObjects", std::string(3000, 'o'), 0x400}};
    const int wide = version == "AC1018" ? 1 : 2;
    if (summary)
        sections.push_back({"AcDb:SummaryInfo",
                            littleEndian(3, 2) + std::string(static_cast<std::size_t>(3 * wide), 'x') +
                                std::string(14, '\0') + std::string(24, '\7') + std::string(10, '\0'),
                            0x100});
    return version == "AC1021" ? buildR2007(sections) : buildR2004(version, sections);
}

constexpr const char* kPaged[] = {"AC1018", "AC1021", "AC1024", "AC1027", "AC1032"};

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
    for (const char* version : kPaged) {
        SCOPED_TRACE(version);
        const std::string file = builtFile(version, true);
        for (const std::size_t length : {0u, 100u, 5000u, 60000u}) {
            const std::string once = replaced(file, someProperties(7)),
                              changed = replaced(once, someProperties(length));
            expectProperties(changed, someProperties(length));
            for (const Section which : {Section::Header, Section::Objects})
                EXPECT_EQ(sectionOf(changed, which), sectionOf(file, which));
            EXPECT_NE(sectionOf(changed, Section::SummaryInfo).find(std::string(24, '\7')), std::string::npos)
                << "the times stay";
            expectProperties(replaced(changed, {}), {});
        }
    }
}

TEST(ReplaceProperties, AddsASummaryWhereThereIsNone)
{
    for (const char* version : kPaged) {
        SCOPED_TRACE(version);
        const std::string file = builtFile(version, false), changed = replaced(file, someProperties());
        expectProperties(changed, someProperties());
        expectProperties(replaced(changed, someProperties(400)), someProperties(400));
        for (const Section which : {Section::Header, Section::Objects})
            EXPECT_EQ(sectionOf(changed, which), sectionOf(file, which));
    }
}

TEST(ReplaceProperties, ManyChangesDoNotMakeAFileLarger)
{
    for (const char* version : kPaged) {
        const std::string once = replaced(builtFile(version, true), someProperties());
        std::string changed = once;
        for (int i = 0; i < 5; ++i)
            changed = replaced(changed, someProperties());
        EXPECT_LE(changed.size(), once.size() + 0x400) << version;
    }
}

TEST(ReplaceProperties, TellsWhereTheSummaryStands)
{
    // Programs that only show the properties go there without a look at the maps.
    for (const char* version : kPaged) {
        const std::string changed = replaced(builtFile(version, true), someProperties());
        std::size_t place = 0;
        for (std::size_t i = 4; i-- > 0;)
            place = place << 8 | static_cast<unsigned char>(changed[0x20 + i]);
        const std::string summary = sectionOf(changed, Section::SummaryInfo);
        EXPECT_EQ(changed.substr(place, 0x40), summary.substr(0, 0x40)) << version;
    }
}

TEST(ReplaceProperties, RefusesWithAReason)
{
    EXPECT_EQ(replaceProperties("no drawing at all", {}).error().code, ErrorCode::Damaged);
    EXPECT_EQ(replaceProperties(buildR13("AC1014", {{"0", "h"}}), {}).error().code, ErrorCode::Unsupported);
    const auto file = writeDocument({}, {});
    ASSERT_TRUE(file.ok());
    Properties many;
    many.custom.resize(11);
    EXPECT_EQ(replaceProperties(*file, many).error().text, "more than ten custom properties");
    for (const std::string& each : {*file, builtFile("AC1018", true), builtFile("AC1021", true)}) {
        const auto refused = replaceProperties(each, someProperties(70000));
        ASSERT_FALSE(refused.ok());
        EXPECT_EQ(refused.error().text, "a property is longer than the format holds");
    }
}

TEST(ReplaceProperties, IsSafeOnAFileCutAnywhere)
{
    const auto file = writeDocument({}, {});
    ASSERT_TRUE(file.ok());
    for (std::size_t size = 0; size < file->size(); size += 7)
        (void)replaceProperties(file->substr(0, size), someProperties());
    for (const char* version : {"AC1021", "AC1027"}) {
        const std::string later = builtFile(version, true);
        for (std::size_t size = 0; size < later.size(); size += 5)
            (void)replaceProperties(later.substr(0, size), someProperties());
    }
}

TEST(ReplaceProperties, KeepsRealDrawingsAsTheyAre)
{
    namespace fs = std::filesystem;
    const fs::path folder = ZELVORA_REAL_DRAWINGS;
    if (!fs::exists(folder))
        GTEST_SKIP() << "no drawings in " << folder;
    int tried = 0;
    for (const char* version : {"2000", "2004", "2007", "2010", "2013", "2018"}) {
        if (!fs::exists(folder / version))
            continue;
        for (const auto& entry : fs::directory_iterator(folder / version)) {
            const auto file = readFile(entry.path().string());
            if (entry.path().extension() != ".dwg" || !file)
                continue;
            SCOPED_TRACE(entry.path());
            std::string changed = *file;
            // Short, long over several pages, and empty, one after the other.
            for (const Properties& properties : {someProperties(), someProperties(20000), Properties()}) {
                changed = replaced(changed, properties);
                expectProperties(changed, properties);
                expectSameDrawing(*file, changed);
            }
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
