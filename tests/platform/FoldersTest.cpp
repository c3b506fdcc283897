#include "platform/Folders.h"
#include "platform/Files.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace zv {
namespace {

using Names = std::vector<std::string>;

/// The current folder is the process's, so a test gives it back.
class FoldersTest : public testing::Test {
protected:
    FoldersTest()
    {
        for (const char* name : {"b", "A", "c d"})
            std::filesystem::create_directory(folder.file(name));
        for (const char* name : {"z.dwg", "M.DWG", "a.txt", "dwg"})
            folder.write(name, "");
    }
    ~FoldersTest() override { EXPECT_TRUE(setCurrentFolder(m_before)); }

    TemporaryFolder folder;

private:
    const std::string m_before = currentFolder();
};

TEST_F(FoldersTest, NamesAreSortedWithoutRegardToCase)
{
    EXPECT_EQ(foldersIn(folder.path()).valueOr({}), (Names{"A", "b", "c d"}));
    EXPECT_EQ(filesIn(folder.path(), {}).valueOr({}), (Names{"a.txt", "dwg", "M.DWG", "z.dwg"}));
}

TEST_F(FoldersTest, AnEndingMeetsInAnyCase)
{
    EXPECT_EQ(filesIn(folder.path(), ".dwg").valueOr({}), (Names{"M.DWG", "z.dwg"}));
}

TEST_F(FoldersTest, WhatIsNoFolderCannotBeRead)
{
    EXPECT_FALSE(foldersIn(folder.file("gone")));
    EXPECT_FALSE(foldersIn(folder.file("z.dwg")));
    EXPECT_FALSE(filesIn(folder.file("gone"), ".dwg"));
}

TEST_F(FoldersTest, TheCurrentFolderCanBeSetAndNamesStartFromIt)
{
    const std::string full = fullPath(folder.path());
    ASSERT_TRUE(setCurrentFolder(full));
    EXPECT_TRUE(std::filesystem::equivalent(currentFolder(), full));
    EXPECT_EQ(fullPath("b"), inFolder(currentFolder(), "b"));
    EXPECT_EQ(fullPath(joinPath("b", joinPath("..", "A"))), inFolder(currentFolder(), "A"));
    EXPECT_FALSE(setCurrentFolder(folder.file("gone")));
    EXPECT_TRUE(std::filesystem::equivalent(currentFolder(), full)) << "a failure leaves it where it was";
}

TEST_F(FoldersTest, FoldersStandInOrderFromTheRootDown)
{
    const std::string deep = inFolder(inFolder(fullPath(folder.path()), "b"), "x");
    const Names all = foldersDownTo(deep);
    ASSERT_GE(all.size(), 3u);
    EXPECT_EQ(all.back(), deep);
    EXPECT_EQ(all[all.size() - 3], fullPath(folder.path()));
    EXPECT_TRUE(all.front().ends_with(kPathSeparator));
    EXPECT_EQ(foldersDownTo(all.front()), (Names{all.front()}));
}

TEST_F(FoldersTest, ASeparatorAtTheEndIsDroppedSaveOfARoot)
{
    EXPECT_EQ(fullPath(folder.path() + kPathSeparator), fullPath(folder.path()));
    const std::string root = foldersDownTo(fullPath(folder.path())).front();
    EXPECT_EQ(fullPath(root), root);
    EXPECT_EQ(inFolder(root, "a"), root + "a");
}

TEST_F(FoldersTest, AFolderIsMadeOnceAndOnlyInOneThatIsThere)
{
    const std::string made = folder.file("new");
    EXPECT_TRUE(makeFolder(made));
    EXPECT_TRUE(folderExists(made));
    EXPECT_FALSE(makeFolder(made));
    EXPECT_FALSE(makeFolder(folder.file("z.dwg")));
    EXPECT_FALSE(makeFolder(joinPath(folder.file("gone"), "new")));
}

TEST_F(FoldersTest, EveryPathLiesOnADrive)
{
    const Names roots = drives();
    const std::string root = driveOf(fullPath(folder.path()), roots);
    EXPECT_FALSE(root.empty());
    EXPECT_TRUE(foldersIn(root));
}

TEST_F(FoldersTest, TheLongestDriveCounts)
{
    const std::string sep(1, kPathSeparator);
    const std::string root = foldersDownTo(fullPath(folder.path())).front();
    const Names roots = {root, root + "media" + sep + "stick"};
    EXPECT_EQ(driveOf(root + "media" + sep + "stick", roots), roots[1]);
    EXPECT_EQ(driveOf(root + "media" + sep + "stick" + sep + "a", roots), roots[1]);
    EXPECT_EQ(driveOf(root + "media" + sep + "sticks", roots), root);
    EXPECT_EQ(driveOf("nowhere", roots), "");
}

} // namespace
} // namespace zv
