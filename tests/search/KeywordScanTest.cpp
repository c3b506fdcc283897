#include "search/KeywordScan.h"

#include "platform/Files.h"
#include "platform/Profile.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <atomic>
#include <clocale>
#include <condition_variable>
#include <map>
#include <mutex>
#include <set>

namespace zv {
namespace {

using Lines = std::vector<std::string>;

/// Drawings with their keywords, read by several threads at once. One that is not told cannot be read.
class FakeDrawings {
public:
    void add(const std::string& path, const std::string& keywords = {}) { m_keywords[path] = keywords; }
    KeywordReader reader()
    {
        return [this](const std::string& path) { return read(path); };
    }
    /// Lets no read of the drawing come back before release().
    void hang(const std::string& path) { m_hanging = path; }
    void release()
    {
        const std::lock_guard lock(m_mutex);
        m_hanging.clear();
        m_changed.notify_all();
    }
    std::set<std::string> read() const
    {
        const std::lock_guard lock(m_mutex);
        return m_read;
    }
    int mostAtOnce = 0;

private:
    Result<std::string> read(const std::string& path)
    {
        std::unique_lock lock(m_mutex);
        m_read.insert(path);
        mostAtOnce = std::max(mostAtOnce, ++m_now);
        m_changed.wait(lock, [&] { return path != m_hanging; });
        --m_now;
        const auto found = m_keywords.find(path);
        if (found == m_keywords.end())
            return Error{ErrorCode::NotFound, "no such drawing"};
        return found->second;
    }

    std::map<std::string, std::string> m_keywords;
    mutable std::mutex m_mutex;
    std::condition_variable m_changed;
    std::set<std::string> m_read;
    std::string m_hanging;
    int m_now = 0;
};

/// A window whose controls are plain values.
class FakeWindow final : public ScanWindow, public Messages {
public:
    bool allLibrariesChecked() const override { return check1; }
    std::string library() const override { return combo1; }
    Keywords keywords() const override { return texts; }
    std::string masterFolder() const override { return master; }
    std::string masterProfile() const override { return joinPath(master, "Zelvora.ini"); }

    void showRunBegins() override
    {
        ++begun;
        list.clear();
        text4.clear();
    }
    void showDrawing(const std::string& path, const std::string& library, const ScanProgress& now) override
    {
        scanned.push_back(path);
        text13 = library;
        progress = now;
    }
    void showHit(const std::string& path, int hits) override
    {
        list.push_back(path);
        text4 = std::to_string(hits);
    }
    void showRunEnded(int hits) override
    {
        ++ended;
        text4 = std::to_string(hits);
    }
    Messages& messages() override { return *this; }
    void show(const Message& message) override { shown.push_back(message); }
    bool ask(const Message&) override { return false; }
    std::optional<bool> askOrClose(const Message&) override { return false; }
    bool confirm(const Message&) override { return false; }

    // How many turns a read takes is the machine's business.
    bool turn(Turn when) override
    {
        if (when == Turn::WhileReading && whileReading)
            whileReading();
        if (when == Turn::BetweenSteps) {
            ++turns;
            if (onTurn)
                onTurn(turns);
        }
        return !gone;
    }
    void closeAllFiles() override { ++closed; }
    unsigned filesClosed() const override { return closed; }
    void unload() override
    {
        ++unloads;
        gone = true;
    }

    bool check1 = false;
    std::string combo1, master;
    Keywords texts;
    std::function<void(int)> onTurn; ///< Its number, from 1.
    std::function<void()> whileReading;

    Lines list, scanned;
    std::string text4 = "before", text13;
    ScanProgress progress;
    std::vector<Message> shown;
    int begun = 0, ended = 0, turns = 0, unloads = 0;
    unsigned closed = 0;
    bool gone = false;
};

class KeywordScanTest : public testing::Test {
protected:
    KeywordScanTest()
    {
        window.master = folder.path();
        window.combo1 = "Doors";
    }
    ~KeywordScanTest() override
    {
        drawings.release();
        EXPECT_TRUE(waitForWorkers(std::chrono::seconds(5))) << "no thread is left";
    }

