#include "platform/FileCopy.h"
#include "support/FullDisk.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace zv {
namespace {

namespace fs = std::filesystem;

TEST(PosixFileCopy, AFullDiskLeavesTheOldTargetAndNoHalfAFile)
{
    const TemporaryFolder folder;
    const std::string from = folder.write("a.dwg", std::string(300'000, 'x'));
    fs::create_directory(folder.file("to"));
    const std::string to = folder.write("to/a.dwg", "old");
    {
        const FullDisk disk(100'000);
        EXPECT_FALSE(copyIntoPlace(from, to));
        EXPECT_FALSE(copyIntoPlace(from, folder.file("to/b.dwg")));
    }
    EXPECT_EQ(folder.read("to/a.dwg"), "old");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.file("to")), {}), 1);
}

TEST(PosixFileCopy, ANewCopyHasTheRightsOfItsSourceAndAReplacedFileKeepsItsOwn)
{
    const TemporaryFolder folder;
    const std::string from = folder.write("a.dwg", "new");
    fs::permissions(from, fs::perms(0440));
    ASSERT_TRUE(copyIntoPlace(from, folder.file("b.dwg")));
    EXPECT_EQ(fs::status(folder.file("b.dwg")).permissions(), fs::perms(0440));
    const std::string old = folder.write("c.dwg", "old");
    fs::permissions(old, fs::perms(0660));
    ASSERT_TRUE(copyIntoPlace(from, old));
    EXPECT_EQ(fs::status(old).permissions(), fs::perms(0660));
    EXPECT_EQ(folder.read("c.dwg"), "new");
}

TEST(PosixFileCopy, ALinkStaysAndWhatItLeadsToIsReplaced)
{
    const TemporaryFolder folder;
    const std::string from = folder.write("a.dwg", "new");
    folder.write("real.dwg", "old");
    fs::create_symlink("real.dwg", folder.file("link.dwg"));
    ASSERT_TRUE(copyIntoPlace(from, folder.file("link.dwg")));
    EXPECT_TRUE(fs::is_symlink(folder.file("link.dwg")));
    EXPECT_EQ(folder.read("real.dwg"), "new");
}

TEST(PosixFileCopy, ANameThatTheDiskCannotHoldIsAFailureAndLeavesNothing)
{
    const TemporaryFolder folder;
    const std::string from = folder.write("a.dwg", "new");
    EXPECT_FALSE(copyIntoPlace(from, folder.file(std::string(300, 'n'))));
    EXPECT_EQ(std::distance(fs::directory_iterator(folder.path()), {}), 1);
    EXPECT_TRUE(copyIntoPlace(from, folder.file(std::string(255, 'n')))) << "the longest";
}

TEST(PosixFileCopy, APipeIsNoDrawing)
{
    EXPECT_FALSE(copyIntoPlace("/dev/zero", TemporaryFolder().file("x")));
}

} // namespace
} // namespace zv
