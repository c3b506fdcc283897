#include "print/PrintRun.h"
#include "platform/Files.h"
#include "print/TimeLeft.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <set>

namespace zv {
namespace {

/// Writes down what the run tells and does.
class NotingWindow final : public PrintRunWindow {
public:
    void beginLibrary(const std::string& name) override { notes.push_back("library " + name); }
    bool showDrawing(const std::string& path) override
    {
        notes.push_back("show " + path);
        return !missing.contains(path);
    }
    void showCount(int done, int total) override
    {
        notes.push_back(std::to_string(done) + " of " + std::to_string(total));
    }
    void printWithDialog() override { notes.emplace_back("dialog"); }
    void printSilently() override { notes.emplace_back("silent"); }
    void startHelper() override { notes.emplace_back("helper"); }
    void endDrawing(const std::string& path) override { notes.push_back("end " + path); }
    bool turn() override
    {
        ++turns;
        return turns < stopAtTurn;
    }

    std::vector<std::string> notes;
    std::set<std::string> missing;
    int turns = 0;
    int stopAtTurn = 1 << 20; ///< From this turn on the user wants a stop.
};

using Notes = std::vector<std::string>;

class PrintRunTest : public testing::Test {
protected:
    PrintedLibrary library(const std::string& name, const std::string& lines)
    {
        return {name, folder.write(name + ".lst", lines)};
    }

    TemporaryFolder folder;
    NotingWindow window;
};

TEST_F(PrintRunTest, TheLoginNameStandsForTheUsersOwnListInAnyCase)
{
    EXPECT_EQ(printedLibrary("ANNA", "/inst", "anna", "/user/anna.lst").listPath, "/user/anna.lst");
    EXPECT_EQ(printedLibrary("Doors", "/inst", "anna", "/user/anna.lst").listPath,
              joinPath("/inst", "Doors.lst"));
}

TEST_F(PrintRunTest, EveryLineOfEveryLibraryIsCounted)
{
    const auto counted =
        countDrawings({library("A", "a.dwg;a\r\nno separator\r\n"), library("B", "b.dwg;b\r\n")}, window);
    ASSERT_TRUE(counted);
    EXPECT_EQ(*counted, 3);
    EXPECT_EQ(window.turns, 3);
}

TEST_F(PrintRunTest, AMissingListIsAnErrorOfTheCount)
{
    const auto counted = countDrawings({library("A", "a;a\r\n"), {"B", folder.file("B.lst")}}, window);
    ASSERT_FALSE(counted);
    EXPECT_EQ(counted.error().code, ErrorCode::NotFound);
}

TEST_F(PrintRunTest, AStopEndsTheCountOfEachLibraryAtItsNextLine)
{
    window.stopAtTurn = 1;
    const auto counted =
        countDrawings({library("A", "a;a\r\nb;b\r\n"), library("B", "c;c\r\nd;d\r\n")}, window);
    ASSERT_TRUE(counted);
    EXPECT_EQ(*counted, 2);
}

TEST_F(PrintRunTest, TheFirstDrawingHasTheDialogAndTheOthersTheHelper)
{
    ASSERT_TRUE(
        printDrawings({library("A", "a.dwg;a\r\nb;b.dwg;b\r\n"), library("B", "c.dwg;c\r\n")}, 3, window));
    EXPECT_EQ(window.notes, (Notes{"library A", "show a.dwg", "1 of 3", "dialog", "end a.dwg", "show b;b.dwg",
                                   "2 of 3", "silent", "helper", "end b;b.dwg", "library B", "show c.dwg",
                                   "3 of 3", "silent", "helper", "end c.dwg"}));
}

TEST_F(PrintRunTest, TheDialogWaitsForADrawingThatCanBeShown)
{
    window.missing = {"a.dwg", "c.dwg"};
    ASSERT_TRUE(printDrawings({library("A", "a.dwg;a\r\nb.dwg;b\r\nc.dwg;c\r\n")}, 3, window));
    EXPECT_EQ(window.notes,
              (Notes{"library A", "show a.dwg", "1 of 3", "end a.dwg", "show b.dwg", "2 of 3", "dialog",
                     "end b.dwg", "show c.dwg", "3 of 3", "silent", "helper", "end c.dwg"}));
}

TEST_F(PrintRunTest, ALineWithoutItsSeparatorIsCountedAndPassedOver)
{
    ASSERT_TRUE(printDrawings({library("A", "a.dwg;a\r\nbroken\r\nb.dwg;b\r\n")}, 3, window));
    EXPECT_EQ(window.notes, (Notes{"library A", "show a.dwg", "1 of 3", "dialog", "end a.dwg", "2 of 3",
                                   "show b.dwg", "3 of 3", "silent", "helper", "end b.dwg"}));
}

TEST_F(PrintRunTest, AStopBeforeThePrintLeavesThatLibraryOnly)
{
    window.stopAtTurn = 3;
    ASSERT_TRUE(
        printDrawings({library("A", "a;a\r\nb;b\r\nc;c\r\n"), library("B", "d;d\r\ne;e\r\n")}, 5, window));
    EXPECT_EQ(window.notes, (Notes{"library A", "show a", "1 of 5", "dialog", "end a", "show b", "2 of 5",
                                   "library B", "show d", "3 of 5"}));
}

TEST_F(PrintRunTest, AStopAfterThePrintLeavesTheWholePass)
{
    window.stopAtTurn = 2;
    ASSERT_TRUE(printDrawings({library("A", "a;a\r\nb;b\r\n"), library("B", "c;c\r\n")}, 3, window));
    EXPECT_EQ(window.notes, (Notes{"library A", "show a", "1 of 3", "dialog", "end a"}));
}

TEST_F(PrintRunTest, AListThatGoesBetweenCountAndPrintIsAnErrorOfTheFirstLibraryOnly)
{
    const PrintedLibrary gone{"G", folder.file("G.lst")};
    EXPECT_FALSE(printDrawings({gone, library("A", "a;a\r\n")}, 1, window));
    window.notes.clear();
    EXPECT_TRUE(printDrawings({library("A", "a;a\r\n"), gone, library("B", "b;b\r\n")}, 2, window));
    EXPECT_EQ(window.notes.back(), "end b");
}

TEST(TimeLeft, IsToldInWordsNoFinerThanItIsKnown)
{
    EXPECT_EQ(timeLeftText(0, 0, 10), "");
    EXPECT_EQ(timeLeftText(1000, 10, 0), "");
    EXPECT_EQ(timeLeftText(1000, 10, 10), "A few seconds left");
    EXPECT_EQ(timeLeftText(10000, 10, 12), "About 15 seconds left");
    EXPECT_EQ(timeLeftText(10000, 10, 70), "About 1 minute left");
    EXPECT_EQ(timeLeftText(10000, 10, 290), "About 5 minutes left");
    EXPECT_EQ(timeLeftText(10000, 10, 7200), "About 2 hours left");
}

} // namespace
} // namespace zv
