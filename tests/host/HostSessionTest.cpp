#include "host/ActionFixture.h"

namespace zv::test {

namespace {

const Events kAgreed = {kNotRunning, std::string(kFirstQuestion) + " Yes", "hide", "splash", "splash off"};

/// Finding the host for the windows that have a procedure of their own.
class HostSessionTest : public ActionFixture {
protected:
    HostOutcome find(HostCaller caller)
    {
        HostSession session(caller, window, services, settings.allowActivation);
        return session.find();
    }
};

TEST_F(HostSessionTest, TheDialogsTryTheTwoOldestReleasesOnly)
{
    place.install("AutoCAD.Application.18", "listen AutoCAD.Application\nlisten AutoCAD.Application.18");
    window.answers = {true};
    EXPECT_EQ(find(HostCaller::Dialog), HostOutcome::NotLaunched);
    EXPECT_EQ(events,
              (kAgreed + Events{"create AutoCAD.Application.16: none", "create AutoCAD.Application.15: none",
                                "default pointer",
                                "critical [] Could not launch AutoCAD! AutoCAD 2000, 2002, or 2004 not "
                                "found!"}));
}

TEST_F(HostSessionTest, TheDialogsFindAnyReleaseThatRuns)
{
    place.run("version 22.0");
    EXPECT_EQ(find(HostCaller::Dialog), HostOutcome::Found);
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach}));
}

TEST_F(HostSessionTest, TheDialogsNeverActivateReleaseSixteen)
{
    settings.allowActivation = true;
    place.run("version 16.0");
    EXPECT_EQ(find(HostCaller::Dialog), HostOutcome::Found);
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach}));
}

TEST_F(HostSessionTest, TheDialogsTellAHostThatHasGoneInItsOwnWords)
{
    place.install("AutoCAD.Application.16", "listen AutoCAD.Application.16");
    window.answers = {true};
    EXPECT_EQ(find(HostCaller::Dialog), HostOutcome::Failed);
    ASSERT_EQ(events.size(), kAgreed.size() + 4);
    EXPECT_EQ(events[5], "create AutoCAD.Application.16");
    EXPECT_EQ(events[6], "App.Version");
    EXPECT_EQ(events[7], kNotRunning);
    EXPECT_TRUE(events[8].starts_with("plain [] ") && events[8].size() > 9) << events[8];
}

/// A host that is there once and cannot be reached again, told in the language of the system.
class VanishingHost final : public Automation, public AutomationObject {
public:
    Result<AutomationObjectPtr> attach(const std::string&) override
    {
        if (m_attached)
            return Error{ErrorCode::NotFound, kWords};
        m_attached = true;
        return AutomationObjectPtr(this, [](AutomationObject*) {});
    }
    Result<AutomationObjectPtr> create(const std::string&) override { return Error{}; }
    Result<AutomationValue> get(std::string_view) override { return Error{}; }
    Result<void> set(std::string_view, const AutomationValue&) override { return Error{}; }
    Result<AutomationValue> call(std::string_view, const std::vector<AutomationValue>&) override
    {
        return Error{};
    }
    Result<std::vector<AutomationValue>> items() override { return Error{}; }

    static constexpr const char* kWords = "Vorgang nicht verf\xFCgbar";

private:
    bool m_attached = false;
};

TEST_F(HostSessionTest, TheWordsOfAnErrorAreShownByteForByte)
{
    VanishingHost host;
    HostServices own{host, *this, {}};
    HostSession session(HostCaller::Dialog, window, own, false);
    EXPECT_EQ(session.find(), HostOutcome::Failed);
    EXPECT_EQ(events, (Events{std::string("plain [] ") + VanishingHost::kWords}));
}

TEST_F(HostSessionTest, NewlibReadsTheVersionAndNeverActivates)
{
    settings.allowActivation = true;
    place.run("");
    EXPECT_EQ(find(HostCaller::Newlib), HostOutcome::Found);
    EXPECT_EQ(events, (Events{kAttach, "App.Version", kAttach}));
}

TEST_F(HostSessionTest, NewlibAsksTheSecondTimeInItsOwnWords)
{
    place.install("AutoCAD.Application.15", "listen AutoCAD.Application.15");
    place.install("AutoCAD.Application", "listen AutoCAD.Application");
    window.answers = {true, true};
    EXPECT_EQ(find(HostCaller::Newlib), HostOutcome::Found);
    EXPECT_EQ(events,
              (kAgreed +
               Events{"create AutoCAD.Application.20: none", "create AutoCAD.Application.19: none",
                      "create AutoCAD.Application.18: none", "create AutoCAD.Application.17: none",
                      "create AutoCAD.Application.16: none", "create AutoCAD.Application.15", "App.Version",
                      kNotRunning,
                      "question [AutoCAD Not Loaded] AutoCAD is Not Loaded|Would you like to Load AutoCAD? "
                      "Yes",
                      "hide", "splash", "create AutoCAD.Application", "splash off"}));
}

TEST_F(HostSessionTest, NoIsDeclinedForEveryCaller)
{
    for (const HostCaller caller : {HostCaller::Action, HostCaller::Newlib, HostCaller::Dialog}) {
        events.clear();
        EXPECT_EQ(find(caller), HostOutcome::Declined);
        EXPECT_EQ(events, (Events{kNotRunning, std::string(kFirstQuestion) + " No"}));
    }
}

TEST_F(HostSessionTest, AHostThatNeverAnswersIsGivenUpAfterAMinuteAndTheNextReleaseIsTried)
{
    place.install("AutoCAD.Application.20", "later 1000000 AutoCAD.Application.20");
    window.answers = {true};
    time.skipsFromMs = TestTime::kStartTurns;
    EXPECT_EQ(find(HostCaller::Action), HostOutcome::NotLaunched);
    EXPECT_GE(time.skipped, std::chrono::seconds(59));
    EXPECT_EQ(events[5], "create AutoCAD.Application.20: none");
    EXPECT_EQ(events[6], "create AutoCAD.Application.19: none");
}

} // namespace

} // namespace zv::test
