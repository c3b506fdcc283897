#include "platform/FileCopy.h"
#include "support/FailingFiles.h"
#include "support/FullDisk.h"
#include "support/HeldLock.h"
#include "support/KilledProcess.h"
#include "support/OneStepFails.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

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

/// The names in a folder, without those that are known.
std::string namesBeside(const TemporaryFolder& folder, const std::vector<std::string>& known)
{
    std::string names;
    for (const auto& entry : fs::directory_iterator(folder.path())) {
        const std::string name = entry.path().filename().string();
        if (std::find(known.begin(), known.end(), name) == known.end())
            names += name + " ";
    }
    return names;
}

TEST(PosixFileCopy, ACopyThatIsKilledLeavesNothingBehind)
{
    bool killed = true;
    for (int step = 0; killed; ++step) {
        const TemporaryFolder folder;
        folder.write("a.dwg", "new drawing");
        killed = runUntilKilled([&] {
            const FailingFiles files(Fault::Killed, step);
            return copyIntoPlace(folder.file("a.dwg"), folder.file("b.dwg")).ok();
        });
        EXPECT_EQ(namesBeside(folder, {"a.dwg", "b.dwg"}), "") << "killed at step " << step;
        EXPECT_TRUE(killed || folder.read("b.dwg") == "new drawing");
    }
}

TEST(PosixFileCopy, WhatAKilledCopyOverAnotherFileHasLeftGoesWithTheNextOneIntoTheFolder)
{
    bool killed = true, left = false;
    for (int step = 0; killed; ++step) {
        const TemporaryFolder folder;
        folder.write("a.dwg", "new drawing");
        folder.write("b.dwg", "old");
        folder.write("c.dwg", "old");
        killed = runUntilKilled([&] {
            const FailingFiles files(Fault::Killed, step);
            return copyIntoPlace(folder.file("a.dwg"), folder.file("b.dwg")).ok();
        });
        left = left || !namesBeside(folder, {"a.dwg", "b.dwg", "c.dwg"}).empty();
        ASSERT_TRUE(copyIntoPlace(folder.file("a.dwg"), folder.file("c.dwg")));
        EXPECT_EQ(namesBeside(folder, {"a.dwg", "b.dwg", "c.dwg"}), "") << "killed at step " << step;
    }
    EXPECT_TRUE(left) << "there was nothing to go";
}

TEST(PosixFileCopy, TheCopyThatAnotherProgramIsWritingStays)
{
    const TemporaryFolder folder;
    folder.write("a.dwg", "new");
    folder.write("b.dwg", "old");
    const HeldLock other(folder.write(".zelvora-1.tmp", "half"));
    ASSERT_TRUE(copyIntoPlace(folder.file("a.dwg"), folder.file("b.dwg")));
    EXPECT_EQ(folder.read(".zelvora-1.tmp"), "half");
    EXPECT_EQ(folder.read("b.dwg"), "new");
}

TEST(PosixFileCopy, ADrawingIsCopiedAlsoWhereTheDiskKnowsNoFilesWithoutAName)
{
    const TemporaryFolder folder;
    folder.write("a.dwg", "new");
    // The source is opened first.
    const OneStepFails files(FileStep::Open, 1);
    ASSERT_TRUE(copyIntoPlace(folder.file("a.dwg"), folder.file("b.dwg")));
    EXPECT_EQ(folder.read("b.dwg"), "new");
    EXPECT_EQ(namesBeside(folder, {"a.dwg", "b.dwg"}), "");
}

TEST(PosixFileCopy, APipeIsNoDrawing)
{
    EXPECT_FALSE(copyIntoPlace("/dev/zero", TemporaryFolder().file("x")));
}

} // namespace
} // namespace zv
