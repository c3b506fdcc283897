#include "platform/Files.h"

#include "support/FailingFiles.h"
#include "support/KilledProcess.h"
#include "support/OneStepFails.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zv {
namespace {

class PosixFilesTest : public testing::Test {
protected:
    TemporaryFolder folder;
    const std::string victim = folder.write("victim", "theirs");

    /// A link under a name that the program is about to use.
    std::string plant(const std::string& name) const
    {
        std::filesystem::create_symlink(victim, folder.file(name));
        return folder.file(name);
    }
};

TEST_F(PosixFilesTest, ANewFileTakesThePlaceOfALinkAndNotOfWhatItLeadsTo)
{
    const std::string path = plant("$write.tmp");
    ASSERT_TRUE(writeNewFile(path, "ours"));
    EXPECT_EQ(folder.read("victim"), "theirs");
    EXPECT_FALSE(std::filesystem::is_symlink(path));
    EXPECT_EQ(folder.read("$write.tmp"), "ours");
}

TEST_F(PosixFilesTest, AWorkingCopyTakesThePlaceOfALinkOrASecondName)
{
    plant("a.ls$");
    ASSERT_TRUE(replaceFile(folder.file("a.lst"), folder.file("a.ls$"), "new"));
    std::filesystem::create_hard_link(victim, folder.file("b.ls$"));
    ASSERT_TRUE(replaceFile(folder.file("b.lst"), folder.file("b.ls$"), "new"));
    EXPECT_EQ(folder.read("victim"), "theirs");
    EXPECT_EQ(folder.read("a.lst") + folder.read("b.lst"), "newnew");
}

TEST_F(PosixFilesTest, AReplacedFileKeepsItsOwnerAndGroup)
{
    if (::geteuid() != 0)
        GTEST_SKIP() << "only an administrator can give files away";
    const std::string path = folder.write("a.lst", "old");
    constexpr uid_t kOther = 65534;
    ASSERT_EQ(::chown(path.c_str(), kOther, kOther), 0);
    ASSERT_TRUE(replaceFile(path, folder.file("a.ls$"), "new"));
    struct stat status {};
    ASSERT_EQ(::stat(path.c_str(), &status), 0);
    EXPECT_EQ(status.st_uid, kOther);
    EXPECT_EQ(status.st_gid, kOther);
}

TEST_F(PosixFilesTest, ADanglingLinkIsNoPlaceForANewFile)
{
    std::filesystem::create_symlink(folder.file("gone"), folder.file("a"));
    EXPECT_EQ(createFile(folder.file("a"), "x").error().code, ErrorCode::Busy);
    EXPECT_FALSE(fileExists(folder.file("gone")));
}

TEST_F(PosixFilesTest, AFileThatIsMadeLeavesNothingElseBehindWhereverTheProgramEnds)
{
    bool killed = true;
    for (int step = 0; killed; ++step) {
        const TemporaryFolder own;
        killed = runUntilKilled([&] {
            const FailingFiles files(Fault::Killed, step);
            return createFile(own.file("a.csv"), "header\r\n").ok();
        });
        for (const auto& left : std::filesystem::directory_iterator(own.path()))
            EXPECT_EQ(left.path().filename(), "a.csv") << "killed at step " << step;
        EXPECT_TRUE(killed || own.read("a.csv") == "header\r\n");
    }
}

TEST_F(PosixFilesTest, AFileIsMadeAlsoWhereTheDiskKnowsNoFilesWithoutAName)
{
    const TemporaryFolder own;
    const OneStepFails files(FileStep::Open, 0);
    ASSERT_TRUE(createFile(own.file("a.csv"), "header\r\n"));
    EXPECT_EQ(own.read("a.csv"), "header\r\n");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator(own.path()), {}), 1);
    EXPECT_EQ(createFile(own.file("a.csv"), "other").error().code, ErrorCode::Busy);
}

TEST_F(PosixFilesTest, AFileThatCannotBeAskedForIsNotMissing)
{
    const FailingFiles files(Fault::Fails, 0);
    EXPECT_EQ(fileLength(victim).error().code, ErrorCode::Failed);
}

