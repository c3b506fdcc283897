#include "config/Keys.h"

#include "support/TwoFolders.h"

#include <gtest/gtest.h>

namespace zv {
namespace {

class KeysTest : public testing::Test {
protected:
    TwoFolders office;
};

TEST_F(KeysTest, OptionsWorkInTheInstallationProfileAndTheMainWindowInTheMasterProfile)
{
    const Profiles profiles = office.profiles();
    profiles.writeFlag(keys::options::CartOnly, true);
    profiles.writeFlag(keys::options::FDS, false);
    profiles.writeFlag(keys::options::forcecopy, true);
    profiles.write(keys::options::fontpath, "f");
    EXPECT_FALSE(fileExists(office.master.file(kProfileName)));
    EXPECT_EQ(profiles.number(keys::options::CartOnly), 1);
    EXPECT_EQ(profiles.number(keys::zelvora::CartOnly), 0);
    EXPECT_EQ(profiles.number(keys::search::CartOnly), 0);
    EXPECT_EQ(profiles.number(keys::zelvora::fds), 1);
    EXPECT_EQ(profiles.number(keys::zelvora::forcecopy), 0);
    EXPECT_EQ(profiles.number(keys::xattach::forcecopy), 1);
    EXPECT_EQ(profiles.text(keys::zelvora::Fontpath), "");
}

TEST_F(KeysTest, InOneFolderTheMainWindowSeesWhatOptionsWrote)
{
    const Profiles profiles(office.master.path(), office.master.path(), office.userProfile());
    profiles.writeFlag(keys::options::FDS, false);
    profiles.writeFlag(keys::options::userlib, true);
    profiles.write(keys::options::fontpath, "f");
    EXPECT_EQ(profiles.number(keys::zelvora::fds), 0);
    EXPECT_EQ(profiles.number(keys::mylib::Userlib), 1);
    EXPECT_EQ(profiles.text(keys::zelvora::Fontpath), "f");
}

TEST_F(KeysTest, TheFavouritesAndThePrintRunTakeTheCatalogueOfTheInstallationProfile)
{
    office.installation.write(kProfileName, "[Library]\r\nlibnum=2\r\n");
    office.master.write(kProfileName, "[Library]\r\nlibnum=3\r\n");
    const Profiles profiles = office.profiles();
    EXPECT_EQ(profiles.number(keys::mylib::libnum), 2);
    EXPECT_EQ(profiles.number(keys::printlib::libnum), 2);
    EXPECT_EQ(profiles.number(keys::zelvora::libnum), 3);
    EXPECT_EQ(profiles.number(keys::search::libnum), 3);
    EXPECT_EQ(profiles.number(keys::newlib::libnum), 3);
}

TEST_F(KeysTest, WhatTheEditorNotesForTheNextStartTheMainWindowDoesNotRead)
{
    const Profiles profiles = office.profiles();
    profiles.write(keys::newlib::writeDel, "1");
    profiles.write(keys::newlib::LastLoad, " ");
    EXPECT_EQ(profiles.number(keys::zelvora::del), keys::kAbsent);
    profiles.write(keys::zelvora::LastLoad, "Doors");
    EXPECT_EQ(profiles.text(keys::mylib::LastLoad), "Doors");
    EXPECT_EQ(profiles.text(keys::printlib::LastLoad), "Doors");
    EXPECT_EQ(profiles.text(keys::search::LastLoad), "");
    EXPECT_EQ(profiles.text(keys::newlib::LastLoad), "");
}

TEST_F(KeysTest, TheQueuesCopyNeverFindsTheProjectFolderThatItWrites)
{
    const Profiles profiles = office.profiles();
    profiles.write(keys::cartcopy::writeProjectpath, "P");
    EXPECT_EQ(profiles.text(keys::cartcopy::projectpath), "");
    EXPECT_EQ(profiles.text(keys::xattach::projectpath), "P");
    EXPECT_EQ(profiles.text(keys::cmode::projectpath), "P");
    EXPECT_EQ(profiles.text(keys::search::ProjectPath), "P");
    profiles.write(keys::dwgcopy::writeProjectpath, "Q");
    EXPECT_EQ(profiles.text(keys::xattach::projectpath), "Q");
}

TEST_F(KeysTest, ModesAndScalesOfTheUserAreSharedByTheWindows)
{
    const Profiles profiles = office.profiles();
    EXPECT_EQ(profiles.number(keys::zelvora::insertmode), 1);
    EXPECT_EQ(profiles.number(keys::zelvora::AutoScale), 1);
    EXPECT_EQ(profiles.number(keys::zelvora::XYZ), 1);
    profiles.write(keys::zelvora::insertmode, "3");
    profiles.writeFlag(keys::xattach::writeAutoScale, false);
    profiles.write(keys::search::writeXYZ, "2.5");
    EXPECT_EQ(profiles.number(keys::search::insertmode), 3);
    EXPECT_EQ(profiles.number(keys::zelvora::AutoScale), 0);
    EXPECT_EQ(profiles.number(keys::zelvora::XYZ), 2);
    profiles.writeFlag(keys::cmode::projectcopy, false);
    EXPECT_EQ(profiles.number(keys::xattach::projectcopy), 0);
}

TEST_F(KeysTest, AProfileThatIsAFolderGivesDefaultsAndTakesNoWrites)
{
    std::filesystem::create_directory(office.master.file(kProfileName));
    const Profiles profiles = office.profiles();
    profiles.write(keys::newlib::writeDel, "1");
    EXPECT_EQ(profiles.number(keys::zelvora::libnum), keys::kAbsent);
    EXPECT_EQ(profiles.text(keys::zelvora::LogPath), "");
}

TEST_F(KeysTest, WithoutAUserThereIsNoUserProfile)
{
    const Profiles profiles(office.installation.path(), office.master.path(), {});
    profiles.write(keys::zelvora::insertmode, "2");
    EXPECT_EQ(profiles.number(keys::zelvora::insertmode), 1);
}

} // namespace
} // namespace zv
