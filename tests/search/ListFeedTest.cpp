#include "search/ListFeed.h"

#include "platform/FileText.h"
#include "platform/Files.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <vector>

namespace zv {
namespace {

class ListFeedTest : public testing::Test {
protected:
    ListFeed feedOf(const std::string& bytes)
    {
        EXPECT_TRUE(writeFile(path, bytes));
        auto source = openByteSource(path);
        EXPECT_TRUE(source);
        return ListFeed(std::move(source.value()));
    }
    /// All lines that there are now.
    static std::vector<std::string> lines(ListFeed& feed)
    {
        std::vector<std::string> taken;
        do {
            while (feed.hasLine())
                taken.push_back(feed.takeLine());
        } while (feed.readOn().valueOr(false));
        if (const auto rest = feed.takeRest())
            taken.push_back(*rest);
        return taken;
    }

    TemporaryFolder folder;
    const std::string path = folder.file("Doors.lst");
};

using Lines = std::vector<std::string>;

TEST_F(ListFeedTest, GivesLinesOfEveryKindOfEnd)
{
    auto feed = feedOf("one\r\ntwo\nthree\rfour");
    EXPECT_EQ(lines(feed), (Lines{"one", "two", "three", "four"}));
    EXPECT_EQ(lines(feed), Lines());
}

TEST_F(ListFeedTest, KeepsBlankLines)
{
    auto feed = feedOf("\r\n\r\nx\r\n");
    EXPECT_EQ(lines(feed), (Lines{"", "", "x"}));
}

TEST_F(ListFeedTest, GivesLinesInTheProgramsOwnText)
{
    const std::string old = "C:\\T\xFCr.dwg;T\xFCr", own = "C:\\\xE9\x97\xA8.dwg;\xC3\x9C";
    auto feed = feedOf(old + "\r\n" + own + "\r\n" + old);
    EXPECT_EQ(lines(feed), (Lines{textFromFile(old), own, textFromFile(old)}));
}

TEST_F(ListFeedTest, AnEmptyFileHasNoLine)
{
    auto feed = feedOf("");
    EXPECT_EQ(lines(feed), Lines());
}

TEST_F(ListFeedTest, GivesWhatIsAddedMeanwhile)
{
    auto feed = feedOf("one\r\n");
    ASSERT_TRUE(feed.readOn().valueOr(false));
    ASSERT_TRUE(appendLines(path, "two\r\n"));
    EXPECT_EQ(lines(feed), (Lines{"one", "two"}));
}

TEST_F(ListFeedTest, ReadsAListOfManyPieces)
{
    std::string bytes;
    const std::size_t count = 100'000;
    for (std::size_t i = 0; i < count; ++i)
        bytes += "C:\\Library\\Drawing number " + std::to_string(i) + ".dwg;Label\r\n";
    auto feed = feedOf(bytes);
    ASSERT_TRUE(feed.readOn().valueOr(false));
    EXPECT_NEAR(double(feed.expectedLines()), double(count), 0.02 * double(count)) << "from a part of it";
    const Lines taken = lines(feed);
    ASSERT_EQ(taken.size(), count);
    EXPECT_EQ(taken.back(), "C:\\Library\\Drawing number 99999.dwg;Label");
    EXPECT_EQ(feed.expectedLines(), count);
}

TEST_F(ListFeedTest, RefusesALineWithoutEnd)
{
    auto feed = feedOf(std::string(4U << 20, 'x'));
    Result<bool> more = true;
    for (int i = 0; i < 4 && more; ++i)
        more = feed.readOn();
    ASSERT_FALSE(more);
    EXPECT_EQ(more.error().code, ErrorCode::TooLarge);
}

} // namespace
} // namespace zv
