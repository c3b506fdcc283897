#include "BenchFixture.h"

#include <algorithm>

namespace zv::bench {

namespace {

/// What the command line tells of what it waits for.
class Prompts : public BenchFixture {
protected:
    bool wasTold(const std::string& text) const
    {
        return std::any_of(history.begin(), history.end(),
                           [&](const std::string& each) { return each.find(text) != std::string::npos; });
    }
};

TEST_F(Prompts, AnOpenExpressionCountsItsBracketsAndEscapeEndsIt)
{
    line.type("(command \"_.-insert\"\r");
    EXPECT_EQ(prompt(), "(1>");
    line.type("(list 1\r");
    EXPECT_EQ(prompt(), "(2>");
    line.type("\")\"\r");
    EXPECT_EQ(prompt(), "(2>");
    line.cancel();
    EXPECT_EQ(prompt(), "Command:");
    EXPECT_EQ(history.back(), "*Cancel*");
    line.type("CIRCLE\r");
    EXPECT_EQ(prompt(), "Specify center point for circle:");
}

TEST_F(Prompts, EachLineOfAnExpressionIsSeenAsItIsEntered)
{
    line.type("(setvar\r");
    EXPECT_EQ(history.back(), "Command: (setvar");
    line.type("\"DIMSCALE\"\r");
    EXPECT_EQ(history.back(), "(1> \"DIMSCALE\"");
    const std::size_t before = history.size();
    line.type("24)\r");
    EXPECT_EQ(history[before], "(1> 24)");
    line.type("(princ\r");
    EXPECT_EQ(history.back(), "Command: (princ");
}

TEST_F(Prompts, AnExpressionMayBeClosedLater)
{
    line.type("(setvar \"DIMSCALE\"\r");
    line.type("7)\r");
    EXPECT_EQ(drawing().variables().real("DIMSCALE"), 7);
    EXPECT_EQ(prompt(), "Command:");
}

TEST_F(Prompts, AWrongAnswerIsToldWhatWasExpected)
{
    line.type("CIRCLE here ");
    EXPECT_EQ(history.back(), "Expected: a point (a pick, or x,y).");
    line.type("1,1 small ");
    EXPECT_EQ(history.back(), "Expected: a point (a pick, or x,y) or a number.");
    line.cancel();
    line.type("ZOOM far ");
    EXPECT_EQ(history.back(), "Expected: a point (a pick, or x,y), a number or a word in the brackets.");
    line.cancel();
    line.type("FILEDIA 0 SAVEAS\r" + folder.write("Taken.dwg", "old") + "\rperhaps\r");
    EXPECT_EQ(history.back(), "Expected: Y or N.");
    line.cancel();
    line.type("LINE 1,1 @1e308,0 @1e308,0 ");
    EXPECT_EQ(history.back(), "Expected: a point (a pick, or x,y) or a word in the brackets.");
}

TEST_F(Prompts, HelpListsTheCommands)
{
    for (const char* typed : {"HELP\r", "?\r"}) {
        history.clear();
        line.type(typed);
        for (const char* name : {"-INSERT", "-XREF", "LINE", "QSAVE", "SAVEAS", "UNDO", "REDO", "HELP"})
            EXPECT_TRUE(wasTold(name)) << typed << name;
    }
}

TEST_F(Prompts, PickedPointsAreEchoed)
{
    line.type("CIRCLE\r");
    line.pick({1.23456, 2, 0});
    EXPECT_EQ(history.back(), "Specify center point for circle: 1.2346,2");
}

} // namespace

} // namespace zv::bench
