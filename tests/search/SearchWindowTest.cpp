#include "controls/CaptionFrame.h"
#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "controls/SortedCombo.h"
#include "platform/Files.h"
#include "search/SearchFixture.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTest>

namespace zv {
namespace {

using enum ProfileFile;
using SearchWindow = SearchFixture;

QString fileName(const std::string& path)
{
    return QString::fromStdString(path);
}

// ---- the load

TEST_F(SearchWindow, StandsBesideTheMainWindow)
{
    open();
    EXPECT_EQ(search().windowTitle(), "Search Detail/Symbol");
    EXPECT_TRUE(main().isVisible());
    EXPECT_TRUE(main().isEnabled());
    EXPECT_EQ(picture("Command11"), "C13");
    EXPECT_EQ(picture("Command4"), "C8");
    EXPECT_EQ(shown("Frame3"), "Drawing Preview  Thumbnail Mode");
    EXPECT_FALSE(visible("DwgViewX1", "Search"));
    EXPECT_EQ(shown("Text3"), "1.00");
}

TEST_F(SearchWindow, ListsTheCatalogueInItsOrder)
{
    makeCatalogue({"Windows", "Doors", "Arches"});
    open();
    EXPECT_EQ(rows("Combo1", "Search"), QStringList({"Windows", "Doors", "Arches"}));
    EXPECT_EQ(shown("Combo1"), "") << "the main window has left nothing for it";
}

TEST_F(SearchWindow, TheBoxStartsWithWhatTheMainWindowHasLeft)
{
    setKey(Master, "LibLoad", "LastLoad", "Doors");
    start();
    main().Combo1->setEditText(QString::fromStdString(program->values().LoginName));
    open();
    EXPECT_EQ(shown("Combo1"), QString::fromStdString(program->values().LoginName));
}

TEST_F(SearchWindow, RepairsACatalogueWithoutCount)
{
    for (const char* count : {"-1", "-3"}) {
        setKey(Master, "Library", "libnum", count);
        open();
        EXPECT_EQ(key(Master, "Library", "libnum"), "0");
        EXPECT_EQ(rows("Combo1", "Search"), QStringList());
        ASSERT_TRUE(press("Check1"));
        find("D");
        EXPECT_EQ(shown("Text4"), "0");
        program->unload("Search");
    }
}

TEST_F(SearchWindow, ShowsTheStoredModeAndWritesNoKey)
{
    struct Case {
        const char* stored;
        const char* option;
    };
    start();
    for (const Case& now : {Case{"0", "Option2"}, Case{"1", "Option1"}, Case{"2", "Option3"},
                            Case{"3", "Option1"}, Case{"4", "Option4"}, Case{"9", "Option1"}}) {
        setKey(User, "Settings", "insertmode", now.stored);
        setKey(User, "Settings", "AutoScale", "0");
        program->loadAnew("Search");
        EXPECT_TRUE(control<QRadioButton>(now.option, "Search")->isChecked()) << now.stored;
        for (const char* option : {"Option1", "Option2", "Option3", "Option4"})
            EXPECT_EQ(isBold(option), QLatin1String(option) == now.option) << now.stored << option;
        EXPECT_EQ(key(User, "Settings", "insertmode"), now.stored);
        const bool block = QLatin1String(now.option) == "Option2";
        for (const char* name : {"Check2", "Check3", "Label4", "Text3"})
            EXPECT_EQ(isOn(name), block) << now.stored << name;
    }
}

TEST_F(SearchWindow, ShowsStoredScaleAndExplode)
{
    setKey(User, "Settings", "insertmode", "0");
    setKey(User, "Settings", "AutoScale", "1");
    setKey(User, "Settings", "XPmode", "1");
    open();
    EXPECT_TRUE(search().Check2->isChecked());
    EXPECT_TRUE(search().Check3->isChecked());
    EXPECT_FALSE(isOn("Text3"));
    EXPECT_FALSE(isOn("Label4"));
    EXPECT_EQ(ground("Text3"), search().palette().color(QPalette::Button));
    EXPECT_EQ(key(User, "Settings", "AutoScale"), "1");
}

TEST_F(SearchWindow, QueueOnlyOfficesLeaveOneOption)
{
    setKey(Master, "ShopCart", "CartOnly", "1");
    open();
    for (const char* option : {"Option1", "Option2", "Option3"})
        EXPECT_FALSE(isOn(option));
    EXPECT_TRUE(search().Option4->isChecked());
    EXPECT_TRUE(isBold("Option4"));
    EXPECT_EQ(shown("Command3"), "_Add");
    find("D1");
    ASSERT_TRUE(clickRow("List1", 0, "Search"));
    ASSERT_TRUE(press("Command3"));
    EXPECT_EQ(readFile(userFile(".crt")).valueOr({}), drawings(1)[0] + "\r\n");
}

TEST_F(SearchWindow, IsTopmostAsTheUserWants)
{
    start();
    for (const int wanted : {1, 0}) {
        program->values().AlwaysOnTop = std::int16_t(wanted);
        EXPECT_EQ(program->loadAnew("Search")->isTopmost(), wanted == 1);
    }
}

// ---- the options

TEST_F(SearchWindow, OptionsSetTheControlsAndTheirKey)
{
    struct Case {
        const char* option;
        bool block;
        const char* picture;
        const char* caption;
        const char* stored;
    };
    open();
    for (const Case& now :
         {Case{"Option4", false, "C18", "_Add", "1"}, Case{"Option3", false, "C15", "_Add", "2"},
          Case{"Option2", true, "C9", "_Insert", "0"}, Case{"Option3", false, "C15", "_Insert", "2"},
          Case{"Option1", false, "C11", "_Insert", "1"}}) {
        ASSERT_TRUE(press(now.option)) << now.option;
        EXPECT_EQ(isOn("Check2"), now.block) << now.option;
        EXPECT_EQ(isOn("Check3"), now.block) << now.option;
        EXPECT_FALSE(isOn("Text3")) << "AutoScale is on";
        EXPECT_EQ(picture("Command3"), now.picture) << now.option;
        EXPECT_EQ(shown("Command3"), now.caption) << now.option;
        for (const char* option : {"Option1", "Option2", "Option3", "Option4"})
            EXPECT_EQ(isBold(option), QLatin1String(option) == now.option) << now.option << option;
        EXPECT_EQ(key(User, "Settings", "insertmode"), now.stored) << now.option;
    }
}

TEST_F(SearchWindow, AutoScaleIsKeptAndLocksTheScale)
{
    setKey(User, "Settings", "insertmode", "0");
    open();
    ASSERT_TRUE(search().Check2->isChecked());
    ASSERT_TRUE(press("Check2"));
    EXPECT_EQ(key(User, "Settings", "AutoScale"), "0");
    EXPECT_TRUE(isOn("Text3"));
    EXPECT_TRUE(isOn("Label4"));
    EXPECT_EQ(ground("Text3"), search().palette().color(QPalette::Base));
    ASSERT_TRUE(press("Check2"));
    EXPECT_EQ(key(User, "Settings", "AutoScale"), "1");
    EXPECT_FALSE(isOn("Text3"));
    EXPECT_EQ(ground("Text3"), search().palette().color(QPalette::Button));
}

TEST_F(SearchWindow, ExplodeReachesTheMainWindowOnlyWhenItIsTakenAway)
{
    setKey(User, "Settings", "insertmode", "0");
    open();
    program->fields().ExplodeFlag = 1;
    ASSERT_TRUE(press("Check3"));
    EXPECT_EQ(program->fields().ExplodeFlag, 1);
    ASSERT_TRUE(press("Check3"));
    EXPECT_EQ(program->fields().ExplodeFlag, 0);
    EXPECT_EQ(key(User, "Settings", "XPmode"), "(none)");
}

TEST_F(SearchWindow, TheScaleIsStoredAsItStoodBeforeTheKey)
{
    setKey(User, "Settings", "insertmode", "0");
    setKey(User, "Settings", "AutoScale", "0");
    open();
    search().Text3->clear();
    QTest::keyClicks(search().Text3, "25");
    EXPECT_EQ(key(User, "Settings", "XYZ"), "2");
}

TEST_F(SearchWindow, APickLocksTheBoxUntilItsListDropsDown)
{
    makeCatalogue({"Doors", "Windows"});
    open();
    QTest::keyClicks(search().Combo1->lineEdit(), "Doo");
    EXPECT_EQ(shown("Combo1"), "Doo");
    ASSERT_TRUE(choose("Combo1", "Windows", "Search"));
    QTest::keyClicks(search().Combo1->lineEdit(), "x");
    QTest::keyClick(search().Combo1, Qt::Key_Up);
    EXPECT_EQ(shown("Combo1"), "Windows");
    search().Combo1->showPopup();
    search().Combo1->hidePopup();
    EXPECT_FALSE(search().Combo1->isLocked());
}

// ---- a result

TEST_F(SearchWindow, AResultIsShownWithItsSizeDescriptionAndKeywords)
{
    const std::string drawing = makeKeyworded("Oak", "fire, glass");
    makeLibrary("Doors", {drawing});
    open();
    find("Oak");
    ASSERT_TRUE(clickRow("List1", 0, "Search"));
    EXPECT_EQ(shown("Text2"), fileName("Drawing Name: " + drawing + "\n\nAbout Oak"));
    EXPECT_EQ(shown("Text5"), "fire, glass");
    const auto bytes = double(fileLength(drawing).valueOr(0));
    EXPECT_EQ(shown("Text6"), QString::number(std::nearbyint(bytes / 1024)) + " KB");
    EXPECT_EQ(search().DwgThumbnail1->dwgFileName(), fileName(drawing));
    EXPECT_TRUE(search().List1->hasFocus());
}

TEST_F(SearchWindow, ArrowsWalkTheResultsAndThePreviewFollows)
{
    const auto paths = drawings(3);
    open();
    find("D");
    search().List1->setFocus();
    for (const std::string& path : paths) {
        QTest::keyClick(search().List1, Qt::Key_Down);
        EXPECT_EQ(search().DwgThumbnail1->dwgFileName(), fileName(path));
    }
}

TEST_F(SearchWindow, AResultWhoseFileIsGoneOrDamagedIsToldInTheFields)
{
    const auto paths = drawings(2);
    open();
    find("D");
    folder.write("drawings/D2.dwg", "no drawing");
    std::filesystem::remove(paths[0]);
    for (int row = 0; row < 2; ++row) {
        ASSERT_TRUE(clickRow("List1", row, "Search"));
        const std::string& gone = paths[std::size_t(row)];
        EXPECT_EQ(shown("Text2"), fileName("Error Loading: " + gone));
        EXPECT_EQ(search().DwgThumbnail1->dwgFileName(), fileName(joinPath(installation, "failed.dwg")));
        EXPECT_EQ(shown("Text6"), "NA");
        EXPECT_EQ(shown("Text5"), "");
        EXPECT_EQ(program->fields().selectedDrawing, gone);
    }
    EXPECT_TRUE(messages.shown.empty());
    ASSERT_TRUE(press("Option4"));
    ASSERT_TRUE(press("Command3"));
    EXPECT_EQ(readFile(userFile(".crt")).valueOr({}), paths[1] + "\r\n");
}

TEST_F(SearchWindow, EnlargedModeIsKeptOverSelections)
{
    open();
    find("D");
    ASSERT_TRUE(clickRow("List1", 0, "Search"));
    ASSERT_TRUE(press("Command5"));
    EXPECT_TRUE(visible("DwgViewX1", "Search"));
    EXPECT_TRUE(visible("DwgThumbnail1", "Search")) << "it stays beneath";
    EXPECT_EQ(shown("Frame3"), "Drawing Preview   Enlarged Mode");
    ASSERT_TRUE(clickRow("List1", 1, "Search"));
    EXPECT_EQ(search().DwgViewX1->dwgFileName(), fileName(drawings(3)[1]));
    EXPECT_FALSE(visible("DwgThumbnail1", "Search"));
    ASSERT_TRUE(press("Command6"));
    EXPECT_EQ(shown("Frame3"), "Drawing Preview  Thumbnail Mode");
    EXPECT_FALSE(visible("DwgViewX1", "Search"));
    EXPECT_EQ(search().DwgThumbnail1->dwgFileName(), fileName(drawings(3)[1]));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
}

TEST_F(SearchWindow, PreviewWithNothingChosenShowsNothing)
{
    open();
    ASSERT_TRUE(press("Command5"));
    ASSERT_TRUE(press("Command6"));
    EXPECT_EQ(search().DwgThumbnail1->dwgFileName(), "");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(SearchWindow, EnlargingADrawingThatIsGoneShowsThePlaceholder)
{
    open();
    find("D1");
    ASSERT_TRUE(clickRow("List1", 0, "Search"));
    std::filesystem::remove(drawings(1)[0]);
    ASSERT_TRUE(press("Command5"));
    EXPECT_FALSE(visible("DwgViewX1", "Search"));
    EXPECT_EQ(search().DwgThumbnail1->dwgFileName(), fileName(joinPath(installation, "failed.dwg")));
    ASSERT_TRUE(press("Command6"));
    EXPECT_EQ(search().DwgThumbnail1->dwgFileName(), fileName(joinPath(installation, "failed.dwg")));
    EXPECT_EQ(QGuiApplication::overrideCursor(), nullptr);
    EXPECT_TRUE(messages.shown.empty());
}

// ---- actions without a host

TEST_F(SearchWindow, InsertWithNothingChosenAsksForADrawing)
{
    setKey(User, "Settings", "AOT", "1");
    open();
    bool onTop = true;
    messages.whileShown = [&] { onTop = search().isTopmost(); };
    ASSERT_TRUE(press("Command3"));
    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(lastMessage(), "Please Select a Drawing File");
    EXPECT_EQ(messages.shown[0].title, "No File Selected");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Information);
    EXPECT_FALSE(onTop);
    EXPECT_TRUE(search().isTopmost());
    EXPECT_EQ(program->fields().cmodeState, 7);
}

TEST_F(SearchWindow, ADoubleClickQueuesTheResult)
{
    open();
    ASSERT_TRUE(press("Option4"));
    find("D2");
    ASSERT_TRUE(clickRow("List1", 0, "Search"));
    const QRect place = search().List1->visualItemRect(search().List1->item(0));
    QTest::mouseDClick(search().List1->viewport(), Qt::LeftButton, {}, place.center());
    EXPECT_EQ(lastMessage(), "Added: " + drawings(2)[1] + "\r\nto the Drawing Queue");
    EXPECT_EQ(program->fields().searchDrawing, drawings(2)[1]);
    EXPECT_EQ(program->fields().cmodeState, 0);
}

TEST_F(SearchWindow, EnterOnAResultDoesWhatADoubleClickDoes)
{
    open();
    ASSERT_TRUE(press("Option4"));
    find("D2");
    ASSERT_TRUE(clickRow("List1", 0, "Search"));
    QTest::keyClick(search().List1, Qt::Key_Return);
    EXPECT_EQ(lastMessage(), "Added: " + drawings(2)[1] + "\r\nto the Drawing Queue");
}

TEST_F(SearchWindow, ADoubleClickOnNothingQueuesAnEmptyLineAndIsRefused)
{
    open();
    ASSERT_TRUE(press("Option4"));
    main().setEnabled(false);
    QTest::mouseDClick(search().List1->viewport(), Qt::LeftButton);
    ASSERT_EQ(messages.shown.size(), 2u);
    EXPECT_EQ(messages.shown[0].text, "Added: \r\nto the Drawing Queue");
    EXPECT_EQ(messages.shown[1].text, "No Files Selected for the Drawing Queue");
    EXPECT_EQ(messages.shown[1].title, "Please Select a File to add to the Drawing Queue!");
    EXPECT_TRUE(main().isEnabled());
    EXPECT_EQ(readFile(userFile(".crt")).valueOr({}), "\r\n");
}

// ---- leaving

TEST_F(SearchWindow, CloseHandsTheChoiceBack)
{
    open();
    ASSERT_TRUE(press("Option2"));
    ASSERT_TRUE(press("Check2"));
    program->fields().cmodeState = 7;
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(program->loaded("Search"), nullptr);
    EXPECT_TRUE(main().Option1->isChecked());
    EXPECT_FALSE(main().Check1->isChecked());
    EXPECT_EQ(program->fields().xrefState, 2);
    EXPECT_EQ(program->fields().cmodeState, 0);
    EXPECT_TRUE(appears("Zelvora"));
    EXPECT_EQ(endedWith, -1);
}

TEST_F(SearchWindow, CloseSelectsWhatIsStoredUnlessTheQueueIsChosen)
{
    setKey(User, "Settings", "insertmode", "3");
    open();
    EXPECT_TRUE(search().Option1->isChecked());
    ASSERT_TRUE(press("Command2"));
    EXPECT_TRUE(main().Option2->isChecked());
    open();
    ASSERT_TRUE(press("Option3"));
    ASSERT_TRUE(press("Command2"));
    EXPECT_TRUE(main().Option3->isChecked());
    open();
    ASSERT_TRUE(press("Option4"));
    ASSERT_TRUE(press("Command2"));
    EXPECT_TRUE(main().Option4->isChecked());
}

TEST_F(SearchWindow, TheCloseBoxLeavesTheMainWindowsOptionsAlone)
{
    setKey(User, "Settings", "insertmode", "0");
    setKey(User, "Settings", "AOT", "1");
    open();
    ASSERT_TRUE(press("Option3"));
    main().setTopmost(false);
    search().close();
    EXPECT_EQ(program->loaded("Search"), nullptr);
    EXPECT_TRUE(main().Option1->isChecked());
    EXPECT_TRUE(main().isTopmost());
    EXPECT_TRUE(appears("Zelvora"));
}

TEST_F(SearchWindow, WithoutTheMainWindowItsClosingEndsTheProgram)
{
    open();
    program->unload("Zelvora");
    EXPECT_EQ(endedWith, -1);
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(endedWith, 0);
    EXPECT_EQ(program->loaded("Zelvora"), nullptr);
}

TEST_F(SearchWindow, ALoadOfTheMainWindowUnloadsItAndShowsNothingTooEarly)
{
    open();
    program->loadAnew("Zelvora");
    EXPECT_EQ(program->loaded("Search"), nullptr);
    EXPECT_FALSE(main().isVisible()) << "Timer1 shows it at its place";
    EXPECT_TRUE(appears("Zelvora"));
}

TEST_F(SearchWindow, ItsButtonsGoBelowWhereItIsTooNarrowForOneRow)
{
    open();
    search().resize(1000, 700);
    QCoreApplication::processEvents();
    EXPECT_EQ(search().Command3->geometry().center().y(), search().Check2->geometry().center().y());
    search().resize(search().minimumSize());
    QCoreApplication::processEvents();
    EXPECT_GT(search().Command3->geometry().top(), search().Check2->geometry().bottom());
    for (const QAbstractButton* each : search().findChildren<QAbstractButton*>())
        EXPECT_GE(each->width(), each->minimumSizeHint().width()) << each->objectName().toStdString();
}

TEST_F(SearchWindow, EveryControlCanBeReachedByTab)
{
    open();
    find("D");
    search().Text1->setFocus();
    QSet<QString> reached;
    for (int i = 0; i < 60; ++i) {
        reached << QApplication::focusWidget()->objectName();
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    for (const char* name :
         {"Combo1", "Check1", "Text1", "Text7", "Text8", "Text9", "Text10", "Text11", "Command11", "Command4",
          "List1", "Command5", "Command6", "Text2", "Option1", "Command3", "Command1", "Command2"})
        EXPECT_TRUE(reached.contains(name)) << name;
}

} // namespace
} // namespace zv
