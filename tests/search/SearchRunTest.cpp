#include "controls/Clip.h"
#include "controls/DwgThumbnail.h"
#include "controls/DwgViewX.h"
#include "controls/ElidedLabel.h"
#include "controls/PathList.h"
#include "platform/Files.h"
#include "search/SearchFixture.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QTest>

namespace zv {
namespace {

using enum ProfileFile;
using SearchRun = SearchFixture;

QString path(const std::string& bytes)
{
    return QString::fromStdString(bytes);
}

TEST_F(SearchRun, ListsWhatIsFoundInNameLabelAndKeywords)
{
    const std::string byName = makeKeyworded("Fire door", ""), byLabel = makeKeyworded("Oak", ""),
                      byKeyword = makeKeyworded("Ash", "glass, FIRE T30"), none = makeKeyworded("Elm", "t30");
    EXPECT_TRUE(writeFile(listPath("Doors"), byName + ";a\r\n" + byLabel + ";Fireproof\r\n" + byKeyword +
                                                 ";c\r\n" + none + ";d\r\n"));
    open();
    find("fire");
    EXPECT_EQ(results(), QStringList({path(byName), path(byLabel), path(byKeyword)}));
    EXPECT_EQ(shown("Text4"), "3");
    EXPECT_EQ(shown("Text12"), "");
    EXPECT_EQ(shown("Text13"), "");
    EXPECT_EQ(shown("Command4"), "&Clear");
    EXPECT_EQ(picture("Command4"), "C8");
    EXPECT_TRUE(messages.shown.empty());
}

TEST_F(SearchRun, TakesTheSixBoxesInTheirOrder)
{
    open();
    search().Text10->setText("nowhere");
    search().Text11->setText("D1");
    find("");
    EXPECT_EQ(results().size(), 1) << "a sixth keyword that is found is content with a fifth that is not";
    search().Text11->clear();
    search().Text10->setText("D1");
    search().Text9->setText("nowhere");
    find("");
    EXPECT_EQ(results().size(), 0);
}

TEST_F(SearchRun, AllLibrariesNeedNoName)
{
    makeLibrary("Windows", drawings(2));
    makeCatalogue({"Doors", "Windows"});
    open();
    ASSERT_TRUE(press("Check1"));
    EXPECT_FALSE(isOn("Combo1"));
    find("D", "");
    EXPECT_EQ(results().size(), 5);
    EXPECT_EQ(shown("Text4"), "5");
    ASSERT_TRUE(press("Check1"));
    EXPECT_TRUE(isOn("Combo1"));
}

TEST_F(SearchRun, WithoutALibraryItAsksForOne)
{
    setKey(User, "Settings", "AOT", "1");
    open();
    EXPECT_TRUE(search().isTopmost());
    bool onTop = true;
    messages.whileShown = [&] { onTop = search().isTopmost(); };
    find("D", "");
    EXPECT_EQ(lastMessage(), "Please Select a Library");
    EXPECT_FALSE(onTop);
    EXPECT_TRUE(search().isTopmost());
}

TEST_F(SearchRun, ShowsThatItRuns)
{
    std::filesystem::copy_file(ZELVORA_CLIP, joinPath(installation, "Zelvora.avi"));
    makeLibrary("Doors", drawings(40));
    open();
    bool seen = false;
    inATurn([&] {
        seen = true;
        EXPECT_EQ(shown("Command4"), "&Stop!");
        EXPECT_EQ(picture("Command4"), "C17");
        EXPECT_EQ(ground("Text4"), search().palette().color(QPalette::Button));
        EXPECT_TRUE(search().Animation1->autoPlay());
        EXPECT_TRUE(search().Animation1->isPlaying());
    });
    EXPECT_FALSE(search().Animation1->isPlaying());
    find("D");
    EXPECT_TRUE(seen);
    EXPECT_FALSE(search().Animation1->autoPlay());
    EXPECT_FALSE(search().Animation1->isPlaying());
    EXPECT_EQ(ground("Text4"), search().palette().color(QPalette::Base));
}

TEST_F(SearchRun, AMissingClipLeavesTheWindowAsItIs)
{
    open();
    find("D");
    EXPECT_EQ(results().size(), 3);
}

TEST_F(SearchRun, EmptiesTheResultsOfTheRunBefore)
{
    open();
    find("D");
    ASSERT_TRUE(clickRow("List1", 0, "Search"));
    EXPECT_NE(shown("Text2"), "");
    find("nowhere");
    EXPECT_EQ(results(), QStringList());
    for (const char* field : {"Text2", "Text5", "Text6"})
        EXPECT_EQ(shown(field), "") << field;
    EXPECT_EQ(search().DwgThumbnail1->dwgFileName(), "");
    EXPECT_EQ(shown("Text4"), "0");
}

TEST_F(SearchRun, StopKeepsTheListAndLosesTheCount)
{
    makeLibrary("Windows", drawings(40));
    makeCatalogue({"Doors", "Gone", "Windows"});
    open();
    // Between the first library and the last.
    messages.whileShown = [this] { inATurn([this] { EXPECT_TRUE(press("Command4")); }); };
    search().Check1->setChecked(true);
    find("D");
    EXPECT_EQ(results().size(), 3);
    EXPECT_EQ(shown("Text4"), "");
    EXPECT_EQ(ground("Text4"), search().palette().color(QPalette::Button));
    EXPECT_EQ(shown("Command4"), "&Clear");
    EXPECT_EQ(shown("Text1"), "D");
    search().Check1->setChecked(false);
    find("nowhere");
    EXPECT_EQ(ground("Text4"), search().palette().color(QPalette::Base));
}

TEST_F(SearchRun, ClearEmptiesResultsAndPanesAndKeepsTheKeywords)
{
    open();
    search().Text9->setText("D");
    find("D");
    ASSERT_TRUE(clickRow("List1", 1, "Search"));
    ASSERT_TRUE(press("Command4"));
    EXPECT_EQ(results(), QStringList());
    for (const char* field : {"Text2", "Text4", "Text5", "Text6", "Text12", "Text13"})
        EXPECT_EQ(shown(field), "") << field;
    EXPECT_EQ(shown("Text1"), "D");
    EXPECT_EQ(shown("Text9"), "D");
    EXPECT_EQ(ground("Text4"), search().palette().color(QPalette::Button));
}

TEST_F(SearchRun, AMissingListIsTold)
{
    open();
    find("D", "Gone");
    ASSERT_EQ(messages.shown.size(), 1u);
    EXPECT_EQ(lastMessage(), "Library " + listPath("Gone") + " Not Found!");
    EXPECT_EQ(messages.shown[0].title, "Library List not Found!");
    EXPECT_EQ(shown("Command4"), "&Clear");
}

TEST_F(SearchRun, ADamagedDrawingGivesTheLibraryUpAndKeepsItsHits)
{
    const auto paths = drawings(3);
    folder.write("drawings/D2.dwg", "AC1018 and no more");
    open();
    find("D1");
    EXPECT_EQ(lastMessage(), "Library " + listPath("Doors") + " Not Found!");
    EXPECT_EQ(results(), QStringList{path(paths[0])});
    EXPECT_EQ(shown("Text4"), "1");
}

TEST_F(SearchRun, AMessageStandsOverWhatHasBeenFoundUntilThen)
{
    EXPECT_TRUE(appendLines(listPath("Doors"), "\r\n"));
    open();
    qsizetype listed = -1;
    QString drawing;
    messages.whileShown = [&] {
        listed = results().size();
        drawing = shown("Text12");
    };
    find("D");
    EXPECT_EQ(listed, 3);
    EXPECT_EQ(drawing, path(drawings(3)[2]));
}

TEST_F(SearchRun, TheWindowClosedInTheMiddleOfARunEndsIt)
{
    makeLibrary("Doors", drawings(40));
    for (const bool byButton : {true, false}) {
        open();
        inATurn([&] {
            if (byButton) {
                EXPECT_TRUE(press("Command2"));
            } else {
                search().close();
            }
        });
        search().Text1->setText("nowhere");
        search().Combo1->setShownText("Doors");
        QPointer<Search> window = &search();
        // The click is given straight to the handler, for its window goes while it runs.
        QTest::mouseClick(control("Command11", "Search"), Qt::LeftButton);
        EXPECT_EQ(program->loaded("Search"), nullptr);
        EXPECT_TRUE(appears("Zelvora"));
        EXPECT_TRUE(waitUntil([&] { return window.isNull(); })) << "nothing of it is left";
        EXPECT_TRUE(messages.shown.empty());
        EXPECT_EQ(endedWith, -1);
    }
}

TEST_F(SearchRun, ASearchPressedDuringARunBeginsAnew)
{
    makeLibrary("Doors", drawings(40));
    open();
    inATurn([this] { EXPECT_TRUE(press("Command11")); });
    find("D");
    EXPECT_EQ(results().size(), 40);
    EXPECT_EQ(shown("Text4"), "40");
    EXPECT_TRUE(messages.shown.empty());
    EXPECT_EQ(shown("Command4"), "&Clear");
}

TEST_F(SearchRun, AKeywordThatIsChangedDuringARunCountsFromTheNextDrawingOn)
{
    makeLibrary("Doors", drawings(9));
    open();
    inATurn([this] { search().Text1->setText("nowhere"); });
    find("D");
    EXPECT_LT(results().size(), 9);
}

TEST_F(SearchRun, AListThatGrowsIsReadToItsNewEnd)
{
    const std::string late = makeDrawing("Late");
    makeLibrary("Doors", drawings(9));
    open();
    inATurn([&] { EXPECT_TRUE(appendLines(listPath("Doors"), late + ";x\r\n")); });
    find("LATE");
    EXPECT_EQ(results(), QStringList{path(late)});
}

TEST_F(SearchRun, ASelectionInTheMainWindowClosesTheListUnderScan)
{
    makeLibrary("Windows", drawings(40));
    makeCatalogue({"Doors", "Windows"});
    open();
    inATurn([this] { main().List1->setCurrentRow(1); });
    find("nowhere", "Windows");
    EXPECT_EQ(lastMessage(), "Library " + listPath("Windows") + " Not Found!");
}

TEST_F(SearchRun, EnterInAKeywordStartsAndEscapeStops)
{
    makeLibrary("Doors", drawings(40));
    open();
    search().Combo1->setShownText("Doors");
    search().Text8->setFocus();
    QTest::keyClicks(search().Text8, "D");
    inATurn([this] { QTest::keyClick(search().Text8, Qt::Key_Escape); });
    QTest::keyClick(search().Text8, Qt::Key_Return);
    EXPECT_LT(results().size(), 40);
    QTest::keyClick(search().Text8, Qt::Key_Return);
    QTest::keyClick(search().Text8, Qt::Key_Escape);
    EXPECT_EQ(results().size(), 40) << "without a run there is nothing to stop";
}

TEST_F(SearchRun, ClearEmptiesTheLargeViewAsWell)
{
    open();
    find("D");
    ASSERT_TRUE(clickRow("List1", 1, "Search"));
    ASSERT_TRUE(press("Command5"));
    ASSERT_TRUE(search().DwgViewX1->hasDrawing());
    ASSERT_TRUE(press("Command4"));
    EXPECT_FALSE(search().DwgViewX1->hasDrawing());
}

TEST_F(SearchRun, ProgressIsToldWhileItRuns)
{
    EXPECT_TRUE(appendLines(listPath("Doors"), "\r\n"));
    open();
    QString progress;
    messages.whileShown = [&] { progress = search().LabelProgress->text(); };
    find("D");
    EXPECT_EQ(progress, "Library 1 of 1, drawing 3 of 4");
    EXPECT_EQ(search().LabelProgress->text(), "");
}

} // namespace
} // namespace zv
