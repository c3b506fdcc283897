#include "host/ProgramHost.h"

#include "config/PublicValues.h"
#include "platform/Files.h"
#include "queue/QueueFile.h"
#include "support/OpenFiles.h"
#include "support/ProgramFixture.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace zv {
namespace {

class ProgramHostTest : public ProgramFixture {
protected:
    ProgramHostTest() { program.values().LoginName = "Ann"; }

    ProgramHost host{program};
};

TEST_F(ProgramHostTest, TheQueueIsOpenUntilTheMessageIsAnswered)
{
    const std::string queue = queuePath(folder.path(), "Ann");
    std::string seen;
    bool open = false;
    ASSERT_TRUE(host.services().addToQueue("a.dwg", [&] {
        seen = readFile(queue).valueOr("");
        open = holdsOpen(queue);
    }));
    EXPECT_EQ(seen, "a.dwg\r\n");
    EXPECT_TRUE(open);
    EXPECT_FALSE(holdsOpen(queue));
}

TEST_F(ProgramHostTest, TheLogTakesAnEntryWhenItIsKeptAndAnEmptyLineWhenOnlyItsPathIsSet)
{
    PublicValues& values = program.values();
    host.services().writeLog("a.dwg", "Insert as Block");
    values.LogPath = folder.file("log.csv");
    host.services().writeLog("b.dwg", "Insert as Block");
    const std::string header = "Zelvora Log File,\r\nDate:,Login:,DWG:,Method:,\r\n\r\n";
    EXPECT_EQ(folder.read("log.csv"), header + "\r\n");

    values.LogEnabled = true;
    host.services().writeLog("c.dwg", "Insert as Block");
    const std::string log = folder.read("log.csv");
    EXPECT_TRUE(log.starts_with(header + "\r\n"));
    EXPECT_TRUE(log.ends_with(",Ann,c.dwg,Insert as Block,\r\n"));
    EXPECT_EQ(std::count(log.begin(), log.end(), '\n'), 5);
}

} // namespace
} // namespace zv
