#include "platform/Profile.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace zv {
namespace {

// The same tests run against the system's own calls on Windows.
class ProfileTest : public testing::Test {
protected:
    TemporaryFolder folder;

    std::string profile(const std::string& bytes) { return folder.write("Zelvora.ini", bytes); }
};

TEST_F(ProfileTest, NamesMeetWithoutRegardToCase)
{
    const std::string file = profile("[Settings]\r\nInsertMode=2\r\n");
    EXPECT_EQ(profileString(file, "sETTINGS", "insertmode", ""), "2");
    EXPECT_EQ(profileInt(folder.file("zELVORA.INI"), "settings", "INSERTMODE", 0), 2);
}

TEST_F(ProfileTest, DefaultsStandForWhatIsMissing)
{
    const std::string file = profile("[a]\r\nb=1\r\n");
    EXPECT_EQ(profileString(file, "a", "c", "x"), "x");
    EXPECT_EQ(profileString(file, "c", "b", "x"), "x");
    EXPECT_EQ(profileString(folder.file("none.ini"), "a", "b", "x"), "x");
    EXPECT_EQ(profileInt(folder.file("none.ini"), "a", "b", -1), -1);
}

TEST_F(ProfileTest, WritingCreatesChangesAndIsSeenAtOnce)
{
    const std::string file = folder.file("new.ini");
    EXPECT_TRUE(writeProfileString(file, "Path", "ZVRpath", "C:\\a b"));
    EXPECT_EQ(folder.read("new.ini"), "[Path]\r\nZVRpath=C:\\a b\r\n");
    EXPECT_TRUE(writeProfileString(file, "path", "zvrPATH", "d"));
    EXPECT_EQ(folder.read("new.ini"), "[Path]\r\nZVRpath=d\r\n");
}

} // namespace
} // namespace zv
