#include "host/ActionFixture.h"

#include "log/ActivityLog.h"
#include "support/TemporaryFolder.h"

#include <clocale>

namespace zv::test {

namespace {

/// Finding a running host whose activation is not allowed, then the block branch up to the bracket.
const Events kBlockBegins = {
    "attach AutoCAD.Application", "App.Version",        "attach AutoCAD.Application", "hide",
    "attach AutoCAD.Application", "App.ActiveDocument", "App.Visible = True",         "App.Caption",
    "activate Scripted Host"};
const Events kBracketBegins = {"ActiveDocument.ObjectSnapMode", "ActiveDocument.GetVariable('filedia')",
                               "ActiveDocument.SetVariable('Filedia', 0)"};
const Events kBracketEnds = {"ActiveDocument.SetVariable('Filedia', 1)",
                             "ActiveDocument.SetVariable('Filedia', 1)", "show",
                             "ActiveDocument.SetVariable('Filedia', 1)"};
const Events kLog = {"log C:\\Lib\\Bolt.dwg, Insert as Block"};

std::string typed(const std::string& text)
{
    return "ActiveDocument.SendCommand('" + text + "')";
}

const char* const kPlainCommand =
    "(command \"_.-insert\" \"C:/Lib/Bolt.dwg\"\"X\"\"1.00\"\"Y\"\"1.00\"\"Z\"\"1.00\")<CR>";

using BlockInsertion = ActionFixture;

TEST_F(BlockInsertion, TypesTheCommandBetweenTheBracketsAndLogs)
{
    place.run("");
    act();
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + Events{typed(kPlainCommand)} + kBracketEnds + kLog));
}

TEST_F(BlockInsertion, TypesAndLogsADrawingInAnyScript)
{
    std::setlocale(LC_ALL, "C.UTF-8");
    place.run("");
    act("C:\\T\xC3\xBCren\\\xE9\x97\xA8.dwg");
    std::string command = kPlainCommand;
    const std::string plain = "C:/Lib/Bolt.dwg";
    command.replace(command.find(plain), plain.size(), "C:/T\xC3\xBCren/\xE9\x97\xA8.dwg");
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + Events{typed(command)} + kBracketEnds +
                       Events{"log C:\\T\xC3\xBCren\\\xE9\x97\xA8.dwg, Insert as Block"}));
    std::setlocale(LC_ALL, "C");
}

TEST_F(BlockInsertion, GivesTheUsersOwnSettingBack)
{
    place.run("variable filedia 0");
    act();
    const Events ends = {"ActiveDocument.SetVariable('Filedia', 0)",
                         "ActiveDocument.SetVariable('Filedia', 0)", "show",
                         "ActiveDocument.SetVariable('Filedia', 0)"};
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + Events{typed(kPlainCommand)} + ends + kLog));
}

TEST_F(BlockInsertion, TurnsFileDialogsOnBeforeAndAfterWhenTheyAreAlwaysOn)
{
    settings.keepFileDialogs = true;
    place.run("variable filedia 0");
    act();
    const Events begins = {"ActiveDocument.ObjectSnapMode", "ActiveDocument.SetVariable('filedia', 1)",
                           "ActiveDocument.GetVariable('filedia')",
                           "ActiveDocument.SetVariable('Filedia', 0)"};
    const Events ends = kBracketEnds + Events{"ActiveDocument.SetVariable('Filedia', 1)"};
    EXPECT_EQ(events, (kBlockBegins + begins + Events{typed(kPlainCommand)} + ends + kLog));
}

TEST_F(BlockInsertion, ScaleOfZeroGoesInAtOne)
{
    window.x = "0";
    place.run("");
    act();
    EXPECT_EQ(
        events,
        kBlockBegins + kBracketBegins +
            Events{typed("(command \"_.-insert\" \"C:/Lib/Bolt.dwg\"\"X\"\"1\"\"Y\"\"1\"\"Z\"\"1\")<CR>")} +
            kBracketEnds + kLog);
}

TEST_F(BlockInsertion, ScaleThatIsNoNumberInsertsNothing)
{
    window.x = "half";
    place.run("");
    act();
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + kBracketEnds + kLog));
}

TEST_F(BlockInsertion, StarInThePathIsCutOff)
{
    place.run("");
    act("C:\\Lib\\a*b*Bolt.dwg");
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins +
                       Events{typed("(command \"_.-insert\" "
                                    "\"Bolt.dwg\"\"X\"\"1.00\"\"Y\"\"1.00\"\"Z\"\"1.00\")<CR>")} +
                       kBracketEnds + Events{"log C:\\Lib\\a*b*Bolt.dwg, Insert as Block"}));
}

const Events kAskPoint = {"ActiveDocument.Utility", "Utility.GetPoint(missing, 'Specify insertion point: ')",
                          "Utility.TranslateCoordinates((1.5 2 0), empty, empty, False)"};

TEST_F(BlockInsertion, ExplodedAsksForThePointFirst)
{
    window.check4 = true;
    window.x = "2";
    place.run("");
    act();
    EXPECT_EQ(events,
              (kBlockBegins + kBracketBegins + kAskPoint +
               Events{typed("_.-insert<CR>*C:/Lib/Bolt.dwg<CR>1.5,2,0<CR>2<CR>")} + kBracketEnds + kLog));
}

