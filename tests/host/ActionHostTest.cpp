#include "host/ActionFixture.h"

namespace zv::test {

namespace {

const char* const kAttach = "attach AutoCAD.Application";
const char* const kNotRunning = "attach AutoCAD.Application: none";
const char* const kFirstQuestion =
    "question [AutoCAD Not Loaded] AutoCAD is Not Loaded|Would You Like to Load AutoCAD Now?||";
const char* const kSecondQuestion =
    "question [AutoCAD Not Loaded] AutoCAD is Not Loaded|Would You Like to Load AutoCAD Now?";
const char* const kLog = "log C:\\Lib\\Bolt.dwg, Insert as Block";

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
    EXPECT_EQ(events, (Events{kNotRunning, no(kFirstQuestion), "show", kLog}));
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
    const Events begins(events.begin(), events.begin() + 11);
    EXPECT_EQ(begins, (Events{kNotRunning, yes(kFirstQuestion), "hide", "splash", "splash off",
                              "create AutoCAD.Application.20: none", "create AutoCAD.Application.19: none",
                              "create AutoCAD.Application.18: none", "create AutoCAD.Application.17",
                              "App.Version", kAttach}));
    EXPECT_EQ(events.back(), kLog);
}

TEST_F(FindingTheHost, SlowHostIsWaitedFor)
{
    place.install("AutoCAD.Application.20",
                  "delay 300\nlisten AutoCAD.Application\nlisten AutoCAD.Application.20");
    window.answers = {true};
    act();
    EXPECT_EQ(events[5], "create AutoCAD.Application.20");
    EXPECT_NE(place.transcript().find("SendCommand"), std::string::npos);
}

TEST_F(FindingTheHost, HostThatRegistersLateIsAskedForASecondTime)
{
    place.install("AutoCAD.Application.20", "listen AutoCAD.Application.20");
    window.answers = {true, false};
    act();
    EXPECT_EQ(events, (Events{kNotRunning, yes(kFirstQuestion), "hide", "splash", "splash off",
                              "create AutoCAD.Application.20", "App.Version", kNotRunning,
                              no(kSecondQuestion), "show", kLog}));
}

TEST_F(FindingTheHost, SecondYesStartsTheVersionlessHostWhileTheClipPlays)
{
    place.install("AutoCAD.Application.20", "listen AutoCAD.Application.20");
    place.install("AutoCAD.Application", "listen AutoCAD.Application");
    window.answers = {true, true};
    act();
    const Events second(events.begin() + 8, events.begin() + 15);
    EXPECT_EQ(second, (Events{yes(kSecondQuestion), "hide", "splash", "create AutoCAD.Application",
                              "splash off", "hide", kAttach}));
    EXPECT_EQ(events.back(), kLog);
}

TEST_F(FindingTheHost, VersionlessHostThatCannotBeStartedIsSilent)
{
    place.install("AutoCAD.Application.20", "listen AutoCAD.Application.20");
    window.answers = {true, true};
    act();
    const Events second(events.begin() + 8, events.end());
    EXPECT_EQ(second, (Events{yes(kSecondQuestion), "hide", "splash", "create AutoCAD.Application: none",
                              "splash off", "show", kLog}));
}

TEST_F(FindingTheHost, DeadVersionLeadsToTheSecondQuestion)
{
    place.run("fault Version#1 die");
    act();
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kNotRunning, no(kSecondQuestion), "show", kLog}));
}

TEST_F(FindingTheHost, GarbageAndEndlessAnswersCountAsALostHost)
{
    for (const char* fault : {"fault Version#1 garbage", "fault Version#1 too-long"}) {
        events.clear();
        place.run(fault);
        act();
        EXPECT_EQ(events[2], kAttach) << fault;
        EXPECT_EQ(events.back(), kLog) << fault;
        place.end();
    }
}

TEST_F(FindingTheHost, AllowedActivationAttachesAroundIt)
{
    settings.allowActivation = true;
    place.run("version 20.1s (LMS Tech)");
    act();
    const Events begins(events.begin(), events.begin() + 8);
    EXPECT_EQ(begins, (Events{kAttach, "App.Version", kAttach, "App.Caption", "activate Scripted Host",
                              kAttach, kAttach, "hide"}));
}

TEST_F(FindingTheHost, RefusedActivationGoesOn)
{
    settings.allowActivation = true;
    activationWorks = false;
    place.run("");
    act();
    const Events begins(events.begin(), events.begin() + 7);
    EXPECT_EQ(begins, (Events{kAttach, "App.Version", kAttach, "App.Caption", "activate Scripted Host",
                              kAttach, "hide"}));
    EXPECT_EQ(events.back(), kLog);
}

TEST_F(FindingTheHost, Release16IsNeverActivatedAtTheAttach)
{
    settings.allowActivation = true;
    place.run("version 16.0");
    act();
    const Events begins(events.begin(), events.begin() + 4);
    EXPECT_EQ(begins, (Events{kAttach, "App.Version", kAttach, "hide"}));
}

TEST_F(FindingTheHost, Release162IsNoRelease160)
{
    settings.allowActivation = true;
    place.run("version 16.2s (LMS Tech)");
    act();
    EXPECT_EQ(events[2], kAttach);
    EXPECT_EQ(events[3], "App.Caption");
}

// ---- the dialogs

using Dispatch = ActionFixture;

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
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach, "Xattach C:\\Lib\\Bolt.dwg", "hide",
                              "log C:\\Lib\\Bolt.dwg, Search and Insert as Xref"}));
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

} // namespace

} // namespace zv::test