TEST_F(PosixFilesTest, ALineThatFitsOnlyInPartIsTakenBack)
{
    const std::string path = folder.write("a", "one\r\n");
    const auto writes = [](FileStep step) { return step == FileStep::Write; };
    int step = 0;
    {
        FailingFiles files(Fault::Fails, -1);
        ASSERT_TRUE(appendLines(path, "two\r\n"));
        const auto& steps = files.steps();
        step = static_cast<int>(std::find_if(steps.begin(), steps.end(), writes) - steps.begin());
    }
    const FailingFiles files(Fault::DiskIsFull, step);
    EXPECT_FALSE(appendLines(path, "three\r\n"));
    EXPECT_EQ(folder.read("a"), "one\r\ntwo\r\n");
}

TEST_F(PosixFilesTest, WhatIsReadWhileALineIsAddedDoesNotHoldUpOthers)
{
    const std::string path = folder.file("a");
    bool added = false;
    ASSERT_TRUE(appendLines(path, "one\r\n", {}, [&] {
        const int other = ::open(path.c_str(), O_RDWR);
        added = ::flock(other, LOCK_EX | LOCK_NB) == 0;
        ::close(other);
    }));
    EXPECT_TRUE(added);
}

/// Sees in which way the files of a folder are open when a lock is asked for.
class LockWatch final : public FileWatch {
public:
    explicit LockWatch(std::string folder) : m_folder(std::move(folder)) { watchFiles(this); }
    LockWatch(const LockWatch&) = delete;
    LockWatch& operator=(const LockWatch&) = delete;
    ~LockWatch() override { watchFiles(nullptr); }

    StepOutcome before(FileStep step) override
    {
        if (step == FileStep::Lock)
            look();
        return StepOutcome::Made;
    }
    int locks = 0;
    std::string openToReadAlone;

private:
    void look()
    {
        ++locks;
        for (const auto& open : std::filesystem::directory_iterator("/proc/self/fd")) {
            std::error_code gone;
            const std::string path = std::filesystem::read_symlink(open, gone).string();
            const int mode = ::fcntl(std::stoi(open.path().filename().string()), F_GETFL);
            if (path.starts_with(m_folder) && (mode & O_ACCMODE) == O_RDONLY)
                openToReadAlone += path + " ";
        }
    }
    std::string m_folder;
};

// A share on another machine locks a file only for those who have it open to write.
TEST_F(PosixFilesTest, EveryLockIsAskedForWithTheRightToWrite)
{
    const std::string list = folder.write("a.lst", "one\r\n"), copy = folder.write("a.ls$", "left");
    LockWatch watch(folder.path());
    ASSERT_TRUE(appendLines(list, "two\r\n", copy));
    ASSERT_TRUE(rewriteFile(list, copy, kAnySize, [](const std::string& old) { return old + "three\r\n"; }));
    EXPECT_GT(watch.locks, 3);
    EXPECT_EQ(watch.openToReadAlone, "");
    EXPECT_EQ(folder.read("a.lst"), "one\r\ntwo\r\nthree\r\n");
}

TEST_F(PosixFilesTest, NothingIsToldToAPipeInAFilesPlace)
{
    const std::string pipe = folder.file("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(appendLines(pipe, "one\r\n").error().code, ErrorCode::Failed);
    EXPECT_EQ(writeFile(pipe, "one\r\n").error().code, ErrorCode::Failed);
}

TEST_F(PosixFilesTest, AFileThatIsTooLargeIsNotRead)
{
    std::filesystem::resize_file(victim, std::uint64_t{3} << 30);
    FailingFiles files(Fault::Fails, -1);
    EXPECT_EQ(readFile(victim, 1 << 20).error().code, ErrorCode::TooLarge);
    EXPECT_EQ(std::count(files.steps().begin(), files.steps().end(), FileStep::Read), 0);
}

} // namespace
} // namespace zv
