#include "platform/Folders.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace zv {
namespace {

using Names = std::vector<std::string>;

TEST(PosixFolders, HiddenNamesAreLeftOutLinksAreFollowedAndAnyBytesAreAName)
{
    const TemporaryFolder folder;
    for (const char* name : {"b", "A"})
        std::filesystem::create_directory(folder.file(name));
    folder.write("z.dwg", "");
    std::filesystem::create_directory(folder.file(".hidden"));
    folder.write(".hidden.dwg", "");
    std::filesystem::create_directory_symlink(folder.file("b"), folder.file("link"));
    std::filesystem::create_symlink(folder.file("gone"), folder.file("dangling"));
    std::filesystem::create_directory(folder.file("\xFC\xE4"));
    EXPECT_EQ(foldersIn(folder.path()).valueOr({}), (Names{"A", "b", "link", "\xFC\xE4"}));
    EXPECT_EQ(filesIn(folder.path(), ".dwg").valueOr({}), (Names{"z.dwg"}));
}

TEST(PosixFolders, NamesOfMoreThanOneLineAreLeftOut)
{
    const TemporaryFolder folder;
    folder.write("a\nb.dwg", "");
    folder.write("c.dwg", "");
    std::filesystem::create_directory(folder.file("d\re"));
    EXPECT_EQ(filesIn(folder.path(), ".dwg").valueOr({}), (Names{"c.dwg"}));
    EXPECT_EQ(foldersIn(folder.path()).valueOr({}), Names());
}

TEST(PosixFolders, MountedPlacesHoldTheRootAndNothingThatTheSystemMountsForItself)
{
    const Names places = drives();
    ASSERT_FALSE(places.empty());
    EXPECT_EQ(places.front(), "/");
    for (const std::string& place : places) {
        EXPECT_FALSE(place.starts_with("/proc") || place.starts_with("/sys")) << place;
        EXPECT_FALSE(std::filesystem::is_regular_file(place)) << place;
    }
}

} // namespace
} // namespace zv
