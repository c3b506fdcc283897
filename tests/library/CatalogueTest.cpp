#include "library/Catalogue.h"

#include "platform/Files.h"
#include "platform/Profile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace zv {
namespace {

using Names = std::vector<std::string>;

class CatalogueTest : public testing::Test {
protected:
    TemporaryFolder folder;

    Names namesOf(const std::string& bytes) { return readCatalogue(folder.write("Zelvora.ini", bytes)); }
};

TEST_F(CatalogueTest, NamesComeInTheOrderOfTheirNumbers)
{
    EXPECT_EQ(namesOf("[Library]\r\nlib2=b\r\nlib1=a\r\nlibnum=3\r\nLIB3=c\r\nlib4=d\r\n"),
              (Names{"a", "b", "c"}));
}

TEST_F(CatalogueTest, AMissingOrEmptyNameIsAnEmptyRow)
{
    EXPECT_EQ(namesOf("[Library]\r\nlibnum=3\r\nlib1=\r\nlib3=c\r\n"), (Names{"", "", "c"}));
}

TEST_F(CatalogueTest, NoCountOrANegativeOneIsAnEmptyCatalogue)
{
    EXPECT_EQ(readCatalogue(folder.file("none.ini")), Names());
    EXPECT_EQ(namesOf("[Library]\r\nlib1=a\r\n"), Names());
    EXPECT_EQ(readCatalogue(folder.write("b.ini", "[Library]\r\nlibnum=0\r\nlib1=a\r\n")), Names());
    EXPECT_EQ(readCatalogue(folder.write("c.ini", "[Library]\r\nlibnum=-2\r\nlib1=a\r\n")), Names());
}

TEST_F(CatalogueTest, AnEnormousCountEndsAtTheLimit)
{
    EXPECT_EQ(namesOf("[Library]\r\nlibnum=40000\r\nlib1=a\r\n").size(), 32767u);
    EXPECT_EQ(readCatalogue(folder.write("b.ini", "[Library]\r\nlibnum=2147483647\r\n")).size(), 32767u);
}

TEST_F(CatalogueTest, NamesAreCutToTheBuffer)
{
    EXPECT_EQ(namesOf("[Library]\r\nlibnum=1\r\nlib1=" + std::string(300, 'x') + "\r\n"),
              Names{std::string(255, 'x')});
}

TEST_F(CatalogueTest, WritingReplacesTheSectionWithTheCountFirst)
{
    folder.write("Zelvora.ini",
                 "[Path]\r\nZVRpath=M\r\n[Library]\r\nlibnum=3\r\nlib1=x\r\nlib2=y\r\nlib3=z\r\n");
    ASSERT_TRUE(writeCatalogue(folder.path(), {"Alpha", "beta"}, 2));
    EXPECT_EQ(folder.read("Zelvora.ini"),
              "[Path]\r\nZVRpath=M\r\n[Library]\r\nlibnum=2\r\nlib1=Alpha\r\nlib2=beta\r\n");
    EXPECT_EQ(folder.read("$liblist.tmp"), "Alpha\r\nbeta\r\n");
    ASSERT_TRUE(removeCatalogueScratch(folder.path()));
    EXPECT_FALSE(fileExists(folder.file("$liblist.tmp")));
    EXPECT_TRUE(removeCatalogueScratch(folder.path()));
}

TEST_F(CatalogueTest, WithoutLibrariesTheCountAloneIsLeft)
{
    ASSERT_TRUE(writeCatalogue(folder.path(), {}, 0));
    EXPECT_EQ(folder.read("Zelvora.ini"), "[Library]\r\nlibnum=0\r\n");
    EXPECT_EQ(folder.read("$liblist.tmp"), "");
    EXPECT_TRUE(fileExists(folder.file("$liblist.tmp")));
}

TEST_F(CatalogueTest, TheCountIsWrittenAsGiven)
{
    ASSERT_TRUE(writeCatalogue(folder.path(), {"a"}, 5));
    EXPECT_EQ(readCatalogue(folder.file("Zelvora.ini")), (Names{"a", "", "", "", ""}));
    EXPECT_EQ(libraryCount(folder.file("Zelvora.ini")).valueOr(0), 5);
}

TEST_F(CatalogueTest, ACatalogueOfManyLongNamesComesBack)
{
    Names names;
    for (int i = 0; i < 300; ++i)
        names.push_back(std::string(230, 'x') + std::to_string(i));
    ASSERT_TRUE(writeCatalogue(folder.path(), names, 300));
    EXPECT_EQ(readCatalogue(folder.file("Zelvora.ini")), names);
}

TEST_F(CatalogueTest, AScratchFileThatCannotBeWrittenLeavesTheCatalogue)
{
    folder.write("Zelvora.ini", "[Library]\r\nlibnum=1\r\nlib1=x\r\n");
    std::filesystem::create_directory(folder.file("$liblist.tmp"));
    EXPECT_FALSE(writeCatalogue(folder.path(), {"a", "b"}, 2));
    EXPECT_EQ(folder.read("Zelvora.ini"), "[Library]\r\nlibnum=1\r\nlib1=x\r\n");
}

TEST_F(CatalogueTest, TheScratchFileFollowsNoLink)
{
    const std::string victim = folder.write("victim", "theirs");
    std::error_code refused;
    std::filesystem::create_symlink(victim, folder.file("$liblist.tmp"), refused);
    if (refused)
        GTEST_SKIP() << "no links here";
    ASSERT_TRUE(writeCatalogue(folder.path(), {"a"}, 1));
    EXPECT_EQ(folder.read("victim"), "theirs");
}

TEST_F(CatalogueTest, AnUnreadableProfileIsNoEmptyCatalogue)
{
    std::filesystem::create_directory(folder.file("Zelvora.ini"));
    EXPECT_FALSE(tryCatalogue(folder.file("Zelvora.ini")));
    EXPECT_EQ(tryCatalogue(folder.file("none.ini")).valueOr({"-"}), Names());
}

TEST_F(CatalogueTest, AChangeIsNotedInTheMasterProfile)
{
    const std::string profile = folder.write("Zelvora.ini", "[LibLoad]\r\nLastLoad=x\r\n");
    markCatalogueChanged(folder.path());
    EXPECT_EQ(profileString(profile, "LibLoad", "LastLoad", "-"), "");
    EXPECT_EQ(profileString(profile, "LibLoad", "del", "-"), "1");
}

} // namespace
} // namespace zv
