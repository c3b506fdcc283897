#include "host/ActionFixture.h"

#include "platform/Text.h"

#include <algorithm>

namespace zv::test {

namespace {

const char* const kSecondQuestion =
    "question [AutoCAD Not Loaded] AutoCAD is Not Loaded|Would You Like to Load AutoCAD Now?";

std::string yes(const char* question)
{
    return std::string(question) + " Yes";
}

std::string no(const char* question)
{
    return std::string(question) + " No";
}

using FindingTheHost = ActionFixture;

TEST_F(FindingTheHost, NoIsDeclinedShownAndLogged)
{
    act();
    EXPECT_EQ(events, (Events{kNotRunning, no(kFirstQuestion), "show", kLogLine}));
}

TEST_F(FindingTheHost, WithNoneInstalledTheFailureEndsTheActionHiddenAndUnlogged)
{
    window.answers = {true};
    act();
    EXPECT_EQ(events, (Events{kNotRunning, yes(kFirstQuestion), "hide", "splash", "splash off",
                              "create AutoCAD.Application.20: none", "create AutoCAD.Application.19: none",
                              "create AutoCAD.Application.18: none", "create AutoCAD.Application.17: none",
                              "create AutoCAD.Application.16: none", "create AutoCAD.Application.15: none",
                              "default pointer",
                              "critical [] Could not launch AutoCAD! Please try loading AutoCAD first."}));
}

TEST_F(FindingTheHost, TriesStopAtTheFirstReleaseThatStarts)
{
    place.install("AutoCAD.Application.17", "listen AutoCAD.Application\nlisten AutoCAD.Application.17");
    window.answers = {true};
    act();
    EXPECT_EQ(events, (Events{kNotRunning, yes(kFirstQuestion), "hide", "splash", "splash off",
                              "create AutoCAD.Application.20: none", "create AutoCAD.Application.19: none",
                              "create AutoCAD.Application.18: none", "create AutoCAD.Application.17",
                              "App.Version", kAttach} +
                       kInsertion));
}

TEST_F(FindingTheHost, SlowHostIsWaitedFor)
{
    place.install("AutoCAD.Application.20",
                  "delay 300\nlisten AutoCAD.Application\nlisten AutoCAD.Application.20");
    window.answers = {true};
    act();
    EXPECT_EQ(events, (Events{kNotRunning, yes(kFirstQuestion), "hide", "splash", "splash off",
                              "create AutoCAD.Application.20", "App.Version", kAttach} +
                       kInsertion));
}

TEST_F(FindingTheHost, HostThatRegistersLateIsAskedForASecondTime)
{
    place.install("AutoCAD.Application.20", "listen AutoCAD.Application.20");
    window.answers = {true, false};
    act();
    EXPECT_EQ(events, (Events{kNotRunning, yes(kFirstQuestion), "hide", "splash", "splash off",
                              "create AutoCAD.Application.20", "App.Version", kNotRunning,
                              no(kSecondQuestion), "show", kLogLine}));
}

TEST_F(FindingTheHost, SecondYesStartsTheVersionlessHostWhileTheClipPlays)
{
    place.install("AutoCAD.Application.20", "listen AutoCAD.Application.20");
    place.install("AutoCAD.Application", "listen AutoCAD.Application");
    window.answers = {true, true};
    act();
    EXPECT_EQ(events,
              (Events{kNotRunning, yes(kFirstQuestion), "hide", "splash", "splash off",
                      "create AutoCAD.Application.20", "App.Version", kNotRunning, yes(kSecondQuestion),
                      "hide", "splash", "create AutoCAD.Application", "splash off"} +
               kInsertion));
}

TEST_F(FindingTheHost, VersionlessHostThatCannotBeStartedIsSilent)
{
    place.install("AutoCAD.Application.20", "listen AutoCAD.Application.20");
    window.answers = {true, true};
    act();
    EXPECT_EQ(events,
              (Events{kNotRunning, yes(kFirstQuestion), "hide", "splash", "splash off",
                      "create AutoCAD.Application.20", "App.Version", kNotRunning, yes(kSecondQuestion),
                      "hide", "splash", "create AutoCAD.Application: none", "splash off", "show", kLogLine}));
}

TEST_F(FindingTheHost, DeadVersionLeadsToTheSecondQuestion)
{
    place.run("fault Version#1 die");
    act();
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kNotRunning, no(kSecondQuestion), "show", kLogLine}));
}

