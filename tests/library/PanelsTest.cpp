#include "library/Panels.h"

#include <gtest/gtest.h>

#include <cstddef>

namespace zv {
namespace {

/// A library in view, and the events of the window in their order, without a window.
struct Browser {
    explicit Browser(int count) : lines(count)
    {
        panels.reset();
        panels.beginLibrary();
        panels.loadLibrary(lines);
    }
    void next()
    {
        panels.beginNext();
        blanked = panels.turnForward();
        panels.fill(lines);
        panels.endNext(row, lines);
    }
    void previous()
    {
        panels.beginPrevious(row);
        panels.turnBack();
        panels.fill(lines);
        panels.endPrevious(row, lines);
    }
    void jump(int line)
    {
        row = line - 1;
        panels.FocusCell = std::int16_t(panels.beginJump(line));
        panels.fill(lines);
        panels.endJump(line, lines);
    }
    void goTo(const PanelStep& step)
    {
        if (step.isReached(lines) && step.row != row)
            jump(step.row + 1);
    }
    void stepForward()
    {
        panels.beginNext();
        goTo(panels.stepForward(row, lines));
        panels.endNext(row, lines);
    }
    void stepBack()
    {
        panels.beginPrevious(row);
        goTo(panels.stepBack(row, lines));
        panels.endPrevious(row, lines);
    }
    void enlarge(int line)
    {
        jump(line);
        panels.enterEnlargeMode();
        panels.enlarged();
    }
    std::string caption() const { return panels.caption("Doors"); }

