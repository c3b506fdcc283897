#include "browser/Zelvora.h"

#include "config/Keys.h"
#include "config/StartUp.h"
#include "config/WindowGeometry.h"
#include "controls/CaptionFrame.h"
#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "controls/SortedCombo.h"
#include "help/ProgramHelp.h"
#include "library/Catalogue.h"
#include "library/ListFile.h"
#include "platform/Text.h"
#include "window/OuterGeometry.h"
#include "window/TextBytes.h"

#include <QApplication>
#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QRadioButton>
#include <QTimer>

#include <algorithm>
#include <utility>

namespace zv {
namespace {

/// Of an edge from the screen's own, in pixels; the number that is stored may be any.
constexpr double kFarthest = 1e6;

/// The wait pointer, for as long as this lives: a load that fails must not leave it behind.
class WaitPointer {
public:
    WaitPointer() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitPointer() { QApplication::restoreOverrideCursor(); }
    WaitPointer(const WaitPointer&) = delete;
    WaitPointer& operator=(const WaitPointer&) = delete;
};

} // namespace

/// The whole start-up. It runs at each load of the window and takes nothing of an earlier one for granted.
void Zelvora::load()
{
    values().UserProfilePath.clear();
    values().MasterPath = findMasterFolder(program().folders().installation);
    pointToHelpFile(program());
    setVisible(false);
    const WaitPointer waiting;
    program().unload(QStringLiteral("PrintLib"));
    program().unload(QStringLiteral("Search"));
    markSetOption();
    m_probeFailed = !probeWriteAccess(program().folders().installation, values().MasterPath);
    enableOffice(true);
    readAdministratorKeys();
    findUser();
    registerProperties();
    Combo1->add({toText(values().LoginName)});
    resetPanels();
    Labelx->hide();
    const bool hasLastLibrary = readLastLoad();
    fillCatalogue();
    readAlwaysOnTop();
    const int insertMode = readInsertMode();
    readScaleKeys();
    readRibbonTab();
    m_settingUnknown = false;
    loadFirstLibrary(hasLastLibrary);
    setUpViewer();
    if (m_probeFailed)
        enableOffice(false);
    Timer1->start();
    if (insertMode == int(Mode::OpenCopy)) {
        resetPictures();
        Command11->setText(QStringLiteral("&Open"));
    }
}

/// The emphasis follows the option that is set; a window that was made anew has none yet.
void Zelvora::markSetOption()
{
    if (!Option1->isChecked() && !Option2->isChecked() && !Option3->isChecked())
        return;
    markOption(mode());
    Check4->setEnabled(mode() == Mode::Block);
}

/// What only those who may write in the office's folders can use.
void Zelvora::enableOffice(bool enabled)
{
    for (PictureButton* command : {Command1, Command7, Command9})
        command->setEnabled(enabled);
}

void Zelvora::readAdministratorKeys()
{
    // The key printlib has no effect: Command7 is enabled right after it has been read.
    Command7->setEnabled(true);
    const int cartOnly = readMasterKeys(profiles(), values());
    if (cartOnly != 0 && cartOnly != 1)
        return;
    for (QRadioButton* option : {Option1, Option2, Option3})
        option->setEnabled(cartOnly == 0);
    if (cartOnly == 1) {
        Option4->setChecked(true);
        markOption(Mode::Queue);
    }
}

void Zelvora::findUser()
{
    PublicValues& known = values();
    known.LoginName = loginName();
    StatusBar1Panels[4]->setText(toText("MyLib Name: " + known.LoginName));
    known.UserFolder = program().folders().user;
    formUserPaths(known);
    createUserFiles(program().folders().installation, known);
}

// The reader of properties is built in, so there is nothing to register at a user's first start.
void Zelvora::registerProperties()
{
    if (profiles().number(keys::zelvora::DWGPROPS) == 0)
        profiles().write(keys::zelvora::DWGPROPS, "1");
}

/// False when the user has had no library in view yet.
bool Zelvora::readLastLoad()
{
    const std::string last = profiles().text(keys::zelvora::LastLoad);
    fields.LibraryName = last;
    fields.LibraryPath = libraryPath(last);
    Combo1->setShownText(toText(last));
    return !last.empty();
}

void Zelvora::fillCatalogue()
{
    QStringList names;
    for (const std::string& name : readCatalogue(profiles().path(ProfileFile::Master)))
        names << toText(name);
    Combo1->add(names);
}

void Zelvora::resetPanels()
{
    fields.panels.reset();
    Frame8->hide();
    showButtons();
}

void Zelvora::readAlwaysOnTop()
{
    if (profiles().number(keys::zelvora::AOT) != 1)
        return;
    setTopmost(true);
    Check2->setChecked(true);
    values().AlwaysOnTop = 1;
}

int Zelvora::readSetting(const NumberKey& key)
{
    const Result<int> stored = profiles().storedNumber(key);
    m_settingUnknown = !stored;
    return stored.valueOr(key.fallback);
}

/// Sets the stored mode, even where the administrator has disabled its option.
int Zelvora::readInsertMode()
{
    const int stored = readSetting(keys::zelvora::insertmode);
    switch (stored) {
    case 0:
        Option1->setChecked(true);
        for (QWidget* control : std::initializer_list<QWidget*>{Check1, Check4, x, Label1})
            control->setEnabled(true);
        fields.OneShotScaleLock = 1;
        break;
    case 1:
    case 2:
    case 3:
        (stored == 1 ? Option2 : stored == 2 ? Option3 : Option4)->setChecked(true);
        Check1->setEnabled(false);
        Label1->setEnabled(false);
        break;
    default:
        break;
    }
    return stored;
}

void Zelvora::readScaleKeys()
{
    if (readSetting(keys::zelvora::AutoScale) == 1)
        Check1->setChecked(true);
    x->setText(QString::number(profiles().number(keys::zelvora::XYZ)));
    if (readSetting(keys::zelvora::XPmode) == 1)
        Check4->setChecked(true);
}

void Zelvora::readRibbonTab()
{
    const int stored = readSetting(keys::zelvora::RibSet);
    if (stored == 0 || stored == 2)
        selectTab(stored);
    else
        showTab(0);
}

void Zelvora::loadFirstLibrary(bool hasLastLibrary)
{
    const int del = profiles().number(keys::zelvora::del);
    if (del == 1)
        profiles().write(keys::zelvora::del, "0");
    const bool wanted = del != 1 && (hasLastLibrary || del != 0);
    // A line without its separator is all label here, under the path of the line before it.
    const auto list = readListFile(fields.LibraryPath);
    m_lastLibraryTooLong = wanted && !list && list.error().code == ErrorCode::TooLarge;
    if (wanted && list) {
        showLibrary(*list);
        setTopmost(values().AlwaysOnTop == 1);
        Combo1->setFocus();
        return;
    }
    fields.panels.showPrompt();
    showCells();
    List1->clear();
    Labelx->show();
}

void Zelvora::setUpViewer()
{
    values().FontPath = fontFolder(program().folders().installation, profiles());
    DwgViewX1->setFontFolder(values().FontPath);
}

// ---- what follows the load, and the unloading

void Zelvora::appearAfterLoad()
{
    const WindowGeometry twips = readWindowGeometry();
    const auto pixels = [](double edge) {
        return int(std::clamp(roundHalfEven(edge / kTwipsPerPixel), -kFarthest, kFarthest));
    };
    m_geometry->set({pixels(twips.left), pixels(twips.top), pixels(twips.width), pixels(twips.height)});
    m_placed = true;
    Timer1->stop();
    Window::appear();
    m_geometry->settle();
    if (std::exchange(m_lastLibraryTooLong, false))
        tellLongLibrary(fields.LibraryPath);
}

void Zelvora::saveGeometry()
{
    const QRect outer = m_geometry->get();
    saveWindowGeometry({double(outer.left()) * kTwipsPerPixel, double(outer.top()) * kTwipsPerPixel,
                        double(outer.width()) * kTwipsPerPixel, double(outer.height()) * kTwipsPerPixel});
}

// Until the window stands at its place, nobody else shows it either.
void Zelvora::appear()
{
    if (m_placed)
        Window::appear();
}

// ---- keys

/// A setting of the user. While the user is not known yet there is nowhere to write it.
void Zelvora::writeSetting(const ProfileKey& key, const std::string& value)
{
    if (!values().UserProfilePath.empty() && !m_settingUnknown)
        profiles().write(key, value);
}

/// Nothing enables this timer.
void Zelvora::runTimer2()
{
    int progress = 0;
    while (fields.ViewerBusy == 1) {
        messages().show(
            {"in loop mode for timer2 PROGRESSBAR = " + std::to_string(progress), {}, MessageIcon::None});
        if (progress < 100)
            progress += 10;
    }
    Timer2->stop();
}

void Zelvora::unloading()
{
    if (!isMinimized() && m_placed)
        saveGeometry();
    program().unload(QStringLiteral("PrintLib"));
}

} // namespace zv