TEST_F(FindingTheHost, GarbageAndEndlessAnswersCountAsALostHost)
{
    for (const char* fault : {"fault Version#1 garbage", "fault Version#1 too-long"}) {
        events.clear();
        place.run(fault);
        act();
        EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach} + kInsertion)) << fault;
        place.end();
    }
}

TEST_F(FindingTheHost, AllowedActivationAttachesAroundIt)
{
    settings.allowActivation = true;
    place.run("version 20.1s (LMS Tech)");
    act();
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach, "App.Caption", "activate Scripted Host",
                              kAttach, kAttach} +
                       kInsertion));
}

TEST_F(FindingTheHost, RefusedActivationGoesOn)
{
    settings.allowActivation = true;
    activationWorks = false;
    place.run("");
    act();
    EXPECT_EQ(events,
              (Events{kAttach, "App.Version", kAttach, "App.Caption", "activate Scripted Host", kAttach} +
               kInsertion));
}

TEST_F(FindingTheHost, Release16IsNeverActivatedAtTheAttach)
{
    settings.allowActivation = true;
    place.run("version 16.0");
    act();
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach} + kInsertion));
}

TEST_F(FindingTheHost, Release162IsNoRelease160)
{
    settings.allowActivation = true;
    place.run("version 16.2s (LMS Tech)");
    act();
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach, "App.Caption", "activate Scripted Host",
                              kAttach, kAttach} +
                       kInsertion));
}

TEST_F(FindingTheHost, HostThatGoesAtItsActivationIsAskedForAgain)
{
    settings.allowActivation = true;
    place.run("");
    whenActivated = [this] { place.end(); };
    window.answers = {false};
    act();
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach, "App.Caption", "activate Scripted Host",
                              kNotRunning, kNotRunning, no(kSecondQuestion), "show", kLogLine}));
}

TEST_F(FindingTheHost, BlockBranchAsksForAHostThatHasGoneMeanwhile)
{
    place.run("");
    window.whenHidden = [this] { place.end(); };
    window.answers = {false};
    act();
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach, "hide", kNotRunning, no(kSecondQuestion),
                              "show", kLogLine}));
}

TEST_F(FindingTheHost, BlockBranchStartsAHostAnewAndGoesOn)
{
    place.run("");
    window.whenHidden = [this] {
        place.end();
        place.install("AutoCAD.Application", "listen AutoCAD.Application");
    };
    window.answers = {true};
    act();
    const Events rest(kInsertion.begin() + 2, kInsertion.end());
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach, "hide", kNotRunning, yes(kSecondQuestion),
                              "hide", "splash", "create AutoCAD.Application", "splash off"} +
                       rest));
}

TEST_F(FindingTheHost, EachCallerHidesItselfAndGoesTheSameWay)
{
    const std::pair<ActionCaller, const char*> words[] = {
        {ActionCaller::Command11, "Insert as Block"},
        {ActionCaller::Thumbnail1, "Insert as Block"},
        {ActionCaller::OtherThumbnail, "Insert as Block"},
        {ActionCaller::Search, "Search and Insert as Block"}};
    place.run("");
    for (const auto& [caller, word] : words) {
        events.clear();
        act("C:\\Lib\\Bolt.dwg", caller);
        Events expected = Events{kAttach, "App.Version", kAttach} + kInsertion;
        expected.back() = std::string("log C:\\Lib\\Bolt.dwg, ") + word;
        EXPECT_EQ(events, expected) << word;
    }
}

// ---- the dialogs

using Dispatch = ActionFixture;

/// What comes before Xattach.
const Events kPreparation = {"hide", "property of C:\\Lib\\Bolt.dwg"};

TEST_F(Dispatch, OpenShowsCmodeHidesTheCallerAndLogsAtOnce)
{
    window.currentMode = ActionMode::OpenCopy;
    place.run("");
    act();
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach, "cmode C:\\Lib\\Bolt.dwg", "hide",
                              "log C:\\Lib\\Bolt.dwg, Open/Copy"}));
}

