#include "library/Newlib.h"

#include "config/Keys.h"
#include "config/PublicValues.h"
#include "config/StartUp.h"
#include "controls/DriveBox.h"
#include "controls/DwgThumbnail.h"
#include "controls/FileList.h"
#include "controls/FolderList.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "host/ActionProcedure.h"
#include "host/PropertiesProcedure.h"
#include "library/Catalogue.h"
#include "library/FieldColors.h"
#include "library/LibraryCombo.h"
#include "library/ListFile.h"
#include "library/ShownNames.h"
#include "library/SizeCount.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "window/MainWindow.h"
#include "window/TextBytes.h"

#include <QLineEdit>
#include <QPlainTextEdit>

namespace zv {
namespace {

/// The editor as the procedure that changes a drawing's properties sees it.
class EditorWindow final : public PropertiesWindow {
public:
    EditorWindow(Newlib& window, std::function<void()> reread) : m_window(window), m_reread(std::move(reread))
    {
    }
    void hideWindow() override { m_window.hide(); }
    void showWindow() override
    {
        m_window.setTopmost(m_window.values().AlwaysOnTop == 1);
        m_window.appear();
    }
    void setDefaultPointer() override { m_window.unsetCursor(); }
    Messages& messages() override { return m_window.messages(); }
    void reread() override { m_reread(); }

private:
    Newlib& m_window;
    std::function<void()> m_reread;
};

} // namespace

Newlib::~Newlib() = default;

// ---- coming and going

void Newlib::load()
{
    setTopmost(values().AlwaysOnTop == 1);
    Dirty = 0;
    disableCommands();
    takeOutOfPlay();
    ListPath = listFilePath(values().MasterPath, profiles().text(keys::newlib::LastLoad));
    repairLibraryCount(masterProfile());
    // What is written later is what is read here.
    const auto catalogue = tryCatalogue(masterProfile());
    if (!catalogue) {
        tellUnreadCatalogue(catalogue.error());
        program().unload(objectName());
        return;
    }
    QStringList names;
    for (const std::string& name : *catalogue)
        names << toText(name);
    for (LibraryCombo* combo : {Combo1, Combo2, Combo3})
        combo->add(names);
    EditMode = ModeIdle;
    for (PictureButton* command : {Command7, Command10, Command12})
        command->setEnabled(false);
    Text1->setFocus();
}

void Newlib::unloading()
{
    m_sizes->stop();
    showMainWindow(program());
    if (MainWindow* window = mainWindow(program()))
        window->setEnabled(true);
}

void Newlib::endWith(const std::string& path, const Error& error)
{
    program().failUnchanged({error.code, namingFile(path, error)});
}

/// Another program may have the profile for itself at this moment, so the user can try again.
void Newlib::tellUnreadCatalogue(const Error& error)
{
    messages().show(
        {namingFile(masterProfile(), error) + "\r\nNothing was changed in it.", {}, MessageIcon::Warning});
}

bool Newlib::wentWell(const std::string& path, const Result<void>& done)
{
    if (!done)
        endWith(path, done.error());
    return done.ok();
}

std::string Newlib::listOf(const QString& library) const
{
    return listFilePath(values().MasterPath, toBytes(library));
}

std::string Newlib::masterProfile() const
{
    return profiles().path(ProfileFile::Master);
}

// ---- choosing what is edited

void Newlib::disableCommands()
{
    for (PictureButton* command : {Command5, Command4, Command6, Command1, Command2, Command3})
        command->setEnabled(false);
}

void Newlib::setSourceInPlay(bool inPlay)
{
    for (QWidget* control : std::initializer_list<QWidget*>{Drive1, Dir1, File1, List1})
        setInPlay(control, inPlay);
}

void Newlib::takeOutOfPlay()
{
    setInPlay(Text5, false);
    setSourceInPlay(false);
    Command6->setPicture(ImageList::d(), 4);
}

/// Text1 changes, also when the program empties it.
void Newlib::typeName()
{
    m_sizes->stop();
    List1->clear();
    Command5->setEnabled(true);
    setInPlay(Text5, true);
    setSourceInPlay(true);
    for (QWidget* control : std::initializer_list<QWidget*>{Combo3, Combo2, Combo1, Text2})
        setInPlay(control, false);
    Command6->setEnabled(false);
    Command4->setEnabled(false);
    EditMode = ModeNew;
}

/// Combo2 gets the focus.
void Newlib::enterExisting()
{
    Text1->clear();
    setInPlay(Text1, false);
}

void Newlib::chooseExisting()
{
    // Its ground stays: there is no row yet whose label it could show.
    Text5->setEnabled(true);
    Command5->setEnabled(true);
    Text1->clear();
    setInPlay(Text1, false);
    for (LibraryCombo* combo : {Combo1, Combo3}) {
        combo->lock();
        setInPlay(combo, false);
    }
    Text2->clear();
    setInPlay(Text2, false);
    Command4->setEnabled(false);
    Command6->setEnabled(false);
    setSourceInPlay(true);
    Text3->clear();
    Text4->clear();
    static_cast<void>(DwgThumbnail1->setDrawing({}));
    ListPath = listOf(Combo2->currentText());
    Combo2->lock();
    List1->clear();
    std::vector<std::string> paths;
    if (!readList(paths))
        return;
    scrollToNames(*List1);
    Text7->setText(QString::number(paths.size()));
    EditMode = ModeExisting;
    m_sizes->start(std::move(paths));
}

/// A library is chosen for its new name.
void Newlib::chooseRenamed()
{
    m_sizes->stop();
    Text1->clear();
    Text2->clear();
    setInPlay(Text1, false);
    setInPlay(Combo3, false);
    setSourceInPlay(false);
    setGround(Combo2, Ground::ButtonFace);
    for (LibraryCombo* combo : {Combo1, Combo2, Combo3})
        combo->lock();
    disableCommands();
    ListPath = listOf(Combo1->currentText());
    Command4->setEnabled(true);
    Text2->setFocus();
}

void Newlib::chooseDeleted()
{
    m_sizes->stop();
    Combo3->lock();
    setInPlay(Combo2, false);
    setInPlay(Combo1, false);
    setSourceInPlay(false);
    for (QLineEdit* text : {Text1, Text2}) {
        text->clear();
        setGround(text, Ground::ButtonFace);
    }
    disableCommands();
    Command6->setEnabled(true);
}

/// The other window enables this one again.
void Newlib::setPath()
{
    setTopmost(false);
    setEnabled(false);
    if (!program().show(QStringLiteral("ZVYpath")))
        setEnabled(true);
}

// ---- one drawing

void Newlib::clickFile(int row)
{
    Command1->setEnabled(true);
    Command3->setEnabled(true);
    const std::string path = joinPath(Dir1->path(), toBytes(File1->item(row)->text()));
    showDrawing(path, path);
}

/// Shows a drawing's preview, size and properties. When something of it cannot be read, `told` is what the
/// user is told of, and the size shown stays. A row without a path shows nothing, and the texts stay.
void Newlib::showDrawing(const std::string& path, const std::string& told)
{
    const bool shown = (DwgThumbnail1->setDrawing(path) && readDrawing(path)) || path.empty();
    setRedText(Text3, !shown);
    setRedText(Text4, !shown);
    if (shown)
        return;
    Text3->setPlainText(toText("Error Loading: " + told));
    Text4->setPlainText(QStringLiteral("NA"));
    static_cast<void>(DwgThumbnail1->setDrawing(joinPath(program().folders().installation, "failed.dwg")));
}

bool Newlib::readDrawing(const std::string& path)
{
    const auto length = fileLength(path);
    if (!length)
        return false;
    // One drawing is told in units of 1000 bytes, a library in units of 1024.
    Text6->setText(toText(numberText(roundHalfEven(double(*length) / 1000)) + " KB"));
    DwgPropsX& props = program().fields().props;
    if (!props.load(path))
        return false;
    Text3->setPlainText(toText("Drawing Name: " + path + "\r\n\r\n" + props.comments()));
    Text4->setPlainText(toText(props.keywords()));
    return true;
}

void Newlib::blankDetails()
{
    static_cast<void>(DwgThumbnail1->setDrawing({}));
    Text6->clear();
    Text4->clear();
    Text3->clear();
}

void Newlib::editDrawing()
{
    const auto current = [this] {
        const int row = List1->currentRow();
        return row < 0 ? std::string() : toBytes(List1->item(row)->text());
    };
    EditorWindow window(*this, [&] {
        const std::string drawing = current();
        if (!drawing.empty()) {
            showDrawing(drawing, upper(drawing));
            return;
        }
        Text3->clear();
        Text4->clear();
    });
    editProperties(current(), window, program().actionServices());
}

} // namespace zv
