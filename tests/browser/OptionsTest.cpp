#include "controls/PictureButton.h"
#include "platform/Files.h"
#include "support/OfficeFixture.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QRadioButton>
#include <QTest>

namespace zv {
namespace {

using enum ProfileFile;

class OptionsTest : public OfficeFixture {
protected:
    OptionsTest()
    {
        makeDoors(3);
        setKey(User, "Settings", "AutoScale", "0");
        start();
    }
    QString queue() { return QString::fromStdString(readFile(userFile(".crt")).valueOr("(none)")); }
    QColor scaleGround() { return main().x->palette().color(QPalette::Base); }
};

TEST_F(OptionsTest, EachOptionSetsTheControlsAroundIt)
{
    const struct {
        const char *option, *key, *caption, *tip;
        bool block;
    } cases[] = {{"Option1", "0", "&Insert", "Insert as Block", true},
                 {"Option2", "1", "&Xref", "Insert Drawing as Xref", false},
                 {"Option3", "2", "&Open", "Open Selected File or Copy File then Open", false},
                 {"Option4", "3", "&Add", "Add to Drawing Queue", false}};
    for (const auto& expected : cases) {
        ASSERT_TRUE(click(expected.option));
        EXPECT_EQ(key(User, "Settings", "insertmode"), expected.key);
        EXPECT_EQ(text("Command11"), expected.caption);
        EXPECT_EQ(main().Command11->toolTip(), expected.tip);
        for (const char* name : {"Option1", "Option2", "Option3", "Option4"})
            EXPECT_EQ(control(name)->font().bold(), std::string(name) == expected.option);
        for (const char* name : {"Check1", "Label1", "Check4", "x"})
            EXPECT_EQ(enabled(name), expected.block) << name;
        const bool queueing = std::string(expected.option) == "Option4";
        EXPECT_EQ(visible("Command24"), queueing);
        EXPECT_EQ(main().fields.queueMode, queueing ? 1 : 0);
    }
    ASSERT_TRUE(click("Option1"));
    EXPECT_EQ(scaleGround(), QColor(0xFE, 0xFC, 0xF0)) << "a pale cream";
}

TEST_F(OptionsTest, AutoScaleDisablesTheScale)
{
    ASSERT_TRUE(click("Option1"));
    ASSERT_TRUE(click("Check1"));
    EXPECT_EQ(key(User, "Settings", "AutoScale"), "1");
    EXPECT_FALSE(enabled("x"));
    EXPECT_FALSE(enabled("Label1"));
    EXPECT_EQ(scaleGround(), main().palette().color(QPalette::Button));
    ASSERT_TRUE(click("Option2"));
    ASSERT_TRUE(click("Option1"));
    EXPECT_FALSE(enabled("x")) << "AutoScale is still on";
    EXPECT_FALSE(enabled("Label1"));
    ASSERT_TRUE(click("Check1"));
    EXPECT_EQ(key(User, "Settings", "AutoScale"), "0");
    EXPECT_TRUE(enabled("x"));
    EXPECT_EQ(scaleGround(), QColor(0xFE, 0xFC, 0xF0));
}

TEST_F(OptionsTest, TheOneShotLockDisablesTheScaleOnce)
{
    ASSERT_TRUE(click("Option2"));
    main().fields.OneShotScaleLock = 1;
    ASSERT_TRUE(click("Option1"));
    EXPECT_FALSE(enabled("x"));
    EXPECT_EQ(main().fields.OneShotScaleLock, 0);
    ASSERT_TRUE(click("Option2"));
    ASSERT_TRUE(click("Option1"));
    EXPECT_TRUE(enabled("x"));
}

TEST_F(OptionsTest, TheOneShotLockAlsoTakesAClickOnTheOptionThatIsSet)
{
    ASSERT_TRUE(click("Option1"));
    main().fields.OneShotScaleLock = 1;
    ASSERT_TRUE(enabled("x"));
    ASSERT_TRUE(click("Option1"));
    EXPECT_FALSE(enabled("x"));
    EXPECT_EQ(main().fields.OneShotScaleLock, 0);
    ASSERT_TRUE(click("Option2"));
    ASSERT_TRUE(click("Option1"));
    EXPECT_TRUE(enabled("x"));
}

TEST_F(OptionsTest, TheScaleIsStoredWithoutTheKeyJustPressed)
{
    ASSERT_TRUE(click("Option1"));
    main().x->clear();
    type("x", "2");
    EXPECT_EQ(key(User, "Settings", "XYZ"), "");
    type("x", "x");
    EXPECT_EQ(key(User, "Settings", "XYZ"), "2");
    type("x", "7");
    EXPECT_EQ(key(User, "Settings", "XYZ"), "2x") << "nobody asks whether it is a number";
}

TEST_F(OptionsTest, ExplodeIsStored)
{
    ASSERT_TRUE(click("Option1"));
    ASSERT_TRUE(click("Check4"));
    EXPECT_EQ(key(User, "Settings", "XPmode"), "1");
    ASSERT_TRUE(click("Check4"));
    EXPECT_EQ(key(User, "Settings", "XPmode"), "0");
}

TEST_F(OptionsTest, TheAreaRoundCheck2TogglesIt)
{
    ASSERT_FALSE(main().isTopmost());
    QTest::mouseClick(main().Picture13, Qt::LeftButton, {}, {1, 1});
    EXPECT_TRUE(main().isTopmost());
    EXPECT_EQ(key(User, "Settings", "AOT"), "1");
    ASSERT_TRUE(click("Check2"));
    EXPECT_FALSE(main().isTopmost());
    EXPECT_EQ(key(User, "Settings", "AOT"), "0");
}

TEST_F(OptionsTest, StayingOnTopKeepsPlaceAndVisibility)
{
    main().setGeometry(50, 60, 500, 400);
    main().setTopmost(true);
    EXPECT_TRUE(main().isVisible());
    EXPECT_TRUE(main().windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    main().setTopmost(false);
    EXPECT_FALSE(main().windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    EXPECT_EQ(main().geometry(), QRect(50, 60, 500, 400));
}

TEST_F(OptionsTest, AnEmptyPanelOfTheStatusBarTellsThatTheHostIsWaitedFor)
{
    EXPECT_EQ(text("StatusBar1Panel1"), "");
    mainWindow(*program)->tellWaiting(true);
    EXPECT_EQ(text("StatusBar1Panel1"), "Waiting for AutoCAD");
    mainWindow(*program)->tellWaiting(false);
    EXPECT_EQ(text("StatusBar1Panel1"), "");
}

TEST_F(OptionsTest, QueueModeAddsWithoutAnyHost)
{
    ASSERT_TRUE(click("Option4"));
    ASSERT_TRUE(click("DwgThumbnail2"));
    ASSERT_TRUE(click("Command11"));
    ASSERT_TRUE(click("Command11"));
    const std::string path = drawings(2)[1];
    EXPECT_EQ(lastMessage(), "Added: " + path + "\r\nto the Drawing Queue");
    EXPECT_EQ(messages.shown[0].title, "File Added to Queue");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Information);
    EXPECT_EQ(queue().toStdString(), path + "\r\n" + path + "\r\n");
    EXPECT_TRUE(outside->logged.empty());
    EXPECT_TRUE(main().isVisible());
}

TEST_F(OptionsTest, TheQueueRefusesWhenNothingIsSelected)
{
    ASSERT_TRUE(click("Option4"));
    main().fields.cartFromButton = 1;
    ASSERT_TRUE(click("Command11"));
    EXPECT_EQ(lastMessage(), "No Files Selected for the Drawing Queue");
    EXPECT_EQ(messages.shown[0].title, "Please Select a File to add to Drawing Queue!");
    EXPECT_EQ(queue(), "(none)");
    EXPECT_EQ(main().fields.cartFromButton, 0);
    main().fields.selectedDrawing = "x";
    ASSERT_TRUE(click("Command11"));
    EXPECT_EQ(lastMessage(), "No Files Selected for the Drawing Queue") << "one character is none";
}

TEST_F(OptionsTest, DoubleClicksQueueInTheirOwnWords)
{
    ASSERT_TRUE(click("Option4"));
    ASSERT_TRUE(doubleClick("DwgThumbnail1"));
    EXPECT_EQ(lastMessage(), "Added: " + drawings(1)[0] + "\r\nto the Drawing Queue");
    ASSERT_TRUE(doubleClick("DwgThumbnail2"));
    EXPECT_EQ(lastMessage(), "Added: " + drawings(2)[1] + "\r\nto the Drawing  Queue");
}

TEST_F(OptionsTest, AQueueThatCannotBeWrittenEndsTheProgram)
{
    ASSERT_TRUE(click("Option4"));
    ASSERT_TRUE(click("DwgThumbnail1"));
    program->values().LoginName = "no/such/folder";
    ASSERT_TRUE(click("Command11"));
    EXPECT_EQ(endedWith, 1);
}

TEST_F(OptionsTest, APressRoundCheck2ThatIsLetGoOutsideTogglesNothing)
{
    QTest::mousePress(main().Picture13, Qt::LeftButton, {}, {1, 1});
    QTest::mouseRelease(main().Picture13, Qt::LeftButton, {}, {-30, 50});
    EXPECT_FALSE(main().Check2->isChecked());
}

} // namespace
} // namespace zv
