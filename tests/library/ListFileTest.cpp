#include "library/ListFile.h"

#include "platform/Files.h"
#include "support/FailingFiles.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace zv {
namespace {

class ListFileTest : public testing::Test {
protected:
    TemporaryFolder folder;

    std::string list(const std::string& bytes) { return folder.write("a.lst", bytes); }
    std::vector<ListLine> lines(const std::string& bytes) { return readListFile(list(bytes)).valueOr({}); }
};

std::string manyLines(std::size_t count)
{
    std::string bytes;
    for (std::size_t i = 0; i < count; ++i)
        bytes += "C:\\details\\door" + std::to_string(i) + ".dwg;DOOR" + std::to_string(i) + "\r\n";
    return bytes;
}

TEST_F(ListFileTest, PathsOfListsAreFormedByConcatenation)
{
    const std::string separator(1, kPathSeparator);
    EXPECT_EQ(listFilePath("M", "Doors"), "M" + separator + "Doors.lst");
    EXPECT_EQ(listFilePath("M", ""), "M" + separator + ".lst");
    EXPECT_EQ(listWorkingCopy("M/Doors.lst"), "M/Doors.ls$");
    EXPECT_EQ(listWorkingCopy("M/Doors.LST"), "M/Doors.ls$");
    EXPECT_EQ(listWorkingCopy("M/a.lst.lst"), "M/a.lst.ls$");
    EXPECT_EQ(listWorkingCopy("x"), "x.ls$");
}

TEST_F(ListFileTest, LinesSplitAtTheirLastSemicolon)
{
    const std::vector<ListLine> read = lines("C:\\A;B\\x.dwg;X\r\nC:\\\\y.dwg;\r\n;only\r\n");
    ASSERT_EQ(read.size(), 3u);
    EXPECT_EQ(read[0].path, "C:\\A;B\\x.dwg");
    EXPECT_EQ(read[0].label, "X");
    EXPECT_EQ(read[1].path, "C:\\\\y.dwg");
    EXPECT_EQ(read[1].label, "");
    EXPECT_EQ(read[2].path, "");
    EXPECT_EQ(read[2].label, "only");
    EXPECT_TRUE(read[0].separated && read[1].separated && read[2].separated);
}

TEST_F(ListFileTest, OneLabelIsFoundByItsPlace)
{
    const std::string file = list("/a;b.dwg;A\r\nloose\r\n/c.dwg;\r\n");
    EXPECT_EQ(listLabel(file, 1), "A");
    EXPECT_EQ(listLabel(file, 2), "loose");
    EXPECT_EQ(listLabel(file, 3), "");
    EXPECT_EQ(listLabel(file, 0), std::nullopt);
    EXPECT_EQ(listLabel(file, 4), std::nullopt);
    EXPECT_EQ(listLabel(file + "x", 1), std::nullopt);
}

TEST_F(ListFileTest, AnEmptyFileIsALibraryWithNoDrawings)
{
    const Result<std::vector<ListLine>> read = readListFile(list(""));
    ASSERT_TRUE(read);
    EXPECT_TRUE(read->empty());
}

TEST_F(ListFileTest, AMissingListAndAFolderAreErrors)
{
    EXPECT_EQ(readListFile(folder.file("none.lst")).error().code, ErrorCode::NotFound);
    EXPECT_FALSE(readListFile(folder.path()));
}

TEST_F(ListFileTest, EveryKindOfLineEndIsRead)
{
    const std::vector<ListLine> read = lines("a;1\r\nb;2\nc;3\rd;4");
    ASSERT_EQ(read.size(), 4u);
    EXPECT_EQ(read[0].label, "1");
    EXPECT_EQ(read[1].label, "2");
    EXPECT_EQ(read[2].label, "3");
    EXPECT_EQ(read[3].path, "d");
    EXPECT_EQ(read[3].label, "4");
}

TEST_F(ListFileTest, ALineWithoutASemicolonIsAllLabelUnderThePathBeforeIt)
{
    const std::vector<ListLine> read = lines("first\r\na;1\r\n\r\nloose\r\n");
    ASSERT_EQ(read.size(), 4u);
    EXPECT_FALSE(read[0].separated);
    EXPECT_EQ(read[0].path, "");
    EXPECT_EQ(read[0].label, "first");
    EXPECT_FALSE(read[2].separated);
    EXPECT_EQ(read[2].path, "a");
    EXPECT_EQ(read[2].label, "");
    EXPECT_FALSE(read[3].separated);
    EXPECT_EQ(read[3].path, "a");
    EXPECT_EQ(read[3].label, "loose");
}

TEST_F(ListFileTest, AddingWritesWholeLinesAtTheEnd)
{
    ASSERT_TRUE(appendToList(folder.file("new.lst"), {{"C:\\a.dwg", "A"}}));
    ASSERT_TRUE(appendToList(folder.file("new.lst"), {{"C:\\b;c.dwg", ""}, {"C:\\d.dwg", "D"}}));
    EXPECT_EQ(folder.read("new.lst"), "C:\\a.dwg;A\r\nC:\\b;c.dwg;\r\nC:\\d.dwg;D\r\n");
}

TEST_F(ListFileTest, AddingToALastLineWithoutEndKeepsTheLinesApart)
{
    ASSERT_TRUE(appendToList(list("a;1"), {{"b", "2"}}));
    EXPECT_EQ(folder.read("a.lst"), "a;1\r\nb;2\r\n");
}

TEST_F(ListFileTest, MakingAListReplacesAnOldOne)
{
    ASSERT_TRUE(createList(list("old;1\r\n"), {{"a", "A"}}));
    EXPECT_EQ(folder.read("a.lst"), "a;A\r\n");
    ASSERT_TRUE(createList(folder.file("a.lst"), {}));
    EXPECT_EQ(folder.read("a.lst"), "");
    EXPECT_FALSE(fileExists(folder.file("a.ls$")));
}

TEST_F(ListFileTest, RemovingLeavesOutOneLine)
{
    const std::string path = list("a;1\r\nb;2\r\nc;3\r\n");
    ASSERT_TRUE(removeListLine(path, 2));
    EXPECT_EQ(folder.read("a.lst"), "a;1\r\nc;3\r\n");
    ASSERT_TRUE(removeListLine(path, 3));
    ASSERT_TRUE(removeListLine(path, 0));
    EXPECT_EQ(folder.read("a.lst"), "a;1\r\nc;3\r\n");
    ASSERT_TRUE(removeListLine(path, 1));
    ASSERT_TRUE(removeListLine(path, 1));
    EXPECT_EQ(folder.read("a.lst"), "");
    EXPECT_TRUE(fileExists(path)) << "without drawings the list is empty, not missing";
    EXPECT_FALSE(fileExists(folder.file("a.ls$")));
}

TEST_F(ListFileTest, AnotherLabelChangesItsLineAlone)
{
    const std::string path = list("C:\\A;B\\x.dwg;X\r\nb;2\r\n");
    ASSERT_TRUE(changeListLabel(path, 1, "new"));
    EXPECT_EQ(folder.read("a.lst"), "C:\\A;B\\x.dwg;new\r\nb;2\r\n");
    ASSERT_TRUE(changeListLabel(path, 2, ""));
    EXPECT_EQ(folder.read("a.lst"), "C:\\A;B\\x.dwg;new\r\nb;\r\n");
}

TEST_F(ListFileTest, ALabelWithASemicolonSplitsThereFromThenOn)
{
    const std::string path = list("a.dwg;1\r\n");
    ASSERT_TRUE(changeListLabel(path, 1, "x;y"));
    const std::vector<ListLine> read = readListFile(path).valueOr({});
    ASSERT_EQ(read.size(), 1u);
    EXPECT_EQ(read[0].path, "a.dwg;x");
    EXPECT_EQ(read[0].label, "y");
}

TEST_F(ListFileTest, ALineWithoutASemicolonIsAllPathForItsFirstLabel)
{
    ASSERT_TRUE(changeListLabel(list("a;1\r\nloose\r\n"), 2, "x"));
    EXPECT_EQ(folder.read("a.lst"), "a;1\r\nloose;x\r\n");
}

TEST_F(ListFileTest, OtherLinesWithoutASemicolonKeepTheirBytes)
{
    const std::string path = list("loose\r\na;1\r\n\r\nb;2\r\n");
    EXPECT_EQ(readListFile(path)->front().shownPath(), "loose");
    EXPECT_EQ((*readListFile(path))[1].shownPath(), "a");
    ASSERT_TRUE(changeListLabel(path, 2, "x"));
    EXPECT_EQ(folder.read("a.lst"), "loose\r\na;x\r\n\r\nb;2\r\n");
    ASSERT_TRUE(removeListLine(path, 2));
    EXPECT_EQ(folder.read("a.lst"), "loose\r\n\r\nb;2\r\n");
    ASSERT_TRUE(moveListLine(path, 3, 2, "b"));
    EXPECT_EQ(folder.read("a.lst"), "loose\r\nb;2\r\n\r\n");
}

TEST_F(ListFileTest, MovingChangesTheOrderAndNoByteOfALine)
{
    const std::string path = list("a;1\r\nb;2\r\nc;3\r\n");
    ASSERT_TRUE(moveListLine(path, 2, 1, "b"));
    EXPECT_EQ(folder.read("a.lst"), "b;2\r\na;1\r\nc;3\r\n");
    ASSERT_TRUE(moveListLine(path, 2, 3, "a"));
    EXPECT_EQ(folder.read("a.lst"), "b;2\r\nc;3\r\na;1\r\n");
    EXPECT_FALSE(fileExists(folder.file("a.ls$")));
}

TEST_F(ListFileTest, WhatAnotherUserAddedStaysThroughAMove)
{
    const std::string path = list("a;1\r\nb;2\r\n");
    ASSERT_TRUE(appendToList(path, {{"c", "3"}}));
    ASSERT_TRUE(moveListLine(path, 2, 1, "b"));
    EXPECT_EQ(folder.read("a.lst"), "b;2\r\na;1\r\nc;3\r\n");
}

TEST_F(ListFileTest, ALineThatIsNotWhereTheUserSeesItIsLeftAlone)
{
    const std::string bytes = "new;0\r\na;1\r\nb;2\r\n";
    const std::string path = list(bytes);
    EXPECT_EQ(moveListLine(path, 2, 1, "b").error().code, ErrorCode::Busy);
    EXPECT_EQ(removeListLine(path, 1, "a").error().code, ErrorCode::Busy);
    EXPECT_EQ(changeListLabel(path, 2, "x", "b").error().code, ErrorCode::Busy);
    EXPECT_EQ(removeListLine(path, 4, "b").error().code, ErrorCode::Busy) << "the list has become shorter";
    EXPECT_EQ(folder.read("a.lst"), bytes);
    ASSERT_TRUE(changeListLabel(path, 3, "x", "b"));
    ASSERT_TRUE(removeListLine(path, 2, "a"));
    EXPECT_EQ(folder.read("a.lst"), "new;0\r\nb;x\r\n");
}

TEST_F(ListFileTest, BytesThatAreNoTextSurviveARewrite)
{
    std::string odd;
    for (int i = 1; i < 256; ++i) {
        if (i != '\r' && i != '\n')
            odd.push_back(static_cast<char>(i));
    }
    const std::string kept = odd + std::string("\0", 1) + ";" + odd + "\r\n";
    const std::string path = list(kept + "b;2\r\n" + kept);
    ASSERT_TRUE(removeListLine(path, 2));
    EXPECT_EQ(folder.read("a.lst"), kept + kept);
    ASSERT_TRUE(changeListLabel(path, 1, "\xFF\x80"));
    EXPECT_EQ(folder.read("a.lst"),
              odd + std::string("\0", 1) + ";" + odd.substr(0, odd.rfind(';')) + ";\xFF\x80\r\n" + kept);
}

TEST_F(ListFileTest, AReadOnlyListIsRewrittenToo)
{
    const std::string path = list("a;1\r\nb;2\r\n");
    std::filesystem::permissions(path, std::filesystem::perms::owner_read);
    ASSERT_TRUE(removeListLine(path, 1));
    EXPECT_EQ(folder.read("a.lst"), "b;2\r\n");
    EXPECT_TRUE(appendToList(path, {{"c", "3"}}));
}

TEST_F(ListFileTest, AFailedRewriteLeavesTheListAsItWas)
{
    const std::string path = list("a;1\r\nb;2\r\n");
    std::filesystem::create_directory(folder.file("a.ls$"));
    EXPECT_FALSE(removeListLine(path, 1));
    EXPECT_FALSE(changeListLabel(path, 1, "x"));
    EXPECT_FALSE(createList(path, {{"c", "3"}}));
    EXPECT_EQ(folder.read("a.lst"), "a;1\r\nb;2\r\n");
    EXPECT_EQ(removeListLine(folder.file("none.lst"), 1).error().code, ErrorCode::NotFound);
}

TEST_F(ListFileTest, TheLargestLibraryIsReadWhole)
{
    const std::vector<ListLine> read = lines(manyLines(kMostListLines));
    ASSERT_EQ(read.size(), kMostListLines);
    EXPECT_EQ(read.back().path, "C:\\details\\door32766.dwg");
    EXPECT_EQ(read.back().label, "DOOR32766");
}

TEST_F(ListFileTest, AFileThatIsLargerThanAnyListIsRefusedBeforeItIsRead)
{
    const std::string path = folder.write("a.lst", "a;b\r\n");
    std::filesystem::resize_file(path, std::uint64_t{3} << 30);
    FailingFiles files(Fault::Fails, -1);
    EXPECT_EQ(readListFile(path).error().code, ErrorCode::TooLarge);
    EXPECT_EQ(appendToList(path, {{"a", "b"}}).error().code, ErrorCode::TooLarge);
    EXPECT_EQ(removeListLine(path, 1).error().code, ErrorCode::TooLarge);
    EXPECT_EQ(std::count(files.steps().begin(), files.steps().end(), FileStep::Read), 0);
}

TEST_F(ListFileTest, ErrorsNameTheListInItsOwnBytes)
{
    const std::string path = joinPath(folder.path(), "\xE4.lst");
    EXPECT_TRUE(readListFile(path).error().text.starts_with(path));
    // What a list cannot hold is told of one whose name every system takes.
    const std::string longList = list(std::string(32768, '\n'));
    EXPECT_TRUE(readListFile(longList).error().text.starts_with(longList));
}

TEST_F(ListFileTest, ANameThatWouldBeTwoLinesIsRefusedAndChangesNothing)
{
    const std::string path = list("/d/a.dwg;A\r\n");
    for (const char* name : {"/d/x\n/d/evil.dwg", "/d/x\r.dwg"}) {
        const ListEntry entry{name, "X"};
        EXPECT_EQ(appendToList(path, {{"/d/b.dwg", "B"}, entry}).error().code, ErrorCode::Failed);
        EXPECT_EQ(createList(path, {entry}).error().code, ErrorCode::Failed);
    }
    EXPECT_EQ(folder.read("a.lst"), "/d/a.dwg;A\r\n");
}

TEST_F(ListFileTest, OneLineMoreIsRefusedEverywhereAndChangesNothing)
{
    const std::string bytes = manyLines(kMostListLines);
    const std::string full = list(bytes);
    EXPECT_EQ(appendToList(full, {{"a", "A"}}).error().code, ErrorCode::TooLarge);
    EXPECT_EQ(folder.read("a.lst"), bytes);
    ASSERT_TRUE(changeListLabel(full, kMostListLines, "LAST"));

    const std::string tooLong = folder.write("b.lst", bytes + "a;A\r\n");
    EXPECT_EQ(readListFile(tooLong).error().code, ErrorCode::TooLarge);
    EXPECT_NE(readListFile(tooLong).error().text.find("32767"), std::string::npos);
    EXPECT_EQ(removeListLine(tooLong, 1).error().code, ErrorCode::TooLarge);
    EXPECT_EQ(changeListLabel(tooLong, 1, "x").error().code, ErrorCode::TooLarge);
    EXPECT_EQ(folder.read("b.lst"), bytes + "a;A\r\n");
    EXPECT_EQ(createList(tooLong, std::vector<ListEntry>(kMostListLines + 1)).error().code,
              ErrorCode::TooLarge);
    EXPECT_EQ(folder.read("b.lst"), bytes + "a;A\r\n");
}

} // namespace
} // namespace zv
