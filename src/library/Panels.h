#pragma once

#include "library/ListFile.h"
#include "library/PageMath.h"

#include <cstdint>
#include <string>
#include <vector>

namespace zv {

/// A step to another drawing in enlarge mode.
struct PanelStep {
    int counter = 0; ///< Where the count of the list's lines starts.
    int target = 1;  ///< The line that it must come to.
    int row = 0;     ///< What is selected then.

    /// Whether the count comes to the target in a list of so many lines.
    bool isReached(int lines) const { return target > counter && target <= counter + lines; }
};

/// The panels of the library in view: which one is shown, which cells are in sight, whether the buttons can
/// be pressed. The window tells what the user does and shows what stands here afterwards. Lines and cells are
/// counted from 1, rows of the list of labels from 0; row -1 is none.
struct Panels {
    double PageCount = 0;        ///< Panels of the library.
    double CurrentPage = 1;      ///< Panel in view.
    std::int16_t PageCursor = 2; ///< The panel once more, for enabling the buttons.
    std::int16_t PrevPageCursor = 0;
    int FirstLine = 0;          ///< Line of the panel's first cell.
    std::int16_t LineCount = 0; ///< Of the last load, at least one panel.
    std::int16_t FocusCell = 0; ///< The selected cell.
    std::int16_t TurnedForward = 0, TurnedBack = 0;
    std::int16_t EnlargeMode = 0; ///< 1 while the viewer is shown.

    bool previousEnabled = true, nextEnabled = true; ///< Command2 and Command3.
    int visibleCells = kPanelCells;                  ///< So many, from the first, are in sight.
    int filledCells = 0;                             ///< So many, from the first, show a line of the panel.

    bool isEnlarged() const { return EnlargeMode == 1; }
    /// The line in the first cell, also after a turn that went before the library's beginning.
    int topLine() const;
    /// The line that a cell of the panel in view shows. After a turn past the end the page in the caption is
    /// another one, so it is not reckoned from that.
    int lineOfCell(int cell) const;
    /// Whether a cell shows a drawing of the panel in view. A hidden one keeps what it had before.
    bool showsLine(int cell) const;
    /// Library name, page and pages, as the frame around the cells shows them.
    std::string caption(const std::string& libraryName) const;

    /// A new window, which has no library yet.
    void reset();
    /// No library is in view: the prompt stands in place of the cells.
    void showPrompt();

    /// Another library was chosen; then it is loaded, or it is missing.
    void beginLibrary();
    void loadLibrary(int lines);
    void missLibrary();

    /// The panel's lines go into the cells, in a list of so many lines. Cells without a line go out of sight.
    void fill(int lines);

    // The button to the next panel: it turns, or in enlarge mode it steps. `rows` is the count of the labels.
    void beginNext();
    /// True when all cells are to be blank before they are filled.
    bool turnForward();
    PanelStep stepForward(int row, int rows);
    void endNext(int row, int rows);

    // The button to the previous panel.
    void beginPrevious(int row);
    void turnBack();
    PanelStep stepBack(int row, int rows);
    void endPrevious(int row, int rows);

    /// A line was chosen in the list: the panel becomes its own. Gives its cell, which is selected and the
    /// panel filled before the end.
    int beginJump(int line);
    void endJump(int line, int rows);

    void enterEnlargeMode();
    /// The viewer shows the drawing.
    void enlarged();
    void leaveEnlargeMode();
    /// The viewer has refused the drawing.
    void enlargeFailed();

private:
    void hideCellsWithoutLine();
    void cutPage();
    void cutCursor();
    void arriveAtFirstPanel(int row, int rows);
    int startStep();
    void setStepButtons(int target, int rows);
    void setJumpButtons();
};

/// The drawings of the panel that begins with the line `first`; none beyond the list.
std::vector<std::string> pathsOfPanel(const std::vector<ListLine>& list, int first);

} // namespace zv
