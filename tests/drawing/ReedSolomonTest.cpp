#include "drawing/container/ReedSolomon.h"

#include <gtest/gtest.h>

#include <random>

namespace zv::dwg {
namespace {

/// Blocks of zeros are valid blocks, so that errors in them tell all about the correction.
std::vector<std::byte> zeroBlocks(std::size_t blocks)
{
    return std::vector<std::byte>(blocks * ReedSolomon::kBlock);
}

TEST(ReedSolomon, TakesTheDataOfWovenBlocks)
{
    std::vector<std::byte> woven(2 * ReedSolomon::kBlock);
    for (std::size_t i = 0; i < woven.size(); ++i)
        woven[i] = static_cast<std::byte>(i);
    const auto data = ReedSolomon::data(woven, 2, ReedSolomon::kSystemData);
    ASSERT_EQ(data.size(), 2 * ReedSolomon::kSystemData);
    EXPECT_EQ(data[1], woven[2]);
    EXPECT_EQ(data[ReedSolomon::kSystemData], woven[1]);
}

TEST(ReedSolomon, CorrectsAsManyErrorsAsItsGuardsAllow)
{
    for (const std::size_t dataBytes : {ReedSolomon::kSystemData, ReedSolomon::kPageData}) {
        const std::size_t most = (ReedSolomon::kBlock - dataBytes) / 2;
        std::mt19937 random(7);
        for (int run = 0; run < 200; ++run) {
            auto woven = zeroBlocks(3);
            for (std::size_t i = 0; i < most; ++i)
                woven[random() % ReedSolomon::kBlock * 3 + 1] = static_cast<std::byte>(random());
            ASSERT_TRUE(ReedSolomon::correct(woven, 3, dataBytes));
            ASSERT_EQ(woven, zeroBlocks(3)) << dataBytes << " run " << run;
        }
    }
}

TEST(ReedSolomon, TellsBlocksWithTooManyErrors)
{
    std::mt19937 random(7);
    int told = 0;
    for (int run = 0; run < 100; ++run) {
        auto woven = zeroBlocks(1);
        for (std::size_t i = 0; i < 40; ++i)
            woven[random() % ReedSolomon::kBlock] = static_cast<std::byte>(random());
        told += ReedSolomon::correct(woven, 1, ReedSolomon::kSystemData) ? 0 : 1;
    }
    EXPECT_EQ(told, 100);
}

} // namespace
} // namespace zv::dwg
