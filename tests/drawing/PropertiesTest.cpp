#include "drawing/properties/PropertiesReader.h"
#include "drawing/properties/PropertiesRecord.h"

#include "DrawingBuilder.h"

#include <gtest/gtest.h>

namespace zv::dwg {
namespace {

Result<std::optional<Properties>> propertiesOf(const std::string& file)
{
    const MemorySource source(std::as_bytes(std::span(file)));
    return readProperties(source);
}

/// A text of the summary section: in R2004 bytes with a zero at the end, later UTF-16.
std::string summaryText(const std::string& text, bool wide)
{
    std::string bytes = littleEndian(text.size() + 1, 2);
    for (const char c : text + '\0') {
        bytes += c;
        if (wide)
            bytes += '\0';
    }
    return bytes;
}

std::string summary(bool wide, const std::string& comments = "of steel",
                    const std::vector<std::pair<std::string, std::string>>& custom = {{"Scale", "50"},
                                                                                      {"A", ""}})
{
    std::string bytes;
    for (const std::string& text :
         {std::string("Stair"), std::string("Detail"), std::string("Ann"), std::string("stair, steel"),
          comments, std::string("Bob"), std::string("3"), std::string("http://a")})
        bytes += summaryText(text, wide);
    bytes += std::string(24, '\0') + littleEndian(custom.size(), 2);
    for (const auto& [name, value] : custom)
        bytes += summaryText(name, wide) + summaryText(value, wide);
    return bytes + std::string(8, '\0');
}

void expectStair(const std::string& file)
{
    const auto found = propertiesOf(file);
    ASSERT_TRUE(found.ok()) << found.error().text;
    ASSERT_TRUE(found->has_value());
    const Properties& p = **found;
    EXPECT_EQ(p.title, u"Stair");
    EXPECT_EQ(p.subject, u"Detail");
    EXPECT_EQ(p.author, u"Ann");
    EXPECT_EQ(p.keywords, u"stair, steel");
    EXPECT_EQ(p.comments, u"of steel");
    EXPECT_EQ(p.lastSavedBy, u"Bob");
    EXPECT_EQ(p.revision, u"3");
    EXPECT_EQ(p.hyperlinkBase, u"http://a");
    ASSERT_EQ(p.custom.size(), 2u);
    EXPECT_EQ(p.custom[0], std::pair(Text(u"Scale"), Text(u"50")));
    EXPECT_EQ(p.custom[1], std::pair(Text(u"A"), Text()));
}

TEST(Properties, FromTheSummarySectionOfEveryVersion)
{
    expectStair(buildR2004("AC1018", {{"AcDb:SummaryInfo", summary(false), 0x100}}));
    expectStair(buildR2007({{"AcDb:SummaryInfo", summary(true), 0x100}}));
    for (const char* version : {"AC1024", "AC1027", "AC1032"})
        expectStair(buildR2004(version, {{"AcDb:SummaryInfo", summary(true), 0x100}}));
}

TEST(Properties, LongSectionsRunOverSeveralPages)
{
    const std::string comments(5000, 'c');
    for (const std::string& file :
         {buildR2004("AC1018", {{"AcDb:SummaryInfo", summary(false, comments), 0x100}}),
          buildR2007({{"AcDb:SummaryInfo", summary(true, comments), 0x80}})}) {
        const auto found = propertiesOf(file);
        ASSERT_TRUE(found.ok() && found->has_value());
        EXPECT_EQ((*found)->comments, Text(5000, u'c'));
        EXPECT_EQ((*found)->custom.size(), 2u);
    }
}

TEST(Properties, BytesOfR2004AreInTheFilesCodePage)
{
    const auto found =
        propertiesOf(buildR2004("AC1018", {{"AcDb:SummaryInfo", summary(false, "\xC4\\U+20AC"), 0x100}}, 29));
    ASSERT_TRUE(found.ok() && found->has_value());
    EXPECT_EQ((*found)->comments, u"\u0414\u20AC");
}

TEST(Properties, NoneWithoutTheSection)
{
    for (const std::string& file : {buildR2004("AC1018", {{"AcDb:Header", std::string(50, 'x')}}),
                                    buildR2007({{"AcDb:Header", std::string(50, 'x')}})}) {
        const auto found = propertiesOf(file);
        ASSERT_TRUE(found.ok());
        EXPECT_FALSE(found->has_value());
    }
}

TEST(Properties, SectionMayEndBehindItsTexts)
{
    const std::string whole = summary(true);
    const std::size_t texts = whole.size() - 8 - (2 + 12 + 2 + 6 + 2 + 4 + 2 + 2) - 2 - 24;
    const auto found = propertiesOf(buildR2007({{"AcDb:SummaryInfo", whole.substr(0, texts)}}));
    ASSERT_TRUE(found.ok() && found->has_value());
    EXPECT_EQ((*found)->hyperlinkBase, u"http://a");
    EXPECT_TRUE((*found)->custom.empty());
}

TEST(Properties, CutTextsAreDamage)
{
    const std::string whole = summary(true);
    for (std::size_t size = 1; size < 100; ++size)
        EXPECT_EQ(propertiesOf(buildR2007({{"AcDb:SummaryInfo", whole.substr(0, size)}}, false)).error().code,
                  ErrorCode::Damaged)
            << size;
    std::string custom = whole;
    custom[custom.size() - 8 - 34] = '\xFF'; // the count of custom properties
    EXPECT_FALSE(propertiesOf(buildR2007({{"AcDb:SummaryInfo", custom}})).ok());
}

// ---- the record before R2004

std::string value(int code, const std::string& text, int codePage = 30)
{
    return littleEndian(static_cast<std::uint64_t>(code), 2) + littleEndian(text.size(), 2) +
           static_cast<char>(codePage) + text;
}

std::optional<Properties> parse(const std::string& data)
{
    return parsePropertiesRecord(std::as_bytes(std::span(data)), Version::R2000, 30);
}

TEST(Properties, FromTheRecordByGroupCodes)
{
    const auto found =
        parse(value(1, "DWGPROPS COOKIE") + value(2, "Stair") + value(3, "Detail") + value(4, "Ann") +
              value(6, "of steel") + value(7, "stair") + value(8, "Bob") + value(9, "3") +
              value(300, "Scale=50") + value(301, "=") + value(302, "A=b=c") + value(303, "X=") +
              littleEndian(40, 2) + std::string(8, '\0') + littleEndian(10, 2) + std::string(24, '\0') +
              littleEndian(90, 2) + std::string(4, '\0') + littleEndian(280, 2) + std::string(1, '\0') +
              littleEndian(310, 2) + std::string("\2xy") + value(1, "http://a"));
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->title, u"Stair");
    EXPECT_EQ(found->subject, u"Detail");
    EXPECT_EQ(found->author, u"Ann");
    EXPECT_EQ(found->comments, u"of steel");
    EXPECT_EQ(found->keywords, u"stair");
    EXPECT_EQ(found->lastSavedBy, u"Bob");
    EXPECT_EQ(found->revision, u"3");
    EXPECT_EQ(found->hyperlinkBase, u"http://a");
    ASSERT_EQ(found->custom.size(), 3u);
    EXPECT_EQ(found->custom[0], std::pair(Text(u"Scale"), Text(u"50")));
    EXPECT_EQ(found->custom[1], std::pair(Text(u"A"), Text(u"b=c")));
    EXPECT_EQ(found->custom[2], std::pair(Text(u"X"), Text()));
}

TEST(Properties, TextsOfTheRecordHaveTheirOwnCodePage)
{
    const auto found = parse(value(2, "\xC4", 29));
    ASSERT_TRUE(found.has_value());
    EXPECT_EQ(found->title, u"\u0414");
}

TEST(Properties, CutRecordIsDamage)
{
    const std::string whole = value(1, "DWGPROPS COOKIE") + value(2, "Stair");
    EXPECT_FALSE(parse(whole.substr(0, whole.size() - 1)).has_value());
    EXPECT_FALSE(parse(littleEndian(999, 2) + "xx").has_value());
}

} // namespace
} // namespace zv::dwg
