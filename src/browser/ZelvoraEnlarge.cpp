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
    Panels& panels = fields.panels;
    if (panels.isEnlarged()) {
        coverPanel(false);
        panels.leaveEnlargeMode();
        showCells();
        Command12->setToolTip(QStringLiteral("Enlarge Selected Drawing"));
        resetPictures();
        return;
    }
    panels.enterEnlargeMode();
    coverPanel(true);
    if (!showInViewer(fields.selectedDrawing)) {
        enlargeFailed();
        return;
    }
    Command12->setToolTip(QStringLiteral("Return to Thumbnail View"));
    resetPictures();
    panels.enlarged();
    showButtons();
}

void Zelvora::enlargeFailed()
{
    messages().show({"Drawing Failed to Load: " + fields.selectedDrawing +
                         "\r\nVerify the drawing exists or Run Recover.",
                     "Error Loading Drawing File", MessageIcon::Critical});
    coverPanel(false);
    fields.panels.enlargeFailed();
    showCells();
    showButtons();
    Command12->setEnabled(true);
}

/// Cells that lie under the viewer are passed over by Tab, for a focus there could not be seen.
void Zelvora::coverPanel(bool cover)
{
    Frame8->setVisible(cover);
    if (cover)
        Frame8->raise();
    for (int cell = 1; cell <= kPanelCells; ++cell)
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

/// A list that cannot be read never comes to the step's line, and nothing is shown; nor is a line that was
/// added since the labels were listed.
void Zelvora::step(const PanelStep& step)
{
    showButtons();
    const auto list = readListFile(fields.LibraryPath);
    if (list && step.isReached(int(list->size())) && step.row < List1->count())
        List1->setCurrentRow(step.row);
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
    if (fields.panels.isEnlarged()) {
        DwgViewX1->zoomExtents();
        DwgViewX1->show();
    }
}

} // namespace zv
