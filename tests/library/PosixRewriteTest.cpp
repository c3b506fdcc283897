#include "library/Catalogue.h"
#include "library/ListFile.h"
#include "platform/Files.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <csignal>
#include <functional>
#include <random>
#include <sys/wait.h>
#include <time.h>
#include <unistd.h>

namespace zv {
namespace {

constexpr int kKills = 100;
constexpr long kLongestLifeNs = 6'000'000;

/// Runs `work` over and over in a process of its own and kills it at a random moment. The process has made
/// its first round before its time begins.
void runAndKill(const std::function<void(int)>& work, long lifeNs)
{
    std::array<int, 2> ready{};
    ASSERT_EQ(::pipe(ready.data()), 0);
    const pid_t child = ::fork();
    if (child == 0) {
        for (int round = 0;; ++round) {
            work(round);
            if (round == 0 && ::write(ready[1], "x", 1) != 1)
                ::_exit(1);
        }
    }
    ASSERT_GT(child, 0);
    char byte = 0;
    EXPECT_EQ(::read(ready[0], &byte, 1), 1);
    const timespec life{0, lifeNs};
    ::nanosleep(&life, nullptr);
    ::kill(child, SIGKILL);
    ::waitpid(child, nullptr, 0);
    ::close(ready[0]);
    ::close(ready[1]);
}

class PosixRewriteTest : public testing::Test {
protected:
    TemporaryFolder folder;
    std::mt19937 random{20};

    long life() { return std::uniform_int_distribution<long>(0, kLongestLifeNs)(random); }
};

TEST_F(PosixRewriteTest, AProcessKilledAtAnyMomentLeavesAWholeList)
{
    std::string whole;
    for (int i = 0; i < 2000; ++i)
        whole += "/details/door" + std::to_string(i) + ".dwg;DOOR\r\n";
    const std::string path = folder.write("a.lst", whole + "/last.dwg;0\r\n");
    for (int i = 0; i < kKills; ++i) {
        runAndKill(
            [&](int round) { static_cast<void>(changeListLabel(path, 2001, std::to_string(round)).ok()); },
            life());
        const std::string left = folder.read("a.lst");
        ASSERT_EQ(left.substr(0, whole.size()), whole) << "kill " << i;
        const std::string last = left.substr(whole.size());
        ASSERT_TRUE(last.starts_with("/last.dwg;") && last.ends_with("\r\n")) << "kill " << i << ": " << last;
    }
    ASSERT_TRUE(changeListLabel(path, 2001, "end")) << "a working copy that was left behind is no obstacle";
    EXPECT_EQ(folder.read("a.lst"), whole + "/last.dwg;end\r\n");
}

TEST_F(PosixRewriteTest, AProcessKilledAtAnyMomentLeavesAWholeCatalogue)
{
    std::vector<std::string> names;
    for (int i = 0; i < 300; ++i)
        names.push_back("Library " + std::to_string(i));
    std::vector<std::string> more = names;
    more.push_back("Last");
    const std::string profile = folder.write("Zelvora.ini", "[Path]\r\nZVRpath=M\r\n");
    for (int i = 0; i < kKills; ++i) {
        runAndKill(
            [&](int round) {
                const std::vector<std::string>& rows = round % 2 ? more : names;
                static_cast<void>(writeCatalogue(folder.path(), rows, static_cast<int>(rows.size())).ok());
                markCatalogueChanged(folder.path());
            },
            life());
        const std::vector<std::string> left = readCatalogue(profile);
        ASSERT_TRUE(left == names || left == more) << "kill " << i << ": " << left.size() << " names";
        ASSERT_TRUE(folder.read("Zelvora.ini").starts_with("[Path]\r\nZVRpath=M\r\n")) << "kill " << i;
    }
}

TEST_F(PosixRewriteTest, TwoProcessesThatRewriteOneListLeaveAWholeOne)
{
    std::string whole;
    for (int i = 0; i < 500; ++i)
        whole += "/details/door" + std::to_string(i) + ".dwg;DOOR\r\n";
    const std::string path = folder.write("a.lst", whole + "/last.dwg;first\r\n");
    const pid_t child = ::fork();
    for (int i = 0; i < 50; ++i)
        static_cast<void>(changeListLabel(path, 501, child == 0 ? "theirs" : "ours").ok());
    if (child == 0)
        ::_exit(0);
    ::waitpid(child, nullptr, 0);
    const std::string left = folder.read("a.lst");
    EXPECT_TRUE(left == whole + "/last.dwg;ours\r\n" || left == whole + "/last.dwg;theirs\r\n");
    EXPECT_FALSE(fileExists(folder.file("a.ls$")));
}

} // namespace
} // namespace zv
