#include "platform/System.h"

#include "support/Environment.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fcntl.h>
#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zv {
namespace {

class PosixSystemTest : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(PosixSystemTest, TheUsersFolderIsMadeForTheUserAlone)
{
    const Environment data("XDG_DATA_HOME", folder.file("deep/share"));
    EXPECT_EQ(userFolder(), folder.file("deep/share/zelvora"));
    struct stat status {};
    ASSERT_EQ(::stat(userFolder().c_str(), &status), 0);
    EXPECT_TRUE(S_ISDIR(status.st_mode));
    EXPECT_EQ(status.st_mode & 0777u, 0700u);
}

TEST_F(PosixSystemTest, WithoutADataFolderTheUsersFolderIsInTheHome)
{
    const Environment home("HOME", folder.path());
    for (const char* value : {"", "relative"}) {
        const Environment data("XDG_DATA_HOME", value);
        EXPECT_EQ(userFolder(), folder.file(".local/share/zelvora"));
    }
}

TEST_F(PosixSystemTest, SettingsSurviveUnderTheApplicationsName)
{
    const Environment config("XDG_CONFIG_HOME", folder.path());
    EXPECT_EQ(settingsValue("Zelvora", "Settings", "MainLeft", "1000"), "1000");
    setSettingsValue("Zelvora", "Settings", "MainLeft", "15");
    setSettingsValue("Other", "Settings", "MainLeft", "16");
    EXPECT_EQ(settingsValue("Zelvora", "Settings", "MainLeft", "1000"), "15");
}

TEST_F(PosixSystemTest, TheInstallationFolderIsTheRealOneOfTheProgram)
{
    EXPECT_TRUE(std::filesystem::exists(installationFolder() + "/platform_tests"));
}

TEST_F(PosixSystemTest, TheLoginNameIsTheAccounts)
{
    const passwd* account = ::getpwuid(::geteuid());
    EXPECT_EQ(systemLoginName(), account ? account->pw_name : "");
}

TEST_F(PosixSystemTest, DatesHoldNoComma)
{
    EXPECT_FALSE(shortDateTime().empty());
    EXPECT_EQ(shortDateTime().find(','), std::string::npos);
}

TEST_F(PosixSystemTest, AProgramThatIsNotThereIsNoError)
{
    startProgram({});
    startProgram({folder.file("none"), "x"});
}

TEST_F(PosixSystemTest, AStartedProgramGetsItsArgumentsAsTheyStand)
{
    const std::string pipe = folder.file("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    startProgram({"sh", "-c", "printf %s \"$1\" >\"$2\"", "sh", "a b\"c", pipe});
    EXPECT_EQ(folder.read("pipe"), "a b\"c");
}

TEST_F(PosixSystemTest, AStartedProgramGetsNoFileThatIsOpenHere)
{
    const std::string held = folder.write("held", "x"), pipe = folder.file("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    const int open = ::open(held.c_str(), O_RDONLY);
    ASSERT_GE(open, 0);
    startProgram({"sh", "-c", "ls -l /proc/$$/fd >\"$1\"", "sh", pipe});
    const std::string list = folder.read("pipe");
    ::close(open);
    EXPECT_NE(list.find("/dev/null"), std::string::npos) << list;
    EXPECT_EQ(list.find(held), std::string::npos) << list;
}

} // namespace
} // namespace zv