    void library(const std::string& name, const Lines& lines)
    {
        std::string bytes;
        for (const std::string& line : lines)
            bytes += line + "\r\n";
        EXPECT_TRUE(writeFile(listPath(name), bytes));
    }
    std::string listPath(const std::string& name) const { return folder.file(name + ".lst"); }
    void catalogue(const Lines& names)
    {
        const std::string profile = window.masterProfile();
        writeProfileString(profile, "Library", "libnum", std::to_string(names.size()));
        for (std::size_t i = 0; i < names.size(); ++i)
            writeProfileString(profile, "Library", "lib" + std::to_string(i + 1), names[i]);
    }
    /// Drawings D1.dwg to D<count>.dwg without keywords, as a library.
    void plainLibrary(const std::string& name, int count)
    {
        Lines lines;
        for (int i = 1; i <= count; ++i) {
            lines.push_back(plain(i) + ";label");
            drawings.add(plain(i));
        }
        library(name, lines);
    }
    static std::string plain(int number) { return "L\\D" + std::to_string(number) + ".dwg"; }
    void allLibraries()
    {
        window.check1 = true;
        scan.scanAllLibraries = 1;
    }
    void expectNotFound(std::size_t index, const std::string& name, bool skips)
    {
        ASSERT_GT(window.shown.size(), index);
        EXPECT_EQ(window.shown[index].text, "Library " + listPath(name) + " Not Found!" +
                                                (skips ? "\r\nSkipping to Next Library in List" : ""));
        EXPECT_EQ(window.shown[index].title, "Library List not Found!");
        EXPECT_EQ(window.shown[index].icon, MessageIcon::Critical);
    }

