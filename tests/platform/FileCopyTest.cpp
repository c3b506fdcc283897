#include "platform/FileCopy.h"
#include "platform/Files.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <chrono>
#include <filesystem>

namespace zv {
namespace {

namespace fs = std::filesystem;

class FileCopyTest : public testing::Test {
protected:
    FileCopyTest()
    {
        fs::create_directory(folder.file("to"));
        from = folder.write("a.dwg", std::string(300'000, 'x') + "end");
        to = folder.file("to/a.dwg");
    }
    std::size_t filesBesideTheTarget() const
    {
        return std::size_t(std::distance(fs::directory_iterator(folder.file("to")), {}));
    }

    TemporaryFolder folder;
    std::string from, to;
};

TEST_F(FileCopyTest, TheCopyHasTheBytesAndTheTimeOfItsSource)
{
    fs::last_write_time(from, fs::file_time_type::clock::now() - std::chrono::hours(1000));
    ASSERT_TRUE(copyIntoPlace(from, to));
    EXPECT_EQ(folder.read("to/a.dwg"), folder.read("a.dwg"));
    EXPECT_EQ(fs::last_write_time(to), fs::last_write_time(from));
    EXPECT_EQ(filesBesideTheTarget(), 1u);
}

TEST_F(FileCopyTest, AnEmptyFileIsCopiedAndAnOldTargetReplaced)
{
    folder.write("a.dwg", "");
    folder.write("to/a.dwg", "old");
    ASSERT_TRUE(copyIntoPlace(from, to));
    EXPECT_EQ(folder.read("to/a.dwg"), "");
}

TEST_F(FileCopyTest, AFileOntoItselfIsLeftAsItIs)
{
    const std::string bytes = folder.read("a.dwg");
    EXPECT_TRUE(isSameFile(from, folder.file("to/../a.dwg")));
    EXPECT_TRUE(copyIntoPlace(from, from));
    EXPECT_TRUE(copyIntoPlace(from, folder.file("to/../a.dwg")));
    EXPECT_EQ(folder.read("a.dwg"), bytes);
}

TEST_F(FileCopyTest, NoFileIsTheSameAsOneThatIsNotThere)
{
    EXPECT_FALSE(isSameFile(from, to));
    EXPECT_FALSE(isSameFile(to, to));
}

TEST_F(FileCopyTest, AMissingSourceLeavesTheOldTarget)
{
    folder.write("to/a.dwg", "old");
    const auto copied = copyIntoPlace(folder.file("gone.dwg"), to);
    ASSERT_FALSE(copied);
    EXPECT_EQ(copied.error().code, ErrorCode::NotFound);
    EXPECT_EQ(folder.read("to/a.dwg"), "old");
    EXPECT_EQ(filesBesideTheTarget(), 1u);
}

TEST_F(FileCopyTest, AReadOnlyTargetStays)
{
    folder.write("to/a.dwg", "old");
    const auto write = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    fs::permissions(to, write, fs::perm_options::remove);
    const auto copied = copyIntoPlace(from, to);
    ASSERT_FALSE(copied);
    EXPECT_EQ(copied.error().code, ErrorCode::Denied);
    EXPECT_EQ(folder.read("to/a.dwg"), "old");
    fs::permissions(to, write, fs::perm_options::add);
}

TEST_F(FileCopyTest, AFolderIsNeitherCopiedNorReplaced)
{
    fs::create_directory(to);
    EXPECT_FALSE(copyIntoPlace(from, to));
    EXPECT_FALSE(copyIntoPlace(folder.file("to"), folder.file("b")));
    EXPECT_FALSE(fs::exists(folder.file("b")));
}

TEST_F(FileCopyTest, AFolderThatIsNotThereIsAFailureOfTheTarget)
{
    const auto copied = copyIntoPlace(from, folder.file("no/such.dwg"));
    ASSERT_FALSE(copied);
    EXPECT_EQ(copied.error().code, ErrorCode::Failed);
}

} // namespace
} // namespace zv
