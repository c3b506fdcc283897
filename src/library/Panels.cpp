#include "library/Panels.h"

#include "platform/Text.h"

#include <algorithm>

namespace zv {

int Panels::topLine() const
{
    return std::max(FirstLine, 1);
}

int Panels::lineOfCell(int cell) const
{
    return topLine() + cell - 1;
}

bool Panels::showsLine(int cell) const
{
    return cell <= std::min(filledCells, visibleCells);
}

std::string Panels::caption(const std::string& libraryName) const
{
    return upper(libraryName) + "   Page " + numberText(CurrentPage) + " of " + numberText(PageCount);
}

// ---- loading a library

void Panels::reset()
{
    beginLibrary();
    PageCursor = 2;
    EnlargeMode = 0;
    filledCells = 0;
}

void Panels::showPrompt()
{
    visibleCells = 0;
}

void Panels::beginLibrary()
{
    CurrentPage = 1;
    PageCursor = 1;
    TurnedForward = 0;
    TurnedBack = 0;
    previousEnabled = false;
    nextEnabled = false;
    visibleCells = kPanelCells;
}

void Panels::loadLibrary(int lines)
{
    LineCount = std::int16_t(countedLines(lines));
    PageCount = pageCount(LineCount);
    PageCursor = 1;
    FirstLine = 1;
    nextEnabled = lines > kPanelCells;
    fill(lines);
}

void Panels::missLibrary()
{
    filledCells = 0;
    visibleCells = 0;
}

// ---- the cells

void Panels::fill(int lines)
{
    filledCells = std::clamp(lines - topLine() + 1, 0, kPanelCells);
    hideCellsWithoutLine();
}

void Panels::hideCellsWithoutLine()
{
    visibleCells = std::min(visibleCells, filledCells);
}

// ---- turning to the next panel

void Panels::beginNext()
{
    if (PageCursor == PageCount)
        nextEnabled = false;
    cutCursor();
    if (FirstLine <= 1)
        previousEnabled = false;
    FirstLine = topLine();
    TurnedForward = 1;
}

bool Panels::turnForward()
{
    const bool blank = PageCursor <= PageCount && PageCursor > 1;
    CurrentPage = std::max(CurrentPage + 1, 1.0);
    previousEnabled = true;
    TurnedBack = 0;
    FirstLine += kPanelCells;
    PageCursor = std::int16_t(PageCursor + 1);
    PrevPageCursor = PageCursor;
    if (PageCursor >= PageCount) {
        nextEnabled = false;
        TurnedForward = 0;
    }
    cutPage();
    return blank;
}

void Panels::endNext(int row, int rows)
{
    if (PageCursor == PageCount && !isEnlarged())
        nextEnabled = false;
    cutCursor();
    if (isEnlarged() && row == rows - 1)
        nextEnabled = false;
}

/// Behind the last panel there is none to turn to.
void Panels::cutCursor()
{
    if (PageCursor <= PageCount)
        return;
    PageCursor = std::int16_t(PageCount);
    nextEnabled = false;
}

void Panels::cutPage()
{
    CurrentPage = std::min(CurrentPage, PageCount);
}

// ---- turning to the previous panel

void Panels::beginPrevious(int row)
{
    previousEnabled = FirstLine > 1 && !(isEnlarged() && row == 1);
    if (FirstLine < 0) {
        FirstLine = 1;
        PageCursor = 1;
    }
    visibleCells = kPanelCells;
    TurnedBack = 1;
}

void Panels::turnBack()
{
    CurrentPage = std::max(CurrentPage - 1, 1.0);
    PageCursor = std::int16_t(PageCursor - 1);
    PrevPageCursor = PageCursor;
    if (PageCount <= PageCursor || PageCount > CurrentPage)
        nextEnabled = true;
    FirstLine -= kPanelCells;
    if (TurnedForward == 1 && FirstLine > 0)
        TurnedForward = 0;
}

void Panels::endPrevious(int row, int rows)
{
    if (!isEnlarged() && FirstLine <= 1)
        arriveAtFirstPanel(row, rows);
    cutPage();
}

void Panels::arriveAtFirstPanel(int row, int rows)
{
    previousEnabled = false;
    nextEnabled = row != rows;
    TurnedBack = 0;
    PageCursor = 1;
    PrevPageCursor = 1;
}

// ---- jumping to a line

int Panels::beginJump(int line)
{
    const PanelPlace place = placeOfLine(line);
    previousEnabled = FirstLine > 1;
    visibleCells = kPanelCells;
    CurrentPage = place.panel;
    PageCursor = std::int16_t(place.panel);
    FirstLine = place.first;
    return place.cell;
}

void Panels::endJump(int line, int rows)
{
    setJumpButtons();
    cutPage();
    if (line == rows)
        nextEnabled = false;
    else if (line < rows)
        nextEnabled = true;
}

void Panels::setJumpButtons()
{
    previousEnabled = FirstLine > 1;
    if (isEnlarged() && CurrentPage == 1 && FocusCell == 1)
        previousEnabled = false;
    if (CurrentPage == PageCount) {
        nextEnabled = false;
        PageCursor = std::int16_t(PageCount);
    } else if (CurrentPage < PageCount) {
        nextEnabled = true;
    }
    if (isEnlarged() && FocusCell < kPanelCells)
        nextEnabled = true;
    if (isEnlarged() && FocusCell > 1)
        previousEnabled = true;
}

// ---- enlarge mode

void Panels::enterEnlargeMode()
{
    EnlargeMode = 1;
}

void Panels::enlarged()
{
    if (FocusCell > 1)
        previousEnabled = true;
    if (FocusCell < kPanelCells)
        nextEnabled = true;
}

void Panels::leaveEnlargeMode()
{
    EnlargeMode = 0;
    hideCellsWithoutLine();
}

void Panels::enlargeFailed()
{
    leaveEnlargeMode();
    previousEnabled = true;
    nextEnabled = true;
}

PanelStep Panels::stepForward(int row, int rows)
{
    const int target = startStep();
    TurnedBack = 0;
    setStepButtons(target, rows);
    return {row == 0 ? -1 : 0, target, target - 1};
}

// The selected cell is raised here as well, and the row that is set lies one before the target: the first
// press after a selection finds the row selected already, and only the next one moves.
PanelStep Panels::stepBack(int row, int rows)
{
    const int target = startStep();
    TurnedForward = 0;
    setStepButtons(target, rows);
    return {row == 1 ? 1 : 0, target, target - 2};
}

/// Moves the selected cell on and gives the line that it then stands for.
int Panels::startStep()
{
    ++FocusCell;
    const int target = FirstLine + FocusCell - 1;
    return target == 0 ? 1 : target;
}

void Panels::setStepButtons(int target, int rows)
{
    previousEnabled = target > 1 || FocusCell > 1;
    if (target == rows)
        nextEnabled = false;
    else if (target < rows)
        nextEnabled = true;
}

std::vector<std::string> pathsOfPanel(const std::vector<ListLine>& list, int first)
{
    std::vector<std::string> paths;
    for (auto line = std::size_t(first); line <= list.size() && paths.size() < kPanelCells; ++line)
        paths.push_back(list[line - 1].path);
    return paths;
}

} // namespace zv
