#include "browser/Zelvora.h"

#include "config/Keys.h"
#include "controls/CaptionFrame.h"
#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "controls/SortedCombo.h"
#include "library/ListFile.h"
#include "library/PageMath.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "window/TextBytes.h"

#include <QLabel>
#include <QPlainTextEdit>

#include <algorithm>

namespace zv {
namespace {

/// The drawings of the panel that begins with the line of `first`, from 1; none beyond the list.
std::vector<std::string> pathsOfPanel(const std::vector<ListLine>& list, std::size_t first)
{
    std::vector<std::string> paths;
    for (std::size_t line = first; line <= list.size() && line < first + kCells; ++line)
        paths.push_back(list[line - 1].path);
    return paths;
}

} // namespace

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
    setAllCellsVisible(true);
    fields.LibraryName = name;
    fields.LibraryPath = libraryPath(name);
    profiles().write(keys::zelvora::LastLoad, name);
    fields.CurrentPage = 1;
    fields.PageCursor = 1;
    fields.TurnedForward = 0;
    fields.TurnedBack = 0;
    Command2->setEnabled(false);
    Command3->setEnabled(false);
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
    QStringList labels;
    fields.LineCount = 0;
    m_filledCells = std::min(int(list.size()), kCells);
    m_pictures.read(pathsOfPanel(list, 1), DwgThumbnails[1]->pictureRoom());
    for (const ListLine& line : list) {
        ++fields.LineCount;
        labels << toText(line.label);
        if (fields.LineCount <= kCells)
            fillCell(fields.LineCount, line.path, m_pictures.take(std::size_t(fields.LineCount - 1)));
        if (fields.LineCount < kCells)
            Command3->setEnabled(true);
    }
    m_pictures.readAhead(pathsOfPanel(list, 1 + kCells), DwgThumbnails[1]->pictureRoom());
    List1->addItemsWithExtent(labels);
    if (fields.LineCount <= kCells)
        endOfShortList();
    fields.PageCount = pageCount(fields.LineCount);
    fields.PageCursor = 1;
    fields.FirstLine = 1;
    setCaption();
    showTotalFiles(List1->count());
}

