#include "host/cmode.h"

#include "controls/ElidedLabel.h"
#include "host/HostDialogs.h"
#include "support/OneStepFails.h"
#include "support/PlainHost.h"
#include <QPushButton>

#include <QCheckBox>
#include <QLineEdit>
#include <QTest>

#include <filesystem>

namespace zv {
namespace {

using enum ProfileFile;

class CmodeTest : public HostDialogFixture {
protected:
    CmodeTest() { std::filesystem::create_directory(folder.file("project")); }
    /// From the main window, as a user comes to it.
    cmode& open()
    {
        setKey(User, "Settings", "insertmode", "2");
        start();
        EXPECT_TRUE(click("DwgThumbnail1"));
        EXPECT_TRUE(click("Command11"));
        EXPECT_TRUE(appears("cmode"));
        return dialog();
    }
    cmode& openFromSearch()
    {
        startSearch();
        EXPECT_TRUE(openCmode(*program, OpenedFrom::Search, paths[1]));
        return dialog();
    }
    cmode& dialog() { return *static_cast<cmode*>(program->loaded("cmode")); }
    std::string target(const char* name) const { return folder.file(std::string("project/") + name); }
};

TEST_F(CmodeTest, TellsTheDrawingAndWhereItsCopyWouldGo)
{
    setKey(User, "settings", "projectpath", folder.file("project"));
    cmode& window = open();
    EXPECT_EQ(window.windowTitle(), "Open and Copy");
    EXPECT_EQ(window.Label1->text(), QString::fromStdString("Open: " + paths[0]));
    EXPECT_EQ(window.Text1->text(), QString::fromStdString(target("D1.dwg")));
    EXPECT_TRUE(window.Check5->isChecked());
    EXPECT_TRUE(window.isTopmost());
    EXPECT_FALSE(main().isVisible());
    EXPECT_EQ(main().fields.cmodeState, 0);
    EXPECT_EQ(outside->logged, std::vector<std::string>{"Open/Copy"})
        << "when it comes up, not when it opens";
}

TEST_F(CmodeTest, GrowsWiderOnly)
{
    cmode& window = open();
    const int height = window.height();
    window.resize(1400, 1000);
    EXPECT_EQ(window.size(), QSize(1400, height));
}

TEST_F(CmodeTest, HasTheCaptionsThatUsersKnow)
{
    open();
    EXPECT_EQ(text("Check5", "cmode"), "Copy Drawing to Project Folder then Open:");
    EXPECT_EQ(text("Command1", "cmode"), "&Browse...");
    EXPECT_EQ(text("Command2", "cmode"), "&Cancel");
    EXPECT_EQ(text("Command3", "cmode"), "&Open");
}

TEST_F(CmodeTest, WithoutAStoredFolderTheTextIsEmpty)
{
    EXPECT_EQ(open().Text1->text(), "");
}

TEST_F(CmodeTest, TheBoxIsStoredAndTheFieldFollowsIt)
{
    setKey(User, "Settings", "projectcopy", "0");
    cmode& window = open();
    EXPECT_FALSE(window.Check5->isChecked() || window.Command1->isEnabled() || window.Text1->isEnabled());
    window.Check5->click();
    EXPECT_TRUE(window.Command1->isEnabled() && window.Text1->isEnabled());
    EXPECT_EQ(key(User, "Settings", "projectcopy"), "1");
    window.Check5->click();
    EXPECT_FALSE(window.Command1->isEnabled() || window.Text1->isEnabled());
    EXPECT_EQ(key(User, "Settings", "projectcopy"), "0");
}

TEST_F(CmodeTest, AChoiceThatCannotBeReadIsNotWrittenOverByItsDefault)
{
    setKey(User, "Settings", "projectcopy", "0");
    open();
    bool reached = true;
    for (int number = 0; reached; ++number) {
        {
            const OneStepFails files(FileStep::Open, number);
            program->loadAnew("cmode");
            reached = files.wasReached();
        }
        ASSERT_EQ(key(User, "Settings", "projectcopy"), "0") << "opening " << number;
    }
}

TEST_F(CmodeTest, OpensTheLibrarysDrawingItselfWithoutACopy)
{
    setKey(User, "Settings", "projectcopy", "0");
    open();
    ASSERT_TRUE(click("Command3", "cmode"));
    EXPECT_EQ(host.opened, std::vector<std::string>{paths[0]});
    EXPECT_TRUE(host.typed.empty());
    EXPECT_EQ(program->loaded("cmode"), nullptr);
    EXPECT_TRUE(appears("Zelvora"));
}

TEST_F(CmodeTest, ReturnInTheTargetOpensIt)
{
    cmode& window = open();
    window.Text1->setText(QString::fromStdString(target("Own.dwg")));
    QTest::keyClick(window.Text1, Qt::Key_Return);
    EXPECT_EQ(host.opened, std::vector<std::string>{target("Own.dwg")});
}

TEST_F(CmodeTest, OpensTheCopyAndRemembersItsFolder)
{
    cmode& window = open();
    window.Text1->setText(QString::fromStdString(target("New.dwg")));
    ASSERT_TRUE(click("Command3", "cmode"));
    EXPECT_EQ(host.opened, std::vector<std::string>{target("New.dwg")});
    EXPECT_EQ(folder.read("project/New.dwg"), folder.read("drawings/D1.dwg"));
    EXPECT_EQ(key(User, "settings", "projectpath"), folder.file("project"));
}

TEST_F(CmodeTest, NoToTheQuestionOpensWhatIsThereAndRemembersNothing)
{
    folder.write("project/Old.dwg", "old");
    cmode& window = open();
    window.Text1->setText(QString::fromStdString(target("Old.dwg")));
    ASSERT_TRUE(click("Command3", "cmode"));
    EXPECT_EQ(lastMessage(), "File: " + target("Old.dwg") + " Already Exists, Would you Like to Overwrite?");
    EXPECT_EQ(messages.shown.back().title, "File Already Exists in Specified Directory");
    EXPECT_EQ(host.opened, std::vector<std::string>{target("Old.dwg")});
    EXPECT_EQ(folder.read("project/Old.dwg"), "old");
    EXPECT_EQ(key(User, "settings", "projectpath"), "(none)");
}

TEST_F(CmodeTest, AnEmptyTargetIsToldAndTheDialogComesUpOnceMoreAfterTheNextAttempt)
{
    cmode& window = open();
    ASSERT_TRUE(click("Command3", "cmode"));
    EXPECT_EQ(lastMessage(), "Copy Path Not Specfied");
    EXPECT_EQ(messages.shown.back().title, "Specify DWG Copy Path");
    EXPECT_EQ(messages.shown.back().icon, MessageIcon::Information);
    EXPECT_TRUE(window.isVisible() && window.isTopmost());
    EXPECT_EQ(main().fields.cmodeState, 1);
    window.Text1->setText(QString::fromStdString(target("New.dwg")));
    ASSERT_TRUE(click("Command3", "cmode"));
    EXPECT_EQ(host.opened.size(), 1u);
    EXPECT_TRUE(appears("cmode"));
    EXPECT_EQ(main().fields.cmodeState, 0);
    messages.yes = true;
    ASSERT_TRUE(click("Command3", "cmode"));
    EXPECT_EQ(program->loaded("cmode"), nullptr);
    EXPECT_TRUE(appears("Zelvora"));
}

TEST_F(CmodeTest, ANameThatTheSystemCannotHoldIsToldAsNotThere)
{
    cmode& window = open();
    const std::string name = target((std::string(300, 'n') + ".dwg").c_str());
    window.Text1->setText(QString::fromStdString(name));
    ASSERT_TRUE(click("Command3", "cmode"));
    EXPECT_EQ(lastMessage(), "File " + name + " does not exist.");
    EXPECT_TRUE(host.opened.empty());
    EXPECT_TRUE(appears("Zelvora"));
}

TEST_F(CmodeTest, ADrawingThatIsMissingIsToldAndTheMainWindowComesBack)
{
    setKey(User, "Settings", "projectcopy", "0");
    open();
    std::filesystem::remove(paths[0]);
    ASSERT_TRUE(click("Command3", "cmode"));
    EXPECT_EQ(lastMessage(), "File " + paths[0] + " does not exist.");
    EXPECT_EQ(messages.shown.back().icon, MessageIcon::None);
    EXPECT_TRUE(host.opened.empty());
    EXPECT_TRUE(appears("Zelvora"));
}

TEST_F(CmodeTest, CancelEscAndTheCloseBoxBringTheMainWindowBack)
{
    start();
    for (const int way : {0, 1, 2}) {
        openCmode(*program, OpenedFrom::MainWindow, paths[0]);
        program->hide("Zelvora");
        ASSERT_TRUE(appears("cmode"));
        if (way == 0)
            ASSERT_TRUE(click("Command2", "cmode"));
        else if (way == 1)
            QTest::keyClick(&dialog(), Qt::Key_Escape);
        else
            dialog().close();
        EXPECT_EQ(program->loaded("cmode"), nullptr);
        EXPECT_TRUE(appears("Zelvora")) << way;
    }
    EXPECT_TRUE(host.opened.empty());
}

// ---- called from Search

TEST_F(CmodeTest, CalledFromSearchItTakesItsDrawingAndBringsItBack)
{
    setKey(User, "settings", "projectpath", folder.file("project"));
    cmode& window = openFromSearch();
    EXPECT_EQ(window.Text1->text(), QString::fromStdString(target("D2.dwg")));
    EXPECT_EQ(main().fields.cmodeState, 7);
    ASSERT_TRUE(click("Command3", "cmode"));
    EXPECT_EQ(host.opened, std::vector<std::string>{target("D2.dwg")});
    EXPECT_EQ(folder.read("project/D2.dwg"), folder.read("drawings/D2.dwg"));
    EXPECT_TRUE(appears("Search"));
    EXPECT_TRUE(program->loaded("Search")->isTopmost());
    EXPECT_FALSE(main().isVisible());
}

TEST_F(CmodeTest, AfterAnEmptyTargetFromSearchTheOtherDialogComesUp)
{
    cmode& window = openFromSearch();
    ASSERT_TRUE(click("Command3", "cmode"));
    EXPECT_EQ(main().fields.cmodeState, 8);
    window.Text1->setText(QString::fromStdString(target("New.dwg")));
    ASSERT_TRUE(click("Command3", "cmode"));
    EXPECT_EQ(host.opened, std::vector<std::string>{target("New.dwg")});
    EXPECT_EQ(folder.read("project/New.dwg"), folder.read("drawings/D2.dwg"));
    EXPECT_EQ(main().fields.cmodeState, 7);
    EXPECT_EQ(program->loaded("cmode"), nullptr);
    ASSERT_TRUE(appears("Xattach"));
    EXPECT_TRUE(program->loaded("Xattach")->isTopmost());
    EXPECT_FALSE(main().isVisible());
    ASSERT_TRUE(click("Command2", "Xattach"));
    EXPECT_TRUE(appears("Search"));
    EXPECT_FALSE(main().isVisible());
}

TEST_F(CmodeTest, AfterNoToTheQuestionItStillOpensTheDrawingThatItShows)
{
    setKey(User, "Settings", "projectcopy", "0");
    startSearch();
    main().fields.selectedDrawing = paths[0];
    openCmode(*program, OpenedFrom::Search, paths[1]);
    host.running = false;
    ASSERT_TRUE(click("Command3", "cmode"));
    ASSERT_TRUE(appears("cmode"));
    host.running = true;
    ASSERT_TRUE(click("Command3", "cmode"));
    EXPECT_EQ(host.opened, std::vector<std::string>{paths[1]});
}

} // namespace
} // namespace zv
