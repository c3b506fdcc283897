#include "host/XrefText.h"

#include <gtest/gtest.h>

namespace zv {
namespace {

/// The text for a drawing at 1, 2.5, 0 in the scales 2, 3, 4, turned by 30, with its returns as "|".
std::string typed(bool askPoint, bool askScale, bool askRotation, bool overlay = false)
{
    std::string text = xrefText(
        {overlay, "C:/Lib/Bolt.dwg", askPoint, askScale, askRotation, {1, 2.5, 0}, {"2", "3", "4"}, "30"});
    for (char& c : text)
        c = c == '\r' ? '|' : c;
    return text;
}

TEST(XrefText, EverythingAsked)
{
    EXPECT_EQ(typed(true, true, true), R"((command "._xref" "Attach""C:/Lib/Bolt.dwg")|)");
}

TEST(XrefText, PointAsked)
{
    EXPECT_EQ(typed(true, false, false),
              R"((command "._xref" "Attach""C:/Lib/Bolt.dwg""X""2""Y""3""Z""4""R""30")|)");
}

TEST(XrefText, PointAndScaleAsked)
{
    EXPECT_EQ(typed(true, true, false),
              R"((command "._xref" "Attach""C:/Lib/Bolt.dwg"pause"X"pause pause"30")|)");
}

TEST(XrefText, PointAndRotationAsked)
{
    EXPECT_EQ(typed(true, false, true), R"((command "._xref" "Attach""C:/Lib/Bolt.dwg""X""2""Y""3""Z""4")|)");
}

TEST(XrefText, NothingAsked)
{
    EXPECT_EQ(typed(false, false, false), "._xref|Attach|C:/Lib/Bolt.dwg|1,2.5,0|XYZ|2|3|4|30|");
}

TEST(XrefText, ScaleAndRotationAsked)
{
    EXPECT_EQ(typed(false, true, true), "._xref|Attach|C:/Lib/Bolt.dwg|1,2.5,0|XYZ|2|3|4|");
}

TEST(XrefText, RotationAsked)
{
    EXPECT_EQ(typed(false, false, true), "._xref|Attach|C:/Lib/Bolt.dwg|1,2.5,0|XYZ|2|3|4|");
}

TEST(XrefText, ScaleAsked)
{
    EXPECT_EQ(typed(false, true, false), "._xref|Attach|C:/Lib/Bolt.dwg|1,2.5,0|XYZ|2|3|4|30|");
}

TEST(XrefText, AnOverlayDiffersInItsWordOnly)
{
    EXPECT_EQ(typed(true, true, true, true), R"((command "._xref" "Overlay""C:/Lib/Bolt.dwg")|)");
    EXPECT_EQ(typed(false, false, true, true), "._xref|Overlay|C:/Lib/Bolt.dwg|1,2.5,0|XYZ|2|3|4|");
}

TEST(NamedScales, StandInTheOrderOfTheList)
{
    const auto scales = namedScales();
    ASSERT_EQ(scales.size(), 32u);
    const struct {
        std::size_t index;
        const char *name, *factor;
    } cases[] = {{0, "Full", "1"},           {3, "1-1/2\"=1'", "8"}, {8, "1/4\"=1'", "48"},
                 {15, "1/128\"=1'", "1536"}, {16, "100:1", "0.01"},  {18, "8:1", "0.125"},
                 {21, "1:100", "100"},       {26, "1:16", "16"},     {31, "1:1", "1"}};
    for (const auto& expected : cases) {
        EXPECT_STREQ(scales[expected.index].name, expected.name);
        EXPECT_STREQ(scales[expected.index].factor, expected.factor);
    }
}

TEST(StoredScale, TheLastFactorThatIsFoundInItCounts)
{
    const struct {
        const char* stored;
        int index;
    } cases[] = {{"48", 8},    {"1", 0},     {"100", 27},  {"10", 27},  {"12", 4},
                 {"16", 5},    {"1536", 15}, {"0.01", 16}, {"0.1", 17}, {"0.125", 18},
                 {"0.25", 19}, {"0.5", 20},  {"50", 22},   {"20", 25},  {"1/4 = 48 units", 8},
                 {"96", 10},   {"2", 1},     {"128", 11},  {"192", 12}, {"384", 13},
                 {"768", 14}};
    for (const auto& expected : cases)
        EXPECT_EQ(namedScaleOf(expected.stored), expected.index) << expected.stored;
}

TEST(StoredScale, WhatHoldsNoFactorIsNone)
{
    EXPECT_EQ(namedScaleOf(""), std::nullopt);
    EXPECT_EQ(namedScaleOf("7"), std::nullopt);
    EXPECT_EQ(namedScaleOf("full size"), std::nullopt);
}

} // namespace
} // namespace zv
