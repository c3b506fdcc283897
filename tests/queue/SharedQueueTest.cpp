#include "queue/QueueFile.h"

#include "support/TemporaryFolder.h"
#include "support/TwoWriters.h"

#include <gtest/gtest.h>

namespace zv {
namespace {

TEST(SharedQueue, TwoProgramsOfOneUserLoseAndTearNothing)
{
    constexpr int kLines = 10000;
    const TemporaryFolder folder;
    const std::string queue = queuePath(folder.path(), "Ann");
    ASSERT_TRUE(runTwoWriters(queue, [](const std::string& shared, int writer) {
        for (int i = 0; i < kLines; ++i)
            static_cast<void>(
                addToQueue(shared, std::to_string(writer) + "/drawing" + std::to_string(i) + ".dwg").ok());
    }));
    int next[2] = {0, 0};
    for (const std::string& drawing : readQueue(queue).valueOr({})) {
        const int writer = drawing[0] - '0';
        ASSERT_TRUE(writer == 0 || writer == 1) << drawing;
        ASSERT_EQ(drawing.substr(1), "/drawing" + std::to_string(next[writer]++) + ".dwg");
    }
    EXPECT_EQ(next[0], kLines);
    EXPECT_EQ(next[1], kLines);
}

} // namespace
} // namespace zv
