#include "host/CommandText.h"

#include <gtest/gtest.h>

namespace zv {

namespace {

TEST(CommandText, InsertHasNoBlankBetweenItsArguments)
{
    EXPECT_EQ(insertBlockText("C:/A/B.DWG", "2.5"),
              "(command \"_.-insert\" \"C:/A/B.DWG\"\"X\"\"2.5\"\"Y\"\"2.5\"\"Z\"\"2.5\")\r");
}

TEST(CommandText, ExplodedInsertWritesCoordinatesPlainly)
{
    EXPECT_EQ(insertExplodedText("*C:/A/B.DWG", {0.1, -1e15, 1e-7}, "1"),
              "_.-insert\r*C:/A/B.DWG\r0.1,-1000000000000000,0.0000001\r1\r");
}

TEST(CommandText, EveryBackslashBecomesASlash)
{
    EXPECT_EQ(withForwardSlashes("\\\\server\\lib\\a.dwg"), "//server/lib/a.dwg");
}

TEST(CommandText, ExplodeMarkTurnsOver)
{
    EXPECT_EQ(withExplodeMark("C:/A.DWG", true), "*C:/A.DWG");
    EXPECT_EQ(withExplodeMark("C:/A.DWG", false), "C:/A.DWG");
    EXPECT_EQ(withExplodeMark("*C:/A.DWG", true), "C:/A.DWG");
    EXPECT_EQ(withExplodeMark("*C:/A.DWG", false), "C:/A.DWG");
    EXPECT_EQ(withExplodeMark("C:/*x*/A.DWG", true), "*/A.DWG");
    EXPECT_EQ(withExplodeMark("", true), "*");
}

TEST(CommandText, StoredScaleStandsBehindTheLastEqualsSign)
{
    EXPECT_EQ(storedScale("Scale=48"), "48");
    EXPECT_EQ(storedScale("a=b=1/4"), "1/4");
    EXPECT_EQ(storedScale("48"), "48");
    EXPECT_EQ(storedScale("Scale="), "");
    EXPECT_EQ(storedScale(""), "");
}

} // namespace

} // namespace zv
