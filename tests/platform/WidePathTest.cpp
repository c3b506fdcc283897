#include "platform/windows/WidePath.h"

#include "platform/FolderRoots.h"
#include "platform/Folders.h"

#include <gtest/gtest.h>

namespace zv {
namespace {

const std::string kDeep = std::string(100, 'a') + "\\" + std::string(100, 'b') + "\\" + std::string(100, 'c');

std::string formOf(const std::string& path)
{
    return textOf(widePath(path));
}

TEST(WidePath, AShortPathStandsAsItIs)
{
    for (const char* path : {"C:\\a.dwg", "\\\\server\\share\\a.dwg", "C:/a/../b.dwg", "a.dwg", "..", "",
                             "C:", "\\\\?\\C:\\a.dwg", "\\\\.\\pipe\\a"})
        EXPECT_EQ(formOf(path), path);
}

TEST(WidePath, ALongPathGoesOutInTheFormWithoutALimit)
{
    EXPECT_EQ(formOf("C:\\" + kDeep + "\\a.dwg"), "\\\\?\\C:\\" + kDeep + "\\a.dwg");
    EXPECT_EQ(formOf("\\\\server\\share\\" + kDeep), "\\\\?\\UNC\\server\\share\\" + kDeep);
    EXPECT_EQ(formOf("\\\\?\\C:\\" + kDeep), "\\\\?\\C:\\" + kDeep) << "and only once";
    EXPECT_EQ(formOf("\\\\?\\UNC\\server\\share\\" + kDeep), "\\\\?\\UNC\\server\\share\\" + kDeep);
}

TEST(WidePath, WhatThatFormDoesNotKnowIsResolvedBefore)
{
    EXPECT_EQ(formOf("C:/" + kDeep + "/./x/../a.dwg"), "\\\\?\\C:\\" + kDeep + "\\a.dwg");
    EXPECT_EQ(formOf("C:\\\\" + kDeep + "\\\\a.dwg"), "\\\\?\\C:\\" + kDeep + "\\a.dwg");
    EXPECT_EQ(formOf("//server/share/" + kDeep), "\\\\?\\UNC\\server\\share\\" + kDeep);
    EXPECT_EQ(formOf(kDeep), "\\\\?\\" + inFolder(currentFolder(), kDeep));
    EXPECT_EQ(formOf("C:\\" + kDeep + "\\..\\..\\..\\a.dwg"), "C:\\a.dwg");
}

TEST(WidePath, LengthIsCountedInCharactersOfEveryScript)
{
    std::string chinese = "C:\\";
    for (int i = 0; i < 200; ++i)
        chinese += "\xE9\x97\xA8";
    EXPECT_EQ(formOf(chinese), chinese);
}

TEST(WidePath, TheProgramNeverShowsTheMarksOfThatForm)
{
    EXPECT_EQ(pathOf(L"\\\\?\\C:\\a"), "C:\\a");
    EXPECT_EQ(pathOf(L"\\\\?\\UNC\\server\\share\\a"), "\\\\server\\share\\a");
    EXPECT_EQ(pathOf(L"\\\\server\\share"), "\\\\server\\share");
    EXPECT_EQ(fullPath("\\\\?\\C:\\a\\"), "C:\\a");
}

TEST(WidePath, SharesAreRootsInEitherForm)
{
    EXPECT_EQ(rootLength("\\\\server\\share\\a"), 14u);
    EXPECT_EQ(rootLength("\\\\server\\share"), 14u);
    EXPECT_EQ(rootLength("\\\\?\\UNC\\server\\share\\a"), 20u);
    EXPECT_EQ(rootLength("\\\\?\\C:\\a"), 7u);
    EXPECT_EQ(parentFolder("\\\\server\\share\\a.dwg"), "\\\\server\\share");
    EXPECT_EQ(fullPath("\\\\server\\share\\a\\..\\b.dwg"), "\\\\server\\share\\b.dwg");
    EXPECT_EQ(
        foldersDownTo("\\\\server\\share\\a\\b"),
        (std::vector<std::string>{"\\\\server\\share", "\\\\server\\share\\a", "\\\\server\\share\\a\\b"}));
}

} // namespace
} // namespace zv
