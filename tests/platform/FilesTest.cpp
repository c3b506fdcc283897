#include "platform/Files.h"

#include "platform/ByteSource.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>

namespace zv {
namespace {

using std::filesystem::perms;

class FilesTest : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(FilesTest, PathsAreJoinedAsTheyStand)
{
    const std::string separator(1, kPathSeparator);
    EXPECT_EQ(joinPath("a", "b"), "a" + separator + "b");
    EXPECT_EQ(joinPath("a" + separator, "b"), "a" + separator + separator + "b");
}

TEST_F(FilesTest, ErrorsNameTheirFileOnce)
{
    EXPECT_EQ(namingFile("a.dwg", {ErrorCode::Damaged, "cut short"}), "a.dwg: cut short");
    EXPECT_EQ(namingFile("a.dwg", readFile("a.dwg").error()), readFile("a.dwg").error().text);
}

TEST_F(FilesTest, FilesAndFoldersAreToldApart)
{
    const std::string file = folder.write("a", "x");
    EXPECT_TRUE(fileExists(file));
    EXPECT_FALSE(folderExists(file));
    EXPECT_TRUE(folderExists(folder.path()));
    EXPECT_FALSE(fileExists(folder.path()));
    EXPECT_FALSE(fileExists(folder.file("b")));
    EXPECT_FALSE(fileExists(""));
}

TEST_F(FilesTest, LengthIsThatOfARegularFile)
{
    EXPECT_EQ(*fileLength(folder.write("a", "12345")), 5u);
    EXPECT_EQ(fileLength(folder.file("b")).error().code, ErrorCode::NotFound);
    EXPECT_EQ(fileLength(folder.path()).error().code, ErrorCode::NotFound);
}

TEST_F(FilesTest, BytesAreReadAsTheyWereWritten)
{
    const std::string bytes("\0\r\n\xFF\x1A", 5);
    ASSERT_TRUE(writeFile(folder.file("a"), bytes));
    EXPECT_EQ(*readFile(folder.file("a")), bytes);
    ASSERT_TRUE(writeFile(folder.file("a"), "x"));
    EXPECT_EQ(*readFile(folder.file("a")), "x");
    EXPECT_EQ(readFile(folder.file("b")).error().code, ErrorCode::NotFound);
    EXPECT_FALSE(readFile(folder.path()));
    EXPECT_FALSE(writeFile(folder.path(), "x"));
    EXPECT_FALSE(writeFile(folder.file("no/such/folder"), "x"));
}

TEST_F(FilesTest, AppendingAddsAtTheEndAndCreates)
{
    ASSERT_TRUE(appendLines(folder.file("a"), "one\r\n"));
    ASSERT_TRUE(appendLines(folder.file("a"), "two\r\n"));
    EXPECT_EQ(folder.read("a"), "one\r\ntwo\r\n");
    EXPECT_FALSE(appendLines(folder.path(), "x"));
}

TEST_F(FilesTest, ReadOnlyFilesAreNeitherWrittenNorAppended)
{
    const std::string file = folder.write("a", "old");
    std::filesystem::permissions(file, perms::owner_read);
    if (kPathSeparator == '\\' && std::ofstream(file, std::ios::app))
        GTEST_SKIP() << "Wine lets the administrator write to read-only files";
    EXPECT_EQ(writeFile(file, "new").error().code, ErrorCode::Denied);
    EXPECT_EQ(appendLines(file, "new").error().code, ErrorCode::Denied);
    EXPECT_EQ(folder.read("a"), "old");
}

TEST_F(FilesTest, ReplacingTakesTheWorkingCopyAway)
{
    const std::string file = folder.write("a.lst", "old");
    ASSERT_TRUE(replaceFile(file, folder.file("a.ls$"), "new"));
    EXPECT_EQ(folder.read("a.lst"), "new");
    EXPECT_FALSE(fileExists(folder.file("a.ls$")));
}

TEST_F(FilesTest, ReplacingWorksOnReadOnlyAndMissingFilesAndOverAStaleWorkingCopy)
{
    const std::string file = folder.write("a.lst", "old");
    std::filesystem::permissions(file, perms::owner_read);
    std::filesystem::permissions(folder.write("a.ls$", "stale and longer"), perms::owner_read);
    ASSERT_TRUE(replaceFile(file, folder.file("a.ls$"), "new"));
    EXPECT_EQ(folder.read("a.lst"), "new");
    EXPECT_TRUE(appendLines(file, "er")) << "the new list can be added to";
    ASSERT_TRUE(replaceFile(folder.file("b.lst"), folder.file("b.ls$"), "b"));
    EXPECT_EQ(folder.read("b.lst"), "b");
}

TEST_F(FilesTest, AFailedReplacingLeavesTheOldFile)
{
    const std::string file = folder.write("a.lst", "old");
    std::filesystem::create_directory(folder.file("a.ls$"));
    EXPECT_FALSE(replaceFile(file, folder.file("a.ls$"), "new"));
    EXPECT_EQ(folder.read("a.lst"), "old");
    std::filesystem::create_directory(folder.file("b.lst"));
    EXPECT_FALSE(replaceFile(folder.file("b.lst"), folder.file("b.ls$"), "new"));
    EXPECT_FALSE(fileExists(folder.file("b.ls$")));
}

TEST_F(FilesTest, ForcedDeletionTakesReadOnlyFilesAndNoFolders)
{
    const std::string file = folder.write("a", "x");
    std::filesystem::permissions(file, perms::owner_read);
    EXPECT_TRUE(deleteFileForced(file));
    EXPECT_FALSE(fileExists(file));
    EXPECT_EQ(deleteFileForced(file).error().code, ErrorCode::NotFound);
    EXPECT_FALSE(deleteFileForced(folder.path()));
}

TEST_F(FilesTest, RenamingKeepsTheBytesAndTakesNoOtherFilesPlace)
{
    const std::string from = folder.write("a", "x\r\n");
    ASSERT_TRUE(renameFile(from, folder.file("b")));
    EXPECT_FALSE(fileExists(from));
    EXPECT_EQ(folder.read("b"), "x\r\n");
    folder.write("c", "other");
    EXPECT_EQ(renameFile(folder.file("b"), folder.file("c")).error().code, ErrorCode::Busy);
    EXPECT_EQ(renameFile(folder.file("b"), folder.file("b")).error().code, ErrorCode::Busy);
    EXPECT_EQ(folder.read("b"), "x\r\n");
    EXPECT_EQ(folder.read("c"), "other");
    EXPECT_EQ(renameFile(folder.file("none"), folder.file("d")).error().code, ErrorCode::NotFound);
    EXPECT_FALSE(renameFile(folder.file("b"), folder.file("no/such")));
}

TEST_F(FilesTest, SourcesReadPartsAndRefuseWhatIsPastTheEnd)
{
    Result<std::unique_ptr<ByteSource>> source = openByteSource(folder.write("a", "0123456789"));
    ASSERT_TRUE(source);
    EXPECT_EQ((*source)->size(), 10u);
    std::array<std::byte, 3> part{};
    ASSERT_TRUE((*source)->read(7, part));
    EXPECT_EQ(part[2], std::byte{'9'});
    EXPECT_EQ((*source)->read(8, part).error().code, ErrorCode::Damaged);
    EXPECT_EQ((*source)->read(~0ull, part).error().code, ErrorCode::Damaged);
    EXPECT_TRUE((*source)->read(10, {}));
    EXPECT_EQ(openByteSource(folder.file("b")).error().code, ErrorCode::NotFound);
    EXPECT_FALSE(openByteSource(folder.path()));
}

TEST_F(FilesTest, MemorySourcesBehaveAsFilesDo)
{
    const std::array<std::byte, 4> bytes{std::byte{1}, std::byte{2}, std::byte{3}, std::byte{4}};
    const MemorySource source(bytes);
    std::array<std::byte, 2> part{};
    ASSERT_TRUE(source.read(2, part));
    EXPECT_EQ(part[1], std::byte{4});
    EXPECT_EQ(source.read(3, part).error().code, ErrorCode::Damaged);
    EXPECT_EQ(source.read(~0ull, part).error().code, ErrorCode::Damaged);
}

} // namespace
} // namespace zv
