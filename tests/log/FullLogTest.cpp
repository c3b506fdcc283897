#include "log/ActivityLog.h"

#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace zv {
namespace {

TEST(FullLog, EntryForAFullDeviceIsLostInSilence)
{
    const TemporaryFolder folder;
    const std::string log = folder.file("Zelvora_Log.csv");
    std::filesystem::create_symlink("/dev/full", log);
    writeLog(log, "one");
    EXPECT_EQ(std::filesystem::read_symlink(log), "/dev/full");
}

TEST(FullLog, LinkThatLeadsToNoFileYetGetsALogWithItsHeader)
{
    const TemporaryFolder folder;
    std::filesystem::create_symlink(folder.file("real.csv"), folder.file("Zelvora_Log.csv"));
    writeLog(folder.file("Zelvora_Log.csv"), "one");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.file("Zelvora_Log.csv")));
    EXPECT_EQ(folder.read("real.csv"), "Zelvora Log File,\r\nDate:,Login:,DWG:,Method:,\r\n\r\none\r\n");
}

TEST(FullLog, EntryThatFitsOnlyInPartIsTakenBack)
{
    const TemporaryFolder folder;
    const std::string log = folder.write("Zelvora_Log.csv", "old\r\n");
    const pid_t child = ::fork();
    if (child == 0) {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit room{8, 8};
        ::setrlimit(RLIMIT_FSIZE, &room);
        writeLog(log, "an entry");
        ::_exit(0);
    }
    int status = -1;
    ::waitpid(child, &status, 0);
    EXPECT_EQ(status, 0);
    EXPECT_EQ(folder.read("Zelvora_Log.csv"), "old\r\n");
}

} // namespace
} // namespace zv