    Panels panels;
    int lines;
    int row = -1;
    bool blanked = false;
};

TEST(Panels, ANewWindowHasNothingToTurn)
{
    Panels panels;
    panels.EnlargeMode = 1;
    panels.reset();
    EXPECT_FALSE(panels.previousEnabled);
    EXPECT_FALSE(panels.nextEnabled);
    EXPECT_FALSE(panels.isEnlarged());
    EXPECT_FALSE(panels.showsLine(1));
}

TEST(Panels, ThePromptStandsInPlaceOfTheCells)
{
    Panels panels;
    panels.reset();
    panels.showPrompt();
    EXPECT_EQ(panels.visibleCells, 0);
}

TEST(Panels, ALoadShowsTheFirstPanelOfAsManyAsTheLinesFill)
{
    const struct {
        int lines, cells;
        bool next;
        const char* caption;
    } cases[] = {{0, 0, false, "DOORS   Page 1 of 1"},       {1, 1, false, "DOORS   Page 1 of 1"},
                 {20, 20, false, "DOORS   Page 1 of 1"},     {21, 20, true, "DOORS   Page 1 of 2"},
                 {40, 20, true, "DOORS   Page 1 of 2"},      {41, 20, true, "DOORS   Page 1 of 3"},
                 {32767, 20, true, "DOORS   Page 1 of 1639"}};
    for (const auto& expected : cases) {
        const Browser browser(expected.lines);
        EXPECT_EQ(browser.panels.visibleCells, expected.cells) << expected.lines;
        EXPECT_EQ(browser.panels.filledCells, expected.cells) << expected.lines;
        EXPECT_EQ(browser.panels.nextEnabled, expected.next) << expected.lines;
        EXPECT_FALSE(browser.panels.previousEnabled) << expected.lines;
        EXPECT_EQ(browser.caption(), expected.caption);
        EXPECT_GE(browser.panels.LineCount, kPanelCells) << expected.lines;
    }
}

TEST(Panels, TurningToTheEndAndBackShowsEveryPanelInItsOrder)
{
    Browser browser(45);
    for (int panel = 1; panel <= 3; ++panel) {
        EXPECT_EQ(browser.panels.CurrentPage, panel);
        EXPECT_EQ(browser.panels.FirstLine, (panel - 1) * 20 + 1);
        EXPECT_EQ(browser.panels.visibleCells, panel < 3 ? 20 : 5);
        EXPECT_EQ(browser.panels.nextEnabled, panel < 3);
        EXPECT_EQ(browser.panels.previousEnabled, panel > 1);
        if (panel < 3)
            browser.next();
    }
    for (int panel = 2; panel >= 1; --panel) {
        browser.previous();
        EXPECT_EQ(browser.panels.CurrentPage, panel);
        EXPECT_EQ(browser.panels.visibleCells, 20);
        EXPECT_TRUE(browser.panels.nextEnabled);
        EXPECT_EQ(browser.panels.previousEnabled, panel > 1);
    }
}

TEST(Panels, CellsAreBlankedBeforeATurnFromAPanelBehindTheFirst)
{
    Browser browser(60);
    browser.next();
    EXPECT_FALSE(browser.blanked);
    browser.next();
    EXPECT_TRUE(browser.blanked);
}

TEST(Panels, ATurnPastTheEndIsAnEmptyPanelUnderTheLastCaption)
{
    Browser browser(22);
    browser.jump(21);
    EXPECT_TRUE(browser.panels.nextEnabled) << "it is not the last line";
    browser.next();
    EXPECT_EQ(browser.panels.visibleCells, 0);
    EXPECT_FALSE(browser.panels.nextEnabled);
    EXPECT_EQ(browser.caption(), "DOORS   Page 2 of 2");
    EXPECT_EQ(browser.panels.lineOfCell(1), 41);
    browser.previous();
    EXPECT_EQ(browser.panels.lineOfCell(1), 21) << "whatever the caption tells";
    EXPECT_EQ(browser.panels.visibleCells, 2);
}

TEST(Panels, AListThatHasGrownShowsNoMoreCellsThanWereInSight)
{
    Browser browser(22);
    browser.jump(21);
    browser.lines = 60;
    browser.next();
    EXPECT_EQ(browser.panels.filledCells, 20);
    EXPECT_EQ(browser.panels.visibleCells, 2);
    EXPECT_TRUE(browser.panels.showsLine(2));
    EXPECT_FALSE(browser.panels.showsLine(3));
}

TEST(Panels, ATurnBeforeTheBeginningShowsTheFirstPanel)
{
    Browser browser(45);
    browser.previous();
    EXPECT_EQ(browser.panels.FirstLine, -19);
    EXPECT_EQ(browser.panels.lineOfCell(1), 1);
    EXPECT_EQ(browser.panels.visibleCells, 20);
    EXPECT_FALSE(browser.panels.previousEnabled);
    browser.next();
    EXPECT_EQ(browser.panels.FirstLine, 21);
    EXPECT_EQ(browser.caption(), "DOORS   Page 2 of 3");
}

TEST(Panels, EachButtonForgetsTheTurnOfTheOther)
{
    Browser browser(65);
    browser.next();
    EXPECT_EQ(browser.panels.TurnedForward, 1);
    EXPECT_EQ(browser.panels.TurnedBack, 0);
    browser.next();
    browser.previous();
    EXPECT_EQ(browser.panels.TurnedForward, 0);
    EXPECT_EQ(browser.panels.TurnedBack, 1);
    browser.previous();
    EXPECT_EQ(browser.panels.TurnedBack, 0) << "nor is it kept on the first panel";
}

TEST(Panels, AJumpShowsThePanelOfItsLine)
{
    Browser browser(45);
    const struct {
        int line, panel, cell;
        bool next;
    } cases[] = {{20, 1, 20, true}, {21, 2, 1, true}, {1, 1, 1, true}, {44, 3, 4, true}, {45, 3, 5, false}};
    for (const auto& expected : cases) {
        browser.jump(expected.line);
        EXPECT_EQ(browser.panels.CurrentPage, expected.panel) << expected.line;
        EXPECT_EQ(browser.panels.FocusCell, expected.cell) << expected.line;
        EXPECT_EQ(browser.panels.FirstLine, (expected.panel - 1) * 20 + 1) << expected.line;
        EXPECT_EQ(browser.panels.previousEnabled, expected.panel > 1) << expected.line;
        EXPECT_EQ(browser.panels.nextEnabled, expected.next) << expected.line;
        EXPECT_EQ(browser.panels.visibleCells, expected.panel < 3 ? 20 : 5) << expected.line;
    }
}

TEST(Panels, AMissingLibraryShowsNoCellAndTurnsNowhere)
{
    Browser browser(45);
    browser.next();
    browser.panels.beginLibrary();
    EXPECT_EQ(browser.panels.visibleCells, 20) << "while it is told";
    browser.panels.missLibrary();
    EXPECT_EQ(browser.panels.visibleCells, 0);
    EXPECT_FALSE(browser.panels.showsLine(1));
    EXPECT_FALSE(browser.panels.previousEnabled);
    EXPECT_FALSE(browser.panels.nextEnabled);
}

TEST(Panels, EnlargingEnablesTheStepsThatThePanelHas)
{
    Browser browser(20);
    browser.enlarge(1);
    EXPECT_FALSE(browser.panels.previousEnabled);
    EXPECT_TRUE(browser.panels.nextEnabled);
    browser.panels.leaveEnlargeMode();
    browser.enlarge(20);
    EXPECT_TRUE(browser.panels.previousEnabled);
    EXPECT_FALSE(browser.panels.nextEnabled);
}

TEST(Panels, NextStepsFromLineToLineAndTurnsThePanelBeneath)
{
    Browser browser(23);
    browser.enlarge(2);
    for (int line = 3; line <= 23; ++line) {
        EXPECT_TRUE(browser.panels.nextEnabled) << line;
        browser.stepForward();
        EXPECT_EQ(browser.row, line - 1);
    }
    EXPECT_EQ(browser.panels.CurrentPage, 2);
    EXPECT_FALSE(browser.panels.nextEnabled);
    EXPECT_TRUE(browser.panels.previousEnabled);
}

TEST(Panels, AStepFromTheFirstRowNeverComesToTheLastLine)
{
    Browser browser(2);
    browser.enlarge(1);
    browser.stepForward();
    EXPECT_EQ(browser.row, 0) << "the count starts one lower there";
}

TEST(Panels, PreviousFindsItsRowSelectedAndThenMovesForward)
{
    Browser browser(10);
    browser.enlarge(5);
    browser.stepBack();
    EXPECT_EQ(browser.row, 4);
    EXPECT_EQ(browser.panels.FocusCell, 6);
    browser.stepBack();
    EXPECT_EQ(browser.row, 5);
}

TEST(Panels, AStepBackFromTheSecondRowStartsItsCountAtOne)
{
    Browser browser(2);
    browser.enlarge(2);
    browser.panels.beginPrevious(browser.row);
    EXPECT_FALSE(browser.panels.previousEnabled);
    const PanelStep step = browser.panels.stepBack(browser.row, browser.lines);
    EXPECT_TRUE(browser.panels.previousEnabled);
    EXPECT_EQ(step.target, 3);
    EXPECT_TRUE(step.isReached(2));
    EXPECT_FALSE(step.isReached(1));
}

TEST(Panels, CellsWithoutALineGoWhenEnlargeModeIsLeft)
{
    Browser browser(5);
    browser.enlarge(5);
    browser.stepBack();
    EXPECT_EQ(browser.panels.visibleCells, 20);
    EXPECT_FALSE(browser.panels.showsLine(6)) << "black, and standing for no drawing";
    browser.panels.leaveEnlargeMode();
    EXPECT_EQ(browser.panels.visibleCells, 5);
}

TEST(Panels, ARefusedDrawingEnablesBothButtons)
{
    Browser browser(1);
    browser.jump(1);
    browser.panels.enterEnlargeMode();
    browser.panels.enlargeFailed();
    EXPECT_FALSE(browser.panels.isEnlarged());
    EXPECT_TRUE(browser.panels.previousEnabled);
    EXPECT_TRUE(browser.panels.nextEnabled);
    EXPECT_EQ(browser.panels.visibleCells, 1);
}

TEST(Panels, PathsAreThoseOfThePanelsLines)
{
    std::vector<ListLine> list(45);
    for (std::size_t i = 0; i < list.size(); ++i)
        list[i].path = std::to_string(i + 1);
    EXPECT_EQ(pathsOfPanel(list, 21).size(), 20U);
    EXPECT_EQ(pathsOfPanel(list, 21).front(), "21");
    EXPECT_EQ(pathsOfPanel(list, 41), (std::vector<std::string>{"41", "42", "43", "44", "45"}));
    EXPECT_TRUE(pathsOfPanel(list, 46).empty());
}

} // namespace
} // namespace zv
