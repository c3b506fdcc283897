#include "platform/Profile.h"

#include "support/FailingFiles.h"
#include "support/FullDisk.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <sys/stat.h>
#include <unistd.h>

namespace zv {
namespace {

class PosixProfileTest : public testing::Test {
protected:
    TemporaryFolder folder;
};

TEST_F(PosixProfileTest, AFullDiskLeavesTheOldFile)
{
    const std::string old = "[a]\r\nk=" + std::string(200, 'x') + "\r\n";
    const std::string file = folder.write("Zelvora.ini", old);
    {
        const FullDisk full(100);
        EXPECT_FALSE(writeProfileString(file, "a", "m", "2"));
        EXPECT_FALSE(writeProfileSection(file, "a", {"m=" + std::string(200, 'y')}));
    }
    EXPECT_EQ(folder.read("Zelvora.ini"), old);
    EXPECT_FALSE(std::filesystem::exists(folder.file("Zelvora.ini.new")));
}

TEST_F(PosixProfileTest, AFileOfExactlyTheNameComesBeforeOneOfAnotherCase)
{
    folder.write("ZELVORA.INI", "[a]\r\nk=1\r\n");
    folder.write("zelvora.ini", "[a]\r\nk=2\r\n");
    EXPECT_EQ(profileString(folder.file("zelvora.ini"), "a", "k", ""), "2");
    EXPECT_EQ(profileString(folder.file("Zelvora.ini"), "a", "k", ""), "1");
}

TEST_F(PosixProfileTest, AFileThatIsTooLargeIsNeitherReadNorWritten)
{
    const std::string file = folder.write("Zelvora.ini", "[a]\r\nk=1\r\n");
    std::filesystem::resize_file(file, std::uint64_t{3} << 30);
    FailingFiles files(Fault::Fails, -1);
    EXPECT_EQ(readProfileString(file, "a", "k", "").error().code, ErrorCode::TooLarge);
    EXPECT_FALSE(writeProfileString(file, "a", "k", "2"));
    EXPECT_EQ(std::count(files.steps().begin(), files.steps().end(), FileStep::Read), 0);
    EXPECT_EQ(std::filesystem::file_size(file), std::uint64_t{3} << 30);
}

TEST_F(PosixProfileTest, ALinkStaysALinkAndItsFileIsWritten)
{
    folder.write("real.ini", "[a]\r\nk=1\r\n");
    std::filesystem::create_symlink(folder.file("real.ini"), folder.file("link.ini"));
    EXPECT_TRUE(writeProfileString(folder.file("link.ini"), "a", "k", "2"));
    EXPECT_TRUE(std::filesystem::is_symlink(folder.file("link.ini")));
    EXPECT_EQ(folder.read("real.ini"), "[a]\r\nk=2\r\n");
}

TEST_F(PosixProfileTest, RightsOutliveAWrite)
{
    const std::string file = folder.write("Zelvora.ini", "[a]\r\nk=1\r\n");
    ASSERT_EQ(::chmod(file.c_str(), 0664), 0);
    EXPECT_TRUE(writeProfileString(file, "a", "k", "2"));
    struct stat status {};
    ASSERT_EQ(::stat(file.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777u, 0664u);
}

TEST_F(PosixProfileTest, AnUnchangedValueDoesNotTouchTheFile)
{
    const std::string file = folder.write("Zelvora.ini", "[a]\r\nk=1\r\n");
    struct stat before {};
    ASSERT_EQ(::stat(file.c_str(), &before), 0);
    EXPECT_TRUE(writeProfileString(file, "A", "K", "1"));
    struct stat after {};
    ASSERT_EQ(::stat(file.c_str(), &after), 0);
    EXPECT_EQ(before.st_ino, after.st_ino);
}

TEST_F(PosixProfileTest, APipeOrADeviceInTheFilesPlaceDoesNotHoldUp)
{
    const std::string pipe = folder.file("pipe.ini");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(profileString(pipe, "a", "k", "d"), "d");
    EXPECT_FALSE(writeProfileString(pipe, "a", "k", "v"));
    EXPECT_EQ(profileString("/dev/zero", "a", "k", "d"), "d");
    EXPECT_FALSE(writeProfileString("/dev/full", "a", "k", "v"));
}

} // namespace
} // namespace zv
