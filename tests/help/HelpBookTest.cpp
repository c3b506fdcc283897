#include "help/HelpBook.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <random>
#include <sstream>
#include <sys/stat.h>

namespace zv {
namespace {

std::string bookBytes()
{
    std::ifstream file(TEST_BOOK, std::ios::binary);
    std::ostringstream bytes;
    bytes << file.rdbuf();
    return bytes.str();
}

class HelpBookTest : public testing::Test {
protected:
    void SetUp() override
    {
        Result<std::unique_ptr<HelpBook>> opened = HelpBook::open(TEST_BOOK);
        ASSERT_TRUE(opened);
        book = std::move(*opened);
    }
    std::unique_ptr<HelpBook> book;
};

class DamagedBookTest : public testing::Test {
protected:
    ~DamagedBookTest() override { std::filesystem::remove(path); }

    /// Opens a book of these bytes and reads all that a viewer would.
    ErrorCode use(const std::string& bytes)
    {
        std::ofstream(path, std::ios::binary) << bytes;
        const Result<std::unique_ptr<HelpBook>> book = HelpBook::open(path);
        if (!book)
            return book.error().code;
        (*book)->search("door");
        for (const HelpEntry& entry : (*book)->contents())
            (void)(*book)->file(entry.page);
        return ErrorCode::Failed;
    }

