#include "library/PageMath.h"

#include <gtest/gtest.h>

namespace zv {
namespace {

TEST(PageMath, PanelsAreTwentiethsRoundedUpAndAtLeastOne)
{
    EXPECT_EQ(pageCount(countedLines(0)), 1);
    EXPECT_EQ(pageCount(countedLines(1)), 1);
    for (int lines = 20; lines <= 32767; ++lines)
        ASSERT_EQ(pageCount(countedLines(lines)), (lines + 19) / 20) << lines;
}

TEST(PageMath, ALinesPlaceFollowsTheFilesOrder)
{
    const struct {
        int line, panel, first, cell;
    } cases[] = {{1, 1, 1, 1},    {20, 1, 1, 20}, {21, 2, 21, 1},
                 {40, 2, 21, 20}, {41, 3, 41, 1}, {32767, 1639, 32761, 7}};
    for (const auto& expected : cases) {
        const PanelPlace place = placeOfLine(expected.line);
        EXPECT_EQ(place.panel, expected.panel) << expected.line;
        EXPECT_EQ(place.first, expected.first) << expected.line;
        EXPECT_EQ(place.cell, expected.cell) << expected.line;
    }
    EXPECT_EQ(placeOfLine(0).panel, 1);
}

} // namespace
} // namespace zv
