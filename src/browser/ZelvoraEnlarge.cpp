#include "browser/Zelvora.h"

#include "config/PublicValues.h"
#include "controls/CaptionFrame.h"
#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "library/ListFile.h"

namespace zv {

void Zelvora::toggleEnlargeMode()
{
    if (fields.selectedDrawing.empty()) {
        messages().show({"Please Select a Drawing file before running Enlarge Mode",
                         "Drawing File Not Selected", MessageIcon::Information});
        return;
    }
    unsetCursor();
    if (fields.EnlargeMode == 1) {
        coverPanel(false);
        hideCellsWithoutLine();
        fields.EnlargeMode = 0;
        Command12->setToolTip(QStringLiteral("Enlarge Selected Drawing"));
        resetPictures();
        return;
    }
    fields.EnlargeMode = 1;
    coverPanel(true);
    if (!showInViewer(fields.selectedDrawing)) {
        enlargeFailed();
        return;
    }
    Command12->setToolTip(QStringLiteral("Return to Thumbnail View"));
    resetPictures();
    if (fields.FocusCell > 1)
        Command2->setEnabled(true);
    if (fields.FocusCell < kCells)
        Command3->setEnabled(true);
}

void Zelvora::enlargeFailed()
{
    messages().show({"Drawing Failed to Load: " + fields.selectedDrawing +
                         "\r\nVerify the drawing exists or Run Recover.",
                     "Error Loading Drawing File", MessageIcon::Critical});
    coverPanel(false);
    hideCellsWithoutLine();
    Command2->setEnabled(true);
    Command3->setEnabled(true);
    Command12->setEnabled(true);
    fields.EnlargeMode = 0;
}

/// Cells that lie under the viewer are passed over by Tab, for a focus there could not be seen.
void Zelvora::coverPanel(bool cover)
{
    Frame8->setVisible(cover);
    if (cover)
        Frame8->raise();
    for (int cell = 1; cell <= kCells; ++cell)
        DwgThumbnails[cell]->setFocusPolicy(cover ? Qt::ClickFocus : Qt::StrongFocus);
}

/// The viewer stays hidden when it refuses the drawing.
bool Zelvora::showInViewer(const std::string& path)
{
    DwgViewX1->hide();
    if (!DwgViewX1->setDrawing(path))
        return false;
    DwgViewX1->zoomExtents();
    DwgViewX1->show();
    return true;
}

bool Zelvora::reloadViewer()
{
    fields.ViewerBusy = 1;
    if (!showInViewer(fields.selectedDrawing))
        return false;
    fields.ViewerBusy = 0;
    return true;
}

// ---- stepping from drawing to drawing

void Zelvora::stepForward()
{
    const int counter = List1->currentRow() == 0 ? -1 : 0;
    const int target = startStep();
    fields.TurnedBack = 0;
    setStepButtons(target);
    if (lineIsReached(counter, target))
        List1->setCurrentRow(target - 1);
}

// The selected cell is raised here as well, and the row that is set lies one before the target: the first
// press after a selection finds the row selected already, and only the next one moves.
void Zelvora::stepBack()
{
    int counter = 0;
    if (List1->currentRow() == 1) {
        counter = 1;
        Command2->setEnabled(false);
    }
    const int target = startStep();
    fields.TurnedForward = 0;
    setStepButtons(target);
    if (lineIsReached(counter, target))
        List1->setCurrentRow(target - 2);
}

/// Moves the selected cell on and returns the line that it then stands for.
int Zelvora::startStep()
{
    closeEveryFile();
    ++fields.FocusCell;
    const int target = fields.FirstLine + fields.FocusCell - 1;
    return target == 0 ? 1 : target;
}

void Zelvora::setStepButtons(int target)
{
    Command2->setEnabled(target > 1);
    const int last = List1->count();
    if (target == last)
        Command3->setEnabled(false);
    else if (target < last)
        Command3->setEnabled(true);
    if (fields.FocusCell > 1)
        Command2->setEnabled(true);
}

/// Whether a count of the library's lines that starts at `counter` comes to `target`. In a list that cannot
/// be read it does not, and the step shows nothing.
bool Zelvora::lineIsReached(int counter, int target)
{
    const auto list = readListFile(fields.LibraryPath);
    return list && target > counter && target <= counter + int(list->size());
}

void Zelvora::printFromViewer()
{
    setTopmost(false);
    DwgViewX1->print();
    setTopmost(values().AlwaysOnTop == 1);
}

void Zelvora::resizeEvent(QResizeEvent* event)
{
    Window::resizeEvent(event);
    if (fields.EnlargeMode == 1) {
        DwgViewX1->zoomExtents();
        DwgViewX1->show();
    }
}

} // namespace zv
