#include "queue/QueueFile.h"

#include "platform/FileText.h"
#include "platform/Files.h"
#include "support/FailingFiles.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>

namespace zv {
namespace {

using Drawings = std::vector<std::string>;

class QueueFileTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string queue = queuePath(folder.path(), "Ann");
};

TEST_F(QueueFileTest, TheQueueStandsInTheUsersFolderUnderTheLoginName)
{
    EXPECT_EQ(queue, folder.path() + kPathSeparator + "Ann.crt");
}

TEST_F(QueueFileTest, AddingMakesTheQueueAndAddsWholeLinesInOrder)
{
    ASSERT_TRUE(addToQueue(queue, "C:\\b.dwg"));
    ASSERT_TRUE(addToQueue(queue, "C:\\a;\xFF.dwg"));
    EXPECT_EQ(folder.read("Ann.crt"), "C:\\b.dwg\r\nC:\\a;\xFF.dwg\r\n");
}

TEST_F(QueueFileTest, ALastLineWithoutItsEndGetsOneFirst)
{
    folder.write("Ann.crt", "a.dwg");
    ASSERT_TRUE(addToQueue(queue, "b.dwg"));
    EXPECT_EQ(folder.read("Ann.crt"), "a.dwg\r\nb.dwg\r\n");
}

TEST_F(QueueFileTest, TheLineStandsInTheFileBeforeItIsClosed)
{
    std::string seen;
    ASSERT_TRUE(addToQueue(queue, "a.dwg", [&] { seen = folder.read("Ann.crt"); }));
    EXPECT_EQ(seen, "a.dwg\r\n");
}

TEST_F(QueueFileTest, NothingIsToldOfADrawingThatCannotBeAdded)
{
    std::filesystem::create_directory(queue);
    bool told = false;
    EXPECT_FALSE(addToQueue(queue, "a.dwg", [&] { told = true; }));
    EXPECT_FALSE(told);
}

TEST_F(QueueFileTest, TheSameDrawingAgainIsTwoEntries)
{
    ASSERT_TRUE(addToQueue(queue, "a.dwg"));
    ASSERT_TRUE(addToQueue(queue, "a.dwg"));
    EXPECT_EQ(readQueue(queue).valueOr({}), (Drawings{"a.dwg", "a.dwg"}));
}

TEST_F(QueueFileTest, AnEmptyPathIsAnEmptyLine)
{
    ASSERT_TRUE(addToQueue(queue, ""));
    EXPECT_EQ(folder.read("Ann.crt"), "\r\n");
}

TEST_F(QueueFileTest, LinesOfNoneOrOneCharacterAreNotRead)
{
    folder.write("Ann.crt", "\r\na\r\nab\r\n\r\nlast.dwg");
    EXPECT_EQ(readQueue(queue).valueOr({}), (Drawings{"ab", "last.dwg"}));
}

TEST_F(QueueFileTest, PathsAreReadInTheProgramsOwnText)
{
    folder.write("Ann.crt", "C:\\T\xFCr.dwg\r\nC:\\\xE9\x97\xA8.dwg\r\n");
    EXPECT_EQ(readQueue(queue).valueOr({}),
              (Drawings{textFromFile("C:\\T\xFCr.dwg"), "C:\\\xE9\x97\xA8.dwg"}));
}

TEST_F(QueueFileTest, APathHasTwoCharactersHoweverManyBytesTheyTake)
{
    EXPECT_FALSE(isQueuedPath(""));
    EXPECT_FALSE(isQueuedPath("a"));
    EXPECT_TRUE(isQueuedPath("ab"));
    if (std::setlocale(LC_ALL, "C.UTF-8") != nullptr) {
        EXPECT_FALSE(isQueuedPath("\xC3\xA4"));
        EXPECT_TRUE(isQueuedPath("\xC3\xA4\xC3\xA4"));
    }
    std::setlocale(LC_ALL, "C");
}

TEST_F(QueueFileTest, AMissingQueueAndAFolderAreErrors)
{
    EXPECT_EQ(readQueue(queue).error().code, ErrorCode::NotFound);
    std::filesystem::create_directory(queue);
    EXPECT_FALSE(readQueue(queue));
    EXPECT_FALSE(addToQueue(queue, "a.dwg"));
    EXPECT_FALSE(saveQueue(queue, {}));
}

TEST_F(QueueFileTest, AFileThatIsLargerThanAnyQueueIsRefusedBeforeItIsRead)
{
    ASSERT_TRUE(addToQueue(queue, "a.dwg"));
    std::filesystem::resize_file(queue, std::uint64_t{3} << 30);
    const FailingFiles files(Fault::Fails, -1);
    EXPECT_EQ(readQueue(queue).error().code, ErrorCode::TooLarge);
    EXPECT_EQ(std::count(files.steps().begin(), files.steps().end(), FileStep::Read), 0);
}

TEST_F(QueueFileTest, SavingReplacesTheQueue)
{
    ASSERT_TRUE(addToQueue(queue, "a.dwg"));
    ASSERT_TRUE(saveQueue(queue, {"b.dwg", "c.dwg"}));
    EXPECT_EQ(folder.read("Ann.crt"), "b.dwg\r\nc.dwg\r\n");
    ASSERT_TRUE(saveQueue(queue, {}));
    EXPECT_EQ(folder.read("Ann.crt"), "");
    EXPECT_TRUE(fileExists(queue));
}

} // namespace
} // namespace zv
