#include "search/Search.h"

#include "config/Keys.h"
#include "config/StartUp.h"
#include "controls/CaptionFrame.h"
#include "controls/Clip.h"
#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/LockedCombo.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "library/Catalogue.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "window/MainWindow.h"
#include "window/TextBytes.h"

#include <QCheckBox>
#include <QGuiApplication>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>

namespace zv {
namespace {

/// The number of insertmode that opens the window for the queue. The main window writes another one.
constexpr int kQueueMode = 4;

/// The pointer that tells of waiting, for as long as it lives.
class WaitingPointer {
public:
    WaitingPointer() { QGuiApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitingPointer() { QGuiApplication::restoreOverrideCursor(); }
};

void setBold(QWidget* control, bool bold)
{
    QFont font = control->font();
    font.setBold(bold);
    control->setFont(font);
}

} // namespace

// ---- the load

void Search::load()
{
    m_loading = true;
    repairLibraryCount(profiles().path(ProfileFile::Master));
    readOptions();
    readCartOnly();
    Animation1->setAutoPlay(false);
    Animation1->open(joinPath(program().folders().installation, "Zelvora.avi"));
    fillLibraries();
    DwgViewX1->setFontFolder(values().FontPath);
    m_loading = false;
}

void Search::readOptions()
{
    const int mode = profiles().number(keys::search::insertmode);
    (mode == 0 ? Option2 : Option1)->setChecked(true);
    if (mode == 2)
        Option3->setChecked(true);
    const int autoScale = profiles().number(keys::search::AutoScale);
    if (autoScale == 0 || autoScale == 1)
        Check2->setChecked(autoScale == 1);
    Check3->setChecked(profiles().number(keys::search::XPmode) == 1);
    setTopmost(values().AlwaysOnTop == 1);
    if (Option1->isChecked())
        setAction(Action::Xref);
    if (mode == kQueueMode)
        Option4->setChecked(true);
}

void Search::readCartOnly()
{
    if (profiles().number(keys::search::CartOnly) != 1)
        return;
    for (QRadioButton* option : {Option1, Option2, Option3})
        option->setEnabled(false);
    Option4->setChecked(true);
}

void Search::fillLibraries()
{
    Combo1->setShownText(toText(profiles().text(keys::search::LastLoad)));
    for (const std::string& name : readCatalogue(profiles().path(ProfileFile::Master)))
        Combo1->addItem(toText(name));
    // What the main window has left for this box goes before all else.
    Combo1->setShownText(toText(fields.searchLibrary));
}

// ---- a result

/// The text of the list: the path of the chosen row, or nothing.
std::string Search::chosen() const
{
    const QListWidgetItem* item = List1->currentItem();
    return item ? toBytes(item->text()) : std::string();
}

void Search::selectResult()
{
    const std::string path = chosen();
    if (!showResult(path))
        resultFailed(path);
}

bool Search::showResult(const std::string& path)
{
    const Result<std::uint64_t> size = fileLength(path);
    if (!size)
        return false;
    if (m_previewMode == 0) {
        DwgThumbnail1->show();
        DwgViewX1->hide();
        if (!DwgThumbnail1->setDrawing(path))
            return false;
    } else {
        const WaitingPointer waiting;
        DwgThumbnail1->hide();
        if (showInViewer(path))
            Frame3->setTitle(QStringLiteral("Drawing Preview   Enlarged Mode"));
    }
    Text6->setText(toText(numberText(roundHalfEven(static_cast<double>(*size) / 1024.0)) + " KB"));
    if (!fields.props.load(path))
        return false;
    Text2->setPlainText(toText("Drawing Name: " + path + "\r\n\r\n" + fields.props.comments()));
    Text5->setText(toText(fields.props.keywords()));
    Text5->setCursorPosition(0);
    List1->setFocus();
    return true;
}

void Search::resultFailed(const std::string& path)
{
    Text2->setPlainText(toText("Error Loading: " + path));
    showFailedDrawing();
    Text6->setText(QStringLiteral("NA"));
    Text5->clear();
    fields.selectedDrawing = path;
}

/// The placeholder must be seen, also where the viewer still shows another drawing.
void Search::showFailedDrawing()
{
    DwgViewX1->hide();
    DwgThumbnail1->show();
    static_cast<void>(DwgThumbnail1->setDrawing(joinPath(program().folders().installation, "failed.dwg")));
}

/// The viewer stays hidden when it refuses the drawing.
bool Search::showInViewer(const std::string& path)
{
    DwgViewX1->hide();
    if (!DwgViewX1->setDrawing(path) && !path.empty())
        return false;
    DwgViewX1->zoomExtents();
    DwgViewX1->show();
    DwgViewX1->raise();
    return true;
}

void Search::enlarge()
{
    const WaitingPointer waiting;
    m_previewMode = 1;
    if (showInViewer(chosen()))
        Frame3->setTitle(QStringLiteral("Drawing Preview   Enlarged Mode"));
    else
        showFailedDrawing();
}

void Search::preview()
{
    Frame3->setTitle(QStringLiteral("Drawing Preview  Thumbnail Mode"));
    DwgViewX1->hide();
    DwgThumbnail1->show();
    m_previewMode = 0;
    if (!DwgThumbnail1->setDrawing(chosen()))
        showFailedDrawing();
}

// ---- the options

void Search::setAction(Action action)
{
    setBold(Option1, action == Action::Xref);
    setBold(Option2, action == Action::Block);
    setBold(Option3, action == Action::OpenCopy);
    setBold(Option4, action == Action::Queue);
    const bool block = action == Action::Block;
    Check2->setEnabled(block);
    Check3->setEnabled(block);
    if (block)
        setScaleInUse(!Check2->isChecked());
    Label4->setEnabled(block && !Check2->isChecked());
    Text3->setEnabled(block && !Check2->isChecked());

    const ImageList& pictures = ImageList::c();
    const char* stored = nullptr;
    switch (action) {
    case Action::Xref:
        Command3->setPicture(pictures, 11);
        Command3->setText(QStringLiteral("_Insert"));
        stored = "1";
        break;
    case Action::Block:
        Command3->setPicture(pictures, 9);
        Command3->setText(QStringLiteral("_Insert"));
        stored = "0";
        break;
    case Action::OpenCopy:
        Command3->setPicture(pictures, 15);
        stored = "2";
        break;
    case Action::Queue:
        Command3->setPicture(pictures, 18);
        Command3->setText(QStringLiteral("_Add"));
        break;
    }
    if (stored && !m_loading)
        profiles().write(keys::search::insertmode, stored);
}

void Search::setAutoScale(bool on)
{
    if (!m_loading)
        profiles().writeFlag(keys::search::AutoScale, on);
    setScaleInUse(!on);
}

void Search::setScaleInUse(bool inUse)
{
    Text3->setEnabled(inUse);
    Label4->setEnabled(inUse);
    QPalette colors = palette();
    if (!inUse)
        colors.setColor(QPalette::Base, colors.color(QPalette::Button));
    Text3->setPalette(colors);
}

// ---- leaving

void Search::closeByButton()
{
    fields.xrefState = 2;
    m_scan.stop();
    handChoiceBack();
    if (MainWindow* window = mainWindow(program())) {
        window->setDesignSize(kMainWindowDesign);
        showMainWindow(program());
    }
    fields.cmodeState = 0;
    program().unload(objectName());
}

/// The main window takes over what the user profile holds by now.
void Search::handChoiceBack()
{
    MainWindow* window = mainWindow(program());
    if (!window)
        return;
    const int mode = profiles().number(keys::search::insertmode);
    (mode == 0 ? window->Option1 : window->Option2)->setChecked(true);
    if (mode == 2)
        window->Option3->setChecked(true);
    window->Check1->setChecked(profiles().number(keys::search::AutoScale) == 1);
    if (Option4->isChecked())
        window->Option4->setChecked(true);
}

// Without a main window there is nothing to come back to: then the program may be at its end.
void Search::unloading()
{
    m_scan.stop();
    if (MainWindow* window = mainWindow(program())) {
        window->setDesignSize(kMainWindowDesign);
        showMainWindow(program());
    }
}

// ---- keys and events

bool Search::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress)
        return Window::eventFilter(watched, event);
    const auto* key = static_cast<QKeyEvent*>(event);
    const bool isReturn = key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
    // The text is stored as it stands before the key does its work.
    if (watched == Text3)
        profiles().write(keys::search::writeXYZ, toBytes(Text3->text()));
    if (watched == List1 && isReturn) {
        actOnDoubleClick();
        return true;
    }
    return Window::eventFilter(watched, event);
}

void Search::keyPressEvent(QKeyEvent* event)
{
    if (event->key() == Qt::Key_Escape && m_scan.isRunning())
        clearOrStop();
    else
        Window::keyPressEvent(event);
}

} // namespace zv
