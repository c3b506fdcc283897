#include "host/Xattach.h"

#include "controls/CaptionFrame.h"
#include "controls/DwgThumbnail.h"
#include "host/HostDialogs.h"
#include "support/OneStepFails.h"
#include "support/PlainHost.h"
#include "support/TypedPath.h"

#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>
#include <QWheelEvent>

#include <filesystem>

namespace zv {
namespace {

using enum ProfileFile;

class XattachTest : public HostDialogFixture {
protected:
    /// From the main window, as a user comes to it.
    Xattach& open()
    {
        setKey(User, "Settings", "insertmode", "1");
        start();
        EXPECT_TRUE(click("DwgThumbnail1"));
        EXPECT_TRUE(click("Command11"));
        EXPECT_TRUE(appears("Xattach"));
        return dialog();
    }
    Xattach& openWithScale(const std::string& storedScale)
    {
        start();
        EXPECT_TRUE(openXattach(*program, OpenedFrom::MainWindow, paths[0], storedScale));
        return dialog();
    }
    Xattach& openFromSearch()
    {
        startSearch();
        EXPECT_TRUE(openXattach(*program, OpenedFrom::Search, paths[1], ""));
        return dialog();
    }
    Xattach& dialog() { return *static_cast<Xattach*>(program->loaded("Xattach")); }
    void offices(const char* projectfolder, const char* forcecopy)
    {
        setKey(Installation, "masterxref", "projectfolder", projectfolder);
        setKey(Installation, "masterxref", "forcecopy", forcecopy);
    }
    bool searchStands() { return program->loaded("Search")->isVisible(); }
};

TEST_F(XattachTest, IsPreparedForTheDrawingAndHidesTheMainWindow)
{
    Xattach& window = open();
    EXPECT_EQ(window.windowTitle(), "Insert Xref");
    EXPECT_EQ(window.Text1->text(), QString::fromStdString(paths[0]));
    EXPECT_EQ(window.DwgThumbnail1->dwgFileName(), QString::fromStdString(paths[0]));
    EXPECT_EQ(window.Text9->text(), "96");
    EXPECT_EQ(window.Text11->text(), "48") << "what is stored in the drawing";
    EXPECT_EQ(window.Combo1->currentText(), "1/4\"=1'");
    EXPECT_TRUE(window.Check4->isChecked());
    EXPECT_FALSE(main().isVisible());
    EXPECT_TRUE(window.isTopmost());
    EXPECT_EQ(outside->logged, std::vector<std::string>{"Insert as Xref"});
    EXPECT_EQ(main().fields.xrefState, 0);
    EXPECT_EQ(key(User, "settings", "listindex"), "(none)") << "the preparation picks nothing";
}

TEST_F(XattachTest, HasTheCaptionsThatUsersKnow)
{
    openWithScale("");
    const std::pair<const char*, const char*> cases[] = {
        {"Option1", "&Attach"},
        {"Option2", "&Overlay"},
        {"Frame1", "Xref Type"},
        {"Frame2", "Insertion"},
        {"Frame5", "Scale"},
        {"Frame3", "Rotation"},
        {"Frame4", "AutoScale"},
        {"Check1", "Prompt:"},
        {"Check2", "Prompt:"},
        {"Check3", "Prompt:"},
        {"Check4", "ON"},
        {"Label8", "Xref Scale:"},
        {"Label9", "Angle:"},
        {"Label10", "Drawing Scale:"},
        {"Label11", "Drawing File Size:"},
        {"Check5", "Copy Xref to Project Folder, then Xref from Project Folder"},
        {"Command1", "&Browse..."},
        {"Command2", "&Cancel"},
        {"Command3", "&Insert"},
        {"Text2", "0.00"},
        {"Text5", "1.00"},
        {"Text10", "0.00"}};
    for (const auto& [name, caption] : cases)
        EXPECT_EQ(text(name, "Xattach"), caption) << name;
}

TEST_F(XattachTest, AtFirstThePointIsAskedAndNothingElse)
{
    Xattach& window = openWithScale("");
    EXPECT_TRUE(window.Option1->isChecked());
    EXPECT_TRUE(window.Check1->isChecked());
    EXPECT_FALSE(window.Check2->isChecked() || window.Check3->isChecked() || window.Check4->isChecked());
    EXPECT_FALSE(window.Text2->isEnabled() || window.Label2->isEnabled());
    EXPECT_TRUE(window.Text5->isEnabled() && window.Text10->isEnabled() && window.Combo1->isEnabled());
    EXPECT_EQ(window.Combo1->currentText(), "Full");
    EXPECT_EQ(window.Text11->text(), "1");
}

TEST_F(XattachTest, TheSizeIsInUnitsOf1024AndNAWhereItCannotBeAsked)
{
    const auto size = std::filesystem::file_size(paths[0]);
    std::filesystem::resize_file(paths[0], size + 2048);
    Xattach& window = openWithScale("");
    EXPECT_EQ(window.Text12->text(), "NA") << "nothing is selected in the main window";
    program->unload("Xattach");
    main().fields.selectedDrawing = paths[0];
    openXattach(*program, OpenedFrom::MainWindow, paths[0], "");
    const double whole = double(size + 2048) / 1024;
    EXPECT_EQ(dialog().Text12->text(), QString::number(std::nearbyint(whole)) + " KB");
}

TEST_F(XattachTest, AStoredScaleThatNoProbeHitsLeavesTheBoxEmpty)
{
    Xattach& window = openWithScale("7");
    EXPECT_EQ(window.Combo1->currentText(), "");
    EXPECT_EQ(window.Text11->text(), "7");
    EXPECT_TRUE(window.Check4->isChecked());
}

TEST_F(XattachTest, AHostThatIsNotThereLeavesItsScaleEmpty)
{
    host.running = false;
    EXPECT_EQ(openWithScale("").Text9->text(), "");
}

TEST_F(XattachTest, EachPromptBoxTakesItsFieldsOutOfPlay)
{
    Xattach& window = openWithScale("");
    const QColor ground = window.palette().color(QPalette::Window);
    const struct {
        QCheckBox* check;
        QLineEdit* field;
        QLabel* label;
    } cases[] = {{window.Check1, window.Text3, window.Label3},
                 {window.Check2, window.Text6, window.Label6},
                 {window.Check3, window.Text10, window.Label9}};
    for (const auto& frame : cases) {
        frame.check->setChecked(true);
        EXPECT_FALSE(frame.field->isEnabled() || frame.label->isEnabled());
        EXPECT_EQ(frame.field->palette().color(QPalette::Base), ground);
        frame.check->setChecked(false);
        EXPECT_TRUE(frame.field->isEnabled() && frame.label->isEnabled());
        EXPECT_EQ(frame.field->palette().color(QPalette::Base), window.palette().color(QPalette::Base));
    }
}

TEST_F(XattachTest, AutoScaleTakesTheScaleFrameOutOfPlayAndIsStored)
{
    Xattach& window = openWithScale("");
    window.Check2->setChecked(true);
    QTest::mouseClick(window.Check4, Qt::LeftButton, {}, {8, window.Check4->height() / 2});
    EXPECT_EQ(key(User, "settings", "AutoScale"), "1");
    EXPECT_FALSE(window.Check2->isChecked() || window.Check2->isEnabled() || window.Frame5->isEnabled());
    EXPECT_FALSE(window.Text5->isEnabled() || window.Label5->isEnabled());
    EXPECT_TRUE(window.Label8->isEnabled() && window.Combo1->isEnabled());
    QTest::mouseClick(window.Check4, Qt::LeftButton, {}, {8, window.Check4->height() / 2});
    EXPECT_EQ(key(User, "settings", "AutoScale"), "0");
    EXPECT_FALSE(window.Check2->isChecked());
    EXPECT_TRUE(window.Check2->isEnabled() && window.Frame5->isEnabled() && window.Text5->isEnabled());
    EXPECT_FALSE(window.Label8->isEnabled() || window.Combo1->isEnabled());
}

TEST_F(XattachTest, APickWritesTheFactorTicksAutoScaleAndIsStored)
{
    Xattach& window = openWithScale("");
    ASSERT_TRUE(choose("Combo1", "1:50", "Xattach"));
    EXPECT_EQ(window.Text11->text(), "50");
    EXPECT_TRUE(window.Check4->isChecked());
    EXPECT_EQ(key(User, "settings", "listindex"), "22");
    EXPECT_EQ(key(User, "settings", "xrefscale"), "1:50");
}

TEST_F(XattachTest, AKeyInTheFactorMakesTheScaleCustomAndLeavesAutoScale)
{
    Xattach& window = openWithScale("");
    type("Text11", "2", "Xattach");
    EXPECT_EQ(window.Combo1->currentText(), "Custom");
    EXPECT_FALSE(window.Check4->isChecked());
    QTest::keyClick(window.Combo1, Qt::Key_Down);
    EXPECT_EQ(window.Combo1->currentText(), "Custom") << "its list alone changes the box";
    QTest::keyClicks(window.Combo1, "1");
    EXPECT_EQ(window.Combo1->currentText(), "Custom");
}

TEST_F(XattachTest, ReturnAndTheWheelOverTheClosedScalesPickNone)
{
    Xattach& window = openWithScale("48");
    type("Text11", "2", "Xattach");
    const int scales = window.Combo1->count();
    const QString factor = window.Text11->text();
    for (const auto key : {Qt::Key_Return, Qt::Key_Enter})
        QTest::keyClick(window.Combo1, key);
    QWheelEvent wheel({5, 5}, window.Combo1->mapToGlobal(QPointF(5, 5)), {}, {0, -120}, Qt::NoButton, {},
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(window.Combo1, &wheel);
    EXPECT_EQ(window.Combo1->count(), scales);
    EXPECT_EQ(window.Combo1->currentText(), "Custom");
    EXPECT_EQ(window.Text11->text(), factor);
    EXPECT_EQ(key(User, "settings", "listindex"), "(none)");
}

// ---- the copy to the project folder

TEST_F(XattachTest, AChoiceThatCannotBeReadIsNotWrittenOverByItsDefault)
{
    offices("1", "0");
    setKey(User, "Settings", "projectcopy", "0");
    start();
    bool reached = true;
    for (int number = 0; reached; ++number) {
        {
            const OneStepFails files(FileStep::Open, number);
            openXattach(*program, OpenedFrom::MainWindow, paths[0], "");
            reached = files.wasReached();
        }
        program->unload("Xattach");
        ASSERT_EQ(key(User, "Settings", "projectcopy"), "0") << "opening " << number;
    }
}

TEST_F(XattachTest, TheOfficesKeysAndTheUsersSettleTheCopy)
{
    const struct {
        const char *projectfolder, *forcecopy, *projectcopy;
        bool ticked, boxEnabled, buttonEnabled, fieldEnabled;
    } cases[] = {{"0", "0", "1", true, false, false, false}, {"0", "1", "0", false, false, false, false},
                 {"1", "0", "1", true, true, true, true},    {"1", "0", "0", false, true, false, true},
                 {"1", "1", "1", true, false, true, true},   {"1", "1", "0", false, false, false, true}};
    start();
    for (const auto& expected : cases) {
        offices(expected.projectfolder, expected.forcecopy);
        setKey(User, "Settings", "projectcopy", expected.projectcopy);
        openXattach(*program, OpenedFrom::MainWindow, paths[0], "");
        const std::string which =
            std::string(expected.projectfolder) + expected.forcecopy + expected.projectcopy;
        EXPECT_EQ(dialog().Check5->isChecked(), expected.ticked) << which;
        EXPECT_EQ(dialog().Check5->isEnabled(), expected.boxEnabled) << which;
        EXPECT_EQ(dialog().Command1->isEnabled(), expected.buttonEnabled) << which;
        EXPECT_EQ(dialog().Text8->isEnabled(), expected.fieldEnabled) << which;
        EXPECT_EQ(key(User, "Settings", "projectcopy"), expected.projectcopy) << which;
        program->unload("Xattach");
    }
}

TEST_F(XattachTest, TheUsersTickIsStoredAndTheFolderFollowsIt)
{
    offices("1", "0");
    setKey(User, "settings", "projectpath", "/project");
    Xattach& window = openWithScale("");
    EXPECT_EQ(window.Text8->text(), "/project");
    window.Check5->click();
    EXPECT_EQ(key(User, "Settings", "projectcopy"), "0");
    EXPECT_FALSE(window.Command1->isEnabled() || window.Text8->isEnabled());
    window.Check5->click();
    EXPECT_EQ(key(User, "Settings", "projectcopy"), "1");
    EXPECT_TRUE(window.Command1->isEnabled() && window.Text8->isEnabled());
}

TEST_F(XattachTest, AFreshOfficeAttachesFromWhereTheDrawingLies)
{
    Xattach& window = openWithScale("");
    ASSERT_TRUE(window.Check5->isChecked());
    window.Check3->setChecked(true);
    ASSERT_TRUE(click("Command3", "Xattach"));
    ASSERT_EQ(host.typed.size(), 1u);
    EXPECT_NE(host.typed[0].find(typedPath(paths[0])), std::string::npos);
}

TEST_F(XattachTest, TheCopyIsAttachedAndItsFolderRemembered)
{
    offices("1", "0");
    std::filesystem::create_directory(folder.file("project"));
    Xattach& window = openWithScale("");
    window.Text8->setText(QString::fromStdString(folder.file("project")));
    ASSERT_TRUE(click("Command3", "Xattach"));
    EXPECT_EQ(folder.read("project/D1.DWG"), folder.read("drawings/D1.dwg"));
    ASSERT_EQ(host.typed.size(), 1u);
    EXPECT_NE(host.typed[0].find(typedPath(folder.file("project/D1.DWG"))), std::string::npos);
    EXPECT_EQ(key(User, "settings", "projectpath"), folder.file("project"));
}

TEST_F(XattachTest, WithoutAFolderTheDialogComesBack)
{
    offices("1", "0");
    openWithScale("");
    ASSERT_TRUE(click("Command3", "Xattach"));
    EXPECT_EQ(lastMessage(), "Xref Copy Path Not Specfied");
    EXPECT_EQ(messages.shown.back().title, "Specify Xref Copy Path");
    EXPECT_EQ(messages.shown.back().icon, MessageIcon::Information);
    EXPECT_TRUE(appears("Xattach"));
    EXPECT_TRUE(dialog().isTopmost());
    EXPECT_EQ(main().fields.xrefState, 0);
}

// ---- the end

TEST_F(XattachTest, AfterTheAttachTheMainWindowComesBack)
{
    openWithScale("48");
    ASSERT_TRUE(click("Command3", "Xattach"));
    ASSERT_EQ(host.typed.size(), 1u);
    EXPECT_EQ(host.typed[0], "(command \"._xref\" \"Attach\"\"" + typedPath(paths[0]) +
                                 "\"\"X\"\"2\"\"Y\"\"2\"\"Z\"\"2\"\"R\"\"0.00\")\r");
    EXPECT_EQ(program->loaded("Xattach"), nullptr);
    EXPECT_TRUE(appears("Zelvora"));
    EXPECT_FALSE(main().isTopmost());
}

TEST_F(XattachTest, AHostThatRefusesBringsTheDialogBackWithAllThatWasTyped)
{
    host.refusesCommands = true;
    Xattach& window = openWithScale("");
    window.Text10->setText("45");
    ASSERT_TRUE(click("Command3", "Xattach"));
    EXPECT_TRUE(appears("Xattach"));
    EXPECT_EQ(&dialog(), &window);
    EXPECT_EQ(window.Text10->text(), "45");
    EXPECT_TRUE(messages.shown.empty());
    window.close();
    EXPECT_TRUE(appears("Zelvora"));
}

TEST_F(XattachTest, ReturnInAFieldInserts)
{
    Xattach& window = openWithScale("");
    ASSERT_TRUE(appears("Xattach"));
    QTest::keyClick(window.Text10, Qt::Key_Return);
    EXPECT_EQ(host.typed.size(), 1u);
    EXPECT_EQ(program->loaded("Xattach"), nullptr);
}

TEST_F(XattachTest, AFieldThatIsNoNumberIsMarked)
{
    Xattach& window = openWithScale("");
    ASSERT_TRUE(appears("Xattach"));
    window.Text6->setText("wide");
    ASSERT_TRUE(click("Command3", "Xattach"));
    EXPECT_TRUE(window.isVisible());
    EXPECT_TRUE(window.Text6->hasFocus());
    EXPECT_EQ(window.Text6->selectedText(), "wide");
    EXPECT_TRUE(host.typed.empty());
}

TEST_F(XattachTest, CancelEscAndTheCloseBoxBringTheMainWindowBack)
{
    start();
    for (const int way : {0, 1, 2}) {
        openXattach(*program, OpenedFrom::MainWindow, paths[0], "");
        program->hide("Zelvora");
        ASSERT_TRUE(appears("Xattach"));
        if (way == 0)
            ASSERT_TRUE(click("Command2", "Xattach"));
        else if (way == 1)
            QTest::keyClick(&dialog(), Qt::Key_Escape);
        else
            dialog().close();
        EXPECT_EQ(program->loaded("Xattach"), nullptr);
        EXPECT_TRUE(appears("Zelvora")) << way;
    }
    EXPECT_TRUE(host.typed.empty());
}

TEST_F(XattachTest, NoToTheQuestionBringsTheDialogBack)
{
    openWithScale("");
    host.running = false;
    ASSERT_TRUE(click("Command3", "Xattach"));
    EXPECT_TRUE(lastMessage().starts_with("AutoCAD is Not Loaded"));
    EXPECT_TRUE(appears("Xattach"));
    EXPECT_EQ(text("Text9", "Xattach"), "96") << "the scale of the host that was there";
    EXPECT_EQ(main().fields.xrefState, 0);
}

// ---- called from Search

TEST_F(XattachTest, CalledFromSearchItHidesSearchAndTakesItsDrawing)
{
    Xattach& window = openFromSearch();
    EXPECT_FALSE(searchStands());
    EXPECT_EQ(main().fields.xrefState, 7);
    EXPECT_EQ(window.DwgThumbnail1->dwgFileName(), QString::fromStdString(paths[1]));
    EXPECT_NE(window.Text12->text(), "NA");
}

TEST_F(XattachTest, SearchComesBackOnTopAndTheMainWindowStaysHidden)
{
    for (const bool cancelled : {true, false}) {
        openFromSearch();
        ASSERT_TRUE(appears("Xattach"));
        ASSERT_TRUE(click(cancelled ? "Command2" : "Command3", "Xattach"));
        EXPECT_EQ(program->loaded("Xattach"), nullptr);
        EXPECT_TRUE(appears("Search"));
        EXPECT_TRUE(program->loaded("Search")->isTopmost());
        EXPECT_FALSE(main().isVisible());
        program->show("Zelvora");
    }
}

TEST_F(XattachTest, ShownAgainAfterATextThatIsNoNumberItBelongsToTheMainWindow)
{
    Xattach& window = openFromSearch();
    window.Text5->setText("wide");
    ASSERT_TRUE(click("Command3", "Xattach"));
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.Text5->selectedText(), "wide");
    EXPECT_EQ(main().fields.xrefState, 0);
    ASSERT_TRUE(click("Command2", "Xattach"));
    EXPECT_TRUE(appears("Zelvora"));
}

TEST_F(XattachTest, WithoutAFolderItIsShownAgainAndStillBelongsToSearch)
{
    offices("1", "0");
    Xattach& window = openFromSearch();
    window.Text10->setText("30");
    ASSERT_TRUE(click("Command3", "Xattach"));
    EXPECT_EQ(lastMessage(), "Xref Copy Path Not Specfied");
    EXPECT_TRUE(appears("Xattach"));
    EXPECT_EQ(&dialog(), &window);
    EXPECT_EQ(window.Text10->text(), "30");
    EXPECT_EQ(main().fields.xrefState, 7);
    EXPECT_FALSE(main().isVisible());
    ASSERT_TRUE(click("Command2", "Xattach"));
    EXPECT_TRUE(appears("Search"));
}

} // namespace
} // namespace zv