TEST_F(Dispatch, XrefShowsXattachHidesTheCallerAndLogsAtOnce)
{
    window.currentMode = ActionMode::Xref;
    place.run("");
    act("C:\\Lib\\Bolt.dwg", ActionCaller::Search);
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach} + kPreparation +
                       Events{"Xattach C:\\Lib\\Bolt.dwg", "hide",
                              "log C:\\Lib\\Bolt.dwg, Search and Insert as Xref"}));
}

TEST_F(Dispatch, TheScaleStoredInTheDrawingGoesToXattach)
{
    window.currentMode = ActionMode::Xref;
    window.property = std::string("scale=a=48");
    place.run("");
    act();
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach} + kPreparation +
                       Events{"Xattach C:\\Lib\\Bolt.dwg, scale 48", "hide",
                              "log C:\\Lib\\Bolt.dwg, Insert as Xref"}));
}

TEST_F(Dispatch, ADrawingThatCannotBeReadIsAttachedWithoutAStoredScale)
{
    window.currentMode = ActionMode::Xref;
    window.property = Error{ErrorCode::Damaged, "no drawing"};
    place.run("");
    act();
    EXPECT_EQ(events[5], "Xattach C:\\Lib\\Bolt.dwg");
}

TEST_F(Dispatch, ABlockOfTheNameKeepsTheDrawingFromBeingAttachedAndIsLogged)
{
    window.currentMode = ActionMode::Xref;
    settings.checkXrefNames = true;
    place.run("block *Model_Space layout\nblock bolt");
    act();
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach, "App.ActiveDocument", "ActiveDocument.Blocks",
                              "Blocks items", "Block.Name", "Block.IsLayout", "Block.IsXRef", "Block.Name",
                              "Block.IsLayout", "Block.IsXRef",
                              "plain [Can't Xref if Block Exists!] BOLT Already Exists as a Block in this "
                              "Drawing!",
                              "show", "log C:\\Lib\\Bolt.dwg, Insert as Xref"}));
}

TEST_F(Dispatch, AnXrefOrALayoutOfTheNameIsNoHindranceForAnXref)
{
    window.currentMode = ActionMode::Xref;
    settings.checkXrefNames = true;
    place.run("block BOLT xref\nblock BOLT layout\nblock BOLT2");
    act();
    EXPECT_EQ(events.back(), "log C:\\Lib\\Bolt.dwg, Insert as Xref");
    EXPECT_EQ(events[events.size() - 3], "Xattach C:\\Lib\\Bolt.dwg");
}

TEST_F(Dispatch, AHostWithoutADrawingLeavesTheNameUncheckedAndShowsTheCaller)
{
    window.currentMode = ActionMode::Xref;
    settings.checkXrefNames = true;
    place.run("fault ActiveDocument#1 failed");
    act();
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach, "App.ActiveDocument", "show",
                              "log C:\\Lib\\Bolt.dwg, Insert as Xref"}));
}

TEST_F(Dispatch, DialogThatCannotBeShownBringsTheCallerBack)
{
    window.hasDialogs = false;
    place.run("");
    for (const ActionMode mode : {ActionMode::OpenCopy, ActionMode::Xref}) {
        window.currentMode = mode;
        act();
        EXPECT_EQ(events[events.size() - 2], "show");
    }
}

TEST_F(Dispatch, NoIsLoggedWithTheModesWord)
{
    window.currentMode = ActionMode::OpenCopy;
    act("C:\\Lib\\Bolt.dwg", ActionCaller::Search);
    EXPECT_EQ(events.back(), "log C:\\Lib\\Bolt.dwg, Search and Open/Copy");
}

// ---- the queue

class Queueing : public ActionFixture {
protected:
    Queueing() { window.currentMode = ActionMode::Queue; }
};

TEST_F(Queueing, AddsTheSelectedDrawingWithoutAnyHostOrLog)
{
    act("C:\\Lib\\Other.dwg");
    EXPECT_EQ(events,
              (Events{"clear cart mark", "queue 'C:\\Lib\\Bolt.dwg'",
                      "information [File Added to Queue] Added: C:\\Lib\\Bolt.dwg|to the Drawing Queue"}));
}

