#include "platform/Automation.h"
#include "platform/Text.h"
#include "support/HostProcess.h"
#include "support/TestCarrier.h"

#include <gtest/gtest.h>

#include <clocale>

namespace zv::test {

namespace {

constexpr const char* kHost = "AutoCAD.Application";

/// What holds for the way to a host whatever carries it.
class Carrier : public testing::Test {
protected:
    AutomationObjectPtr attached()
    {
        auto application = carrier->attach(kHost);
        return application ? *application : nullptr;
    }
    AutomationObjectPtr document() { return *asObject(attached()->get("ActiveDocument")); }
    bool wasNoted(const std::string& line) const
    {
        return place.transcript().find(line + "\n") != std::string::npos;
    }

    HostPlace place;
    TestTime time;
    std::unique_ptr<Automation> carrier = testCarrier(time, time.patience());
};

TEST_F(Carrier, NoneRunsBeforeAHostAndAfterItsEnd)
{
    EXPECT_EQ(carrier->attach(kHost).error().code, ErrorCode::NotFound);
    place.run("");
    EXPECT_TRUE(carrier->attach(kHost));
    place.end();
    EXPECT_EQ(carrier->attach(kHost).error().code, ErrorCode::NotFound);
}

TEST_F(Carrier, NoHostIsCreatedThatIsNotInstalled)
{
    EXPECT_EQ(carrier->create(kHost).error().code, ErrorCode::NotFound);
    EXPECT_EQ(carrier->create("AutoCAD.Application.99").error().code, ErrorCode::NotFound);
}

TEST_F(Carrier, CreateWaitsForASlowHost)
{
    place.install(kHost, std::string("delay 200\nlisten ") + kHost);
    const auto application = carrier->create(kHost);
    ASSERT_TRUE(application);
    EXPECT_EQ(*asText((*application)->get("Version")), "20.0");
}

TEST_F(Carrier, CreateGivesUpAfterAMinuteOnAHostThatNeverAnswers)
{
    place.install(kHost, std::string("later 1000000 ") + kHost);
    time.skipsFromMs = TestTime::kStartTurns;
    EXPECT_EQ(carrier->create(kHost).error().code, ErrorCode::Failed);
    EXPECT_GE(time.skipped, std::chrono::seconds(59));
}

TEST_F(Carrier, EventsTurnWhileAHostStarts)
{
    place.install(kHost, std::string("delay 200\nlisten ") + kHost);
    EXPECT_TRUE(carrier->create(kHost));
    EXPECT_GT(time.turns, 0);
}

TEST_F(Carrier, EventsTurnWhileTheUserPicks)
{
    place.run("slow GetPoint#1 300");
    const AutomationObjectPtr utility = *asObject(document()->get("Utility"));
    const int before = time.turns;
    EXPECT_TRUE(utility->call("GetPoint", {}));
    EXPECT_GT(time.turns, before);
}

TEST_F(Carrier, ArgumentsArriveAsWhatTheyAre)
{
    place.run("");
    const AutomationObjectPtr application = attached();
    EXPECT_TRUE(application->set("Visible", true));
    EXPECT_TRUE(wasNoted("set application Visible true"));
    const AutomationObjectPtr drawing = *asObject(application->get("ActiveDocument"));
    EXPECT_TRUE(drawing->call("SetVariable", {std::string("Filedia"), std::int64_t{0}}));
    EXPECT_TRUE(wasNoted("call document SetVariable [\"Filedia\",0]"));
    EXPECT_TRUE(drawing->call("SetVariable", {std::string("dimscale"), 48.0}));
    EXPECT_TRUE(wasNoted("call document SetVariable [\"dimscale\",48.0]"));
    EXPECT_TRUE(drawing->call("SendCommand", {std::string("_.-insert\r*C:/A/B.DWG\r")}));
    EXPECT_TRUE(wasNoted("call document SendCommand [\"_.-insert\\u000d*C:/A/B.DWG\\u000d\"]"));
    const AutomationObjectPtr utility = *asObject(drawing->get("Utility"));
    EXPECT_TRUE(utility->call("GetPoint", {MissingArgument{}, std::string("Where: ")}));
    EXPECT_TRUE(wasNoted("call utility GetPoint [{\"missing\":true},\"Where: \"]"));
    EXPECT_TRUE(utility->call("TranslateCoordinates",
                              {AutomationPoint{1, 2.5, 0}, std::monostate{}, std::monostate{}, false}));
    EXPECT_TRUE(wasNoted("call utility TranslateCoordinates [{\"point\":[1.0,2.5,0.0]},null,null,false]"));
}

TEST_F(Carrier, TextsInAnyScriptArriveAndComeBack)
{
    std::setlocale(LC_ALL, "C.UTF-8");
    place.run("");
    const AutomationObjectPtr drawing = document();
    const std::string path = "C:/T\xC3\xBCren/\xE9\x97\xA8 \xF0\xA0\x80\x8B.dwg";
    EXPECT_TRUE(drawing->call("SendCommand", {path}));
    EXPECT_TRUE(wasNoted("call document SendCommand [\"" + path + "\"]"));
    EXPECT_TRUE(drawing->call("SetVariable", {std::string("PROJECTNAME"), path}));
    EXPECT_EQ(*asText(drawing->call("GetVariable", {std::string("PROJECTNAME")})), path);
    std::setlocale(LC_ALL, "C");
}

TEST_F(Carrier, AnswersArriveAsWhatTheyAre)
{
    place.run("variable dimscale 96.5\nvariable filedia 1\npoint 1.5 -2 0.25\ncaption Host \"A\"");
    const AutomationObjectPtr drawing = document();
    EXPECT_EQ(*asText(attached()->get("Caption")), "Host \"A\"");
    EXPECT_EQ(*drawing->call("GetVariable", {std::string("DIMSCALE")}), AutomationValue(96.5));
    EXPECT_EQ(*drawing->call("GetVariable", {std::string("filedia")}), AutomationValue(std::int64_t{1}));
    EXPECT_EQ(*drawing->get("ObjectSnapMode"), AutomationValue(true));
    EXPECT_EQ(*drawing->call("SendCommand", {std::string("x")}), AutomationValue());
    const AutomationObjectPtr utility = *asObject(drawing->get("Utility"));
    EXPECT_EQ(*asPoint(utility->call("GetPoint", {})), (AutomationPoint{1.5, -2, 0.25}));
}

TEST_F(Carrier, MembersOfACollectionKeepTheirOrder)
{
    place.run("block *Model_Space layout\nblock first\nblock second xref");
    const AutomationObjectPtr blocks = *asObject(document()->get("Blocks"));
    const auto members = blocks->items();
    ASSERT_TRUE(members);
    std::vector<std::string> names;
    for (const AutomationValue& member : *members)
        names.push_back(*asText((*asObject(member))->get("Name")));
    EXPECT_EQ(names, (std::vector<std::string>{"*Model_Space", "first", "second"}));
    EXPECT_EQ(*asBool((*asObject((*members)[2]))->get("IsXRef")), true);
    EXPECT_FALSE(document()->items());
}

TEST_F(Carrier, NamesMeetWithoutRegardToCase)
{
    place.run("");
    EXPECT_EQ(*asText(attached()->get("vErSiOn")), "20.0");
}

TEST_F(Carrier, ErrorsKeepTheirKindAndWords)
{
    place.run("fault GetVariable#1 failed out of range");
    const AutomationObjectPtr drawing = document();
    const auto unknown = drawing->get("Nonsense");
    EXPECT_EQ(unknown.error().code, ErrorCode::NotFound);
    const auto misplaced = drawing->get("Caption");
    EXPECT_EQ(misplaced.error().code, ErrorCode::NotFound);
    const auto failed = drawing->call("GetVariable", {std::string("filedia")});
    EXPECT_EQ(failed.error().code, ErrorCode::Failed);
    EXPECT_EQ(failed.error().text, "out of range");
}

TEST_F(Carrier, WordsOfAnErrorAreInTheCodePageAsPathsAre)
{
    const std::string utf8 = "au\xC3\x9F"
                             "er Bereich";
    place.run("fault GetVariable#1 failed " + utf8);
    const auto failed = document()->call("GetVariable", {std::string("filedia")});
    ASSERT_FALSE(failed);
    EXPECT_EQ(failed.error().text, narrow(fromUtf8(utf8)));
}

TEST_F(Carrier, PromptThatTheUserDoesNotAnswerIsCancelled)
{
    place.run("fault GetPoint#* cancelled no pick\nfault GetString#* cancelled no text");
    const AutomationObjectPtr utility = *asObject(document()->get("Utility"));
    for (int way = 0; way < 3; ++way) {
        const auto pick = utility->call("GetPoint", {});
        EXPECT_EQ(pick.error().code, ErrorCode::Cancelled) << way;
        EXPECT_EQ(pick.error().text, "no pick");
    }
    EXPECT_EQ(utility->call("GetString", {false}).error().code, ErrorCode::Cancelled);
}

TEST_F(Carrier, HostThatIsBusyForFiveSecondsIsAskedAgain)
{
    std::string script;
    for (int use = 1; use <= 7; ++use)
        script += "fault Version#" + std::to_string(use) + " busy\n";
    place.run(script);
    time.skipsFromMs = TestTime::kBusyPauses;
    EXPECT_EQ(*asText(attached()->get("Version")), "20.0");
    EXPECT_GE(time.skipped, std::chrono::seconds(5));
}

TEST_F(Carrier, HostThatStaysBusyForAMinuteHasFailed)
{
    place.run("fault Caption#* busy wait a little");
    time.skipsFromMs = TestTime::kBusyPauses;
    const auto caption = attached()->get("Caption");
    EXPECT_EQ(caption.error().code, ErrorCode::Failed);
    EXPECT_FALSE(caption.error().text.empty());
    EXPECT_GE(time.skipped, std::chrono::seconds(59));
    EXPECT_LT(time.skipped, std::chrono::seconds(62));
}

TEST_F(Carrier, HostThatDiesInACallIsLostAndStaysLost)
{
    place.run("fault Caption#1 die");
    const AutomationObjectPtr application = attached();
    EXPECT_EQ(application->get("Caption").error().code, ErrorCode::Lost);
    EXPECT_EQ(application->get("Version").error().code, ErrorCode::Lost);
    EXPECT_EQ(carrier->attach(kHost).error().code, ErrorCode::NotFound);
}

TEST_F(Carrier, LastAnswerOfAHostThatEndsStillArrives)
{
    place.run("fault Version#1 die-after");
    const AutomationObjectPtr application = attached();
    EXPECT_EQ(*asText(application->get("Version")), "20.0");
    EXPECT_EQ(application->get("Caption").error().code, ErrorCode::Lost);
}

TEST_F(Carrier, AnswerThatMeansNothingIsAnError)
{
    place.run("fault Version#1 garbage");
    EXPECT_FALSE(attached()->get("Version"));
}

TEST_F(Carrier, MinuteOfBeingBusyIsForTheWholeAction)
{
    place.run("fault Caption#* busy\nfault Version#* busy");
    time.skipsFromMs = TestTime::kBusyPauses;
    const AutomationObjectPtr application = attached();
    EXPECT_EQ(application->get("Caption").error().code, ErrorCode::Failed);
    EXPECT_EQ(application->get("Version").error().code, ErrorCode::Failed);
    EXPECT_LT(time.skipped, std::chrono::seconds(62));
    carrier->beginAction();
    EXPECT_EQ(application->get("Version").error().code, ErrorCode::Failed);
    EXPECT_GT(time.skipped, std::chrono::seconds(118));
}

TEST_F(Carrier, WaitThatIsGivenUpFailsEveryCallUntilTheNextAction)
{
    place.run("fault Version#1 silent");
    const AutomationObjectPtr application = attached();
    const AutomationObjectPtr other = attached();
    time.givesUp = [] { return true; };
    EXPECT_EQ(application->get("Version").error().code, ErrorCode::Cancelled);
    EXPECT_TRUE(carrier->isGivenUp());
    EXPECT_EQ(other->get("Caption").error().code, ErrorCode::Cancelled);
    EXPECT_EQ(carrier->attach(kHost).error().code, ErrorCode::Cancelled);
    EXPECT_EQ(carrier->create(kHost).error().code, ErrorCode::Cancelled);
    time.givesUp = [] { return false; };
    carrier->beginAction();
    const AutomationObjectPtr anew = attached();
    ASSERT_NE(anew, nullptr);
    EXPECT_EQ(*asText(anew->get("Version")), "20.0");
}

TEST_F(Carrier, StartThatIsGivenUpEndsAtOnce)
{
    place.install(kHost, std::string("later 1000000 ") + kHost);
    time.givesUp = [] { return true; };
    EXPECT_EQ(carrier->create(kHost).error().code, ErrorCode::Cancelled);
}

} // namespace

} // namespace zv::test
