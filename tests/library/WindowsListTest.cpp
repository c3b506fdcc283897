#include "library/ListFile.h"

#include "platform/windows/CodePage.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace zv {
namespace {

/// A list that programs of different times have written to.
class WindowsListTest : public testing::Test {
protected:
    TemporaryFolder folder;
    const std::string oldLine = "C:\\T\xFCren\\Fl\xFCgel.dwg;Fl\xFCgel\r\n";
    const std::string newLine = "C:\\T\xC3\xBCren\\\xE9\x97\xA8.dwg;\xE9\x97\xA8\r\n";
    const std::string plainLine = "C:\\a.dwg;A\r\n";
    const std::string list = folder.write("a.lst", oldLine + newLine + plainLine);

    void SetUp() override
    {
        if (systemCodePage() != 1252)
            GTEST_SKIP() << "the lines are of code page 1252";
    }
};

TEST_F(WindowsListTest, EachLineIsReadInItsOwnEncoding)
{
    const auto lines = readListFile(list);
    ASSERT_TRUE(lines && lines->size() == 3);
    EXPECT_EQ((*lines)[0].path, "C:\\T\xC3\xBCren\\Fl\xC3\xBCgel.dwg");
    EXPECT_EQ((*lines)[0].label, "Fl\xC3\xBCgel");
    EXPECT_EQ((*lines)[1].path, "C:\\T\xC3\xBCren\\\xE9\x97\xA8.dwg");
    EXPECT_EQ(listLabel(list, 1), "Fl\xC3\xBCgel");
    EXPECT_EQ(listLabel(list, 2), "\xE9\x97\xA8");
}

TEST_F(WindowsListTest, AChangedLabelIsUtf8AndTheOtherLinesKeepTheirBytes)
{
    ASSERT_TRUE(changeListLabel(list, 3, "\xC3\x9C", "C:\\a.dwg"));
    EXPECT_EQ(folder.read("a.lst"), oldLine + newLine + "C:\\a.dwg;\xC3\x9C\r\n");
    ASSERT_TRUE(changeListLabel(list, 1, "X", "C:\\T\xC3\xBCren\\Fl\xC3\xBCgel.dwg"));
    EXPECT_EQ(folder.read("a.lst"),
              "C:\\T\xC3\xBCren\\Fl\xC3\xBCgel.dwg;X\r\n" + newLine + "C:\\a.dwg;\xC3\x9C\r\n");
}

TEST_F(WindowsListTest, ALineThatIsMovedOrLeftKeepsItsBytes)
{
    ASSERT_TRUE(moveListLine(list, 1, 3, "C:\\T\xC3\xBCren\\Fl\xC3\xBCgel.dwg"));
    EXPECT_EQ(folder.read("a.lst"), newLine + plainLine + oldLine);
    ASSERT_TRUE(removeListLine(list, 2, "C:\\a.dwg"));
    EXPECT_EQ(folder.read("a.lst"), newLine + oldLine);
}

TEST_F(WindowsListTest, WhatIsAddedIsUtf8)
{
    ASSERT_TRUE(appendToList(list, {{"C:\\\xE9\x97\xA8.dwg", "\xC3\x9C"}}));
    EXPECT_EQ(folder.read("a.lst"), oldLine + newLine + plainLine + "C:\\\xE9\x97\xA8.dwg;\xC3\x9C\r\n");
}

TEST_F(WindowsListTest, AnEditorsMarkBeforeTheFirstLineIsNoPartOfItsPath)
{
    const std::string marked = folder.write("b.lst", "\xEF\xBB\xBF" + newLine);
    const auto lines = readListFile(marked);
    ASSERT_TRUE(lines && lines->size() == 1);
    EXPECT_EQ(lines->front().path, "C:\\T\xC3\xBCren\\\xE9\x97\xA8.dwg");
}

} // namespace
} // namespace zv
