#include "log/ActivityLog.h"

#include "platform/Files.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace zv {
namespace {

const std::string kHeader = "Zelvora Log File,\r\nDate:,Login:,DWG:,Method:,\r\n\r\n";

class ActivityLogTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::string log = folder.file("Zelvora_Log.csv");

    std::string written() const { return folder.read("Zelvora_Log.csv"); }
};

TEST_F(ActivityLogTest, AnEntryHasFourFieldsEachWithAComma)
{
    const std::string entry = logEntry("Ann", "C:\\d\\a.dwg", "Insert as Block");
    const std::string behindDate = ",Ann,C:\\d\\a.dwg,Insert as Block,";
    ASSERT_TRUE(entry.ends_with(behindDate)) << entry;
    EXPECT_GT(entry.size(), behindDate.size());
    EXPECT_EQ(std::count(entry.begin(), entry.end(), ','), 4);
}

TEST_F(ActivityLogTest, ACommaInAPathStaysAndAnActionWithoutAWordHasAnEmptyField)
{
    EXPECT_TRUE(logEntry("Ann", "a,b.dwg", "").ends_with(",Ann,a,b.dwg,,"));
}

TEST_F(ActivityLogTest, ANewLogBeginsWithItsHeader)
{
    writeLog(log, "one");
    EXPECT_EQ(written(), kHeader + "one\r\n");
    writeLog(log, "two");
    EXPECT_EQ(written(), kHeader + "one\r\ntwo\r\n");
}

TEST_F(ActivityLogTest, ALogThatWasDeletedIsMadeAnew)
{
    writeLog(log, "one");
    ASSERT_TRUE(deleteFileForced(log));
    writeLog(log, "two");
    EXPECT_EQ(written(), kHeader + "two\r\n");
}

TEST_F(ActivityLogTest, AFileWithoutAHeaderIsAddedToAsItIs)
{
    folder.write("Zelvora_Log.csv", "");
    writeLog(log, "one");
    EXPECT_EQ(written(), "one\r\n");
}

TEST_F(ActivityLogTest, ALastLineWithoutItsEndGetsOneFirst)
{
    folder.write("Zelvora_Log.csv", "old,");
    writeLog(log, "one");
    EXPECT_EQ(written(), "old,\r\none\r\n");
}

TEST_F(ActivityLogTest, AnEmptyEntryIsAnEmptyLine)
{
    writeLog(log, "");
    writeLog(log, "");
    EXPECT_EQ(written(), kHeader + "\r\n\r\n");
}

TEST_F(ActivityLogTest, APathOfNothingOrBlanksWritesNothing)
{
    writeLog("", "one");
    writeLog(" ", "one");
    EXPECT_FALSE(fileExists(" "));
}

TEST_F(ActivityLogTest, WhereNothingCanBeWrittenTheEntryIsLostInSilence)
{
    writeLog(folder.file("gone/Zelvora_Log.csv"), "one");
    writeLog(folder.path(), "one");
    EXPECT_FALSE(folderExists(folder.file("gone")));
}

TEST_F(ActivityLogTest, AReadOnlyLogStaysAsItIs)
{
    folder.write("Zelvora_Log.csv", "old\r\n");
    std::filesystem::permissions(log, std::filesystem::perms::owner_read);
    if (kPathSeparator == '\\' && std::ofstream(log, std::ios::app))
        GTEST_SKIP() << "Wine lets the administrator write to read-only files";
    writeLog(log, "one");
    EXPECT_EQ(written(), "old\r\n");
}

TEST_F(ActivityLogTest, NothingElseIsLeftInTheFolder)
{
    writeLog(log, "one");
    writeLog(log, "two");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(folder.path()), {}), 1);
}

} // namespace
} // namespace zv