TEST_F(BlockInsertion, ExplodedPathThatBeginsWithAStarComesOutWithNone)
{
    window.check4 = true;
    place.run("");
    act("*C:\\Lib\\Bolt.dwg");
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + kAskPoint +
                       Events{typed("_.-insert<CR>C:/Lib/Bolt.dwg<CR>1.5,2,0<CR>1.00<CR>")} + kBracketEnds +
                       Events{"log *C:\\Lib\\Bolt.dwg, Insert as Block"}));
}

TEST_F(BlockInsertion, EscapeAtThePointIsSilentAndLogged)
{
    window.check4 = true;
    place.run("fault GetPoint#1 cancelled the user pressed Esc");
    act();
    EXPECT_EQ(events,
              (kBlockBegins + kBracketBegins +
               Events{"ActiveDocument.Utility", "Utility.GetPoint(missing, 'Specify insertion point: ')"} +
               kBracketEnds + kLog));
}

TEST_F(BlockInsertion, PointThatCannotBeTranslatedIsSilentAndLogged)
{
    window.check4 = true;
    place.run("fault TranslateCoordinates#1 failed");
    act();
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + kAskPoint + kBracketEnds + kLog));
}

const Events kReadScales = {"ActiveDocument.GetVariable('dimscale')", "property of C:/Lib/Bolt.dwg"};

std::string typedAtScale(const std::string& scale)
{
    return typed("(command \"_.-insert\" \"C:/Lib/Bolt.dwg\"\"X\"\"" + scale + "\"\"Y\"\"" + scale +
                 "\"\"Z\"\"" + scale + "\")<CR>");
}

TEST_F(BlockInsertion, AutoScaleDividesTheHostsScaleByTheDrawings)
{
    window.check1 = true;
    window.property = std::string("Scale=48");
    place.run("variable dimscale 96.0");
    act();
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + kReadScales + Events{"x 2", typedAtScale("2")} +
                       kBracketEnds + kLog));
}

TEST_F(BlockInsertion, AutoScaleOfADrawingWithoutAScaleTakesTheHosts)
{
    window.check1 = true;
    place.run("variable dimscale 96.0");
    act();
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + kReadScales +
                       Events{"x 1", "x 96", typedAtScale("96")} + kBracketEnds + kLog));
    EXPECT_EQ(window.x, "96");
}

TEST_F(BlockInsertion, AutoScaleCountsAHostScaleOfZeroAsOne)
{
    window.check1 = true;
    window.property = std::string("0.5");
    place.run("variable dimscale 0.0");
    act();
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + kReadScales + Events{"x 2", typedAtScale("2")} +
                       kBracketEnds + kLog));
}

TEST_F(BlockInsertion, AutoScaleTakesWhatStandsBehindTheLastEqualsSign)
{
    window.check1 = true;
    window.property = std::string("a=b=4");
    place.run("variable dimscale 1.0");
    act();
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + kReadScales + Events{"x 0.25", typedAtScale("0.25")} +
                       kBracketEnds + kLog));
}

TEST_F(BlockInsertion, StoredScaleThatIsNoNumberInsertsNothing)
{
    for (const char* stored : {"Scale=half", "Scale=0"}) {
        events.clear();
        window.check1 = true;
        window.property = std::string(stored);
        place.run("");
        act();
        EXPECT_EQ(events, (kBlockBegins + kBracketBegins + kReadScales + kBracketEnds + kLog)) << stored;
        place.end();
    }
}

TEST_F(BlockInsertion, DrawingThatCannotBeReadInsertsNothing)
{
    window.check1 = true;
    window.property = Error{ErrorCode::NotFound, "no such file"};
    place.run("");
    act();
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + kReadScales + kBracketEnds + kLog));
}

TEST_F(BlockInsertion, ExplodedAutoScaleAsksForThePointBeforeAnything)
{
    window.check1 = true;
    window.check4 = true;
    window.property = std::string("s=2");
    place.run("variable dimscale 1.0");
    act();
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + kAskPoint + kReadScales +
                       Events{"x 0.5", typed("_.-insert<CR>*C:/Lib/Bolt.dwg<CR>1.5,2,0<CR>0.5<CR>")} +
                       kBracketEnds + kLog));
}

TEST_F(BlockInsertion, WithoutAnyModeNothingIsTyped)
{
    window.currentMode = ActionMode::None;
    place.run("");
    act();
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + kBracketEnds + Events{"log C:\\Lib\\Bolt.dwg, "}));
}

TEST_F(BlockInsertion, SearchHasItsOwnLogWord)
{
    place.run("");
    act("C:\\Lib\\Bolt.dwg", ActionCaller::Search);
    EXPECT_EQ(events.back(), "log C:\\Lib\\Bolt.dwg, Search and Insert as Block");
}

