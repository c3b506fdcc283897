#include "library/ListFile.h"

#include "support/TemporaryFolder.h"
#include "support/TwoWriters.h"

#include <gtest/gtest.h>

namespace zv {
namespace {

TEST(SharedList, TwoProgramsThatRewriteOneListWaitForEachOtherAndLoseNoChange)
{
    constexpr int kRewrites = 20;
    const TemporaryFolder folder;
    const std::string list = folder.write("a.lst", "a.dwg;0\r\nb.dwg;0\r\n");
    ASSERT_TRUE(runTwoWriters(list, [](const std::string& shared, int writer) {
        const auto line = static_cast<std::size_t>(writer) + 1;
        for (int i = 1; i <= kRewrites; ++i)
            static_cast<void>(changeListLabel(shared, line, std::to_string(i)).ok());
    }));
    EXPECT_EQ(folder.read("a.lst"), "a.dwg;20\r\nb.dwg;20\r\n");
    EXPECT_FALSE(std::filesystem::exists(folder.file("a.ls$")));
}

TEST(SharedList, DrawingsThatAreAddedDuringRewritesAreNotLost)
{
    constexpr int kRounds = 50;
    const TemporaryFolder folder;
    const std::string list = folder.write("a.lst", "a.dwg;0\r\n");
    ASSERT_TRUE(runTwoWriters(list, [](const std::string& shared, int writer) {
        for (int i = 1; i <= kRounds; ++i) {
            if (writer == 0)
                static_cast<void>(changeListLabel(shared, 1, std::to_string(i)).ok());
            else
                static_cast<void>(appendToList(shared, {{"n" + std::to_string(i) + ".dwg", "N"}}).ok());
        }
    }));
    EXPECT_EQ(readListFile(list).valueOr({}).size(), 1u + kRounds);
    EXPECT_TRUE(folder.read("a.lst").starts_with("a.dwg;50\r\n"));
    EXPECT_FALSE(std::filesystem::exists(folder.file("a.ls$")));
}

} // namespace
} // namespace zv
