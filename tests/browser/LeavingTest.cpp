#include "browser/BrowserWindows.h"
#include "browser/frmSplash.h"
#include "controls/PictureButton.h"
#include "controls/SortedCombo.h"
#include "platform/System.h"
#include "support/OfficeFixture.h"

#include <QApplication>
#include <QLabel>
#include <QRadioButton>
#include <QTest>

namespace zv {
namespace {

using enum ProfileFile;

/// A dialog that stands in for one of the program's own.
class OtherWindow final : public Window {
public:
    OtherWindow(Program& program, const QString& name) : Window(program, name, name) {}
};

class LeavingTest : public OfficeFixture {
protected:
    LeavingTest()
    {
        setKey(User, "Settings", "AOT", "0");
        setKey(User, "Settings", "RibSet", "2");
        makeCatalogue({"Doors"});
    }
    void know(const QString& name)
    {
        program->add(name, [this, name] { return new OtherWindow(*program, name); });
    }
};

TEST_F(LeavingTest, TheEditorReplacesTheMainWindow)
{
    know("Newlib");
    setKey(User, "LibLoad", "del", "1");
    start();
    setKey(User, "LibLoad", "del", "1");
    ASSERT_TRUE(click("Command1"));
    EXPECT_EQ(key(User, "LibLoad", "del"), "0");
    EXPECT_EQ(program->loaded("Zelvora"), nullptr);
    ASSERT_TRUE(appears("Newlib"));
    EXPECT_EQ(endedWith, -1);
    program->show("Zelvora");
    program->unload("Newlib");
    EXPECT_TRUE(appears("Zelvora"));
    EXPECT_EQ(endedWith, -1);
}

TEST_F(LeavingTest, ReturningFromTheEditorStandsWhereTheWindowStood)
{
    know("Newlib");
    start().setGeometry(60, 45, 450, 420);
    const QRect stood = main().frameGeometry();
    ASSERT_TRUE(click("Command1"));
    program->show("Zelvora");
    ASSERT_TRUE(appears("Zelvora"));
    EXPECT_EQ(main().frameGeometry(), stood);
}

TEST_F(LeavingTest, AWindowThatComesBackAtOnceTakesTheKeysWhereItHadThem)
{
    start();
    control("Combo1")->setFocus();
    ASSERT_TRUE(waitUntil([this] { return control("Combo1")->hasFocus(); }));
    program->hide("Zelvora");
    program->show("Zelvora");
    EXPECT_TRUE(waitUntil([this] { return main().isActiveWindow(); }));
    EXPECT_EQ(QApplication::focusWidget(), control("Combo1"));
}

TEST_F(LeavingTest, DialogsHideTheMainWindow)
{
    const std::pair<const char*, const char*> cases[] = {
        {"Command8", "MyLib"}, {"Command9", "Options"}, {"Command7", "PrintLib"}, {"Command5", "PrintLib"}};
    start();
    for (const auto& [button, window] : cases) {
        know(window);
        ASSERT_TRUE(click(button)) << button;
        EXPECT_FALSE(main().isVisible());
        EXPECT_TRUE(appears(window));
        program->unload(window);
        program->show("Zelvora");
        ASSERT_TRUE(appears("Zelvora"));
    }
    know("PrintLib");
    ASSERT_TRUE(click("Picture5"));
    ASSERT_TRUE(click("Command18"));
    EXPECT_TRUE(appears("PrintLib"));
}

TEST_F(LeavingTest, AWindowThatCannotBeOpenedLeavesTheMainWindowAsItWas)
{
    // A program that knows no other window.
    program = std::make_unique<RunningProgram>(Folders{installation, user}, messages);
    program->setActionServices(*outside->services);
    addBrowserWindows(*program);
    start();
    for (const char* button : {"Command1", "Command8", "Command9", "Command7", "Command5", "Command4"}) {
        ASSERT_TRUE(click(button)) << button;
        ASSERT_NE(program->loaded("Zelvora"), nullptr);
        EXPECT_TRUE(main().isVisible() && main().isEnabled()) << button;
    }
}

TEST_F(LeavingTest, SearchStaysBesideAndIsToldWhatTheBoxHolds)
{
    know("Search");
    start();
    main().Combo1->setShownText(QString::fromStdString(program->values().LoginName.substr(0, 1)).toUpper());
    ASSERT_TRUE(click("Command4"));
    EXPECT_TRUE(main().isVisible());
    EXPECT_TRUE(appears("Search"));
    EXPECT_EQ(main().fields.searchLibrary, text("Combo1").toStdString());
    main().Combo1->setShownText("no part of any login name");
    ASSERT_TRUE(click("Command4"));
    EXPECT_NE(main().fields.searchLibrary, text("Combo1").toStdString());
}

TEST_F(LeavingTest, TheQueueOpensInQueueModeOnly)
{
    know("Cart");
    start();
    main().Command24->show();
    ASSERT_TRUE(click("Command24"));
    EXPECT_EQ(program->loaded("Cart"), nullptr);
    ASSERT_TRUE(click("Option4"));
    ASSERT_TRUE(click("Command24"));
    EXPECT_TRUE(appears("Cart"));
    EXPECT_FALSE(main().isEnabled());
    EXPECT_EQ(main().fields.cartFromButton, 1);
    EXPECT_TRUE(program->loaded("Cart")->isTopmost());
    main().close();
    EXPECT_NE(program->loaded("Zelvora"), nullptr) << "out of reach, its close box as well";
}

TEST_F(LeavingTest, LoadingUnloadsPrintAndSearch)
{
    know("PrintLib");
    know("Search");
    start();
    program->load("PrintLib");
    program->load("Search");
    program->loadAnew("Zelvora");
    EXPECT_EQ(program->loaded("PrintLib"), nullptr);
    EXPECT_EQ(program->loaded("Search"), nullptr);
}

TEST_F(LeavingTest, UnloadingTakesPrintLibAlong)
{
    know("PrintLib");
    start();
    program->load("PrintLib");
    program->unload("Zelvora");
    EXPECT_EQ(program->loaded("PrintLib"), nullptr);
    EXPECT_EQ(endedWith, 0);
}

TEST_F(LeavingTest, TheAboutBoxTellsTheVersionAndAnyClickBringsTheMainWindowBackAnew)
{
    QCoreApplication::setApplicationName("Zelvora");
    QCoreApplication::setApplicationVersion("1.2.3");
    start();
    for (const char* what : {"", "Frame1", "lblVersion", "Command11"}) {
        Window* before = program->loaded("Zelvora");
        QTest::mouseDClick(main().Picture11, Qt::LeftButton);
        ASSERT_TRUE(appears("frmSplash"));
        EXPECT_FALSE(before->isVisible());
        EXPECT_EQ(text("lblVersion", "frmSplash"), "Version 1.2.3");
        EXPECT_EQ(text("lblProductName", "frmSplash"), "Zelvora");
        if (*what)
            ASSERT_TRUE(click(what, "frmSplash"));
        else
            program->loaded("frmSplash")->close();
        EXPECT_EQ(program->loaded("frmSplash"), nullptr);
        ASSERT_TRUE(appears("Zelvora"));
        EXPECT_EQ(endedWith, -1);
    }
}

TEST_F(LeavingTest, TabsShowTheirPageAndAreRemembered)
{
    start();
    ASSERT_TRUE(click("Picture5"));
    EXPECT_TRUE(visible("Picture3"));
    EXPECT_FALSE(visible("Picture14"));
    EXPECT_EQ(key(User, "Settings", "RibSet"), "0");
    QTest::keyClick(main().Picture9, Qt::Key_Space);
    EXPECT_TRUE(visible("Picture14"));
    EXPECT_EQ(key(User, "Settings", "RibSet"), "2");
    EXPECT_EQ(main().fields.RibbonTab, 2);
}

} // namespace
} // namespace zv
