#include "drawing/ColorTable.h"

#include <gtest/gtest.h>

namespace zv::dwg {
namespace {

TEST(ColorTable, NamedColours)
{
    EXPECT_EQ(indexedColor(1), 0xff0000u);
    EXPECT_EQ(indexedColor(2), 0xffff00u);
    EXPECT_EQ(indexedColor(3), 0x00ff00u);
    EXPECT_EQ(indexedColor(5), 0x0000ffu);
    EXPECT_EQ(indexedColor(7), 0xffffffu);
    EXPECT_EQ(indexedColor(8), 0x808080u);
}

TEST(ColorTable, HuesGoRoundTheCircle)
{
    EXPECT_EQ(indexedColor(10), 0xff0000u);
    EXPECT_EQ(indexedColor(11), 0xff7f7fu);
    EXPECT_EQ(indexedColor(20), 0xff3f00u);
    EXPECT_EQ(indexedColor(30), 0xff7f00u);
    EXPECT_EQ(indexedColor(50), 0xffff00u);
    EXPECT_EQ(indexedColor(90), 0x00ff00u);
    EXPECT_EQ(indexedColor(130), 0x00ffffu);
    EXPECT_EQ(indexedColor(170), 0x0000ffu);
    EXPECT_EQ(indexedColor(210), 0xff00ffu);
}

TEST(ColorTable, StepsGrowDarker)
{
    EXPECT_EQ(indexedColor(12), 0xa50000u);
    EXPECT_EQ(indexedColor(14), 0x7f0000u);
    EXPECT_EQ(indexedColor(16), 0x4c0000u);
    EXPECT_EQ(indexedColor(18), 0x260000u);
}

TEST(ColorTable, GreysEndAtWhite)
{
    EXPECT_EQ(indexedColor(250), 0x333333u);
    EXPECT_EQ(indexedColor(255), 0xffffffu);
}

} // namespace
} // namespace zv::dwg
