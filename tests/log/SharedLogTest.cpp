#include "log/ActivityLog.h"

#include "support/TemporaryFolder.h"
#include "support/TwoWriters.h"

#include <gtest/gtest.h>

#include <sstream>

namespace zv {
namespace {

TEST(SharedLog, TwoProgramsThatShareALogLoseAndTearNothing)
{
    constexpr int kLines = 10000;
    const TemporaryFolder folder;
    ASSERT_TRUE(runTwoWriters(folder.file("Zelvora_Log.csv"), [](const std::string& log, int writer) {
        for (int i = 0; i < kLines; ++i)
            writeLog(log, std::to_string(writer) + ",entry " + std::to_string(i) + ",");
    }));
    std::istringstream lines(folder.read("Zelvora_Log.csv"));
    std::string line;
    for (const char* header : {"Zelvora Log File,\r", "Date:,Login:,DWG:,Method:,\r", "\r"}) {
        ASSERT_TRUE(std::getline(lines, line));
        EXPECT_EQ(line, header);
    }
    int next[2] = {0, 0};
    while (std::getline(lines, line)) {
        const int writer = line[0] - '0';
        ASSERT_TRUE(writer == 0 || writer == 1) << line;
        ASSERT_EQ(line.substr(1), ",entry " + std::to_string(next[writer]++) + ",\r");
    }
    EXPECT_EQ(next[0], kLines);
    EXPECT_EQ(next[1], kLines);
}

} // namespace
} // namespace zv
