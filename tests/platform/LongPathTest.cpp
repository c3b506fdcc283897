#include "platform/ByteSource.h"
#include "platform/FileCopy.h"
#include "platform/Files.h"
#include "platform/FolderRoots.h"
#include "platform/Folders.h"
#include "platform/Profile.h"
#include "platform/Text.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace zv {
namespace {

using Names = std::vector<std::string>;

/// A folder deep down, whose path alone has over 400 characters.
class LongPathTest : public testing::Test {
protected:
    TemporaryFolder folder;
    const std::string start = currentFolder();
    std::string deep = folder.path();

    void SetUp() override
    {
        for (const char name : {'a', 'b', 'c', 'd'}) {
            deep = inFolder(deep, std::string(100, name));
            ASSERT_TRUE(makeFolder(deep));
        }
    }
    void TearDown() override
    {
        EXPECT_TRUE(setCurrentFolder(start));
        // The standard library itself cannot delete what lies so deep, so the folders are put side by side.
        namespace fs = std::filesystem;
        const fs::path top = folder.path();
        fs::rename(top / std::string(100, 'a') / std::string(100, 'b'), top / "b");
        fs::rename(top / "b" / std::string(100, 'c'), top / "c");
    }
    std::string file(const std::string& name) const { return joinPath(deep, name); }
};

TEST_F(LongPathTest, DrawingsAreListedReadCopiedRenamedAndDeleted)
{
    const std::string drawing = file("Door.dwg");
    ASSERT_TRUE(writeFile(drawing, "a drawing"));
    EXPECT_TRUE(fileExists(drawing));
    EXPECT_EQ(fileLength(drawing).valueOr(0), 9u);
    EXPECT_TRUE(fileStamp(drawing));
    EXPECT_EQ(readFile(drawing).valueOr(""), "a drawing");
    const auto source = openByteSource(drawing);
    ASSERT_TRUE(source) << source.error().text;
    EXPECT_EQ((*source)->size(), 9u);
    EXPECT_EQ(filesIn(deep, ".DWG").valueOr({}), Names{"Door.dwg"});
    EXPECT_EQ(foldersIn(parentFolder(deep)).valueOr({}), Names{std::string(100, 'd')});
    EXPECT_TRUE(copyIntoPlace(drawing, file("copy.dwg")));
    EXPECT_TRUE(copyIntoPlace(drawing, folder.file("near.dwg")));
    EXPECT_EQ(readFile(folder.file("near.dwg")).valueOr(""), "a drawing");
    EXPECT_TRUE(isSameFile(drawing, joinPath(deep + kPathSeparator + ".", "Door.dwg")));
    EXPECT_FALSE(isSameFile(drawing, file("copy.dwg")));
    EXPECT_TRUE(renameFile(file("copy.dwg"), file("renamed.dwg")));
    EXPECT_EQ(renameFile(drawing, file("renamed.dwg")).error().code, ErrorCode::Busy);
    EXPECT_TRUE(deleteFileForced(file("renamed.dwg")));
    EXPECT_FALSE(fileExists(file("renamed.dwg")));
    EXPECT_EQ(makeFolder(deep).error().code, ErrorCode::Busy);
}

TEST_F(LongPathTest, ListsAreRewrittenAndAddedTo)
{
    const std::string list = file("a.lst"), working = file("a.ls$");
    ASSERT_TRUE(createFile(list, "one\r\n"));
    EXPECT_TRUE(appendLines(list, "two\r\n", working));
    EXPECT_TRUE(rewriteFile(list, working, kAnySize,
                            [](const std::string& bytes) { return Result(bytes + "three\r\n"); }));
    EXPECT_TRUE(replaceFile(list, working, readFile(list).valueOr("") + "four\r\n"));
    EXPECT_TRUE(writeNewFile(file("$write.tmp"), "x"));
    EXPECT_EQ(readFile(list).valueOr(""), "one\r\ntwo\r\nthree\r\nfour\r\n");
    EXPECT_FALSE(fileExists(working));
}

TEST_F(LongPathTest, ProfilesAreWrittenAndRead)
{
    const std::string profile = file("Zelvora.ini");
    EXPECT_TRUE(writeProfileString(profile, "Path", "k", "1"));
    EXPECT_TRUE(writeProfileString(profile, "Path", "k", "2"));
    EXPECT_EQ(profileString(profile, "path", "K", ""), "2");
}

TEST_F(LongPathTest, TheCurrentFolderMayBeThere)
{
    ASSERT_TRUE(writeFile(file("Door.dwg"), "x"));
    ASSERT_TRUE(setCurrentFolder(deep));
    EXPECT_TRUE(samePathText(currentFolder(), deep)) << currentFolder();
    EXPECT_TRUE(samePathText(fullPath("Door.dwg"), file("Door.dwg")));
    EXPECT_TRUE(fileExists("Door.dwg"));
    EXPECT_EQ(filesIn(".", {}).valueOr({}), Names{"Door.dwg"});
    ASSERT_TRUE(setCurrentFolder(".."));
    EXPECT_TRUE(samePathText(currentFolder(), parentFolder(deep))) << currentFolder();
    EXPECT_EQ(setCurrentFolder(file("none")).error().code, ErrorCode::NotFound);
    EXPECT_TRUE(samePathText(currentFolder(), parentFolder(deep))) << "it stays where it was";
    ASSERT_TRUE(setCurrentFolder(start));
    EXPECT_EQ(currentFolder(), start);
}

} // namespace
} // namespace zv
