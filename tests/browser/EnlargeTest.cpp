#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/PathList.h"
#include "controls/PictureButton.h"
#include "support/OfficeFixture.h"

#include <QCheckBox>
#include <filesystem>

namespace zv {
namespace {

using enum ProfileFile;

class EnlargeTest : public OfficeFixture {
protected:
    void office(int count)
    {
        makeDoors(count);
        start();
    }
    void enlarge(int cell)
    {
        ASSERT_TRUE(click(QStringLiteral("DwgThumbnail%1").arg(cell)));
        ASSERT_TRUE(click("Command12"));
    }
    std::string viewed() { return main().DwgViewX1->dwgFileName().toStdString(); }
    int row() { return main().List1->currentRow(); }
};

TEST_F(EnlargeTest, WithoutSelectionTheMessageAndNothingElse)
{
    office(3);
    ASSERT_TRUE(click("Command12"));
    EXPECT_EQ(lastMessage(), "Please Select a Drawing file before running Enlarge Mode");
    EXPECT_EQ(messages.shown[0].title, "Drawing File Not Selected");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Information);
    EXPECT_EQ(main().fields.panels.EnlargeMode, 0);
    EXPECT_FALSE(visible("Frame8"));
}

TEST_F(EnlargeTest, TogglesTheViewerAndTheToolTip)
{
    office(3);
    EXPECT_EQ(main().Command12->toolTip(), "View Enlarge Mode");
    enlarge(2);
    EXPECT_TRUE(visible("Frame8"));
    EXPECT_TRUE(visible("DwgViewX1"));
    EXPECT_EQ(viewed(), drawings(2)[1]);
    EXPECT_EQ(main().Command12->toolTip(), "Return to Thumbnail View");
    EXPECT_TRUE(enabled("Command2"));
    EXPECT_TRUE(enabled("Command3"));
    ASSERT_TRUE(click("Command12"));
    EXPECT_FALSE(visible("Frame8"));
    EXPECT_EQ(main().fields.panels.EnlargeMode, 0);
    EXPECT_EQ(main().Command12->toolTip(), "Enlarge Selected Drawing");
}

TEST_F(EnlargeTest, TabPassesOverTheCellsThatTheViewerCovers)
{
    office(3);
    const auto reached = [this](int cell) {
        return bool(main().DwgThumbnails[cell]->focusPolicy() & Qt::TabFocus);
    };
    enlarge(2);
    EXPECT_FALSE(reached(1));
    EXPECT_FALSE(reached(2));
    ASSERT_TRUE(click("Command12"));
    EXPECT_TRUE(reached(1));
    EXPECT_TRUE(reached(2));
}

TEST_F(EnlargeTest, ARefusedDrawingReturnsToThePanels)
{
    office(3);
    ASSERT_TRUE(click("DwgThumbnail1"));
    std::filesystem::remove(drawings(1)[0]);
    ASSERT_TRUE(click("Command12"));
    EXPECT_EQ(lastMessage(), "Drawing Failed to Load: " + folder.file("drawings/D1.dwg") +
                                 "\r\nVerify the drawing exists or Run Recover.");
    EXPECT_EQ(messages.shown[0].title, "Error Loading Drawing File");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Critical);
    EXPECT_FALSE(visible("Frame8"));
    EXPECT_EQ(main().fields.panels.EnlargeMode, 0);
    for (const char* name : {"Command2", "Command3", "Command12"})
        EXPECT_TRUE(enabled(name)) << name;
    EXPECT_EQ(main().Command12->toolTip(), "View Enlarge Mode") << "as it was";
}

TEST_F(EnlargeTest, NextStepsFromDrawingToDrawing)
{
    office(45);
    enlarge(2);
    for (int line = 3; line <= 22; ++line) {
        ASSERT_TRUE(click("Command3"));
        EXPECT_EQ(row(), line - 1);
        EXPECT_EQ(viewed(), drawings(45)[std::size_t(line - 1)]);
    }
    EXPECT_EQ(main().fields.panels.CurrentPage, 2) << "the panel underneath is turned as well";
    EXPECT_EQ(main().fields.panels.FocusCell, 2);
    EXPECT_TRUE(visible("Frame8"));
}

TEST_F(EnlargeTest, NextStopsAtTheLastDrawing)
{
    office(4);
    enlarge(2);
    ASSERT_TRUE(click("Command3"));
    EXPECT_TRUE(enabled("Command3"));
    ASSERT_TRUE(click("Command3"));
    EXPECT_EQ(row(), 3);
    EXPECT_FALSE(enabled("Command3"));
    EXPECT_TRUE(enabled("Command2"));
}

TEST_F(EnlargeTest, NextFromTheFirstRowOfTwoMissesTheLastLine)
{
    office(2);
    enlarge(1);
    ASSERT_TRUE(click("Command3"));
    EXPECT_EQ(row(), 0) << "the count starts one lower on the first row";
    EXPECT_EQ(main().fields.panels.FocusCell, 2);
}

TEST_F(EnlargeTest, PreviousChangesNothingAtFirstAndThenMovesForward)
{
    office(10);
    enlarge(5);
    ASSERT_TRUE(click("Command2"));
    EXPECT_EQ(row(), 4);
    EXPECT_EQ(main().fields.panels.FocusCell, 6);
    ASSERT_TRUE(click("Command2"));
    EXPECT_EQ(row(), 5);
    EXPECT_EQ(main().fields.panels.FocusCell, 6) << "set afresh by the selection";
    EXPECT_EQ(viewed(), drawings(10)[5]);
}

