#include "controls/CaptionFrame.h"
#include "controls/DwgThumbnail.h"
#include "controls/PathList.h"
#include "platform/Files.h"
#include "support/OfficeFixture.h"

#include <QCheckBox>
#include <QSignalSpy>
#include <QTest>

#include <filesystem>

namespace zv {
namespace {

using enum ProfileFile;

class PanelsTest : public OfficeFixture {
protected:
    void office(int count)
    {
        makeLibrary("Doors", drawings(count));
        makeCatalogue({"Doors", "Other"});
        setKey(User, "LibLoad", "LastLoad", "");
        setKey(User, "LibLoad", "del", "0");
        setKey(User, "Settings", "AOT", "0");
        start();
        ASSERT_TRUE(choose("Combo1", "Doors"));
    }
    DwgThumbnail& cell(int number) { return *main().DwgThumbnails[std::size_t(number)]; }
    std::string shownIn(int number) { return cell(number).dwgFileName().toStdString(); }
};

TEST_F(PanelsTest, TwentyLinesAreOneFullPanel)
{
    office(20);
    EXPECT_EQ(visibleCells(), 20);
    EXPECT_FALSE(enabled("Command2"));
    EXPECT_FALSE(enabled("Command3"));
    EXPECT_EQ(text("Frame4"), "DOORS   Page 1 of 1");
    EXPECT_EQ(text("StatusBar1Panel3"), "Total Files: 20");
    EXPECT_EQ(key(User, "LibLoad", "LastLoad"), "Doors");
    EXPECT_TRUE(control("Combo1")->hasFocus() ||
                control("Combo1")->isAncestorOf(QApplication::focusWidget()));
}

TEST_F(PanelsTest, TwentyOneLinesAreTwoPanelsAndTheSecondHasOneCell)
{
    office(21);
    EXPECT_EQ(text("Frame4"), "DOORS   Page 1 of 2");
    EXPECT_TRUE(enabled("Command3"));
    ASSERT_TRUE(click("Command3"));
    EXPECT_EQ(text("Frame4"), "DOORS   Page 2 of 2");
    EXPECT_EQ(visibleCells(), 1);
    EXPECT_EQ(shownIn(1), drawings(21)[20]);
    EXPECT_FALSE(enabled("Command3"));
    EXPECT_TRUE(enabled("Command2"));
    ASSERT_TRUE(click("Command2"));
    EXPECT_EQ(text("Frame4"), "DOORS   Page 1 of 2");
    EXPECT_EQ(visibleCells(), 20);
    EXPECT_EQ(shownIn(20), drawings(20)[19]);
    EXPECT_FALSE(enabled("Command2"));
    EXPECT_TRUE(enabled("Command3"));
}

TEST_F(PanelsTest, FortyLinesHaveAFullSecondPanel)
{
    office(40);
    EXPECT_EQ(text("Frame4"), "DOORS   Page 1 of 2");
    ASSERT_TRUE(click("Command3"));
    EXPECT_EQ(visibleCells(), 20);
    EXPECT_EQ(main().fields.CellPath[20], drawings(40)[39]);
    EXPECT_FALSE(enabled("Command3"));
}

TEST_F(PanelsTest, EveryCellShowsItsLineOnEveryPanel)
{
    office(45);
    for (int panel = 1; panel <= 3; ++panel) {
        for (int number = 1; number <= 20 && (panel - 1) * 20 + number <= 45; ++number)
            EXPECT_EQ(shownIn(number), drawings(45)[std::size_t((panel - 1) * 20 + number - 1)]);
        EXPECT_EQ(click("Command3"), panel < 3);
    }
    ASSERT_TRUE(click("Command2"));
    EXPECT_EQ(text("Frame4"), "DOORS   Page 2 of 3");
    EXPECT_EQ(shownIn(1), drawings(45)[20]);
}

TEST_F(PanelsTest, AnEmptyLibraryIsOneEmptyPanel)
{
    office(0);
    EXPECT_EQ(visibleCells(), 0);
    EXPECT_EQ(text("StatusBar1Panel3"), "Total Files: 0");
    EXPECT_EQ(text("Frame4"), "DOORS   Page 1 of 1");
    EXPECT_FALSE(enabled("Command3"));
}

TEST_F(PanelsTest, AMissingDrawingShowsThePlaceholderAndActsOnIt)
{
    office(3);
    std::filesystem::remove(drawings(3)[1]);
    folder.write("drawings/D3.dwg", "no drawing");
    ASSERT_TRUE(choose("Combo1", "Doors"));
    const std::string placeholder = joinPath(installation, "failed.dwg");
    EXPECT_EQ(shownIn(2), placeholder);
    EXPECT_EQ(main().fields.CellPath[2], placeholder);
    EXPECT_EQ(main().fields.CellPath[3], placeholder);
    EXPECT_NE(main().fields.CellPath[1], placeholder);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(PanelsTest, TheLastRowJumpsToTheLastPanel)
{
    office(45);
    ASSERT_TRUE(clickRow("List1", 44));
    EXPECT_EQ(text("Frame4"), "DOORS   Page 3 of 3");
    EXPECT_EQ(visibleCells(), 5);
    EXPECT_FALSE(enabled("Command3"));
    EXPECT_TRUE(enabled("Command2"));
    EXPECT_EQ(main().fields.panels.FocusCell, 5);
    EXPECT_EQ(main().fields.selectedDrawing, drawings(45)[44]);
    EXPECT_TRUE(control("List1")->hasFocus());
    EXPECT_TRUE(cell(5).hasFocusRect());
}

TEST_F(PanelsTest, RowsAtTheEdgesOfPanelsJumpToTheirOwn)
{
    office(45);
    const struct {
        int row, panel, cell;
    } cases[] = {{19, 1, 20}, {20, 2, 1}, {0, 1, 1}, {39, 2, 20}, {40, 3, 1}};
    for (const auto& jump : cases) {
        ASSERT_TRUE(clickRow("List1", jump.row));
        EXPECT_EQ(main().fields.panels.CurrentPage, jump.panel);
        EXPECT_EQ(main().fields.panels.FocusCell, jump.cell);
        EXPECT_EQ(main().fields.panels.FirstLine, (jump.panel - 1) * 20 + 1);
        EXPECT_EQ(enabled("Command2"), jump.panel > 1) << jump.row;
        EXPECT_TRUE(enabled("Command3")) << jump.row;
        EXPECT_EQ(main().List1->currentRow(), jump.row);
    }
}

TEST_F(PanelsTest, ARowOfTheLastPanelLeavesOneEmptyPanelToTurnTo)
{
    office(22);
    ASSERT_TRUE(clickRow("List1", 20));
    EXPECT_TRUE(enabled("Command3")) << "it is not the last row";
    ASSERT_TRUE(click("Command3"));
    EXPECT_EQ(visibleCells(), 0);
    EXPECT_EQ(text("Frame4"), "DOORS   Page 2 of 2");
    EXPECT_FALSE(enabled("Command3"));
}

TEST_F(PanelsTest, ClickingTheSelectedRowAgainJumpsBackToItsPanel)
{
    office(45);
    ASSERT_TRUE(clickRow("List1", 2));
    ASSERT_TRUE(click("Command3"));
    EXPECT_EQ(main().fields.panels.CurrentPage, 2);
    ASSERT_TRUE(clickRow("List1", 2));
    EXPECT_EQ(main().fields.panels.CurrentPage, 1);
    EXPECT_EQ(main().fields.panels.FocusCell, 3);
}

TEST_F(PanelsTest, ArrowsInTheListSelectAndTheFocusAloneDoesNot)
{
    office(5);
    control("List1")->setFocus();
    EXPECT_EQ(main().List1->currentRow(), -1);
    QTest::keyClick(control("List1"), Qt::Key_Down);
    QTest::keyClick(control("List1"), Qt::Key_Down);
    EXPECT_EQ(main().List1->currentRow(), 1);
    EXPECT_EQ(main().fields.selectedDrawing, drawings(2)[1]);
}

TEST_F(PanelsTest, TurningClearsTheMarks)
{
    office(25);
    ASSERT_TRUE(click("DwgThumbnail3"));
    EXPECT_EQ(cell(3).backColor(), 0xFFFFFF);
    ASSERT_TRUE(click("Command3"));
    EXPECT_EQ(cell(3).backColor(), 0);
    EXPECT_EQ(cell(3).bitmapBackColor(), 0);
}

TEST_F(PanelsTest, AMissingLibraryIsToldAndLeavesItsNameInTheBox)
{
    office(3);
    ASSERT_TRUE(choose("Combo1", "Other"));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(lastMessage(), listPath("Other") + " Not Found!");
    EXPECT_EQ(messages.shown[0].title, "Library Not Found!");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Critical);
    EXPECT_EQ(text("Combo1"), "Other");
    EXPECT_EQ(rows("List1"), QStringList());
    EXPECT_EQ(visibleCells(), 0);
    EXPECT_EQ(text("Frame4").toStdString(), listPath("Other") + " Not Found!");
    EXPECT_EQ(text("StatusBar1Panel3"), "Total Files: 0");
    EXPECT_EQ(key(User, "LibLoad", "LastLoad"), "Other");
}

TEST_F(PanelsTest, AMissingMyLibIsToldInItsOwnWords)
{
    office(3);
    const std::string login = program->values().LoginName;
    std::filesystem::remove(program->values().MyLibPath);
    ASSERT_TRUE(choose("Combo1", QString::fromStdString(login)));
    EXPECT_EQ(lastMessage(),
              "MyLibrary - " + login +
                  " - not found or created yet.\r\nPlease select the Settings tab and the MyLib "
                  "button to create your custom library");
    EXPECT_EQ(messages.shown[0].title, "MyLib Missing");
    EXPECT_EQ(messages.shown[0].icon, MessageIcon::Information);
    EXPECT_EQ(text("Frame4"), "DOORS   Page 1 of 1") << "the caption stays";
    EXPECT_EQ(visibleCells(), 0);
}

TEST_F(PanelsTest, AMessageIsShownOffTheTopAndTheWindowGoesBack)
{
    office(3);
    main().Check2->setChecked(true);
    bool topmost = true;
    messages.whileShown = [&] { topmost = main().isTopmost(); };
    ASSERT_TRUE(choose("Combo1", "Other"));
    EXPECT_FALSE(topmost);
    EXPECT_TRUE(main().isTopmost());
}

TEST_F(PanelsTest, TheLoginNameIsMyLibAlsoAsACatalogueName)
{
    office(3);
    const std::string login = program->values().LoginName;
    makeLibrary(login, drawings(3));
    ASSERT_TRUE(writeFile(program->values().MyLibPath, drawings(1)[0] + ";MINE\r\n"));
    ASSERT_TRUE(choose("Combo1", QString::fromStdString(login)));
    EXPECT_EQ(rows("List1"), QStringList{"MINE"});
}

TEST_F(PanelsTest, ALineWithoutSeparatorIsRefusedLikeAMissingFile)
{
    office(3);
    ASSERT_TRUE(writeFile(listPath("Other"), drawings(1)[0] + ";ONE\r\nno separator\r\n"));
    ASSERT_TRUE(choose("Combo1", "Other"));
    EXPECT_EQ(lastMessage(), listPath("Other") + " Not Found!");
    EXPECT_EQ(rows("List1"), QStringList());
    EXPECT_EQ(visibleCells(), 0);
    EXPECT_FALSE(enabled("Command3"));
}

TEST_F(PanelsTest, PathsWithSeparatorsAndEmptyLabelsAreKept)
{
    office(1);
    std::filesystem::create_directory(folder.file("A;B"));
    const std::string path = folder.file("A;B/one.dwg");
    std::filesystem::copy_file(drawings(1)[0], path);
    ASSERT_TRUE(writeFile(listPath("Other"), path + ";\r\n"));
    ASSERT_TRUE(choose("Combo1", "Other"));
    EXPECT_EQ(rows("List1"), QStringList{""});
    EXPECT_EQ(main().fields.CellPath[1], path);
}

TEST_F(PanelsTest, HiddenCellsKeepWhatTheyHeld)
{
    office(20);
    makeLibrary("Other", drawings(1));
    ASSERT_TRUE(choose("Combo1", "Other"));
    EXPECT_EQ(visibleCells(), 1);
    EXPECT_EQ(main().fields.CellPath[2], drawings(2)[1]);
    EXPECT_EQ(main().fields.panels.LineCount, 20);
}

TEST_F(PanelsTest, ALibraryOf32767LinesLoads)
{
    office(1);
    std::string lines;
    for (int i = 0; i < 32767; ++i)
        lines += drawings(1)[0] + ";L" + std::to_string(i) + "\r\n";
    ASSERT_TRUE(writeFile(listPath("Other"), lines));
    ASSERT_TRUE(choose("Combo1", "Other"));
    EXPECT_EQ(text("StatusBar1Panel3"), "Total Files: 32767");
    EXPECT_EQ(text("Frame4"), "OTHER   Page 1 of 1639");
    ASSERT_TRUE(clickRow("List1", 32766));
    EXPECT_EQ(main().fields.panels.FirstLine, 32761);
    EXPECT_EQ(main().fields.panels.FocusCell, 7);
    ASSERT_TRUE(clickRow("List1", 32765));
    ASSERT_TRUE(click("Command3"));
    EXPECT_EQ(visibleCells(), 0) << "the panel behind the last one";
    EXPECT_EQ(text("Frame4"), "OTHER   Page 1639 of 1639");
    ASSERT_TRUE(click("Command2"));
    EXPECT_EQ(visibleCells(), 7);
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(PanelsTest, ALibraryThatIsTooLongIsToldAndChangesNothing)
{
    office(45);
    ASSERT_TRUE(click("Command3"));
    ASSERT_TRUE(click("DwgThumbnail3"));
    std::string lines;
    for (int i = 0; i < 32768; ++i)
        lines += drawings(1)[0] + ";L\r\n";
    ASSERT_TRUE(writeFile(listPath("Other"), lines));
    ASSERT_TRUE(choose("Combo1", "Other"));
    ASSERT_EQ(messages.shown.size(), 1U);
    EXPECT_EQ(lastMessage(), listPath("Other") +
                                 " has more than 32767 drawings, which is the most that a library can hold.");
    EXPECT_EQ(text("Combo1"), "Doors");
    EXPECT_EQ(text("Frame4"), "DOORS   Page 2 of 3");
    EXPECT_EQ(text("StatusBar1Panel3"), "Total Files: 45");
    EXPECT_EQ(visibleCells(), 20);
    EXPECT_EQ(main().List1->currentRow(), 22);
    EXPECT_TRUE(enabled("Command2"));
    EXPECT_TRUE(enabled("Command3"));
    EXPECT_EQ(key(User, "LibLoad", "LastLoad"), "Doors");
    ASSERT_TRUE(click("Command3"));
    EXPECT_EQ(text("Frame4"), "DOORS   Page 3 of 3") << "the library in view is still the one that turns";
}

TEST_F(PanelsTest, LeavingTheBoxOfLibrariesPicksNone)
{
    office(45);
    setKey(User, "LibLoad", "LastLoad", "DOORS");
    ASSERT_TRUE(writeFile(listPath("DOORS"), drawings(2)[1] + ";UPPER\r\n"));
    program->loadAnew("Zelvora");
    ASSERT_TRUE(appears("Zelvora"));
    EXPECT_EQ(rows("List1"), QStringList{"UPPER"});
    ASSERT_TRUE(click("DwgThumbnail1"));
    control("Combo1")->setFocus();
    control("List1")->setFocus();
    EXPECT_EQ(text("Combo1"), "DOORS");
    EXPECT_EQ(rows("List1"), QStringList{"UPPER"});
    EXPECT_EQ(key(User, "LibLoad", "LastLoad"), "DOORS");
}

TEST_F(PanelsTest, CellsStandInAGridOfFiveByFour)
{
    office(20);
    for (const QSize size : {QSize(433, 433), QSize(713, 606), QSize(240, 200)}) {
        main().resize(size);
        const double width = main().Frame4->width();
        const double height = main().Frame4->height();
        const double lefts[] = {43, 4.67, 2.465, 1.675, 1.27};
        const double tops[] = {21.5, 3.55, 1.94, 1.334};
        for (int number = 1; number <= 20; ++number) {
            const QRect place = cell(number).geometry();
            EXPECT_NEAR(place.left(), width / lefts[(number - 1) % 5], 0.5);
            EXPECT_NEAR(place.top(), height / tops[(number - 1) / 5], 0.5);
            EXPECT_NEAR(place.width(), width / 5.25, 0.5);
            EXPECT_NEAR(place.height(), height / 4.3, 0.5);
        }
    }
}

} // namespace
} // namespace zv
