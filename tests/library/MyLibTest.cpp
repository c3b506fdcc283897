#include "EditorFixture.h"

#include "controls/CaptionFrame.h"
#include "controls/DwgThumbnail.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "library/MyLib.h"
#include "platform/Files.h"
#include "platform/System.h"

#include <QApplication>
#include <QComboBox>
#include <QCoreApplication>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>
#include <QTimer>

namespace zv {
namespace {

using enum ProfileFile;

class MyLibTest : public EditorFixture {
protected:
    MyLib& openMyLib()
    {
        start();
        EXPECT_TRUE(click("Command8"));
        EXPECT_TRUE(appears("MyLib"));
        return window();
    }
    MyLib& window() { return *static_cast<MyLib*>(program->loaded("MyLib")); }
    bool press(const char* name) { return click(QLatin1String(name), QStringLiteral("MyLib")); }
    bool selectIn(const char* list, int row) { return clickRow(QLatin1String(list), row, "MyLib"); }
    QString shown(const char* name) { return text(QLatin1String(name), QStringLiteral("MyLib")); }
    QStringList rowsOf(const char* name) { return rows(QLatin1String(name), QStringLiteral("MyLib")); }
    std::string mine() const { return userFile(".lst"); }
    std::string myBytes() const { return readFile(mine()).valueOr("(no list)"); }
    void fillMine(const std::vector<std::string>& paths) { ASSERT_TRUE(writeFile(mine(), linesOf(paths))); }
    QColor ground(const char* name)
    {
        return control(QLatin1String(name), "MyLib")->palette().color(QPalette::Active, QPalette::Base);
    }
    void lastLibraryIs(const std::string& name)
    {
        setKey(User, "LibLoad", "LastLoad", name);
        setKey(User, "LibLoad", "del", "0");
    }
};

TEST_F(MyLibTest, TheFirstRunOpensWithAnEmptyListOfTheUsersOwn)
{
    makeCatalogue({"gamma", "Alpha"});
    openMyLib();
    EXPECT_FALSE(main().isVisible());
    EXPECT_EQ(window().windowTitle(), "MyLib");
    EXPECT_EQ(rowsOf("List1"), QStringList());
    EXPECT_EQ(myBytes(), "");
    EXPECT_EQ(shown("Text1").toStdString(), systemLoginName());
    EXPECT_EQ(rowsOf("Combo1"), (QStringList{"gamma", "Alpha"})) << "in the order of the catalogue";
    EXPECT_EQ(window().DwgThumbnail1->dwgFileName(), "");
    EXPECT_EQ(window().ClosedByButton, 1);
}

TEST_F(MyLibTest, AMissingListIsMadeAgain)
{
    start();
    std::filesystem::remove(mine());
    ASSERT_TRUE(click("Command8"));
    ASSERT_TRUE(appears("MyLib"));
    EXPECT_EQ(window().MyListExisted, 0);
    EXPECT_EQ(myBytes(), "");
    EXPECT_EQ(window().MyListPath, mine());
}

TEST_F(MyLibTest, TheLibraryInViewLastIsShown)
{
    makeLibrary("Doors", drawings(2));
    makeCatalogue({"Doors"});
    lastLibraryIs("Doors");
    fillMine({drawings(3)[2]});
    openMyLib();
    EXPECT_EQ(shown("Combo1"), "Doors");
    EXPECT_EQ(rowsOf("List2"), texts(drawings(2)));
    EXPECT_EQ(rowsOf("List1"), texts({drawings(3)[2]}));
    EXPECT_EQ(window().SourcePath, listPath("Doors"));
    EXPECT_EQ(window().MyListExisted, 1);
}

TEST_F(MyLibTest, TheLoginNameAsLastLibraryIsShownAndIsNoRow)
{
    makeCatalogue({"Doors"});
    lastLibraryIs(systemLoginName());
    fillMine(drawings(1));
    openMyLib();
    EXPECT_EQ(shown("Combo1").toStdString(), systemLoginName());
    EXPECT_EQ(rowsOf("Combo1"), QStringList{"Doors"});
    EXPECT_EQ(rowsOf("List2"), QStringList());
    EXPECT_EQ(window().SourcePath, mine());
}

TEST_F(MyLibTest, TheCatalogueIsTheInstallationFolders)
{
    const std::string elsewhere = folder.file("master");
    std::filesystem::create_directory(elsewhere);
    makeCatalogue({"Here"});
    makeLibrary("Here", drawings(1));
    master = elsewhere;
    setKey(Installation, "Path", "ZVRpath", master);
    makeCatalogue({"There"});
    openMyLib();
    EXPECT_EQ(rowsOf("Combo1"), QStringList{"Here"});
    ASSERT_TRUE(choose("Combo1", "Here", "MyLib"));
    EXPECT_EQ(rowsOf("List2"), texts(drawings(1)));
}

TEST_F(MyLibTest, BrowseIsTheAdministratorsToAllow)
{
    for (const auto& [key, allowed] : {std::pair("1", true), std::pair("0", false), std::pair("2", false)}) {
        setKey(Installation, "MyLib", "Userlib", key);
        program->loadAnew("MyLib");
        EXPECT_EQ(enabled("Command4", "MyLib"), allowed) << key;
        program->unload("MyLib");
    }
}

TEST_F(MyLibTest, ALibraryWithoutItsListIsToldAndTheWindowStaysOffTheTop)
{
    makeCatalogue({"Doors"});
    openMyLib();
    program->values().AlwaysOnTop = 1;
    window().setTopmost(true);
    ASSERT_TRUE(choose("Combo1", "Doors", "MyLib"));
    EXPECT_EQ(lastBox(), "Library Not Found [16] " + listPath("Doors") + " Does Not Exist");
    EXPECT_FALSE(window().isTopmost());
    EXPECT_EQ(rowsOf("List2"), QStringList());
}

TEST_F(MyLibTest, ReturnInTheBoxChoosesWhatIsTyped)
{
    makeLibrary("Hidden", drawings(1));
    makeCatalogue({"Doors"});
    openMyLib();
    window().Combo1->lineEdit()->clear();
    QTest::keyClicks(window().Combo1, "Hidden");
    QTest::keyClick(window().Combo1, Qt::Key_Return);
    EXPECT_EQ(rowsOf("List2"), texts(drawings(1)));
}

TEST_F(MyLibTest, AClickShowsTheDrawingAndOnTheUsersOwnListItsLabel)
{
    makeLibrary("Doors", drawings(2));
    lastLibraryIs("Doors");
    fillMine({drawings(1)[0]});
    openMyLib();
    ASSERT_TRUE(selectIn("List1", 0));
    EXPECT_EQ(shown("Text4"), "D1");
    EXPECT_EQ(ground("Text4"), QColor(255, 255, 192));
    EXPECT_EQ(window().SourcePath, mine());
    ASSERT_TRUE(selectIn("List2", 1));
    EXPECT_EQ(shown("Text4"), "");
    EXPECT_EQ(ground("Text4"), QApplication::palette().color(QPalette::Button));
    EXPECT_EQ(window().DwgThumbnail1->dwgFileName(), QString::fromStdString(drawings(2)[1]));
    EXPECT_EQ(shown("Text3"), QString::fromStdString("Drawing Name: " + drawings(2)[1] + "\n\nAbout D2"));
}

TEST_F(MyLibTest, ADrawingThatCannotBeReadShowsThePlaceholder)
{
    fillMine({"/no/such.dwg"});
    openMyLib();
    ASSERT_TRUE(selectIn("List1", 0));
    EXPECT_EQ(window().DwgThumbnail1->dwgFileName(),
              QString::fromStdString(joinPath(installation, "failed.dwg")));
    EXPECT_EQ(shown("Text3"), "Drawing Name: /no/such.dwg");
    EXPECT_EQ(shown("Text2"), "");
    EXPECT_EQ(shown("Text4"), "SUCH");
}

TEST_F(MyLibTest, AddAppendsEachSelectedDrawing)
{
    const auto paths = drawings(3);
    makeLibrary("Doors", paths);
    lastLibraryIs("Doors");
    fillMine({paths[0]});
    openMyLib();
    ASSERT_TRUE(selectIn("List2", 2));
    const QRect first = window().List2->visualItemRect(window().List2->item(0));
    QTest::mouseClick(window().List2->viewport(), Qt::LeftButton, Qt::ControlModifier,
                      {3, first.center().y()});
    ASSERT_TRUE(press("Command1"));
    EXPECT_EQ(myBytes(), linesOf({paths[0], paths[0], paths[2]}));
    EXPECT_EQ(rowsOf("List1"), texts({paths[0], paths[0], paths[2]}));
    EXPECT_EQ(window().List2->selectedItems().size(), 2);
}

TEST_F(MyLibTest, BrowseAddsADrawingFromAnywhere)
{
    // Where the dialog for printing is the system's own, that for files is too.
    if (kSystemHasPrintDialog)
        GTEST_SKIP() << "the dialog is the system's own";
    setKey(Installation, "MyLib", "Userlib", "1");
    const std::string path = drawings(1)[0];
    openMyLib();
    QTimer::singleShot(0, [] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        EXPECT_EQ(dialog->nameFilters(), QStringList{"Drawing Files (*.dwg)"});
        dialog->reject();
    });
    ASSERT_TRUE(press("Command4"));
    EXPECT_EQ(myBytes(), "");
    QTimer::singleShot(0, [&path] {
        auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        dialog->selectFile(QString::fromStdString(path));
        QMetaObject::invokeMethod(dialog, "accept");
    });
    ASSERT_TRUE(press("Command4"));
    EXPECT_EQ(myBytes(), linesOf({path}));
    EXPECT_EQ(rowsOf("List1"), texts({path}));
}

TEST_F(MyLibTest, RemovingSelectsTheRowInTheGapAndBehindTheLastOneTheFirst)
{
    const auto paths = drawings(3);
    fillMine(paths);
    openMyLib();
    ASSERT_TRUE(selectIn("List1", 0));
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(myBytes(), linesOf({paths[1], paths[2]}));
    EXPECT_EQ(window().List1->currentRow(), 0);
    EXPECT_EQ(shown("Text4"), "D2") << "the new first row is clicked";
    EXPECT_TRUE(window().isTopmost()) << "whatever the user wants";
    ASSERT_TRUE(selectIn("List1", 1));
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(window().List1->currentRow(), 0);
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(myBytes(), "");
    EXPECT_EQ(window().List1->currentRow(), -1);
    window().setTopmost(false);
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(lastBox(), "No File Selected! [64] Please Select a File to Remove");
    EXPECT_TRUE(window().isTopmost());
}

TEST_F(MyLibTest, RemovingAllAsks)
{
    fillMine(drawings(2));
    openMyLib();
    ASSERT_TRUE(selectIn("List1", 0));
    ASSERT_TRUE(press("Command3"));
    EXPECT_EQ(lastBox(), "Clear MyLib List [32] Are you sure you want to clear list?");
    EXPECT_EQ(myBytes(), linesOf(drawings(2)));
    messages.yes = true;
    ASSERT_TRUE(press("Command3"));
    EXPECT_EQ(myBytes(), "");
    EXPECT_EQ(rowsOf("List1"), QStringList());
    for (const char* text : {"Text2", "Text3", "Text4"})
        EXPECT_EQ(shown(text), "") << text;
    EXPECT_TRUE(window().isTopmost());
}

TEST_F(MyLibTest, ALabelIsChangedInTheUsersList)
{
    const auto paths = drawings(2);
    fillMine(paths);
    openMyLib();
    ASSERT_TRUE(selectIn("List1", 1));
    window().Text4->clear();
    type("Text4", "Mine", "MyLib");
    ASSERT_TRUE(press("Command5"));
    EXPECT_EQ(myBytes(), linesOf({paths[0]}) + paths[1] + ";Mine\r\n");
    EXPECT_EQ(window().List1->currentRow(), 1);
    EXPECT_EQ(QApplication::focusWidget(), window().List1);
}

TEST_F(MyLibTest, EveryLabelIsReadWholeAtEverySize)
{
    openMyLib();
    labelsAreReadWhole(window());
}

TEST_F(MyLibTest, ALongLabelIsShownFromItsBeginning)
{
    const std::string path = drawings(1)[0];
    ASSERT_TRUE(writeFile(mine(), path + ";" + std::string(300, 'L') + "\r\n"));
    openMyLib();
    ASSERT_TRUE(selectIn("List1", 0));
    EXPECT_EQ(window().Text4->cursorPosition(), 0);
}

TEST_F(MyLibTest, DrawingsFromAnEarlierRuleStayWhereBrowsingIsNotAllowed)
{
    setKey(Installation, "MyLib", "Userlib", "0");
    fillMine({"/elsewhere/own.dwg"});
    openMyLib();
    EXPECT_FALSE(enabled("Command4", "MyLib"));
    EXPECT_EQ(rowsOf("List1"), texts({"/elsewhere/own.dwg"}));
}

TEST_F(MyLibTest, EachButtonAndFrameHasItsCaption)
{
    openMyLib();
    const struct {
        PictureButton* button;
        const char* caption;
    } buttons[] = {{window().Command1, "Add"},        {window().Command2, "Remove"},
                   {window().Command3, "Remove All"}, {window().Command4, "&Browse"},
                   {window().Command5, "O&k"},        {window().Command6, "&Help"},
                   {window().Command8, "&Cancel"},    {window().Command11, "&Ok"}};
    for (const auto& [button, caption] : buttons)
        EXPECT_EQ(button->text(), caption);
    EXPECT_EQ(window().Command6->toolTip(), "Zelvora Help Menu");
    EXPECT_EQ(window().Command11->toolTip(), "Close and Save Changes");
    EXPECT_EQ(window().Command8->toolTip(), "Discard");
    EXPECT_EQ(window().FrameSource->title(), "Select Library");
    EXPECT_EQ(window().FrameMine->title(), "MyLib For User");
    EXPECT_EQ(window().FrameExternal->title(), "Add External Files:");
    EXPECT_EQ(window().FrameInfo->title(), "Drawing Info");
    EXPECT_EQ(window().LabelComments->text(), "Drawing Comments:");
    EXPECT_EQ(window().LabelKeywords->text(), "Keywords:");
}

TEST_F(MyLibTest, EveryWayOutBringsTheMainWindowBackAndDiscardsNothing)
{
    const auto paths = drawings(1);
    makeLibrary("Doors", paths);
    lastLibraryIs("Doors");
    openMyLib();
    ASSERT_TRUE(selectIn("List2", 0));
    ASSERT_TRUE(press("Command1"));
    ASSERT_TRUE(press("Command8"));
    EXPECT_EQ(program->loaded("MyLib"), nullptr);
    ASSERT_TRUE(appears("Zelvora"));
    EXPECT_EQ(myBytes(), linesOf(paths));
    ASSERT_TRUE(click("Command8"));
    ASSERT_TRUE(appears("MyLib"));
    ASSERT_TRUE(press("Command11"));
    ASSERT_TRUE(appears("Zelvora"));
    ASSERT_TRUE(click("Command8"));
    ASSERT_TRUE(appears("MyLib"));
    window().close();
    EXPECT_TRUE(appears("Zelvora"));
    EXPECT_EQ(endedWith, -1);
}

TEST_F(MyLibTest, HelpPointsTheApplicationAtTheProgramsOwn)
{
    openMyLib();
    QCoreApplication::instance()->setProperty("helpFile", {});
    ASSERT_TRUE(press("Command6"));
    EXPECT_EQ(QCoreApplication::instance()->property("helpFile").toString(),
              QString::fromStdString(joinPath(installation, "Zelvora.chm")));
}

TEST_F(MyLibTest, ARewriteThatFailsEndsTheProgram)
{
    fillMine(drawings(1));
    openMyLib();
    std::filesystem::create_directory(userFile(".ls$"));
    ASSERT_TRUE(selectIn("List1", 0));
    ASSERT_TRUE(press("Command2"));
    EXPECT_EQ(endedWith, 1);
    EXPECT_EQ(myBytes(), linesOf(drawings(1)));
    EXPECT_FALSE(main().isVisible());
}

} // namespace
} // namespace zv
