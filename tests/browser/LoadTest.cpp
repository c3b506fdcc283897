#include "config/WindowGeometry.h"
#include "controls/DwgViewX.h"
#include "controls/PictureButton.h"
#include "platform/Files.h"
#include "platform/Profile.h"
#include "platform/System.h"
#include "support/OfficeFixture.h"
#include "support/OneStepFails.h"

#include <QApplication>
#include <QCheckBox>
#include <QRadioButton>
#include <QTimer>

#include <filesystem>
#include <stdexcept>

namespace zv {
namespace {

using enum ProfileFile;

class LoadTest : public OfficeFixture {
protected:
    void lastLoad(const std::string& name)
    {
        setKey(User, "LibLoad", "LastLoad", name);
        setKey(User, "LibLoad", "del", "0");
        makeCatalogue({name});
    }
    QString login() { return QString::fromLocal8Bit(program->values().LoginName.c_str()); }
};

TEST_F(LoadTest, FirstRunMakesTheFilesAndShowsNoLibrary)
{
    std::filesystem::remove(joinPath(installation, "Zelvora.ini"));
    start();
    EXPECT_EQ(key(Installation, "Path", "ZVRpath"), installation);
    EXPECT_EQ(key(User, "LibLoad", "LastLoad"), "");
    EXPECT_EQ(key(User, "LibLoad", "del"), "0") << "the 1 of the first run has been honoured";
    EXPECT_EQ(key(User, "Settings", "ProjectPath"), "");
    EXPECT_EQ(key(User, "Settings", "insertmode"), "1");
    EXPECT_EQ(key(User, "Settings", "AOT"), "1");
    EXPECT_EQ(key(User, "Settings", "DWGPROPS"), "1");
    EXPECT_TRUE(fileExists(userFile(".lst")));
    EXPECT_EQ(rows("Combo1"), QStringList{login()});
    EXPECT_EQ(visibleCells(), 0);
    EXPECT_TRUE(visible("Labelx"));
    EXPECT_EQ(text("Frame4"), "Details/Symbols");
    EXPECT_EQ(text("StatusBar1Panel4"), "MyLib Name: " + login());
}

TEST_F(LoadTest, ASettingThatCannotBeReadIsNotWrittenOverByItsDefault)
{
    setKey(User, "Settings", "insertmode", "0");
    setKey(User, "Settings", "autoscale", "0");
    setKey(User, "Settings", "XPmode", "1");
    setKey(User, "Settings", "AOT", "0");
    start();
    bool reached = true;
    for (int number = 0; reached; ++number) {
        {
            const OneStepFails files(FileStep::Open, number);
            program->loadAnew(QStringLiteral("Zelvora"));
            reached = files.wasReached();
        }
        ASSERT_EQ(key(User, "Settings", "insertmode"), "0") << "opening " << number;
        ASSERT_EQ(key(User, "Settings", "autoscale"), "0") << "opening " << number;
        ASSERT_EQ(key(User, "Settings", "XPmode"), "1") << "opening " << number;
        ASSERT_EQ(key(User, "Settings", "AOT"), "0") << "opening " << number;
    }
}

TEST_F(LoadTest, DelOfOneShowsNoLibraryOnceAndTheNextStartShowsTheLast)
{
    lastLoad("Doors");
    setKey(User, "LibLoad", "del", "1");
    makeLibrary("Doors", drawings(3));
    start();
    EXPECT_EQ(text("Combo1"), "Doors");
    EXPECT_EQ(visibleCells(), 0);
    EXPECT_EQ(key(User, "LibLoad", "del"), "0");
    program->loadAnew("Zelvora");
    ASSERT_TRUE(appears("Zelvora"));
    EXPECT_EQ(visibleCells(), 3);
    EXPECT_FALSE(visible("Labelx"));
    EXPECT_EQ(text("Frame4"), "DOORS   Page 1 of 1");
    EXPECT_EQ(text("StatusBar1Panel3"), "Total Files: 3");
}

TEST_F(LoadTest, AnEmptyLastLoadWithoutDelLooksForAListWithoutName)
{
    setKey(User, "LibLoad", "LastLoad", "");
    start();
    EXPECT_TRUE(visible("Labelx"));
    EXPECT_EQ(visibleCells(), 0);
    makeLibrary("", drawings(2));
    program->loadAnew("Zelvora");
    ASSERT_TRUE(appears("Zelvora"));
    EXPECT_EQ(visibleCells(), 2);
}

TEST_F(LoadTest, AMissingLastLibraryShowsThePromptWithoutMessage)
{
    lastLoad("Gone");
    start();
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(visible("Labelx"));
    EXPECT_EQ(visibleCells(), 0);
}

TEST_F(LoadTest, TheLoginNameAsLastLoadMeansMyLib)
{
    std::string name = systemLoginName();
    for (char& letter : name)
        letter = char(std::toupper(letter));
    lastLoad(name);
    writeFile(userFile(".lst"), drawings(1)[0] + ";MINE\r\n").ok();
    makeLibrary(name, drawings(3));
    start();
    EXPECT_EQ(rows("List1"), QStringList{"MINE"});
}

TEST_F(LoadTest, TheCatalogueIsSortedWithTheLoginNameInItsPlace)
{
    makeCatalogue({"zebra", "Alpha", "", "beta"});
    start();
    QStringList expected{"", "Alpha", "beta", login(), "zebra"};
    std::sort(expected.begin(), expected.end(),
              [](const QString& a, const QString& b) { return a.compare(b, Qt::CaseInsensitive) < 0; });
    EXPECT_EQ(rows("Combo1"), expected);
}

TEST_F(LoadTest, ALineWithoutSeparatorTakesThePathOfTheLineBefore)
{
    lastLoad("Odd");
    const auto paths = drawings(2);
    writeFile(listPath("Odd"), paths[0] + ";ONE\r\nno separator\r\n" + paths[1] + ";TWO\r\n").ok();
    Zelvora& window = start();
    EXPECT_EQ(rows("List1"), (QStringList{"ONE", "no separator", "TWO"}));
    EXPECT_EQ(window.fields.CellPath[2], paths[0]);
}

TEST_F(LoadTest, AReadOnlyMasterFolderDisablesWhatWouldWriteThere)
{
    master = folder.file("nowhere");
    setKey(Installation, "Path", "ZVRpath", master);
    start();
    for (const char* name : {"Command1", "Command7", "Command9"})
        EXPECT_FALSE(enabled(name)) << name;
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_TRUE(enabled("Command8"));
}

TEST_F(LoadTest, TheProbeStaysBehindInAMasterFolderElsewhere)
{
    master = folder.file("master");
    std::filesystem::create_directory(master);
    setKey(Installation, "Path", "ZVRpath", master);
    start();
    EXPECT_TRUE(fileExists(joinPath(master, "$write.tmp")));
    EXPECT_FALSE(fileExists(joinPath(installation, "$write.tmp")));
    EXPECT_TRUE(enabled("Command1"));
}

TEST_F(LoadTest, TheStoredModeIsSetAndWrittenBack)
{
    const struct {
        const char* stored;
        const char* option;
        const char* caption;
        bool block;
    } cases[] = {{"0", "Option1", "&Insert", true},
                 {"1", "Option2", "&Xref", false},
                 {"2", "Option3", "&Open", false},
                 {"3", "Option4", "&Add", false}};
    for (const auto& expected : cases) {
        setKey(User, "Settings", "insertmode", expected.stored);
        program->loadAnew("Zelvora");
        ASSERT_TRUE(appears("Zelvora"));
        EXPECT_TRUE(control<QRadioButton>(expected.option)->isChecked()) << expected.option;
        EXPECT_TRUE(control(expected.option)->font().bold());
        EXPECT_EQ(text("Command11"), expected.caption);
        EXPECT_EQ(enabled("Check4"), expected.block);
        EXPECT_EQ(visible("Command24"), std::string(expected.stored) == "3");
        EXPECT_EQ(key(User, "Settings", "insertmode"), expected.stored);
    }
}

TEST_F(LoadTest, CartOnlyForcesTheQueueUntilTheStoredModeIsSet)
{
    setKey(Master, "ShopCart", "CartOnly", "1");
    setKey(User, "Settings", "insertmode", "0");
    start();
    EXPECT_TRUE(control<QRadioButton>("Option1")->isChecked());
    EXPECT_EQ(key(User, "Settings", "insertmode"), "0") << "the forced mode is written nowhere";
    for (const char* name : {"Option1", "Option2", "Option3"})
        EXPECT_FALSE(enabled(name)) << name;
    EXPECT_TRUE(enabled("Option4"));
}

TEST_F(LoadTest, TheScaleIsReadAsAWholeNumber)
{
    for (const auto& [stored, shown] :
         {std::pair("2.5", "2"), std::pair("abc", "0"), std::pair("12", "12")}) {
        setKey(User, "Settings", "XYZ", stored);
        program->loadAnew("Zelvora");
        EXPECT_EQ(text("x"), shown);
    }
}

TEST_F(LoadTest, AutoScaleAndExplodeAreSetAndWrittenBack)
{
    setKey(User, "Settings", "insertmode", "0");
    setKey(User, "Settings", "XPmode", "1");
    start();
    EXPECT_TRUE(control<QCheckBox>("Check1")->isChecked()) << "on by default";
    EXPECT_EQ(key(User, "Settings", "AutoScale"), "1");
    EXPECT_TRUE(control<QCheckBox>("Check4")->isChecked());
    EXPECT_FALSE(enabled("x"));
}

TEST_F(LoadTest, TheScaleIsLockedOnceAfterALoadInBlockMode)
{
    setKey(User, "Settings", "insertmode", "0");
    setKey(User, "Settings", "AutoScale", "0");
    start();
    EXPECT_TRUE(enabled("x"));
    control<QCheckBox>("Check1")->setChecked(true);
    control<QCheckBox>("Check1")->setChecked(false);
    EXPECT_TRUE(enabled("x")) << "the lock held for the first click only";
}

TEST_F(LoadTest, AlwaysOnTopIsTakenFromTheUserProfile)
{
    setKey(User, "Settings", "AOT", "1");
    EXPECT_TRUE(start().isTopmost());
    EXPECT_TRUE(control<QCheckBox>("Check2")->isChecked());
    EXPECT_EQ(program->values().AlwaysOnTop, 1);
    control<QCheckBox>("Check2")->setChecked(false);
    EXPECT_FALSE(main().isTopmost());
    EXPECT_TRUE(main().isVisible());
    EXPECT_EQ(key(User, "Settings", "AOT"), "0");
}

TEST_F(LoadTest, ADeletedAlwaysOnTopIsWrittenBackAsOne)
{
    setKey(User, "Settings", "insertmode", "0");
    EXPECT_TRUE(start().isTopmost());
    EXPECT_EQ(key(User, "Settings", "AOT"), "1");
}

TEST_F(LoadTest, TheAdministratorsKeysBecomePublicValues)
{
    setKey(Master, "LibLoad", "xbcheck", "1");
    setKey(Master, "LibLoad", "fds", "0");
    setKey(Master, "masterxref", "forcecopy", "7");
    setKey(Master, "acadver", "2002", "1");
    setKey(Master, "FileLog", "WriteLog", "1");
    setKey(Master, "FileLog", "LogPath", "/log.csv");
    program->values().ForceCopy = 1;
    start();
    EXPECT_EQ(program->values().XbCheck, 1);
    EXPECT_EQ(program->values().Fds, 0);
    EXPECT_EQ(program->values().ForceCopy, 1) << "a value that is no flag changes nothing";
    EXPECT_EQ(program->values().Acad2002, 1);
    EXPECT_TRUE(program->values().LogEnabled);
    EXPECT_EQ(program->values().LogPath, "/log.csv");
}

TEST_F(LoadTest, TheViewerGetsTheFontFolder)
{
    start();
    EXPECT_EQ(main().DwgViewX1->fontPath().toStdString(), joinPath(installation, "fonts"));
    setKey(Master, "Printing", "Fontpath", "/shared/fonts");
    program->loadAnew("Zelvora");
    EXPECT_EQ(main().DwgViewX1->fontPath(), "/shared/fonts");
    EXPECT_EQ(program->values().FontPath, "/shared/fonts");
}

TEST_F(LoadTest, TheTabFollowsRibSet)
{
    setKey(User, "Settings", "RibSet", "2");
    start();
    EXPECT_TRUE(visible("Picture14"));
    EXPECT_FALSE(visible("Picture3"));
    setKey(User, "Settings", "RibSet", "1");
    program->loadAnew("Zelvora");
    ASSERT_TRUE(appears("Zelvora"));
    EXPECT_TRUE(visible("Picture3"));
    EXPECT_EQ(key(User, "Settings", "RibSet"), "1") << "an unknown tab is not written back";
}

TEST_F(LoadTest, TheWindowStaysInvisibleUntilTheTimer)
{
    program->load("Zelvora");
    EXPECT_FALSE(main().isVisible());
    program->show("Zelvora");
    EXPECT_FALSE(main().isVisible());
    EXPECT_TRUE(appears("Zelvora"));
    EXPECT_FALSE(main().Timer1->isActive());
}

TEST_F(LoadTest, GeometryIsSavedInTwipsAndRestoredWithoutDrift)
{
    setSettingsValue("Zelvora", "Settings", "MainLeft", "1500");
    setSettingsValue("Zelvora", "Settings", "MainTop", "750");
    setSettingsValue("Zelvora", "Settings", "MainWidth", "7500");
    setSettingsValue("Zelvora", "Settings", "MainHeight", "6000");
    for (int i = 0; i < 3; ++i) {
        program->loadAnew("Zelvora");
        ASSERT_TRUE(appears("Zelvora"));
        EXPECT_EQ(main().frameGeometry(), QRect(100, 50, 500, 400));
    }
    program->unload("Zelvora");
    EXPECT_EQ(settingsValue("Zelvora", "Settings", "MainLeft", ""), "1500");
    EXPECT_EQ(settingsValue("Zelvora", "Settings", "MainHeight", ""), "6000");
}

TEST_F(LoadTest, TheSizeIsRightAsSoonAsTheWindowIsSeen)
{
    setSettingsValue("Zelvora", "Settings", "MainWidth", "7500");
    setSettingsValue("Zelvora", "Settings", "MainHeight", "6000");
    program->load("Zelvora");
    ASSERT_TRUE(QMetaObject::invokeMethod(main().Timer1, "timeout"));
    ASSERT_TRUE(main().isVisible());
    EXPECT_EQ(main().frameGeometry().size(), QSize(500, 400)) << "without an event in between";
}

TEST_F(LoadTest, ASizeThatNoScreenHasIsCut)
{
    setSettingsValue("Zelvora", "Settings", "MainWidth", "99999999999");
    start();
    // Some systems let no window be larger than the screen.
    EXPECT_LE(main().frameGeometry().width(), 8192);
    EXPECT_GE(main().frameGeometry().width(), main().screen()->geometry().width());
}

TEST_F(LoadTest, AMinimisedWindowKeepsTheGeometryOfBefore)
{
    start().showMinimized();
    const std::string before = settingsValue("Zelvora", "Settings", "MainLeft", "none");
    program->unload("Zelvora");
    EXPECT_EQ(settingsValue("Zelvora", "Settings", "MainLeft", "none"), before);
}

TEST_F(LoadTest, TheWindowCanBeMadeAsSmallAs240By200)
{
    start().resize(10, 10);
    EXPECT_EQ(main().size(), QSize(240, 200));
}

TEST_F(LoadTest, LoadingAnewLeavesTheSelectionOfTheRun)
{
    lastLoad("Doors");
    makeLibrary("Doors", drawings(3));
    start();
    ASSERT_TRUE(click("DwgThumbnail2"));
    program->loadAnew("Zelvora");
    EXPECT_EQ(main().fields.selectedDrawing, drawings(2)[1]);
    EXPECT_EQ(rows("List1").size(), 3);
}

TEST_F(LoadTest, TheRunEndsWhenTheLastWindowIsUnloaded)
{
    start().close();
    EXPECT_EQ(endedWith, 0);
    EXPECT_EQ(program->loaded("Zelvora"), nullptr);
}

TEST_F(LoadTest, AFailureWithoutGuardEndsTheProgramWithAPlainMessage)
{
    lastLoad("Doors");
    makeLibrary("Doors", drawings(21));
    start();
    std::filesystem::remove(listPath("Doors"));
    ASSERT_TRUE(click("Command3"));
    EXPECT_EQ(endedWith, 1);
    EXPECT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Critical);
}

TEST_F(LoadTest, AnExceptionEndsTheProgramInTheSameWay)
{
    start();
    EXPECT_TRUE(program->guarded([] {}));
    EXPECT_FALSE(program->guarded([] { throw std::runtime_error("out of everything"); }));
    EXPECT_EQ(lastMessage(), "out of everything");
    EXPECT_EQ(endedWith, 1);
    EXPECT_EQ(program->exitStatus(), 1);
}

TEST_F(LoadTest, TheStubTimerIsNeverStarted)
{
    start();
    EXPECT_FALSE(main().Timer2->isActive());
    EXPECT_EQ(main().Timer2->interval(), 5);
    main().fields.ViewerBusy = 1;
    messages.whileShown = [this] {
        if (messages.shown.size() == 13)
            main().fields.ViewerBusy = 0;
    };
    Q_EMIT main().Timer2->setInterval(0);
    main().Timer2->start();
    EXPECT_TRUE(waitUntil([this] { return !main().Timer2->isActive(); }));
    EXPECT_EQ(messages.shown.front().text, "in loop mode for timer2 PROGRESSBAR = 0");
    EXPECT_EQ(messages.shown.back().text, "in loop mode for timer2 PROGRESSBAR = 100");
}

TEST_F(LoadTest, AFailureSavesThePlaceNamesTheFileAndSaysThatItIsUnchanged)
{
    lastLoad("Doors");
    makeLibrary("Doors", drawings(21));
    start().setGeometry(70, 80, 640, 480);
    const QRect stood = main().frameGeometry();
    std::filesystem::remove(listPath("Doors"));
    ASSERT_TRUE(click("Command3"));
    EXPECT_NE(lastMessage().find(listPath("Doors")), std::string::npos);
    EXPECT_TRUE(lastMessage().ends_with("\r\nNothing was changed in it.")) << lastMessage();
    EXPECT_EQ(readWindowGeometry().left, stood.left() * 15);
    EXPECT_EQ(readWindowGeometry().width, stood.width() * 15);
}

TEST_F(LoadTest, AFailureLeavesNoWaitPointer)
{
    start();
    QApplication::setOverrideCursor(Qt::WaitCursor);
    bool waiting = true;
    messages.whileShown = [&] { waiting = QApplication::overrideCursor() != nullptr; };
    program->fail("out of everything");
    EXPECT_FALSE(waiting);
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST_F(LoadTest, ALastLibraryThatIsTooLongShowsThePromptAndItsMessageOnce)
{
    lastLoad("Doors");
    std::string lines;
    for (int i = 0; i < 32768; ++i)
        lines += "x.dwg;L\r\n";
    ASSERT_TRUE(writeFile(listPath("Doors"), lines));
    start();
    EXPECT_TRUE(visible("Labelx"));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(lastMessage(), listPath("Doors") +
                                 " has more than 32767 drawings, which is the most that a library can hold.");
    EXPECT_EQ(messages.shown[0].title, "Library Too Long");
    program->show("Zelvora");
    EXPECT_EQ(messages.shown.size(), 1U);
}

} // namespace
} // namespace zv
