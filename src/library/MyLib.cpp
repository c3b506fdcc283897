#include "library/MyLib.h"

#include "config/Keys.h"
#include "config/PublicValues.h"
#include "config/StartUp.h"
#include "controls/DwgThumbnail.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "library/Catalogue.h"
#include "library/FieldColors.h"
#include "library/ListFile.h"
#include "library/ShownNames.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "window/MainWindow.h"
#include "window/TextBytes.h"

#include <QComboBox>
#include <QDir>
#include <QFileDialog>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalBlocker>

#include <algorithm>

namespace zv {
namespace {

std::string textOf(const QListWidget& list, int row)
{
    return toBytes(list.item(row)->text());
}

/// Adds the drawings of a list to a list box; a box that was empty shows their names. Errors: the list cannot
/// be read.
Result<void> fill(PathList& box, const std::string& list)
{
    const auto lines = readListFile(list);
    if (!lines) {
        box.clear();
        return lines.error();
    }
    QStringList paths;
    for (const ListLine& line : *lines)
        paths << toText(line.shownPath());
    const bool first = box.count() == 0;
    box.setItemsWithExtent(paths);
    if (first)
        scrollToNames(box);
    return {};
}

} // namespace

// ---- coming and going

void MyLib::load()
{
    ClosedByButton = 1;
    setTopmost(values().AlwaysOnTop == 1);
    Command4->setEnabled(profiles().number(keys::mylib::Userlib) == 1);
    findUser();
    static_cast<void>(fill(*List1, MyListPath));
    findSource();
    static_cast<void>(DwgThumbnail1->setDrawing({}));
    if (SourcePath != MyListPath)
        static_cast<void>(fill(*List2, SourcePath));
}

/// Finds the user's own list, and makes it where it is missing. A list that cannot be made is passed over.
void MyLib::findUser()
{
    const std::string login = loginName();
    Text1->setText(toText(login));
    MyListPath = listFilePath(program().folders().user, login);
    MyListExisted = fileExists(MyListPath) ? 1 : 0;
    if (MyListExisted == 0)
        static_cast<void>(createFile(MyListPath, {}));
}

/// The library that the user had in view last stands in the box, whether it is a row or not.
void MyLib::findSource()
{
    const std::string last = profiles().text(keys::mylib::LastLoad);
    SourcePath = sameText(last, toBytes(Text1->text()))
                     ? MyListPath
                     : listFilePath(program().folders().installation, last);
    fillCatalogue(last);
}

void MyLib::fillCatalogue(const std::string& shown)
{
    const std::string profile = profiles().path(ProfileFile::Installation);
    repairLibraryCount(profile);
    const QSignalBlocker noHandlers(Combo1);
    for (const std::string& name : readCatalogue(profile))
        Combo1->addItem(toText(name));
    Combo1->setCurrentIndex(Combo1->findText(toText(shown), Qt::MatchExactly | Qt::MatchCaseSensitive));
    Combo1->setEditText(toText(shown));
    Combo1->lineEdit()->setCursorPosition(0);
}

void MyLib::unloading()
{
    showMainWindow(program());
}

void MyLib::closeByButton()
{
    ClosedByButton = 2;
    program().unload(objectName());
}

bool MyLib::wentWell(const std::string& path, const Result<void>& done)
{
    if (!done)
        program().failUnchanged({done.error().code, namingFile(path, done.error())});
    return done.ok();
}

// ---- what the user looks at

void MyLib::chooseLibrary()
{
    SourcePath = listFilePath(program().folders().installation, toBytes(Combo1->currentText()));
    List2->clear();
    if (!fileExists(SourcePath)) {
        // The window stays off the top after this one.
        setTopmost(false);
        program().messages().show(
            {SourcePath + " Does Not Exist", "Library Not Found", MessageIcon::Critical});
        return;
    }
    const auto filled = fill(*List2, SourcePath);
    if (!filled && filled.error().code == ErrorCode::TooLarge)
        tellTooLong(filled.error());
    else
        wentWell(SourcePath, filled);
}

void MyLib::clickSource(int row)
{
    Text4->clear();
    setGround(Text4, Ground::ButtonFace);
    showDrawing(textOf(*List2, row));
}

void MyLib::clickMine(int row)
{
    SourcePath = MyListPath;
    if (const auto label = listLabel(SourcePath, std::size_t(row) + 1)) {
        Text4->setText(toText(*label));
        Text4->setCursorPosition(0);
        setGround(Text4, Ground::PaleYellow);
    }
    showDrawing(textOf(*List1, row));
}

void MyLib::showDrawing(const std::string& path)
{
    DwgPropsX& props = program().fields().props;
    if (!DwgThumbnail1->setDrawing(path))
        static_cast<void>(
            DwgThumbnail1->setDrawing(joinPath(program().folders().installation, "failed.dwg")));
    if (props.load(path)) {
        Text3->setPlainText(toText("Drawing Name: " + path + "\r\n\r\n" + props.comments()));
        Text2->setPlainText(toText(props.keywords()));
    } else {
        Text3->setPlainText(toText("Drawing Name: " + path));
        Text2->clear();
    }
}

// ---- what changes the user's list

bool MyLib::fillMine(const std::string& list)
{
    return wentWell(list, fill(*List1, list));
}

void MyLib::tellTooLong(const Error& error)
{
    messages().show({error.text, "Library Too Long", MessageIcon::Critical});
}

void MyLib::append(const std::vector<std::string>& drawings)
{
    std::vector<ListEntry> entries;
    for (const std::string& drawing : drawings)
        entries.push_back({drawing, drawingName(drawing)});
    const auto written = appendToList(MyListPath, entries);
    if (!written && written.error().code == ErrorCode::TooLarge)
        tellTooLong(written.error());
    else if (wentWell(MyListPath, written))
        fillMine(MyListPath);
}

void MyLib::add()
{
    std::vector<std::string> drawings;
    for (int row = 0; row < List2->count(); ++row) {
        if (List2->item(row)->isSelected())
            drawings.push_back(textOf(*List2, row));
    }
    append(drawings);
}

void MyLib::browse()
{
    QFileDialog dialog(this, tr("Open"), {}, QStringLiteral("Drawing Files (*.dwg)"));
    dialog.setObjectName(QStringLiteral("CommonDialog1"));
    dialog.setFileMode(QFileDialog::ExistingFile);
    dialog.selectFile(QStringLiteral("*.dwg"));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    append({toBytes(QDir::toNativeSeparators(dialog.selectedFiles().constFirst()))});
}

/// The rewrites go by the name in the window.
void MyLib::takePaths()
{
    SourcePath = listFilePath(program().folders().user, toBytes(Text1->text()));
}

void MyLib::removeLine()
{
    const int row = List1->currentRow();
    if (row < 0) {
        setTopmost(false);
        program().messages().show(
            {"Please Select a File to Remove", "No File Selected!", MessageIcon::Information});
        setTopmost(true);
        return;
    }
    takePaths();
    const auto removed = removeListLine(SourcePath, std::size_t(row) + 1, textOf(*List1, row));
    const bool another = !removed && removed.error().code == ErrorCode::Busy;
    if ((!another && !wentWell(SourcePath, removed)) || !fillMine(SourcePath))
        return;
    if (!another) {
        static_cast<void>(DwgThumbnail1->setDrawing({}));
        Text2->clear();
        Text3->clear();
        // The row that moved into the gap; behind the last one, the first.
        List1->setCurrentRow(row == List1->count() ? std::min(0, List1->count() - 1) : row);
    }
    setTopmost(true);
}

void MyLib::removeAll()
{
    setTopmost(false);
    if (program().messages().ask(
            {"Are you sure you want to clear list?", "Clear MyLib List", MessageIcon::Question})) {
        if (!wentWell(MyListPath, createList(MyListPath, {})))
            return;
        List1->clear();
        Text2->clear();
        Text3->clear();
        Text4->clear();
    }
    setTopmost(true);
}

void MyLib::relabel()
{
    const int row = List1->currentRow();
    if (row < 0)
        return;
    takePaths();
    const auto changed =
        changeListLabel(SourcePath, std::size_t(row) + 1, toBytes(Text4->text()), textOf(*List1, row));
    const bool another = !changed && changed.error().code == ErrorCode::Busy;
    if ((!another && !wentWell(SourcePath, changed)) || !fillMine(SourcePath) || another)
        return;
    List1->setCurrentRow(row);
    List1->setFocus();
}

} // namespace zv
