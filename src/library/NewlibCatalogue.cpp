#include "library/Newlib.h"

#include "config/PublicValues.h"
#include "controls/DwgThumbnail.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "library/Catalogue.h"
#include "library/FieldColors.h"
#include "library/LibraryCombo.h"
#include "library/ListFile.h"
#include "library/SizeCount.h"
#include "platform/Files.h"
#include "window/TextBytes.h"

#include <QLineEdit>
#include <QPlainTextEdit>

// What touches the catalogue: saving, renaming and deleting libraries, and the two ways back.

namespace zv {

/// Nothing when the count cannot be read, which is told.
std::optional<int> Newlib::storedCount()
{
    const auto count = libraryCount(masterProfile());
    if (count)
        return *count;
    tellUnreadCatalogue(count.error());
    return {};
}

/// Writes the rows of a combo box as the catalogue; its scratch file stays for the caller to remove.
Result<void> Newlib::rewriteCatalogue(const LibraryCombo& rows, int count) const
{
    std::vector<std::string> names;
    for (const QString& row : rows.rows())
        names.push_back(toBytes(row));
    return writeCatalogue(values().MasterPath, names, count);
}

bool Newlib::addToCatalogue()
{
    const bool isNew = EditMode == ModeNew || EditMode == ModeNewStarted;
    const auto count = storedCount();
    if (!count)
        return false;
    if (isNew) {
        for (LibraryCombo* combo : {Combo1, Combo2, Combo3})
            combo->add({Text1->text()});
    }
    if (!wentWell(masterProfile(), rewriteCatalogue(*Combo2, *count + (isNew ? 1 : 0))) ||
        !wentWell(masterProfile(), removeCatalogueScratch(values().MasterPath)))
        return false;
    // A library that no drawing was added to has no list yet, unless another editor has made it meanwhile.
    const std::string list = listOf(Text1->text());
    if (!fileExists(list)) {
        const auto made = createFile(list, {});
        if (!made && made.error().code != ErrorCode::Busy) {
            endWith(list, made.error());
            return false;
        }
    }
    markCatalogueChanged(values().MasterPath);
    return true;
}

/// False when nothing was saved: what the user has typed is still there, or the run of the program ends.
bool Newlib::saveLibrary()
{
    if (EditMode == ModeIdle)
        return true;
    if (!addToCatalogue())
        return false;
    m_sizes->stop();
    List1->clear();
    Text1->clear();
    Text5->clear();
    blankDetails();
    return true;
}

void Newlib::save()
{
    Command9->setFocus();
    saveLibrary();
}

/// Touches no file: the list of a new library stays behind, outside the catalogue.
void Newlib::reset()
{
    m_sizes->stop();
    Command7->setEnabled(false);
    Command10->setEnabled(false);
    Text1->clear();
    setSourceInPlay(true);
    for (QWidget* control : std::initializer_list<QWidget*>{Combo2, Combo3, Text1, Combo1, Text2})
        setInPlay(control, true);
    Dirty = 0;
    disableCommands();
    takeOutOfPlay();
    for (QLineEdit* text : {Text1, Text2, Text5, Text7, Text8})
        text->clear();
    for (LibraryCombo* combo : {Combo1, Combo2, Combo3})
        combo->clearText();
    blankDetails();
    List1->clear();
    EditMode = ModeNew;
}

void Newlib::done()
{
    const auto ask = [this](const char* text, const char* title) {
        return messages().askOrClose({text, title, MessageIcon::Question});
    };
    std::optional<bool> answer = false;
    const bool hasName = !Text1->text().isEmpty();
    if (hasName && Dirty == 1)
        answer = ask("Save Changes to Library?", "Library Save Confirmation");
    if (answer == false && hasName && EditMode == ModeNew)
        answer = ask("Save Changes to New Library?", "New Library Save Confirmation");
    if (!answer)
        return;
    if (*answer) {
        if (!saveLibrary())
            return;
    } else if (const std::string list = listOf(Text1->text()); fileExists(list)) {
        if (!wentWell(list, deleteFileForced(list)))
            return;
    }
    program().unload(objectName());
}

void Newlib::renameLibrary()
{
    const auto count = storedCount();
    if (!count)
        return;
    const std::string oldList = listOf(Combo1->currentText());
    const QString name = Text2->text();
    if (name.isEmpty()) {
        messages().show({"Please Select a Library to Rename", "No Library Selected", MessageIcon::Warning});
        return;
    }
    const int row = Combo1->currentIndex();
    for (LibraryCombo* combo : {Combo1, Combo2, Combo3}) {
        combo->removeRow(row);
        combo->add({name});
    }
    Combo1->setShownText(name);
    // The catalogue is written after the file has its name, so that a failure here leaves it as it was.
    const std::string newList = listOf(name);
    if (!wentWell(oldList, renameFile(oldList, newList)))
        return;
    if (const auto written = rewriteCatalogue(*Combo1, *count); !written) {
        // The catalogue goes on naming the old list.
        static_cast<void>(renameFile(newList, oldList));
        endWith(masterProfile(), written.error());
        return;
    }
    Text2->clear();
    if (!wentWell(masterProfile(), removeCatalogueScratch(values().MasterPath)))
        return;
    markCatalogueChanged(values().MasterPath);
    EditMode = ModeExisting;
}

void Newlib::deleteLibrary()
{
    const auto count = storedCount();
    if (!count)
        return;
    const QString name = Combo3->currentText();
    if (name.isEmpty()) {
        messages().show({"Please Select a Library to Delete ", "No Library Selected", MessageIcon::Warning});
        return;
    }
    const std::string list = listOf(name);
    if (messages().ask({"Are you sure you want to Delete Library :\r\n" + toBytes(name) + " ? ",
                        "Library Delete Confirmation", MessageIcon::Question})) {
        const int row = Combo3->currentIndex();
        for (LibraryCombo* combo : {Combo3, Combo2, Combo1})
            combo->removeRow(row);
        if (!wentWell(masterProfile(), rewriteCatalogue(*Combo3, *count - 1)) || !finishDeletion(list))
            return;
    }
    EditMode = ModeIdle;
}

/// False when a file could not be deleted, which is passed over without a word.
bool Newlib::finishDeletion(const std::string& list)
{
    if (fileExists(list) && !deleteFileForced(list))
        return false;
    if (!removeCatalogueScratch(values().MasterPath))
        return false;
    markCatalogueChanged(values().MasterPath);
    return true;
}

} // namespace zv