TEST_F(EnlargeTest, AStepOntoALineWithoutARowKeepsTheSelection)
{
    office(10);
    enlarge(10);
    makeDoors(15);
    ASSERT_TRUE(click("Command2"));
    ASSERT_TRUE(click("Command2"));
    EXPECT_EQ(row(), 9) << "the labels were listed before the line was added";
    EXPECT_EQ(viewed(), drawings(10)[9]);
}

TEST_F(EnlargeTest, SelectionsReloadTheViewerAndTheListGivesItTheFocus)
{
    office(25);
    enlarge(1);
    ASSERT_TRUE(clickRow("List1", 22));
    EXPECT_EQ(viewed(), drawings(25)[22]);
    EXPECT_EQ(main().fields.panels.CurrentPage, 2);
    EXPECT_EQ(main().fields.ViewerBusy, 0);
    EXPECT_TRUE(control("DwgViewX1")->hasFocus());
    ASSERT_TRUE(click("Command12"));
    EXPECT_EQ(visibleCells(), 5) << "the panels are right on return";
}

TEST_F(EnlargeTest, LoadingAnewIsThumbnailMode)
{
    office(3);
    enlarge(1);
    program->loadAnew("Zelvora");
    ASSERT_TRUE(appears("Zelvora"));
    EXPECT_FALSE(visible("Frame8"));
    EXPECT_EQ(main().fields.panels.EnlargeMode, 0);
}

TEST_F(EnlargeTest, ViewerCommandsReachTheViewer)
{
    office(3);
    enlarge(1);
    DwgViewX& viewer = *main().DwgViewX1;
    const double before = viewer.unitsPerPixel();
    ASSERT_TRUE(click("Command16"));
    EXPECT_LE(viewer.unitsPerPixel(), before);
    ASSERT_TRUE(click("Command22"));
    ASSERT_TRUE(click("Command15"));
    EXPECT_EQ(viewer.mode(), DwgViewX::Mode::ZoomWindow);
    ASSERT_TRUE(click("Command13"));
    EXPECT_EQ(viewer.mode(), DwgViewX::Mode::Pan);
    ASSERT_TRUE(click("Command21"));
    EXPECT_DOUBLE_EQ(viewer.unitsPerPixel(), before);
}

TEST_F(EnlargeTest, APrintIsMadeOffTheTop)
{
    office(3);
    enlarge(1);
    main().Check2->setChecked(true);
    bool topmost = true;
    main().DwgViewX1->setPrinterChooser([&](QPrinter&, QWidget*) {
        topmost = main().isTopmost();
        return false;
    });
    ASSERT_TRUE(click("Command10"));
    EXPECT_FALSE(topmost);
    EXPECT_TRUE(main().isTopmost());
}

TEST_F(EnlargeTest, AStepInAListThatIsGoneShowsNothing)
{
    office(5);
    enlarge(2);
    std::filesystem::remove(listPath("Doors"));
    ASSERT_TRUE(click("Command3"));
    ASSERT_TRUE(click("Command2"));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(endedWith, -1);
    EXPECT_EQ(row(), 1);
}

TEST_F(EnlargeTest, AStepInALibraryWhoseFileIsMissingShowsNothing)
{
    makeCatalogue({"Doors", "Gone"});
    office(5);
    makeCatalogue({"Doors", "Gone"});
    program->loadAnew("Zelvora");
    ASSERT_TRUE(appears("Zelvora"));
    ASSERT_TRUE(click("DwgThumbnail2"));
    ASSERT_TRUE(choose("Combo1", "Gone"));
    messages.shown.clear();
    ASSERT_TRUE(click("Command12"));
    ASSERT_TRUE(click("Command3"));
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(endedWith, -1);
}

TEST_F(EnlargeTest, ADrawingWhosePropertiesCannotBeReadEmptiesTheViewer)
{
    office(5);
    enlarge(2);
    std::filesystem::remove(drawings(5)[2]);
    ASSERT_TRUE(click("Command3"));
    EXPECT_EQ(row(), 2);
    EXPECT_EQ(main().fields.selectedDrawing, folder.file("drawings/D3.dwg"));
    EXPECT_FALSE(main().DwgViewX1->hasDrawing());
    EXPECT_EQ(viewed(), "");
}

TEST_F(EnlargeTest, CellsWithoutALineAreHiddenAndActOnNothing)
{
    office(23);
    ASSERT_TRUE(click("Command3"));
    ASSERT_TRUE(click("DwgThumbnail3"));
    ASSERT_TRUE(click("Command12"));
    ASSERT_TRUE(click("Command2"));
    ASSERT_FALSE(main().DwgThumbnails[9]->isHidden()) << "a step back shows every cell";
    const auto before = outside->logged.size();
    Q_EMIT main().DwgThumbnails[9]->doubleClicked();
    EXPECT_EQ(outside->logged.size(), before);
    EXPECT_TRUE(messages.shown.empty());
    ASSERT_TRUE(click("Command12"));
    EXPECT_EQ(visibleCells(), 3);
}

} // namespace
} // namespace zv
