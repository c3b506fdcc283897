#include "library/Newlib.h"

#include "config/PublicValues.h"
#include "controls/DwgThumbnail.h"
#include "controls/FileList.h"
#include "controls/FolderList.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "library/FieldColors.h"
#include "library/LibraryCombo.h"
#include "library/ListFile.h"
#include "library/ShownNames.h"
#include "library/SizeCount.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "window/TextBytes.h"

#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

// What changes the list of the library in hand.

namespace zv {
namespace {

/// Instead of the rows that are expected, where the list is known to be another one.
constexpr int kChanged = -1;

} // namespace

/// Fills the list box from the list in hand, and gives its paths. False when the run of the program ends, or
/// the list is too long to be shown.
bool Newlib::readList(std::vector<std::string>& paths)
{
    const auto list = readListFile(ListPath);
    if (!list) {
        List1->clear();
        if (list.error().code == ErrorCode::TooLarge)
            tellTooLong(list.error());
        else
            endWith(ListPath, list.error());
        return false;
    }
    QStringList rows;
    for (const ListLine& line : *list) {
        paths.push_back(line.shownPath());
        rows << toText(line.shownPath());
    }
    List1->setItemsWithExtent(rows);
    return true;
}

/// Fills the list box afresh. Where it has not the rows that are expected, another user has changed the list,
/// and it is counted anew.
bool Newlib::fillList(int expected)
{
    std::vector<std::string> paths;
    if (!readList(paths))
        return false;
    if (List1->count() != expected)
        Text7->setText(QString::number(List1->count()));
    return true;
}

void Newlib::tellTooLong(const Error& error)
{
    messages().show({error.text, "Library Too Long", MessageIcon::Critical});
}

/// A new library that drawings were added to keeps its paths.
void Newlib::takePaths()
{
    if (EditMode == ModeNew)
        ListPath = listOf(Text1->text());
    else if (EditMode == ModeExisting)
        ListPath = listOf(Combo2->currentText());
    ScratchPath = listWorkingCopy(ListPath);
}

void Newlib::add()
{
    std::vector<ListEntry> entries;
    for (int row = 0; row < File1->count(); ++row) {
        if (!File1->item(row)->isSelected())
            continue;
        const std::string name = toBytes(File1->item(row)->text());
        entries.push_back({joinPath(Dir1->path(), name), drawingName(name)});
    }
    if (entries.empty())
        return;
    takePaths();
    const auto written =
        EditMode == ModeNew ? createList(ListPath, entries) : appendToList(ListPath, entries);
    if (!written && written.error().code == ErrorCode::TooLarge) {
        tellTooLong(written.error());
        return;
    }
    if (!wentWell(ListPath, written))
        return;
    m_sizes->stop();
    QStringList rows;
    for (const ListEntry& entry : entries) {
        rows << toText(entry.path);
        AddedKB = totalWith(AddedKB, entry.path);
    }
    const bool first = List1->count() == 0;
    List1->addItemsWithExtent(rows);
    if (first)
        scrollToNames(*List1);
    Text8->setText(QStringLiteral("%1 KB").arg(AddedKB));
    Text7->setText(QString::number(List1->count()));
    File1->refresh();
    // The keys would go on to Remove All.
    if (Command1->hasFocus())
        File1->setFocus();
    Command1->setEnabled(false);
    if (EditMode == ModeNew) {
        Dirty = 1;
        EditMode = ModeNewStarted;
    }
}

void Newlib::clickList(int row)
{
    const std::string path = toBytes(List1->item(row)->text());
    Command7->setEnabled(row > 0);
    Command10->setEnabled(row < List1->count() - 1);
    for (PictureButton* command : {Command12, Command2, Command3})
        command->setEnabled(true);
    setGround(Text5, Ground::PaleYellow);
    if (EditMode == ModeNew)
        Text5->setText(toText(drawingName(path)));
    takePaths();
    showLabel(row);
    showDrawing(path, upper(path));
}

/// Shows the label of a row, as the list has it. During a move the list has the old order still, and the
/// label that stands there is the right one.
void Newlib::showLabel(int row)
{
    if (MoveUpPending == 1 || MoveDownPending == 1) {
        MoveUpPending = 0;
        MoveDownPending = 0;
        return;
    }
    if (const auto label = listLabel(ListPath, std::size_t(row) + 1))
        Text5->setText(toText(*label));
    Text5->setCursorPosition(0);
}

void Newlib::removeLine()
{
    const int row = List1->currentRow();
    if (row < 0) {
        messages().show({"Please Select a File to Remove", "No File Selected!", MessageIcon::Information});
        Command2->setEnabled(true);
        return;
    }
    const std::string path = toBytes(List1->item(row)->text());
    const int rows = List1->count();
    takePaths();
    const auto removed = removeListLine(ListPath, std::size_t(row) + 1, path);
    if (!removed && removed.error().code == ErrorCode::Busy) {
        fillList(kChanged);
        return;
    }
    if (!wentWell(ListPath, removed))
        return;
    Text5->clear();
    Text7->setText(QString::number(Text7->text().toInt() - 1));
    blankDetails();
    SelectedRow = std::int16_t(row + 1);
    if (!fillList(rows - 1))
        return;
    // The row that moved into the gap; behind the first and the last row there is none.
    if (SelectedRow - 1 == List1->count())
        SelectedRow = 1;
    if (SelectedRow - 1 > 0)
        List1->setCurrentRow(SelectedRow - 1);
    List1->setFocus();
}

void Newlib::removeAll()
{
    if (!messages().confirm({"Are you sure you want to remove the drawing list from current library?",
                             "Remove Drawing List Confirmation", MessageIcon::Question}))
        return;
    const std::string list = listOf(EditMode == ModeExisting ? Combo2->currentText() : Text1->text());
    if (!wentWell(list, createList(list, {})))
        return;
    m_sizes->stop();
    List1->clear();
    for (QLineEdit* text : {Text5, Text6, Text7, Text8})
        text->clear();
    Text3->clear();
    Text4->clear();
}

/// Moves the selected row up (-1) or down (1).
void Newlib::move(int step)
{
    PictureButton* const button = step < 0 ? Command7 : Command10;
    const int row = List1->currentRow();
    const int target = row + step;
    if (row < 0)
        return;
    if (target < 0 || target >= List1->count()) {
        button->setEnabled(false);
        return;
    }
    (step < 0 ? MoveUpPending : MoveDownPending) = 1;
    const bool byKeys = button->hasFocus();
    const std::string path = toBytes(List1->item(row)->text());
    {
        // Only the selecting of the new row is a click.
        const QSignalBlocker noHandlers(List1);
        List1->setCurrentRow(-1);
        List1->insertItem(target, List1->takeItem(row));
    }
    List1->setCurrentRow(target);
    // At an end the keys would go on to the other direction.
    if (byKeys && !button->isEnabled())
        List1->setFocus();
    const auto moved = moveListLine(ListPath, std::size_t(row) + 1, std::size_t(target) + 1, path);
    if (!moved && moved.error().code == ErrorCode::Busy)
        fillList(kChanged);
    else
        wentWell(ListPath, moved);
}

/// Gives the selected row the label in Text5, taken as it stands.
void Newlib::relabel()
{
    setGround(Text5, Ground::Window);
    const int row = List1->currentRow();
    if (row < 0)
        return;
    const std::string path = toBytes(List1->item(row)->text());
    takePaths();
    const int rows = List1->count();
    const auto changed = changeListLabel(ListPath, std::size_t(row) + 1, toBytes(Text5->text()), path);
    if (!changed && changed.error().code == ErrorCode::Busy) {
        fillList(kChanged);
        return;
    }
    if (!wentWell(ListPath, changed) || !fillList(rows))
        return;
    SelectedRow = std::int16_t(row + 1);
    List1->setCurrentRow(SelectedRow - 1);
    List1->setFocus();
}

} // namespace zv
