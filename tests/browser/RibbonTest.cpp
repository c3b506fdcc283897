#include "controls/CaptionFrame.h"
#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/PictureButton.h"
#include "support/OfficeFixture.h"

#include <QApplication>
#include <QMouseEvent>
#include <QRadioButton>
#include <QTest>

namespace zv {
namespace {

/// One row of what the pictures look like with the mouse over them and at rest.
struct HoverRow {
    const char* control;
    const char* over;
    const char* atRest;
};

const HoverRow kTools[] = {
    {"Command10", "B28", "B27"}, {"Command13", "B26", "B25"}, {"Command14", "B34", "B33"},
    {"Command15", "B36", "B35"}, {"Command16", "B22", "B21"}, {"Command18", "B30", "B29"},
    {"Command21", "B32", "B31"}, {"Command22", "B24", "B23"},
};

const HoverRow kOthers[] = {
    {"Command5", "A14", "A13"}, {"Picture12", "B12", "B11"}, {"Command2", "B5", "B3"},
    {"Command3", "B4", "B4"},   {"Command1", "A2", "A1"},    {"Command8", "A7", "A6"},
    {"Command9", "A9", "A8"},   {"Command4", "B9", "B10"},
};

class RibbonTest : public OfficeFixture {
protected:
    void SetUp() override
    {
        makeLibrary("Doors", drawings(25));
        makeCatalogue({"Doors"});
        setKey(ProfileFile::User, "Settings", "AOT", "0");
    }

    /// The mouse over the middle of a control, or near its corner, where a page or a frame shows its ground.
    void moveOver(const char* name, bool corner = false)
    {
        QWidget* target = qstrcmp(name, "Zelvora") == 0 ? &main() : control(QLatin1String(name));
        ASSERT_NE(target, nullptr) << name;
        const QPointF at = corner ? QPointF(1, 1) : QPointF(target->rect().center());
        QMouseEvent move(QEvent::MouseMove, at, target->mapToGlobal(at), Qt::NoButton, Qt::NoButton,
                         Qt::NoModifier);
        QApplication::sendEvent(target, &move);
    }

    std::string picture(const char* name)
    {
        return control(QLatin1String(name))->property("picture").toString().toStdString();
    }