    TemporaryFolder folder;
    FakeDrawings drawings;
    FakeWindow window;
    KeywordScan scan{drawings.reader()};
};

// ---- what is asked for

TEST_F(KeywordScanTest, AsksForALibraryWhenThereIsNone)
{
    window.combo1.clear();
    scan.run(window);
    ASSERT_EQ(window.shown.size(), 1u);
    EXPECT_EQ(window.shown[0].text, "Please Select a Library");
    EXPECT_EQ(window.shown[0].title, "No Library Selected");
    EXPECT_EQ(window.shown[0].icon, MessageIcon::Information);
    EXPECT_EQ(window.begun, 0);
    EXPECT_EQ(window.ended, 0);
    EXPECT_EQ(window.text4, "before");
}

TEST_F(KeywordScanTest, TheBoxCountsForTheQuestionAndTheFlagForTheMode)
{
    plainLibrary("Doors", 1);
    window.check1 = true;
    window.combo1 = "Doors";
    window.texts = {"D1"};
    scan.run(window);
    EXPECT_EQ(window.list, Lines{plain(1)});
}

TEST_F(KeywordScanTest, ALibraryInAFolderThatEndsInASeparatorIsFound)
{
    plainLibrary("Doors", 1);
    window.texts = {"D1"};
    window.master += kPathSeparator;
    scan.run(window);
    EXPECT_EQ(window.list.size(), 1u);
    EXPECT_TRUE(window.shown.empty());
}

TEST_F(KeywordScanTest, EmptyBoxesFindNothingAndReadEveryDrawing)
{
    plainLibrary("Doors", 3);
    scan.run(window);
    EXPECT_EQ(window.list, Lines());
    EXPECT_EQ(window.text4, "0");
    EXPECT_EQ(drawings.read().size(), 3u);
}

// ---- the sources

TEST_F(KeywordScanTest, FileNameAndLabelTogetherMakeAHitWithoutReadingTheDrawing)
{
    library("Doors", {"L\\Oak.dwg;swing door"});
    window.texts = {"OAK", "SWING"};
    scan.run(window);
    EXPECT_EQ(window.list, Lines{"L\\Oak.dwg"});
    EXPECT_TRUE(drawings.read().empty());
    EXPECT_TRUE(window.shown.empty());
}

TEST_F(KeywordScanTest, DrawingsAndLibrariesInAnyScriptAreFound)
{
    std::setlocale(LC_ALL, "C.UTF-8");
    window.combo1 = "\xE9\x97\xA8";
    library("\xE9\x97\xA8", {"L\\T\xC3\xBCr.dwg;\xE9\x97\xA8\xE6\xA1\x86", "L\\Tor.dwg;\xE9\x97\xA8"});
    drawings.add("L\\Tor.dwg");
    window.texts = {"T\xC3\x9CR", "\xE6\xA1\x86"};
    scan.run(window);
    EXPECT_EQ(window.list, Lines{"L\\T\xC3\xBCr.dwg"});
    EXPECT_TRUE(window.shown.empty());
    std::setlocale(LC_ALL, "C");
}

TEST_F(KeywordScanTest, AKeywordThatIsNowhereHasTheDrawingRead)
{
    library("Doors", {"L\\Oak.dwg;swing door"});
    drawings.add("L\\Oak.dwg", "timber");
    window.texts = {"OAK", "STEEL"};
    scan.run(window);
    EXPECT_EQ(window.list, Lines());
    EXPECT_EQ(drawings.read(), std::set<std::string>{"L\\Oak.dwg"});
}

TEST_F(KeywordScanTest, KeywordsMayBeFoundInOneSourceEach)
{
    library("Doors", {"L\\Oak.dwg;swing door"});
    drawings.add("L\\Oak.dwg", "Fire, T30");
    window.texts = {"T30", "", "SWING", "OAK"};
    scan.run(window);
    EXPECT_EQ(window.list, Lines{"L\\Oak.dwg"});
}

TEST_F(KeywordScanTest, ThePathsFolderIsNoSource)
{
    library("Doors", {"Timber\\Oak.dwg;swing"});
    drawings.add("Timber\\Oak.dwg");
    window.texts = {"TIMBER"};
    scan.run(window);
    EXPECT_EQ(window.list, Lines());
}

TEST_F(KeywordScanTest, TheEndingIsNoSource)
{
    library("Doors", {"L\\Oak.dwg;swing"});
    drawings.add("L\\Oak.dwg");
    window.texts = {"DWG"};
    scan.run(window);
    EXPECT_EQ(window.list, Lines());
}

TEST_F(KeywordScanTest, TheSixthKeywordFoundAndTheFifthNowhereIsAHit)
{
    library("Doors", {"L\\Oak.dwg;swing"});
    drawings.add("L\\Oak.dwg");
    window.texts = {"", "", "", "", "STEEL", "OAK"};
    scan.run(window);
    EXPECT_EQ(window.list.size(), 1u);
    window.texts = {"", "", "", "", "STEEL", ""};
    scan.run(window);
    EXPECT_EQ(window.list.size(), 0u);
}

TEST_F(KeywordScanTest, KeywordsAreReadAnewForEachDrawing)
{
    library("Doors", {"L\\Oak.dwg;x", "L\\Oak2.dwg;x", "L\\Ash.dwg;x"});
    drawings.add("L\\Oak2.dwg");
    window.texts = {"OAK"};
    window.onTurn = [this](int) { window.texts = {"ASH"}; };
    scan.run(window);
    EXPECT_EQ(window.list, (Lines{"L\\Oak.dwg", "L\\Ash.dwg"}));
}

TEST_F(KeywordScanTest, ThePathOfAHitIsListedAsTheLineHasIt)
{
    library("Doors", {" L\\Oak;2.DWG;label"});
    window.texts = {"OAK"};
    scan.run(window);
    EXPECT_EQ(window.list, Lines{" L\\Oak;2.DWG"});
}

// ---- the two modes

TEST_F(KeywordScanTest, ShowsTheDrawingUnderTestAndItsLibraryInCapitals)
{
    plainLibrary("Doors", 2);
    window.texts = {"D"};
    scan.run(window);
    EXPECT_EQ(window.scanned, (Lines{plain(1), plain(2)}));
    EXPECT_EQ(window.text13, "DOORS");
    EXPECT_EQ(window.progress.library, 1);
    EXPECT_EQ(window.progress.libraries, 1);
    EXPECT_EQ(window.progress.line, 2u);
    EXPECT_EQ(window.progress.lines, 2u);
    EXPECT_EQ(window.text4, "2");
    EXPECT_EQ(window.begun, 1);
    EXPECT_EQ(window.ended, 1);
}

TEST_F(KeywordScanTest, ASingleLibraryShowsWhatTheBoxHoldsByNow)
{
    plainLibrary("Doors", 2);
    window.texts = {"D"};
    window.onTurn = [this](int) { window.combo1 = "Windows"; };
    scan.run(window);
    EXPECT_EQ(window.text13, "WINDOWS");
    EXPECT_EQ(window.list.size(), 2u);
}

TEST_F(KeywordScanTest, AllLibrariesAreWalkedInTheirOrderAndCountedTogether)
{
    library("Doors", {"L\\Oak.dwg;x", "L\\Ash.dwg;x"});
    library("Windows", {"L\\Oak.dwg;x", "L\\Oak.dwg;y"});
    drawings.add("L\\Ash.dwg");
    catalogue({"Windows", "Doors"});
    window.texts = {"OAK"};
    allLibraries();
    scan.run(window);
    EXPECT_EQ(window.list, (Lines{"L\\Oak.dwg", "L\\Oak.dwg", "L\\Oak.dwg"}));
    EXPECT_EQ(window.text4, "3");
    EXPECT_EQ(window.text13, "DOORS");
    EXPECT_EQ(window.scanned.back(), "L\\Ash.dwg");
    EXPECT_EQ(window.progress.libraries, 2);
}

TEST_F(KeywordScanTest, AnEmptyCatalogueIsScannedAtOnce)
{
    allLibraries();
    for (const char* count : {"0", "-1", ""}) {
        writeProfileString(window.masterProfile(), "Library", "libnum", count);
        scan.run(window);
        EXPECT_EQ(window.text4, "0") << count;
    }
    EXPECT_EQ(window.turns, 0);
    EXPECT_TRUE(window.shown.empty());
}

TEST_F(KeywordScanTest, TheEventLoopHasATurnAfterEachDrawingAndAroundEachLibrary)
{
    plainLibrary("Doors", 3);
    plainLibrary("Windows", 2);
    catalogue({"Doors", "Windows"});
    window.texts = {"D"};
    scan.run(window);
    EXPECT_EQ(window.turns, 4);
    window.turns = 0;
    allLibraries();
    scan.run(window);
    EXPECT_EQ(window.turns, 9);
}

TEST_F(KeywordScanTest, ALineThatIsAddedMeanwhileIsScanned)
{
    plainLibrary("Doors", 2);
    window.texts = {"D"};
    window.onTurn = [this](int turn) {
        if (turn == 1) {
            EXPECT_TRUE(appendLines(listPath("Doors"), "L\\D3.dwg;late\r\nL\\D4.dwg;late"));
        }
    };
    scan.run(window);
    EXPECT_EQ(window.list.size(), 4u);
}

// ---- failures

TEST_F(KeywordScanTest, AMissingListIsToldAndTheRunComesToItsEnd)
{
    window.texts = {"D"};
    scan.run(window);
    ASSERT_EQ(window.shown.size(), 1u);
    expectNotFound(0, "Doors", false);
    EXPECT_EQ(window.text4, "0");
    EXPECT_EQ(window.ended, 1);
}

TEST_F(KeywordScanTest, ABadLineGivesTheRestOfItsLibraryUp)
{
    for (const char* line : {"", "no separator", "L\\abc;three characters", ";", "L\\gone.dwg;drawing"}) {
        library("Doors", {"L\\Oak.dwg;x", line, "L\\Oak2.dwg;x"});
        window.shown.clear();
        window.texts = {"OAK"};
        scan.run(window);
        EXPECT_EQ(window.list, Lines{"L\\Oak.dwg"}) << line;
        ASSERT_EQ(window.shown.size(), 1u) << line;
        expectNotFound(0, "Doors", false);
        EXPECT_EQ(window.text4, "1") << line;
    }
}

TEST_F(KeywordScanTest, AllLibrariesGoOnWithTheNext)
{
    library("Doors", {"L\\Oak.dwg;x", "", "L\\Oak2.dwg;x"});
    library("Windows", {"L\\Oak3.dwg;x"});
    catalogue({"Gone", "Doors", "Windows"});
    window.texts = {"OAK"};
    allLibraries();
    scan.run(window);
    ASSERT_EQ(window.shown.size(), 2u);
    expectNotFound(0, "Gone", true);
    expectNotFound(1, "Doors", true);
    EXPECT_EQ(window.list, (Lines{"L\\Oak.dwg", "L\\Oak3.dwg"}));
    EXPECT_EQ(window.text4, "2");
}

TEST_F(KeywordScanTest, ALibraryWithoutNameIsLookedForUnderItsEndingAlone)
{
    writeProfileString(window.masterProfile(), "Library", "libnum", "1");
    allLibraries();
    scan.run(window);
    ASSERT_EQ(window.shown.size(), 1u);
    expectNotFound(0, "", true);
}

TEST_F(KeywordScanTest, AMissingDrawingIsNoticedOnlyWhenItHasToBeRead)
{
    library("Doors", {"L\\Gone oak.dwg;x", "L\\Gone ash.dwg;oak", "L\\Gone elm.dwg;x", "L\\Oak.dwg;x"});
    window.texts = {"OAK"};
    scan.run(window);
    EXPECT_EQ(window.list, (Lines{"L\\Gone oak.dwg", "L\\Gone ash.dwg"}));
    expectNotFound(0, "Doors", false);
}

TEST_F(KeywordScanTest, FilesThatOthersCloseEndTheLibrary)
{
    plainLibrary("Doors", 3);
    plainLibrary("Windows", 1);
    catalogue({"Doors", "Windows"});
    window.texts = {"D"};
    allLibraries();
    window.onTurn = [this](int turn) {
        if (turn == 2)
            window.closeAllFiles();
    };
    scan.run(window);
    EXPECT_EQ(window.list, (Lines{plain(1), plain(1)}));
    ASSERT_EQ(window.shown.size(), 1u);
    expectNotFound(0, "Doors", true);
}

// ---- the stop

TEST_F(KeywordScanTest, AStopThatKeepsTheWindowKeepsTheHits)
{
    plainLibrary("Doors", 5);
    window.texts = {"D"};
    window.onTurn = [this](int turn) {
        if (turn == 2)
            scan.stopAndKeepWindow();
    };
    scan.run(window);
    EXPECT_EQ(window.list.size(), 2u);
    EXPECT_EQ(window.ended, 0) << "the stop button has put the window in order";
    EXPECT_EQ(window.unloads, 0);
    EXPECT_FALSE(scan.isRunning());
}

TEST_F(KeywordScanTest, AStopForClosingUnloadsTheWindow)
{
    plainLibrary("Doors", 5);
    window.texts = {"D"};
    window.onTurn = [this](int turn) {
        if (turn == 2)
            scan.stop();
    };
    scan.run(window);
    EXPECT_EQ(window.list.size(), 2u);
    EXPECT_EQ(window.ended, 0);
    EXPECT_EQ(window.unloads, 1);
}

TEST_F(KeywordScanTest, AStopButtonPressedWithoutARunKeepsTheWindowAtTheNextClosing)
{
    plainLibrary("Doors", 5);
    window.texts = {"D"};
    scan.stopAndKeepWindow();
    window.onTurn = [this](int turn) {
        if (turn == 2)
            scan.stop();
    };
    scan.run(window);
    EXPECT_EQ(window.list.size(), 2u) << "the press before the run does not stop it";
    EXPECT_EQ(window.unloads, 0);
    window.onTurn = [this](int) { scan.stop(); };
    scan.run(window);
    EXPECT_EQ(window.unloads, 1) << "the stop before has used the press up";
}

TEST_F(KeywordScanTest, AStopInTheTurnBehindTheLastLineEndsTheRunWithoutItsEnd)
{
    plainLibrary("Doors", 1);
    window.texts = {"D"};
    window.onTurn = [this](int turn) {
        if (turn == 2)
            scan.stopAndKeepWindow();
    };
    scan.run(window);
    EXPECT_EQ(window.ended, 0);
}

TEST_F(KeywordScanTest, AWindowThatGoesEndsTheRun)
{
    plainLibrary("Doors", 5);
    window.texts = {"D"};
    window.onTurn = [this](int turn) { window.gone = turn == 3; };
    scan.run(window);
    EXPECT_EQ(window.turns, 3);
    EXPECT_EQ(window.ended, 0);
    EXPECT_FALSE(scan.isRunning());
}

// ---- a search pressed during a run

TEST_F(KeywordScanTest, ASearchDuringARunBeginsAnewAndEndsTheRunWithoutAWord)
{
    plainLibrary("Doors", 5);
    window.texts = {"D"};
    window.onTurn = [this](int turn) {
        if (turn == 3)
            scan.run(window);
    };
    scan.run(window);
    EXPECT_EQ(window.list.size(), 5u);
    EXPECT_EQ(window.text4, "5");
    EXPECT_EQ(window.begun, 2);
    EXPECT_EQ(window.ended, 1);
    EXPECT_TRUE(window.shown.empty());
}

TEST_F(KeywordScanTest, ASearchThatIsRefusedDuringARunEndsTheRunAllTheSame)
{
    plainLibrary("Doors", 5);
    window.texts = {"D"};
    window.onTurn = [this](int turn) {
        if (turn == 3) {
            window.combo1.clear();
            scan.run(window);
        }
    };
    scan.run(window);
    EXPECT_EQ(window.list.size(), 3u);
    ASSERT_EQ(window.shown.size(), 1u);
    EXPECT_EQ(window.shown[0].text, "Please Select a Library");
    EXPECT_EQ(window.ended, 1);
    EXPECT_EQ(window.text4, "3");
}

TEST_F(KeywordScanTest, AStopBehindASearchDuringARunEndsBoth)
{
    plainLibrary("Doors", 5);
    window.texts = {"D"};
    window.onTurn = [this](int turn) {
        if (turn == 3) {
            scan.run(window);
            scan.stopAndKeepWindow();
        }
    };
    scan.run(window);
    EXPECT_EQ(window.begun, 1);
    EXPECT_EQ(window.ended, 0);
    EXPECT_FALSE(scan.isRunning());
}

// ---- reading ahead

TEST_F(KeywordScanTest, ReadsSeveralDrawingsAtOnceButNoMoreThanIsAllowed)
{
    plainLibrary("Doors", 50);
    window.texts = {"NOWHERE"};
    KeywordScan few(drawings.reader(), 4);
    drawings.hang(plain(1));
    window.whileReading = [this] {
        if (drawings.read().size() >= 4)
            drawings.release();
    };
    few.run(window);
    EXPECT_EQ(drawings.read().size(), 50u);
    EXPECT_LE(drawings.mostAtOnce, 4);
    EXPECT_EQ(window.scanned.size(), 50u);
}

TEST_F(KeywordScanTest, ReadsNoDrawingAheadThatNameOrLabelSettle)
{
    Lines lines;
    for (int i = 0; i < 20; ++i)
        lines.push_back("L\\Gone" + std::to_string(i) + ".dwg;" + (i % 2 ? "oak" : "") + "x");
    for (int i = 0; i < 20; i += 2)
        drawings.add("L\\Gone" + std::to_string(i) + ".dwg");
    library("Doors", lines);
    window.texts = {"OAK"};
    scan.run(window);
    EXPECT_EQ(drawings.read().size(), 10u);
    EXPECT_TRUE(window.shown.empty());
}

TEST_F(KeywordScanTest, TheOrderIsThatOfTheLinesHoweverLongAReadTakes)
{
    plainLibrary("Doors", 10);
    for (int i = 1; i <= 10; ++i)
        drawings.add(plain(i), "fire");
    window.texts = {"FIRE"};
    drawings.hang(plain(1));
    window.whileReading = [this] {
        if (drawings.read().size() == 10)
            drawings.release();
    };
    scan.run(window);
    ASSERT_EQ(window.list.size(), 10u);
    for (int i = 1; i <= 10; ++i)
        EXPECT_EQ(window.list[std::size_t(i - 1)], plain(i));
}

TEST_F(KeywordScanTest, AStopDoesNotWaitForAReadThatHangs)
{
    plainLibrary("Doors", 5);
    window.texts = {"NOWHERE"};
    drawings.hang(plain(2));
    window.whileReading = [this] {
        if (window.scanned.size() == 2)
            scan.stopAndKeepWindow();
    };
    scan.run(window);
    EXPECT_EQ(window.scanned.size(), 2u);
    EXPECT_GT(livingWorkers(), 0u) << "it hangs still";
}

TEST_F(KeywordScanTest, KeywordsThatChangeAfterAReadAheadCountAllTheSame)
{
    library("Doors", {"L\\Oak.dwg;x", "L\\Ash.dwg;x", "L\\Elm.dwg;x"});
    drawings.add("L\\Ash.dwg", "fire");
    drawings.add("L\\Elm.dwg", "water");
    window.texts = {"OAK"};
    window.onTurn = [this](int) { window.texts = {"WATER"}; };
    scan.run(window);
    EXPECT_EQ(window.list, (Lines{"L\\Oak.dwg", "L\\Elm.dwg"}));
}

TEST_F(KeywordScanTest, AHundredThousandLinesAreWalkedToTheEnd)
{
    Lines lines(100'000, "L\\Oak.dwg;x");
    library("Doors", lines);
    window.texts = {"OAK"};
    scan.run(window);
    EXPECT_EQ(window.text4, "100000");
}

} // namespace
} // namespace zv
