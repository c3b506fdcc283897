#include "config/StartUp.h"

#include "config/Keys.h"
#include "support/FailingFiles.h"
#include "support/TwoFolders.h"

#include <gtest/gtest.h>

namespace zv {
namespace {

class StartUpTest : public testing::Test {
protected:
    TwoFolders office;
    PublicValues values;

    void SetUp() override
    {
        values.LoginName = "Ann";
        values.UserFolder = office.user.path();
        values.MasterPath = office.master.path();
        formUserPaths(values);
    }
    std::string userText(const char* section, const char* key) const
    {
        return profileString(values.UserProfilePath, section, key, "-");
    }
    int readMaster(const std::string& profile)
    {
        office.master.write(kProfileName, profile);
        return readMasterKeys(office.profiles(), values);
    }
};

TEST_F(StartUpTest, TheMasterFolderIsWhatTheInstallationProfileNames)
{
    office.installation.write(kProfileName, "[path]\r\nzvrPath=M\\libraries\r\n");
    EXPECT_EQ(findMasterFolder(office.installation.path()), "M\\libraries");
    EXPECT_EQ(office.installation.read(kProfileName), "[path]\r\nzvrPath=M\\libraries\r\n");
}

TEST_F(StartUpTest, WithoutANameTheInstallationFolderIsTheMasterFolderAndIsStored)
{
    const std::string folder = office.installation.path();
    EXPECT_EQ(findMasterFolder(folder), folder);
    EXPECT_EQ(office.installation.read(kProfileName), "[Path]\r\nZVRpath=" + folder + "\r\n");
    EXPECT_EQ(findMasterFolder(folder), folder);
}

TEST_F(StartUpTest, StoringTheMasterFolderClearsTheOldSection)
{
    office.installation.write(kProfileName, "[Path]\r\nZVRpath=\r\nother=1\r\n[b]\r\nk=1\r\n");
    const std::string folder = office.installation.path();
    EXPECT_EQ(findMasterFolder(folder), folder);
    EXPECT_EQ(office.installation.read(kProfileName), "[Path]\r\nZVRpath=" + folder + "\r\n[b]\r\nk=1\r\n");
}

TEST_F(StartUpTest, AnInstallationProfileThatCannotBeWrittenStillGivesAMasterFolder)
{
    std::filesystem::create_directory(office.installation.file(kProfileName));
    EXPECT_EQ(findMasterFolder(office.installation.path()), office.installation.path());
}

TEST_F(StartUpTest, AProfileThatCannotBeReadKeepsItsMasterFolder)
{
    const std::string folder = office.installation.path();
    const std::string stored = "[Path]\r\nZVRpath=M\r\n";
    office.installation.write(kProfileName, stored);
    for (const Fault fault : {Fault::Fails, Fault::StaysBad}) {
        for (int step = 0; step < 20; ++step) {
            const FailingFiles files(fault, step);
            findMasterFolder(folder);
            ASSERT_EQ(office.installation.read(kProfileName), stored) << "step " << step;
        }
    }
}

TEST_F(StartUpTest, TheProbeCleansUpInTheInstallationFolderAlone)
{
    EXPECT_TRUE(probeWriteAccess(office.installation.path(), office.installation.path()));
    EXPECT_FALSE(fileExists(office.installation.file("$write.tmp")));
    EXPECT_TRUE(probeWriteAccess(office.installation.path(), office.master.path()));
    EXPECT_TRUE(fileExists(office.master.file("$write.tmp")));
}

TEST_F(StartUpTest, TheProbeDeletesAReadOnlyFileOfAnEarlierRun)
{
    const std::string old = office.installation.write("$write.tmp", "");
    std::filesystem::permissions(old, std::filesystem::perms::owner_read);
    EXPECT_TRUE(probeWriteAccess(office.installation.path(), office.master.path()));
    EXPECT_FALSE(fileExists(old));
}

TEST_F(StartUpTest, TheProbeFollowsNoLink)
{
    const std::string victim = office.user.write("victim", "theirs");
    std::error_code refused;
    std::filesystem::create_symlink(victim, office.master.file("$write.tmp"), refused);
    if (refused)
        GTEST_SKIP() << "no links here";
    EXPECT_TRUE(probeWriteAccess(office.installation.path(), office.master.path()));
    EXPECT_EQ(office.user.read("victim"), "theirs");
}

TEST_F(StartUpTest, TheProbeMeetsItsFileOfAnEarlierStart)
{
    EXPECT_TRUE(probeWriteAccess(office.installation.path(), office.master.path()));
    EXPECT_TRUE(probeWriteAccess(office.installation.path(), office.master.path()));
    EXPECT_TRUE(fileExists(office.master.file("$write.tmp")));
}

TEST_F(StartUpTest, TheProbeFailsWhereItsFileCannotBeMade)
{
    EXPECT_FALSE(probeWriteAccess(office.installation.path(), office.master.file("none")));
    std::filesystem::create_directory(office.master.file("$write.tmp"));
    EXPECT_FALSE(probeWriteAccess(office.installation.path(), office.master.path()));
}

TEST_F(StartUpTest, AMissingMasterProfileGivesTheDefaults)
{
    EXPECT_EQ(readMasterKeys(office.profiles(), values), 0);
    EXPECT_EQ(values.XbCheck, 0);
    EXPECT_EQ(values.Fds, 1);
    EXPECT_EQ(values.ForceCopy, 0);
    EXPECT_EQ(values.Acad2002, 0);
    EXPECT_EQ(values.CartOnly, 0);
    EXPECT_FALSE(values.LogEnabled);
    EXPECT_EQ(values.LogPath, "");
}

TEST_F(StartUpTest, TheAdministratorsValuesAreTaken)
{
    EXPECT_EQ(
        readMaster("[libload]\r\nxbcheck=2\r\nfds=0\r\n[masterxref]\r\nforcecopy=1\r\n[acadver]\r\n2002=1\r\n"
                   "[ShopCart]\r\nCartOnly=1\r\n[FileLog]\r\nWriteLog=1\r\nLogPath=L\r\n"),
        1);
    EXPECT_EQ(values.XbCheck, 2);
    EXPECT_EQ(values.Fds, 0);
    EXPECT_EQ(values.ForceCopy, 1);
    EXPECT_EQ(values.Acad2002, 1);
    EXPECT_EQ(values.CartOnly, 1);
    EXPECT_TRUE(values.LogEnabled);
    EXPECT_EQ(values.LogPath, "L");
}

TEST_F(StartUpTest, FlagsThatAreNeitherZeroNorOneChangeNothing)
{
    values.ForceCopy = values.Acad2002 = values.CartOnly = 1;
    EXPECT_EQ(
        readMaster("[masterxref]\r\nforcecopy=2\r\n[acadver]\r\n2002=-1\r\n[ShopCart]\r\nCartOnly=7\r\n"), 7);
    EXPECT_EQ(values.ForceCopy, 1);
    EXPECT_EQ(values.Acad2002, 1);
    EXPECT_EQ(values.CartOnly, 1);
}

TEST_F(StartUpTest, ALogThatIsOffOrHasNoPathSetsNoPath)
{
    readMaster("[FileLog]\r\nWriteLog=0\r\nLogPath=L\r\n");
    EXPECT_FALSE(values.LogEnabled);
    EXPECT_EQ(values.LogPath, "");
    TwoFolders other;
    other.master.write(kProfileName, "[FileLog]\r\nWriteLog=1\r\n");
    readMasterKeys(other.profiles(), values);
    EXPECT_TRUE(values.LogEnabled);
    EXPECT_EQ(values.LogPath, "");
}

TEST_F(StartUpTest, NumbersPastSixteenBitsAreHeldAtTheirLimit)
{
    readMaster("[LibLoad]\r\nxbcheck=70000\r\nfds=-70000\r\n");
    EXPECT_EQ(values.XbCheck, 32767);
    EXPECT_EQ(values.Fds, -32768);
}

TEST_F(StartUpTest, TheLoginNameIsNeverEmpty)
{
    const std::string login = loginName();
    EXPECT_FALSE(login.empty());
    EXPECT_EQ(login.find('\0'), std::string::npos);
}

TEST_F(StartUpTest, TheUsersFilesTakeTheLoginName)
{
    EXPECT_EQ(values.MyLibPath, office.user.path() + kPathSeparator + "Ann.lst");
    EXPECT_EQ(values.UserProfilePath, office.user.path() + kPathSeparator + "Ann.ini");
}

TEST_F(StartUpTest, AFirstRunMakesAnEmptyListAndFiveKeysInOrder)
{
    createUserFiles(office.installation.path(), values);
    EXPECT_TRUE(fileExists(values.MyLibPath));
    EXPECT_EQ(office.user.read("Ann.lst"), "");
    EXPECT_EQ(userText("LibLoad", "LastLoad"), "");
    EXPECT_EQ(office.user.read("Ann.ini"), "[LibLoad]\r\nLastLoad=\r\ndel=1\r\n"
                                           "[Settings]\r\nProjectPath=\r\nInsertmode=1\r\nAOT=1\r\n");
}

TEST_F(StartUpTest, ALaterRunLeavesTheUsersFilesAsTheyAre)
{
    office.user.write("Ann.lst", "a;b\r\n");
    office.user.write("Ann.ini", "[Settings]\r\nAOT=0\r\n");
    createUserFiles(office.installation.path(), values);
    EXPECT_EQ(office.user.read("Ann.lst"), "a;b\r\n");
    EXPECT_EQ(office.user.read("Ann.ini"), "[Settings]\r\nAOT=0\r\n");
}

TEST_F(StartUpTest, UsersFilesThatCannotBeAskedForAreNotBegunAnew)
{
    office.user.write("Ann.lst", "a;b\r\n");
    const std::string stored = "[Settings]\r\nAOT=0\r\n";
    office.user.write("Ann.ini", stored);
    for (const Fault fault : {Fault::Fails, Fault::StaysBad}) {
        for (int step = 0; step < 20; ++step) {
            const FailingFiles files(fault, step);
            createUserFiles(office.installation.path(), values);
            ASSERT_EQ(office.user.read("Ann.lst"), "a;b\r\n") << "step " << step;
            ASSERT_EQ(office.user.read("Ann.ini"), stored) << "step " << step;
        }
    }
}

TEST_F(StartUpTest, AProfileWhoseNameDiffersInCaseIsTheUsersOwn)
{
    office.user.write("ANN.INI", "[Settings]\r\nAOT=0\r\n");
    createUserFiles(office.installation.path(), values);
    EXPECT_EQ(office.user.read("ANN.INI"), "[Settings]\r\nAOT=0\r\n");
    EXPECT_EQ(userText("Settings", "AOT"), "0");
}

TEST_F(StartUpTest, ADeletedAotIsWrittenBack)
{
    office.user.write("Ann.ini", "[Settings]\r\ninsertmode=2\r\n");
    createUserFiles(office.installation.path(), values);
    EXPECT_EQ(office.user.read("Ann.ini"), "[Settings]\r\ninsertmode=2\r\nAOT=1\r\n");
}

TEST_F(StartUpTest, AUserFolderThatCannotBeWrittenIsEndured)
{
    values.UserFolder = office.user.file("none");
    formUserPaths(values);
    createUserFiles(office.installation.path(), values);
    EXPECT_FALSE(fileExists(values.UserProfilePath));
    EXPECT_EQ(office.profiles().number(keys::zelvora::del), keys::kAbsent);
}

TEST_F(StartUpTest, TheFontFolderIsTheStoredOneOrTheProgramsOwn)
{
    EXPECT_EQ(fontFolder("I", office.profiles()), std::string("I") + kPathSeparator + "fonts");
    office.master.write(kProfileName, "[printing]\r\nfontpath=F\r\n");
    EXPECT_EQ(fontFolder("I", office.profiles()), "F");
}

TEST_F(StartUpTest, ACountThatCannotBeReadIsNotRepaired)
{
    const std::string stored = "[Library]\r\nlibnum=2\r\nlib1=A\r\nlib2=B\r\n";
    const std::string file = office.master.write("b.ini", stored);
    for (int step = 0; step < 20; ++step) {
        const FailingFiles files(Fault::Fails, step);
        repairLibraryCount(file);
        ASSERT_EQ(office.master.read("b.ini"), stored) << "step " << step;
    }
}

TEST_F(StartUpTest, AnAbsentOrNegativeCountOfLibrariesIsRepaired)
{
    const std::string file = office.master.file(kProfileName);
    repairLibraryCount(file);
    EXPECT_EQ(office.master.read(kProfileName), "[Library]\r\nlibnum=0\r\n");
    const std::string negative = office.master.write("b.ini", "[Library]\r\nlibnum=-3\r\nlib1=x\r\n");
    repairLibraryCount(negative);
    EXPECT_EQ(office.master.read("b.ini"), "[Library]\r\nlibnum=0\r\nlib1=x\r\n");
    const std::string good = office.master.write("c.ini", "[Library]\r\nlibnum=3\r\n");
    repairLibraryCount(good);
    EXPECT_EQ(office.master.read("c.ini"), "[Library]\r\nlibnum=3\r\n");
}

} // namespace
} // namespace zv