TEST_F(BlockInsertion, LogThatCannotBeWrittenDisturbsNothing)
{
    const TemporaryFolder folder;
    std::filesystem::create_directories(folder.file("folder.csv"));
    const Events unlogged(kInsertion.begin(), kInsertion.end() - 1);
    place.run("");
    for (const std::string& log : {folder.file("gone/log.csv"), folder.file("folder.csv"), std::string()}) {
        events.clear();
        services.writeLog = [&](const std::string& drawing, std::string_view method) {
            writeLog(log, logEntry("Ann", drawing, method));
        };
        act();
        EXPECT_TRUE(ended);
        EXPECT_EQ(events, (Events{"attach AutoCAD.Application", "App.Version", "attach AutoCAD.Application"} +
                           unlogged))
            << log;
    }
}

// ---- the name check

const Events kLookAtBlock = {"Block.Name", "Block.IsXRef"};

TEST_F(BlockInsertion, XrefOfTheNameRefusesTheInsertionAndIsLogged)
{
    settings.checkXrefNames = true;
    place.run("block *Model_Space layout\nblock bolt xref");
    act();
    EXPECT_EQ(
        events,
        (kBlockBegins + Events{"ActiveDocument.Blocks", "Blocks items"} + kLookAtBlock + kLookAtBlock +
         Events{"show", "plain [Can't Insert Block if Xref Exists!] BOLT Already Exists as an Xref in this "
                        "Drawing!"} +
         kLog));
}

TEST_F(BlockInsertion, BlockOfTheNameOrXrefOfALongerNameIsNoHindrance)
{
    settings.checkXrefNames = true;
    place.run("block BOLT\nblock BOLT2 xref");
    act();
    EXPECT_EQ(events, (kBlockBegins + Events{"ActiveDocument.Blocks", "Blocks items"} + kLookAtBlock +
                       kLookAtBlock + kBracketBegins + Events{typed(kPlainCommand)} + kBracketEnds + kLog));
}

TEST_F(BlockInsertion, EndingInAFolderOfThePathPlaysNoPart)
{
    settings.checkXrefNames = true;
    place.run("block BOLT xref");
    act("C:\\Old.DWG\\Bolt.dwg");
    EXPECT_EQ(events,
              (kBlockBegins + Events{"ActiveDocument.Blocks", "Blocks items"} + kLookAtBlock +
               Events{"show", "plain [Can't Insert Block if Xref Exists!] BOLT Already Exists as an Xref in "
                              "this Drawing!"} +
               Events{"log C:\\Old.DWG\\Bolt.dwg, Insert as Block"}));
}

TEST_F(BlockInsertion, BlocksThatCannotBeReadAreNoHindrance)
{
    settings.checkXrefNames = true;
    place.run("fault Blocks#1 failed");
    act();
    EXPECT_EQ(events, (kBlockBegins + Events{"ActiveDocument.Blocks"} + kBracketBegins +
                       Events{typed(kPlainCommand)} + kBracketEnds + kLog));
}

// ---- a host that fails

TEST_F(BlockInsertion, HostWithoutADrawingIsSilent)
{
    place.run("fault ActiveDocument#1 failed No Document object");
    act();
    EXPECT_EQ(events, (Events(kBlockBegins.begin(), kBlockBegins.end() - 3) + Events{"show"} + kLog));
}

TEST_F(BlockInsertion, WithoutARememberedSettingNothingIsSetBack)
{
    place.run("fault GetVariable#1 failed");
    act();
    EXPECT_EQ(events,
              (kBlockBegins +
               Events{"ActiveDocument.ObjectSnapMode", "ActiveDocument.GetVariable('filedia')", "show"} +
               kLog));
}

TEST_F(BlockInsertion, HostThatDiesBeforeTheCommandIsSilent)
{
    place.run("fault SetVariable#1 die");
    act();
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + kBracketEnds + kLog));
}

TEST_F(BlockInsertion, HostThatDiesDuringOrAfterTheCommandIsSilent)
{
    for (const char* fault : {"fault SendCommand#1 die", "fault SendCommand#1 die-after"}) {
        events.clear();
        place.run(fault);
        act();
        EXPECT_EQ(events,
                  (kBlockBegins + kBracketBegins + Events{typed(kPlainCommand)} + kBracketEnds + kLog))
            << fault;
        place.end();
    }
}

TEST_F(BlockInsertion, HostThatRefusesCallsForFiveSecondsIsAskedAgain)
{
    std::string script;
    for (const char* member : {"Version", "GetVariable", "SendCommand"}) {
        for (int use = 1; use <= 7; ++use)
            script += std::string("fault ") + member + "#" + std::to_string(use) + " busy\n";
    }
    place.run(script);
    time.skipsFromMs = TestTime::kBusyPauses;
    act();
    EXPECT_GE(time.skipped, std::chrono::seconds(15));
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + Events{typed(kPlainCommand)} + kBracketEnds + kLog));
}

TEST_F(BlockInsertion, HostThatStaysBusyCountsAsFailed)
{
    place.run("fault SendCommand#* busy");
    time.skipsFromMs = TestTime::kBusyPauses;
    act();
    EXPECT_EQ(events, (kBlockBegins + kBracketBegins + Events{typed(kPlainCommand)} + kBracketEnds + kLog));
}

} // namespace

} // namespace zv::test