TEST_F(Queueing, ThumbnailsBehindTheFirstHaveAnotherText)
{
    act("C:\\Lib\\Bolt.dwg", ActionCaller::OtherThumbnail);
    EXPECT_EQ(events.back(),
              "information [File Added to Queue] Added: C:\\Lib\\Bolt.dwg|to the Drawing  Queue");
}

TEST_F(Queueing, NoSelectionOrOneCharacterIsRefusedUnderTheCallersTitle)
{
    const std::pair<ActionCaller, const char*> titles[] = {
        {ActionCaller::Command11, "Please Select a File to add to Drawing Queue!"},
        {ActionCaller::Thumbnail1, "Please Select a File to add to Drawing Queue!"},
        {ActionCaller::OtherThumbnail, "Please Select a File to add to the Drawing Queue!"}};
    for (const auto& [caller, title] : titles) {
        for (const char* selected : {"", "C"}) {
            events.clear();
            selectedDrawing = selected;
            act(selected, caller);
            EXPECT_EQ(events, (Events{"clear cart mark",
                                      std::string("information [") + title +
                                          "] No Files Selected for the Drawing Queue",
                                      "enable main window"}));
        }
    }
}

TEST_F(Queueing, SearchWritesAnEmptyLineBeforeItRefuses)
{
    selectedDrawing.clear();
    act("", ActionCaller::Search);
    EXPECT_EQ(events,
              (Events{"clear cart mark", "queue ''",
                      "information [File Added to Queue] Added: |to the Drawing Queue",
                      "information [Please Select a File to add to the Drawing Queue!] No Files Selected "
                      "for the Drawing Queue",
                      "enable main window"}));
}

TEST_F(Queueing, QueueThatCannotBeOpenedIsAnError)
{
    queued = Error{ErrorCode::Denied, "read-only"};
    act();
    EXPECT_FALSE(ended);
    EXPECT_EQ(events, (Events{"clear cart mark", "queue 'C:\\Lib\\Bolt.dwg'"}));
}

// ---- what cannot be typed

const std::string kHostile = "/x.dwg\" \"0,0\" \"1\" \"1\" \"0\") (setvar \"DIMSCALE\" 42) (princ \"";

TEST_F(Dispatch, DrawingThatCannotBeTypedIsRefusedBeforeTheHostIsTouched)
{
    place.run("");
    for (const ActionMode mode : {ActionMode::Block, ActionMode::Xref, ActionMode::OpenCopy}) {
        for (const std::string& drawing : {kHostile, std::string("C:\\a\x1B.dwg")}) {
            events.clear();
            window.currentMode = mode;
            act(drawing);
            EXPECT_EQ(events, (Events{"warning [Zelvora] The name of this drawing cannot be sent to "
                                      "AutoCAD: " +
                                      drawing}));
            EXPECT_TRUE(ended);
        }
    }
}

TEST_F(Dispatch, DrawingWhosePathIsNoTextIsRefusedBeforeTheHostIsTouched)
{
    if (wide("\xff") == u"\u00ff")
        GTEST_SKIP() << "every byte is a character in this code page";
    place.run("");
    const std::string drawing = "C:\\Lib\\\xff.dwg";
    act(drawing);
    EXPECT_EQ(events,
              (Events{"warning [Zelvora] The name of this drawing cannot be sent to AutoCAD: " + drawing}));
    EXPECT_EQ(place.transcript(), "");
}

TEST_F(Dispatch, DrawingThatCannotBeTypedCanBeQueued)
{
    window.currentMode = ActionMode::Queue;
    selectedDrawing = kHostile;
    act(kHostile);
    EXPECT_NE(std::find(events.begin(), events.end(), "queue '" + kHostile + "'"), events.end());
}

TEST_F(Dispatch, ScaleThatCannotBeTypedIsRefusedOnlyWhereItWouldBeTyped)
{
    const Events refusal = {"warning [Zelvora] This text cannot be sent to AutoCAD: 1\""};
    place.run("");
    window.x = "1\"";
    act();
    EXPECT_EQ(events, refusal);
    events.clear();
    window.check1 = true;
    act();
    EXPECT_EQ(events.front(), kAttach);
    events.clear();
    window.check1 = false;
    window.currentMode = ActionMode::OpenCopy;
    act();
    EXPECT_EQ(events.front(), kAttach);
}

