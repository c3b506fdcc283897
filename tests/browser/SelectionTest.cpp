#include "controls/DwgThumbnail.h"
#include "controls/PathList.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "support/OfficeFixture.h"

#include <QApplication>
#include <QPlainTextEdit>
#include <QRadioButton>
#include <QTest>

#include <filesystem>

namespace zv {
namespace {

using enum ProfileFile;

class SelectionTest : public OfficeFixture {
protected:
    void office(int count)
    {
        makeDoors(count);
        start();
    }
    DwgThumbnail& cell(int number) { return *main().DwgThumbnails[std::size_t(number)]; }
    QString information(const std::string& path)
    {
        return QString::fromStdString(
            "Drawing Name: " + path + "\n\nAbout " +
            std::string(fileNamePart(path).substr(0, fileNamePart(path).size() - 4)));
    }
};

TEST_F(SelectionTest, NothingIsSelectedAtFirst)
{
    office(3);
    EXPECT_EQ(main().fields.selectedDrawing, "");
    EXPECT_EQ(main().List1->currentRow(), -1);
    EXPECT_TRUE(enabled("Command12")) << "its message can be met before any selection";
}

TEST_F(SelectionTest, AClickMarksTheCellAndShowsTheDrawing)
{
    office(5);
    ASSERT_TRUE(click("DwgThumbnail4"));
    EXPECT_EQ(main().fields.panels.FocusCell, 4);
    EXPECT_EQ(main().fields.selectedDrawing, drawings(5)[3]);
    EXPECT_EQ(main().List1->currentRow(), 3);
    EXPECT_EQ(text("Text1"), information(drawings(5)[3]));
    for (int number = 1; number <= 20; ++number) {
        EXPECT_EQ(cell(number).backColor(), number == 4 ? 0xFFFFFF : 0);
        EXPECT_EQ(cell(number).bitmapBackColor(), number == 4 ? 0xFFFFFF : 0);
    }
    ASSERT_TRUE(click("DwgThumbnail1"));
    EXPECT_EQ(main().fields.selectedDrawing, drawings(5)[0]);
    EXPECT_EQ(cell(4).backColor(), 0);
    EXPECT_EQ(cell(1).backColor(), 0xFFFFFF);
}

TEST_F(SelectionTest, EveryCellOfEveryPanelSelectsItsOwnLine)
{
    office(45);
    for (int panel = 1; panel <= 3; ++panel) {
        for (int number = 1; number <= 20 && (panel - 1) * 20 + number <= 45; number += 3) {
            const int line = (panel - 1) * 20 + number;
            ASSERT_TRUE(click(QStringLiteral("DwgThumbnail%1").arg(number)));
            EXPECT_EQ(main().fields.selectedDrawing, drawings(45)[std::size_t(line - 1)]);
            EXPECT_EQ(main().List1->currentRow(), line - 1);
            EXPECT_EQ(main().fields.panels.CurrentPage, panel);
        }
        EXPECT_TRUE(click("Command3")) << "one empty panel follows the last";
    }
}

TEST_F(SelectionTest, CellOneOfTheThirdPanelIsRightThoughTheListIsReadToItsEnd)
{
    office(45);
    click("Command3");
    click("Command3");
    ASSERT_TRUE(click("DwgThumbnail1"));
    EXPECT_EQ(main().List1->currentRow(), 40);
    EXPECT_EQ(main().fields.selectedDrawing, drawings(45)[40]);
    EXPECT_EQ(text("Text1"), information(drawings(45)[40]));
    // With its row selected already, the reading itself goes to the end.
    ASSERT_TRUE(click("DwgThumbnail1"));
    EXPECT_EQ(main().fields.selectedDrawing, drawings(45)[40]);
    EXPECT_EQ(main().fields.LinePath, drawings(45)[44]);
}

TEST_F(SelectionTest, AFailedCellSelectsTheMissingPathAndActsOnThePlaceholder)
{
    office(3);
    std::filesystem::remove(drawings(3)[1]);
    choose("Combo1", "Doors");
    ASSERT_TRUE(click("DwgThumbnail2"));
    EXPECT_EQ(main().fields.selectedDrawing, folder.file("drawings/D2.dwg"));
    EXPECT_EQ(main().fields.CellPath[2], joinPath(installation, "failed.dwg"));
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(SelectionTest, TextIsEmptyAfterARowChangeThatCannotBeReadAndStaysOnTheSameRow)
{
    office(3);
    ASSERT_TRUE(click("DwgThumbnail1"));
    std::filesystem::remove(drawings(3)[0]);
    std::filesystem::remove(folder.file("drawings/D2.dwg"));
    const QString before = text("Text1");
    EXPECT_NE(before, "");
    ASSERT_TRUE(click("DwgThumbnail1"));
    EXPECT_EQ(text("Text1"), before);
    ASSERT_TRUE(clickRow("List1", 0));
    EXPECT_EQ(text("Text1"), before);
    ASSERT_TRUE(click("DwgThumbnail2"));
    EXPECT_EQ(text("Text1"), "");
    EXPECT_EQ(main().List1->currentRow(), 1);
}

TEST_F(SelectionTest, AListThatIsGoneOrShorterSelectsNothing)
{
    office(5);
    ASSERT_TRUE(click("DwgThumbnail1"));
    makeLibrary("Doors", {});
    ASSERT_TRUE(click("DwgThumbnail3"));
    EXPECT_EQ(main().fields.selectedDrawing, drawings(1)[0]);
    EXPECT_EQ(main().List1->currentRow(), 0);
    const QString before = text("Text1");
    makeLibrary("Doors", drawings(2));
    ASSERT_TRUE(click("DwgThumbnail3"));
    EXPECT_EQ(main().fields.selectedDrawing, drawings(1)[0]);
    EXPECT_EQ(main().List1->currentRow(), 0);
    EXPECT_EQ(text("Text1"), before);
    std::filesystem::remove(listPath("Doors"));
    ASSERT_TRUE(click("DwgThumbnail3"));
    EXPECT_EQ(main().fields.selectedDrawing, drawings(1)[0]);
    EXPECT_EQ(endedWith, -1);
}

TEST_F(SelectionTest, ADrawingThatWasAddedSinceTheLabelsWereListedIsSelectedWithoutARow)
{
    office(21);
    ASSERT_TRUE(click("DwgThumbnail3"));
    makeDoors(25);
    ASSERT_TRUE(click("Command3"));
    ASSERT_EQ(visibleCells(), 5);
    ASSERT_TRUE(click("DwgThumbnail4"));
    EXPECT_EQ(main().fields.selectedDrawing, drawings(25)[23]);
    EXPECT_EQ(text("Text1"), information(drawings(25)[23]));
    EXPECT_EQ(cell(4).backColor(), 0xFFFFFF);
    EXPECT_EQ(main().List1->currentRow(), -1) << "the label of another drawing must not look chosen";
    EXPECT_TRUE(main().List1->selectedItems().isEmpty());
}

TEST_F(SelectionTest, TheSelectionOutlivesPagesAndLibraries)
{
    office(25);
    makeLibrary("Other", drawings(1));
    setKey(Master, "Library", "libnum", "2");
    setKey(Master, "Library", "lib2", "Other");
    program->loadAnew("Zelvora");
    ASSERT_TRUE(appears("Zelvora"));
    ASSERT_TRUE(click("DwgThumbnail5"));
    ASSERT_TRUE(click("Command3"));
    EXPECT_EQ(main().fields.selectedDrawing, drawings(5)[4]);
    ASSERT_TRUE(choose("Combo1", "Other"));
    EXPECT_EQ(main().fields.selectedDrawing, drawings(5)[4]);
}

TEST_F(SelectionTest, FocusSetsTheStretchModeAndLeavingTheListResetsAll)
{
    office(3);
    cell(2).setFocus();
    EXPECT_EQ(cell(2).stretchBltMode(), 1);
    cell(3).setFocus();
    EXPECT_EQ(cell(2).stretchBltMode(), 1) << "losing the focus changes nothing";
    EXPECT_FALSE(cell(2).hasFocusRect());
    EXPECT_TRUE(cell(3).hasFocusRect());
    control("List1")->setFocus();
    EXPECT_TRUE(cell(3).hasFocusRect()) << "also while the list has the focus";
    control("Text1")->setFocus();
    for (int number = 1; number <= 20; ++number)
        EXPECT_EQ(cell(number).stretchBltMode(), 2);
}

TEST_F(SelectionTest, SpaceSelectsAndEnterActs)
{
    office(3);
    main().Option4->setChecked(true);
    cell(2).setFocus();
    QTest::keyClick(&cell(2), Qt::Key_Space);
    EXPECT_EQ(main().fields.selectedDrawing, drawings(3)[1]);
    EXPECT_TRUE(messages.shown.empty());
    cell(3).setFocus();
    QTest::keyClick(&cell(3), Qt::Key_Return);
    EXPECT_EQ(lastMessage(), "Added: " + drawings(3)[2] + "\r\nto the Drawing  Queue");
}

TEST_F(SelectionTest, ArrowKeysMoveTheFocusAmongTheVisibleCells)
{
    office(8);
    const auto after = [this](int from, Qt::Key key) {
        cell(from).setFocus();
        QTest::keyClick(&cell(from), key);
        return QApplication::focusWidget()->objectName();
    };
    EXPECT_EQ(after(2, Qt::Key_Right), "DwgThumbnail3");
    EXPECT_EQ(after(2, Qt::Key_Left), "DwgThumbnail1");
    EXPECT_EQ(after(2, Qt::Key_Down), "DwgThumbnail7");
    EXPECT_EQ(after(7, Qt::Key_Up), "DwgThumbnail2");
    for (const auto& [edge, key] : {std::pair(5, Qt::Key_Right), std::pair(6, Qt::Key_Left),
                                    std::pair(8, Qt::Key_Right), std::pair(4, Qt::Key_Down)})
        EXPECT_EQ(after(edge, key), cell(edge).objectName());
    EXPECT_TRUE(main().fields.selectedDrawing.empty());
}

TEST_F(SelectionTest, ADoubleClickInTheListActsOnOneOfTheFirstThreeCellsOnly)
{
    office(5);
    main().Option4->setChecked(true);
    const auto doubleClickRow = [this](int row) {
        clickRow("List1", row);
        const QRect place = main().List1->visualItemRect(main().List1->item(row));
        QTest::mouseDClick(main().List1->viewport(), Qt::LeftButton, {},
                           {place.left() + 2, place.center().y()});
    };
    doubleClickRow(3);
    EXPECT_TRUE(messages.shown.empty());
    doubleClickRow(2);
    EXPECT_EQ(lastMessage(), "Added: " + drawings(3)[2] + "\r\nto the Drawing  Queue");
    doubleClickRow(0);
    EXPECT_EQ(lastMessage(), "Added: " + drawings(1)[0] + "\r\nto the Drawing Queue");
}

TEST_F(SelectionTest, AfterATurnPastTheEndACellStandsForTheLineThatItShows)
{
    makeDoors(45);
    start();
    ASSERT_TRUE(clickRow("List1", 41));
    ASSERT_TRUE(click("Command3"));
    ASSERT_EQ(visibleCells(), 0);
    ASSERT_TRUE(click("Command2"));
    ASSERT_EQ(text("Frame4"), "DOORS   Page 2 of 3");
    ASSERT_EQ(visibleCells(), 5) << "the lines from 41 on";
    ASSERT_TRUE(click("DwgThumbnail4"));
    EXPECT_EQ(main().fields.selectedDrawing, drawings(45)[43]);
    EXPECT_EQ(main().List1->currentRow(), 43);
}

TEST_F(SelectionTest, AHiddenCellActsOnNothing)
{
    makeDoors(22);
    start();
    ASSERT_TRUE(click("DwgThumbnail3"));
    ASSERT_TRUE(click("Command3"));
    ASSERT_EQ(visibleCells(), 2);
    ASSERT_TRUE(main().DwgThumbnails[3]->hasFocusRect());
    Q_EMIT main().List1->doubleClickedInList();
    EXPECT_TRUE(messages.shown.empty()) << "no question for a host";
    EXPECT_TRUE(outside->logged.empty());
}

TEST_F(SelectionTest, AnActivationThatArrivesWhileTheWindowIsHiddenLeavesTheFocusOnTheCell)
{
    makeDoors(5);
    start();
    ASSERT_TRUE(click("DwgThumbnail2"));
    main().DwgThumbnails[2]->setFocus();
    program->hide("Zelvora");
    QApplication::setActiveWindow(nullptr);
    QApplication::setActiveWindow(&main());
    program->show("Zelvora");
    EXPECT_EQ(main().focusWidget(), main().DwgThumbnails[2]);
}

} // namespace
} // namespace zv