    std::string path =
        testing::TempDir() + testing::UnitTest::GetInstance()->current_test_info()->name() + ".chm";
};

TEST_F(HelpBookTest, KnowsItsTitleAndItsFirstPage)
{
    EXPECT_EQ(book->title(), "A Small Book");
    EXPECT_EQ(book->home(), "start.html");
}

TEST_F(HelpBookTest, HasItsContentsAsATree)
{
    const std::vector<HelpEntry>& contents = book->contents();
    ASSERT_EQ(contents.size(), 2U);
    EXPECT_EQ(contents[0].title, "Start & more");
    EXPECT_EQ(contents[0].page, "start.html");
    EXPECT_EQ(contents[1].title, "Chapter");
    EXPECT_EQ(contents[1].page, "");
    ASSERT_EQ(contents[1].children.size(), 2U);
    EXPECT_EQ(contents[1].children[1].page, "folder/third.html");
}

TEST_F(HelpBookTest, HasItsIndexInOrder)
{
    ASSERT_EQ(book->index().size(), 2U);
    EXPECT_EQ(book->index()[0].title, "doors");
    EXPECT_EQ(book->index()[0].page, "second.html#doors");
    EXPECT_EQ(book->index()[1].title, "walls");
}

TEST_F(HelpBookTest, GivesItsFiles)
{
    const Result<std::string> page = book->file("second.html#doors");
    ASSERT_TRUE(page);
    EXPECT_NE(page->find("A door is drawn"), std::string::npos);
    const Result<std::string> picture = book->file("/pictures/dot.png");
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->substr(1, 3), "PNG");
    for (const char* missing : {"", "#place", "none.html", "/"}) {
        const Result<std::string> none = book->file(missing);
        ASSERT_FALSE(none) << missing;
        EXPECT_EQ(none.error().code, ErrorCode::NotFound);
    }
    EXPECT_FALSE(book->file(std::string(100000, 'x')));
}

TEST_F(HelpBookTest, FindsThePagesThatHoldAllWords)
{
    const std::vector<HelpFinding> doors = book->search("DOOR");
    ASSERT_EQ(doors.size(), 2U);
    EXPECT_EQ(doors[0].page, "second.html");
    EXPECT_EQ(doors[0].count, 3);
    EXPECT_EQ(doors[1].title, "Third <3>");
    const std::vector<HelpFinding> both = book->search("door, wall");
    ASSERT_EQ(both.size(), 1U);
    EXPECT_EQ(both[0].page, "folder/third.html");
    EXPECT_EQ(book->search("Stra\xc3\x9f").size(), 1U);
    EXPECT_TRUE(book->search("hidden").empty());
    EXPECT_TRUE(book->search("nowhere").empty());
    EXPECT_TRUE(book->search(" ").empty());
}

TEST(HelpBook, AMissingFileIsNotFound)
{
    const Result<std::unique_ptr<HelpBook>> book = HelpBook::open("/no such folder/book.chm");
    ASSERT_FALSE(book);
    EXPECT_EQ(book.error().code, ErrorCode::NotFound);
}

TEST_F(DamagedBookTest, WhatIsNoBookIsRefused)
{
    EXPECT_EQ(use(""), ErrorCode::Damaged);
    EXPECT_EQ(use("ITSF"), ErrorCode::Damaged);
    EXPECT_EQ(use(std::string(5000, 'x')), ErrorCode::Damaged);
}

TEST_F(DamagedBookTest, EveryTruncationIsTakenWithoutHarm)
{
    const std::string whole = bookBytes();
    for (std::size_t size = 0; size < whole.size(); size += 61)
        use(whole.substr(0, size));
    EXPECT_EQ(use(whole.substr(0, 200)), ErrorCode::Damaged);
}

TEST_F(DamagedBookTest, AnyDamageIsTakenWithoutHarm)
{
    const std::string whole = bookBytes();
    std::mt19937 random(3);
    for (int round = 0; round < 1500; ++round) {
        std::string bytes = whole;
        for (int i = 0; i < 3; ++i)
            bytes[random() % bytes.size()] = static_cast<char>(random());
        use(bytes);
    }
}

TEST_F(DamagedBookTest, HalfABookIsRefused)
{
    const std::string whole = bookBytes();
    EXPECT_EQ(use(whole), ErrorCode::Failed) << "the whole one is not";
    for (const std::size_t parts : {2U, 3U, 4U})
        EXPECT_EQ(use(whole.substr(0, whole.size() / parts)), ErrorCode::Damaged) << parts;
}

TEST_F(DamagedBookTest, PipeInItsPlaceIsNotWaitedFor)
{
    ASSERT_EQ(::mkfifo(path.c_str(), 0600), 0);
    EXPECT_FALSE(HelpBook::open(path));
}

TEST(HelpText, ASiteMapMayBeDeepCutShortOrSenseless)
{
    std::string deep;
    for (int i = 0; i < 5000; ++i)
        deep += "<ul><li><object type=\"text/sitemap\"><param name=\"Name\" value=\"n\"></object>";
    std::size_t depth = 0;
    const std::vector<HelpEntry> tree = readSiteMap(deep);
    for (const std::vector<HelpEntry>* list = &tree; !list->empty(); list = &list->front().children)
        ++depth;
    EXPECT_EQ(depth, 32U);
    const std::string map =
        "<ul><object type=\"text/sitemap\"><param name=\"Name\" value='a \"b\" &lt; c'></object>";
    for (std::size_t size = 0; size < map.size(); ++size)
        EXPECT_TRUE(readSiteMap(std::string_view(map).substr(0, size)).empty()) << size;
    ASSERT_EQ(readSiteMap(map).size(), 1U);
    EXPECT_EQ(readSiteMap(map)[0].title, "a \"b\" < c");
    EXPECT_TRUE(readSiteMap("</ul></ul></object><param name=\"Name\" value=\"x\">").empty());
}

TEST(HelpText, WordsLeaveOutMarksCommentsAndStyles)
{
    EXPECT_EQ(wordsOfPage("<p class=\"x\">One&nbsp;two,<!-- no > more --><style>red</style>THREE_3</p>"),
              (std::vector<std::string>{"one", "two", "three_3"}));
    EXPECT_EQ(wordsOfPage("a &unknown; b & c &#65; &#x; <"),
              (std::vector<std::string>{"a", "unknown", "b", "c", "a", "x"}));
}

TEST(HelpText, ATitleIsWhatStandsInTheTitleMark)
{
    EXPECT_EQ(titleOfPage("<html><head><TITLE>A &amp; B</TITLE></head><body>C"), "A & B");
    EXPECT_EQ(titleOfPage("<p>none"), "");
}

} // namespace
} // namespace zv