TEST_F(Dispatch, HostThatIsGivenUpHasFailedWithoutAQuestion)
{
    place.run("fault Version#1 silent");
    // Over COM the attaching itself is waited for.
    time.givesUp = [this] { return !events.empty(); };
    act();
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kNotRunning, "show", kLogLine}));
}

TEST_F(Dispatch, StartedHostThatNeverAnswersCanBeGivenUpByTheSplash)
{
    place.install("AutoCAD.Application.20",
                  "listen AutoCAD.Application.20\nlisten AutoCAD.Application\nfault Version#1 silent");
    window.answers = {true};
    bool stoodBy = false;
    time.givesUp = [&] {
        stoodBy = stoodBy || splashStandsBy;
        return splashStandsBy;
    };
    act();
    EXPECT_TRUE(stoodBy);
    EXPECT_FALSE(splashStandsBy);
    EXPECT_EQ(events.back(), kLogLine);
    EXPECT_EQ(events[events.size() - 2], "show");
}

/// A host that answers its version and then hangs at one call.
class HangingHost : public ActionFixture, public testing::WithParamInterface<const char*> {};

TEST_P(HangingHost, CanBeGivenUpByTheSplashWhileTheCallerIsHidden)
{
    place.run("variable filedia 1\nfault " + std::string(GetParam()) + "#1 silent");
    window.check4 = true;
    bool stoodBy = false;
    time.givesUp = [&] {
        stoodBy = stoodBy ||
                  (splashStandsBy && !events.empty() && events.back().find(GetParam()) != std::string::npos);
        return stoodBy;
    };
    act();
    EXPECT_TRUE(stoodBy);
    EXPECT_FALSE(splashStandsBy);
    EXPECT_EQ(events.back(), kLogLine);
    EXPECT_NE(std::find(events.begin(), events.end(), "show"), events.end());
}

INSTANTIATE_TEST_SUITE_P(AtEveryCall, HangingHost,
                         testing::Values("ActiveDocument", "Visible", "Caption", "ObjectSnapMode",
                                         "GetVariable", "SetVariable", "Utility", "TranslateCoordinates"));

class AskingHost : public ActionFixture, public testing::WithParamInterface<const char*> {};

TEST_P(AskingHost, HasTheSplashOutOfItsUsersSight)
{
    place.run("variable filedia 1\nfault " + std::string(GetParam()) + "#1 silent");
    window.check4 = true;
    bool outOfSight = false, before = false;
    time.givesUp = [&] {
        outOfSight = outOfSight || (splashStandsBy && userAsked);
        before =
            before || (userAsked && (events.empty() || events.back().find(GetParam()) == std::string::npos));
        return outOfSight;
    };
    act();
    EXPECT_TRUE(outOfSight);
    EXPECT_FALSE(before);
    EXPECT_FALSE(userAsked);
}

INSTANTIATE_TEST_SUITE_P(AtEveryPrompt, AskingHost, testing::Values("GetPoint", "SendCommand"));

TEST_F(Dispatch, StartThatIsGivenUpHasFailedWithoutAMessage)
{
    place.install("AutoCAD.Application.20", "later 1000000 AutoCAD.Application.20");
    window.answers = {true};
    time.givesUp = [] { return true; };
    act();
    EXPECT_EQ(events.back(), kLogLine);
    EXPECT_EQ(events[events.size() - 2], "show");
    for (const std::string& event : events)
        EXPECT_FALSE(event.starts_with("critical")) << event;
}

TEST_F(Dispatch, WaitThatIsGivenUpAtThePickStillGivesTheSettingBack)
{
    place.run("variable filedia 1\nfault GetPoint#1 silent");
    window.check4 = true;
    time.givesUp = [this] { return !events.empty() && events.back().starts_with("Utility.GetPoint"); };
    act();
    EXPECT_EQ(events.back(), kLogLine);
    const std::string transcript = place.transcript();
    EXPECT_GT(transcript.rfind("SetVariable [\"Filedia\",1]"), transcript.find("GetPoint")) << transcript;
    EXPECT_NE(transcript.rfind("SetVariable [\"Filedia\",1]"), std::string::npos) << transcript;
}

} // namespace

} // namespace zv::test
