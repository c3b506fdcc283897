#include "platform/ByteSource.h"
#include "platform/FileCopy.h"
#include "platform/Files.h"
#include "platform/FolderWalk.h"
#include "platform/Folders.h"
#include "platform/Profile.h"
#include "platform/Text.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <clocale>

namespace zv {
namespace {

using Names = std::vector<std::string>;

/// Umlauts, Chinese, and a sign beyond the sixteen bits of a wide character.
const Names kNames{"Fl\xC3\xBCgelt\xC3\xBCr \xC3\x84.dwg", "\xE9\x97\xA8\xE6\xA1\x86.dwg",
                   "\xF0\xA0\x80\x8B.dwg"};

/// Files and folders that no 8-bit code page can name.
class NamesTest : public testing::Test {
protected:
    TemporaryFolder folder;

    void SetUp() override { std::setlocale(LC_ALL, "C.UTF-8"); }
    void TearDown() override { std::setlocale(LC_ALL, "C"); }
};

TEST_F(NamesTest, DrawingsInAnyScriptAreListedAndRead)
{
    for (const std::string& name : kNames)
        ASSERT_TRUE(writeFile(folder.file(name), name));
    EXPECT_EQ(filesIn(folder.path(), ".DWG").valueOr({}), kNames);
    for (const std::string& name : kNames) {
        EXPECT_EQ(folder.read(name), name) << "under its name as the system has it";
        EXPECT_TRUE(fileExists(folder.file(name)));
        EXPECT_EQ(readFile(folder.file(name)).valueOr(""), name);
        const auto source = openByteSource(folder.file(name));
        ASSERT_TRUE(source) << source.error().text;
        EXPECT_EQ((*source)->size(), name.size());
    }
}

TEST_F(NamesTest, DrawingsInAnyScriptAreCopiedRenamedAndDeleted)
{
    for (const std::string& name : kNames) {
        const std::string from = folder.write(name, "x");
        ASSERT_TRUE(makeFolder(folder.file(name + " copies")));
        const std::string to = joinPath(folder.file(name + " copies"), name);
        EXPECT_TRUE(copyIntoPlace(from, to));
        EXPECT_EQ(readFile(to).valueOr(""), "x");
        EXPECT_TRUE(isSameFile(from, fullPath(from)));
        EXPECT_TRUE(renameFile(to, to + "2"));
        EXPECT_TRUE(deleteFileForced(to + "2"));
        EXPECT_EQ(filesIn(folder.file(name + " copies"), {}).valueOr(Names{"?"}), Names{});
    }
    EXPECT_EQ(foldersIn(folder.path()).valueOr({}).size(), kNames.size());
}

TEST_F(NamesTest, DrawingsBelowAFolderAreFoundInAnyScript)
{
    ASSERT_TRUE(makeFolder(folder.file("\xE9\x97\xA8")));
    std::vector<std::string> paths;
    for (const std::string& name : kNames)
        paths.push_back(folder.write("\xE9\x97\xA8" + std::string(1, kPathSeparator) + name, "x"));
    folder.write("a.txt", "x");
    paths.push_back(folder.write("A.DWG", "x"));
    std::sort(paths.begin(), paths.end());
    EXPECT_EQ(filesBelow(folder.path(), ".dwg").valueOr({}), paths);
    EXPECT_EQ(filesBelow(folder.file("none"), ".dwg").error().code, ErrorCode::NotFound);
}

TEST_F(NamesTest, TheCurrentFolderMayHaveAnyName)
{
    const std::string before = currentFolder();
    const std::string here = folder.file("\xE9\x97\xA8");
    ASSERT_TRUE(makeFolder(here));
    ASSERT_TRUE(setCurrentFolder(here));
    EXPECT_EQ(fileNamePart(currentFolder()), "\xE9\x97\xA8");
    EXPECT_EQ(fileNamePart(fullPath("\xC3\xBC.dwg")), "\xC3\xBC.dwg");
    ASSERT_TRUE(setCurrentFolder(before));
}

TEST_F(NamesTest, CaseOfLettersMakesNoDifferenceInAnyScript)
{
    EXPECT_EQ(upper("t\xC3\xBCr \xD0\xB6 \xE9\x97\xA8"), "T\xC3\x9CR \xD0\x96 \xE9\x97\xA8");
    EXPECT_TRUE(sameName("T\xC3\xBCr", "t\xC3\x9CR"));
    EXPECT_EQ(findText("Fl\xC3\xBCgelt\xC3\x9CR", "t\xC3\xBCr"), 7u);
}

TEST_F(NamesTest, AProfileKeepsNamesInAnyScript)
{
    const std::string file = folder.file("\xE9\x97\xA8.ini");
    for (const std::string& name : kNames) {
        EXPECT_TRUE(writeProfileString(file, "Path", "ZVRpath", name));
        EXPECT_EQ(profileString(file, "Path", "ZVRpath", ""), name);
    }
}

} // namespace
} // namespace zv