void Zelvora::endOfShortList()
{
    Command2->setEnabled(false);
    Command3->setEnabled(false);
    while (fields.LineCount != kCells) {
        ++fields.LineCount;
        DwgThumbnails[fields.LineCount]->hide();
    }
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
    m_filledCells = 0;
    setAllCellsVisible(false);
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
    Frame4->setTitle(toText(upper(fields.LibraryName) + "   Page " + numberText(fields.CurrentPage) + " of " +
                            numberText(fields.PageCount)));
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

/// Whether a cell shows a drawing of the panel in view. A hidden one keeps the path that it had before.
bool Zelvora::showsLine(int cell) const
{
    return cell <= m_filledCells && !DwgThumbnails[cell]->isHidden();
}

void Zelvora::hideCellsWithoutLine()
{
    for (int cell = m_filledCells + 1; cell <= kCells; ++cell)
        DwgThumbnails[cell]->hide();
}

void Zelvora::setAllCellsVisible(bool visible)
{
    for (int cell = 1; cell <= kCells; ++cell)
        DwgThumbnails[cell]->setVisible(visible);
}

void Zelvora::blankAllCells()
{
    for (int cell = 1; cell <= kCells; ++cell)
        static_cast<void>(DwgThumbnails[cell]->setDrawing({}));
}

/// Fills the cells with the library's lines from `first` on and hides the cells that none is left for. False
/// when the list is gone, which ends the program.
bool Zelvora::fillPanel(int first, Blank blank)
{
    const auto list = readListFile(fields.LibraryPath);
    if (!list) {
        program().failUnchanged(list.error());
        return false;
    }
    int cell = 0;
    const auto firstLine = std::size_t(std::max(first, 1));
    m_pictures.read(pathsOfPanel(*list, firstLine), DwgThumbnails[1]->pictureRoom());
    for (std::size_t line = firstLine; line <= list->size() && cell < kCells; ++line) {
        if (cell == 0 && blank == Blank::AtFirstLine)
            blankAllCells();
        fillCell(cell + 1, (*list)[line - 1].path, m_pictures.take(std::size_t(cell)));
        ++cell;
    }
    // The user will turn there next.
    m_pictures.readAhead(pathsOfPanel(*list, firstLine + kCells), DwgThumbnails[1]->pictureRoom());
    m_filledCells = cell;
    hideCellsWithoutLine();
    return true;
}

// ---- turning to the next panel

void Zelvora::nextPanel()
{
    if (fields.PageCursor == fields.PageCount)
        Command3->setEnabled(false);
    if (fields.PageCursor > fields.PageCount) {
        fields.PageCursor = std::int16_t(fields.PageCount);
        Command3->setEnabled(false);
    }
    if (fields.FirstLine <= 1)
        Command2->setEnabled(false);
    if (fields.FirstLine <= 0)
        fields.FirstLine = 1;
    fields.TurnedForward = 1;
    if (fields.EnlargeMode == 1)
        stepForward();
    else if (!turnForward())
        return;

    if (fields.PageCursor == fields.PageCount && fields.EnlargeMode != 1)
        Command3->setEnabled(false);
    if (fields.PageCursor > fields.PageCount) {
        fields.PageCursor = std::int16_t(fields.PageCount);
        Command3->setEnabled(false);
    }
    if (fields.EnlargeMode == 1 && List1->currentRow() == List1->count() - 1)
        Command3->setEnabled(false);
}

bool Zelvora::turnForward()
{
    clearSelectionMarks();
    fields.CurrentPage += 1;
    if (fields.CurrentPage <= 0)
        fields.CurrentPage = 1;
    Command2->setEnabled(true);
    fields.TurnedBack = 0;
    fields.FirstLine += kCells;
    if (fields.PageCursor <= fields.PageCount && fields.PageCursor > 1)
        blankAllCells();
    if (!fillPanel(fields.FirstLine, Blank::No))
        return false;
    fields.PrevPageCursor = std::int16_t(fields.PageCursor + 1);
    fields.PageCursor = std::int16_t(fields.PageCursor + 1);
    if (fields.PageCursor >= fields.PageCount) {
        Command3->setEnabled(false);
        fields.TurnedForward = 0;
    }
    if (fields.CurrentPage > fields.PageCount)
        fields.CurrentPage = fields.PageCount;
    setCaption();
    return true;
}

// ---- turning to the previous panel

void Zelvora::previousPanel()
{
    Command2->setEnabled(fields.FirstLine > 1);
    if (fields.FirstLine < 0) {
        fields.FirstLine = 1;
        fields.PageCursor = 1;
    }
    setAllCellsVisible(true);
    fields.TurnedBack = 1;
    if (fields.EnlargeMode == 1)
        stepBack();
    else if (!turnBack())
        return;

    if (fields.CurrentPage > fields.PageCount)
        fields.CurrentPage = fields.PageCount;
    setCaption();
}

bool Zelvora::turnBack()
{
    clearSelectionMarks();
    fields.CurrentPage -= 1;
    if (fields.CurrentPage <= 0)
        fields.CurrentPage = 1;
    fields.PrevPageCursor = std::int16_t(fields.PageCursor - 1);
    fields.PageCursor = std::int16_t(fields.PageCursor - 1);
    if (fields.PageCount <= fields.PageCursor || fields.PageCount > fields.CurrentPage)
        Command3->setEnabled(true);
    fields.FirstLine -= kCells;
    if (fields.TurnedForward == 1 && fields.FirstLine > 0)
        fields.TurnedForward = 0;
    blankAllCells();
    if (!fillPanel(fields.FirstLine, Blank::No))
        return false;
    if (fields.FirstLine <= 1)
        arriveAtFirstPanel();
    return true;
}

void Zelvora::arriveAtFirstPanel()
{
    Command2->setEnabled(false);
    Command3->setEnabled(true);
    if (List1->currentRow() == 0)
        Command2->setEnabled(false);
    if (List1->currentRow() == List1->count())
        Command3->setEnabled(false);
    fields.TurnedBack = 0;
    fields.PageCursor = 1;
    fields.PrevPageCursor = 1;
}

// ---- jumping to a row

void Zelvora::selectRow(int row, bool rowChanged)
{
    Command2->setEnabled(true);
    if (fields.FirstLine <= 1) {
        Command2->setEnabled(false);
        fields.PageCursor = 1;
        fields.FirstLine = 1;
    }
    setAllCellsVisible(true);
    if (rowChanged)
        Text1->clear();
    const int line = row + 1;
    const PanelPlace place = placeOfLine(line);
    fields.CurrentPage = place.panel;
    fields.PageCursor = std::int16_t(place.panel);
    jumpToCell(place.cell, line);
    if (!fillPanel(place.first, Blank::AtFirstLine))
        return;
    fields.FirstLine = place.first;
    setPanelButtons();
    if (fields.CurrentPage > fields.PageCount)
        fields.CurrentPage = fields.PageCount;
    setCaption();
    if (line == List1->count())
        Command3->setEnabled(false);
    else if (line < List1->count())
        Command3->setEnabled(true);
    if (fields.EnlargeMode == 1)
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

void Zelvora::setPanelButtons()
{
    Command2->setEnabled(fields.FirstLine > 1);
    const bool enlarged = fields.EnlargeMode == 1;
    if (enlarged && fields.CurrentPage == 1 && fields.FocusCell == 1)
        Command2->setEnabled(false);
    if (fields.CurrentPage == fields.PageCount) {
        Command3->setEnabled(false);
        fields.PageCursor = std::int16_t(fields.PageCount);
    } else if (fields.CurrentPage < fields.PageCount) {
        Command3->setEnabled(true);
    }
    if (enlarged && fields.FocusCell < kCells)
        Command3->setEnabled(true);
    if (enlarged && fields.FocusCell > 1)
        Command2->setEnabled(true);
}

} // namespace zv
