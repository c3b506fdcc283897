#include "browser/Zelvora.h"

#include "config/Keys.h"
#include "controls/CaptionFrame.h"
#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "controls/SortedCombo.h"
#include "library/ListFile.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "window/TextBytes.h"

#include <QLabel>
#include <QPlainTextEdit>

#include <algorithm>

namespace zv {
// ---- loading a library

void Zelvora::selectLibrary()
{
    const std::string name = toBytes(Combo1->currentText());
    const auto list = readListFile(libraryPath(name));
    if (!list && list.error().code == ErrorCode::TooLarge) {
        refuseLongLibrary(name);
        return;
    }
    Labelx->hide();
    fields.panels.beginLibrary();
    showCells();
    fields.LibraryName = name;
    fields.LibraryPath = libraryPath(name);
    profiles().write(keys::zelvora::LastLoad, name);
    showButtons();
    List1->clear();
    // A line without its separator is no better than a missing file.
    if (list && std::all_of(list->begin(), list->end(), [](const ListLine& line) { return line.separated; }))
        showLibrary(*list);
    else
        showMissingLibrary();
    setTopmost(values().AlwaysOnTop == 1);
    Combo1->setFocus();
}

std::string Zelvora::libraryPath(const std::string& name) const
{
    return sameText(name, values().LoginName) ? values().MyLibPath : listFilePath(values().MasterPath, name);
}

void Zelvora::showLibrary(const std::vector<ListLine>& list)
{
    fields.panels.loadLibrary(int(list.size()));
    fillCells(list, Blank::No);
    QStringList labels;
    for (const ListLine& line : list)
        labels << toText(line.label);
    List1->addItemsWithExtent(labels);
    showButtons();
    setCaption();
    showTotalFiles(List1->count());
}

void Zelvora::showMissingLibrary()
{
    const std::string& login = values().LoginName;
    const bool isMyLib = findText(fields.LibraryName, login) == 0;
    if (isMyLib)
        messages().show({"MyLibrary - " + login +
                             " - not found or created yet.\r\nPlease select the Settings tab and the MyLib "
                             "button to create your custom library",
                         "MyLib Missing", MessageIcon::Information});
    else
        messages().show({fields.LibraryPath + " Not Found!", "Library Not Found!", MessageIcon::Critical});
    List1->clear();
    fields.panels.missLibrary();
    showCells();
    if (!isMyLib)
        Frame4->setTitle(toText(fields.LibraryPath + " Not Found!"));
    showTotalFiles(0);
}

/// The library in view stays, and the box shows its name again.
void Zelvora::refuseLongLibrary(const std::string& name)
{
    tellLongLibrary(libraryPath(name));
    Combo1->setShownText(toText(fields.LibraryName));
    Combo1->setFocus();
}

void Zelvora::tellLongLibrary(const std::string& path)
{
    messages().show({path + " has more than " + std::to_string(kMostListLines) +
                         " drawings, which is the most that a library can hold.",
                     "Library Too Long", MessageIcon::Critical});
}

void Zelvora::showTotalFiles(int count)
{
    StatusBar1Panels[3]->setText(QStringLiteral("Total Files: %1").arg(count));
}

void Zelvora::setCaption()
{
    Frame4->setTitle(toText(fields.panels.caption(fields.LibraryName)));
}

void Zelvora::showButtons()
{
    Command2->setEnabled(fields.panels.previousEnabled);
    Command3->setEnabled(fields.panels.nextEnabled);
}

// ---- the cells

void Zelvora::fillCell(int cell, const std::string& path, Result<QImage> picture)
{
    if (!DwgThumbnails[cell]->setDrawing(path, std::move(picture))) {
        const std::string failed = joinPath(program().folders().installation, "failed.dwg");
        // Without the placeholder the cell stays blank; an action on it still means the placeholder.
        static_cast<void>(DwgThumbnails[cell]->setDrawing(failed));
        fields.CellPath[cell] = failed;
        fields.CellFailed = 1;
    }
    if (fields.CellFailed != 1)
        fields.CellPath[cell] = path;
    fields.CellFailed = 0;
}

void Zelvora::showCells()
{
    for (int cell = 1; cell <= kPanelCells; ++cell)
        DwgThumbnails[cell]->setVisible(cell <= fields.panels.visibleCells);
}

void Zelvora::blankAllCells()
{
    for (int cell = 1; cell <= kPanelCells; ++cell)
        static_cast<void>(DwgThumbnails[cell]->setDrawing({}));
}

/// Fills the cells with the panel's lines and hides those that none is left for.
void Zelvora::fillCells(const std::vector<ListLine>& list, Blank blank)
{
    const int top = fields.panels.topLine();
    const std::vector<std::string> paths = pathsOfPanel(list, top);
    m_pictures.read(paths, DwgThumbnails[1]->pictureRoom());
    if (blank == Blank::AtFirstLine && !paths.empty())
        blankAllCells();
    for (std::size_t line = 0; line < paths.size(); ++line)
        fillCell(int(line) + 1, paths[line], m_pictures.take(line));
    // The user will turn there next.
    m_pictures.readAhead(pathsOfPanel(list, top + kPanelCells), DwgThumbnails[1]->pictureRoom());
    showCells();
}

/// False when the list is gone, which ends the program.
bool Zelvora::fillPanel(Blank blank)
{
    const auto list = readListFile(fields.LibraryPath);
    if (!list) {
        program().failUnchanged(list.error());
        return false;
    }
    fields.panels.fill(int(list->size()));
    fillCells(*list, blank);
    return true;
}

// ---- turning the panels

void Zelvora::nextPanel()
{
    Panels& panels = fields.panels;
    panels.beginNext();
    showButtons();
    if (panels.isEnlarged()) {
        closeEveryFile();
        step(panels.stepForward(List1->currentRow(), List1->count()));
    } else if (!turnForward()) {
        return;
    }
    panels.endNext(List1->currentRow(), List1->count());
    showButtons();
}

bool Zelvora::turnForward()
{
    clearSelectionMarks();
    if (fields.panels.turnForward())
        blankAllCells();
    if (!fillPanel(Blank::No))
        return false;
    setCaption();
    return true;
}

void Zelvora::previousPanel()
{
    Panels& panels = fields.panels;
    panels.beginPrevious(List1->currentRow());
    showButtons();
    showCells();
    if (panels.isEnlarged()) {
        closeEveryFile();
        step(panels.stepBack(List1->currentRow(), List1->count()));
    } else if (!turnBack()) {
        return;
    }
    panels.endPrevious(List1->currentRow(), List1->count());
    showButtons();
    setCaption();
}

bool Zelvora::turnBack()
{
    clearSelectionMarks();
    fields.panels.turnBack();
    showButtons();
    blankAllCells();
    return fillPanel(Blank::No);
}

// ---- jumping to a row

void Zelvora::selectRow(int row, bool rowChanged)
{
    Panels& panels = fields.panels;
    const int line = row + 1;
    const int cell = panels.beginJump(line);
    showButtons();
    showCells();
    if (rowChanged)
        Text1->clear();
    jumpToCell(cell, line);
    if (!fillPanel(Blank::AtFirstLine))
        return;
    panels.endJump(line, List1->count());
    showButtons();
    setCaption();
    if (panels.isEnlarged())
        DwgViewX1->setFocus();
}

/// Selects the row's cell and leaves the focus with the list. A cell that cannot take the focus, as while the
/// window is hidden, is not selected.
void Zelvora::jumpToCell(int cell, int line)
{
    closeEveryFile();
    DwgThumbnail* thumbnail = DwgThumbnails[cell];
    if (!thumbnail->isVisible() || !thumbnail->isEnabled()) {
        clearSelectionMarks();
        return;
    }
    thumbnail->setFocus();
    selectCell(cell, line);
    List1->setFocus();
}

} // namespace zv