    bool bold(const char* name) { return control(QLatin1String(name))->font().bold(); }
};

TEST_F(RibbonTest, AToolLightsUpUnderTheMouseAndAllOthersRest)
{
    start();
    for (const HoverRow& row : kTools) {
        moveOver(row.control);
        for (const HoverRow& other : kTools)
            EXPECT_EQ(picture(other.control), other.control == row.control ? other.over : other.atRest)
                << row.control << " over, " << other.control;
    }
}

TEST_F(RibbonTest, TheGroundOfTheToolsPageResetsEveryTool)
{
    start();
    for (const HoverRow& row : kTools) {
        moveOver(row.control);
        moveOver("Picture3", true);
        EXPECT_EQ(picture(row.control), row.atRest) << row.control;
    }
}

TEST_F(RibbonTest, EveryOtherRowOfTheTableLightsUpAndRestsAgain)
{
    start();
    ASSERT_TRUE(choose("Combo1", "Doors"));
    control("Command2")->setEnabled(true);
    control("Command3")->setEnabled(true);
    for (const HoverRow& row : kOthers) {
        const QWidget* page = control(QLatin1String(row.control))->parentWidget();
        EXPECT_EQ(picture(row.control), row.atRest) << row.control;
        moveOver(row.control);
        EXPECT_EQ(picture(row.control), row.over) << row.control;
        moveOver(page->objectName() == "Picture14" ? "Picture14" : "Zelvora", true);
        EXPECT_EQ(picture(row.control), row.atRest) << row.control;
    }
}

TEST_F(RibbonTest, TheActionButtonTakesThePictureOfTheMode)
{
    start();
    const struct {
        const char* option;
        const char* over;
        const char* atRest;
    } modes[] = {{"Option1", "B16", "B15"},
                 {"Option2", "B20", "B19"},
                 {"Option3", "B18", "B17"},
                 {"Option4", "B14", "B13"}};
    for (const auto& mode : modes) {
        control<QRadioButton>(QLatin1String(mode.option))->setChecked(true);
        EXPECT_EQ(picture("Command11"), mode.atRest) << mode.option;
        moveOver("Command11");
        EXPECT_EQ(picture("Command11"), mode.over) << mode.option;
        moveOver("Picture4", true);
        EXPECT_EQ(picture("Command11"), mode.atRest) << mode.option;
    }
}

TEST_F(RibbonTest, TheTabsShowWhichOfThemIsChosen)
{
    start();
    ASSERT_TRUE(click("Picture5"));
    moveOver("Picture3", true);
    EXPECT_EQ(picture("Picture5"), "A3");
    EXPECT_EQ(picture("Picture9"), "A11");
    moveOver("Picture5");
    EXPECT_EQ(picture("Picture5"), "A5");
    moveOver("Picture9");
    EXPECT_EQ(picture("Picture5"), "A3");
    EXPECT_EQ(picture("Picture9"), "A12");
    ASSERT_TRUE(click("Picture9"));
    moveOver("Picture14", true);
    EXPECT_EQ(picture("Picture5"), "A4");
    EXPECT_EQ(picture("Picture9"), "A10");
    moveOver("Picture5");
    EXPECT_EQ(picture("Picture5"), "A5");
    moveOver("Picture9");
    EXPECT_EQ(picture("Picture9"), "A12");
}

TEST_F(RibbonTest, ATabShowsItsPageAndIsRemembered)
{
    start();
    ASSERT_TRUE(click("Picture9"));
    EXPECT_FALSE(visible("Picture3"));
    EXPECT_TRUE(visible("Picture14"));
    EXPECT_EQ(key(ProfileFile::User, "Settings", "RibSet"), "2");
    EXPECT_EQ(main().fields.RibbonTab, 2);
    ASSERT_TRUE(click("Picture5"));
    EXPECT_TRUE(visible("Picture3"));
    EXPECT_FALSE(visible("Picture14"));
    EXPECT_EQ(key(ProfileFile::User, "Settings", "RibSet"), "0");
    EXPECT_EQ(main().fields.RibbonTab, 0);
}

TEST_F(RibbonTest, TheSecondTabIsShownAtStartWhenItWasShownLast)
{
    setKey(ProfileFile::User, "Settings", "RibSet", "2");
    start();
    EXPECT_FALSE(visible("Picture3"));
    EXPECT_TRUE(visible("Picture14"));
    EXPECT_EQ(picture("Picture9"), "A10");
    EXPECT_TRUE(control("Picture9")->property("chosen").toBool());
}

TEST_F(RibbonTest, AnyOtherStoredTabShowsTheFirst)
{
    setKey(ProfileFile::User, "Settings", "RibSet", "1");
    start();
    EXPECT_TRUE(visible("Picture3"));
    EXPECT_FALSE(visible("Picture14"));
    EXPECT_EQ(picture("Picture5"), "A3");
}

TEST_F(RibbonTest, TabsAreChosenWithTheKeyboard)
{
    start();
    QWidget* settings = control("Picture9");
    EXPECT_TRUE(settings->focusPolicy() & Qt::TabFocus);
    settings->setFocus();
    QTest::keyClick(settings, Qt::Key_Space);
    EXPECT_TRUE(visible("Picture14"));
    QTest::keyClick(control("Picture5"), Qt::Key_Return);
    EXPECT_TRUE(visible("Picture3"));
}

TEST_F(RibbonTest, CaptionsTurnBoldWhileTheMouseIsOverThem)
{
    start();
    ASSERT_TRUE(choose("Combo1", "Doors"));
    control("Command2")->setEnabled(true);
    control("Command3")->setEnabled(true);
    const struct {
        const char* control;
        const char* ground;
    } captions[] = {{"Command4", "Zelvora"},
                    {"Command5", "Picture14"},
                    {"Command2", "Zelvora"},
                    {"Command3", "Zelvora"},
                    {"Command11", "Picture4"}};
    for (const auto& caption : captions) {
        EXPECT_FALSE(bold(caption.control)) << caption.control;
        moveOver(caption.control);
        EXPECT_TRUE(bold(caption.control)) << caption.control;
        moveOver(caption.ground, true);
        EXPECT_FALSE(bold(caption.control)) << caption.control;
    }
}

TEST_F(RibbonTest, SearchHasAnOrangeBorderUntilTheMouseIsOverAFrame)
{
    start();
    const auto border = [this] { return control("Command4")->property("borderColor").value<QColor>(); };
    for (const char* frame : {"Frame1", "Frame2", "Frame4", "Frame8"}) {
        moveOver("Command4");
        EXPECT_EQ(border(), QColor(0xff, 0x80, 0x00)) << frame;
        moveOver(frame, true);
        EXPECT_EQ(border(), QColor(0x80, 0x80, 0x80)) << frame;
    }
}

TEST_F(RibbonTest, AMouseThatLeavesAButtonPutsItToRest)
{
    start();
    moveOver("Command13");
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(control("Command13"), &leave);
    EXPECT_EQ(picture("Command13"), "B25");
}

TEST_F(RibbonTest, ADisabledButtonStaysAtRest)
{
    start();
    control("Command3")->setEnabled(false);
    moveOver("Command3");
    EXPECT_FALSE(bold("Command3"));
}

TEST_F(RibbonTest, TheEnlargeButtonShowsWhereItLeads)
{
    start();
    ASSERT_TRUE(choose("Combo1", "Doors"));
    ASSERT_TRUE(click("DwgThumbnail1"));
    const std::string toViewer = picture("Command12");
    ASSERT_TRUE(click("Command12"));
    const std::string toPanel = picture("Command12");
    EXPECT_NE(toViewer, toPanel);
    moveOver("Picture3", true);
    EXPECT_EQ(picture("Command12"), toPanel);
    ASSERT_TRUE(click("Command12"));
    EXPECT_EQ(picture("Command12"), toViewer);
}

} // namespace
} // namespace zv
