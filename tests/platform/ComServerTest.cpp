#include "platform/windows/ComServer.h"
#include "platform/Automation.h"
#include "platform/Files.h"
#include "platform/System.h"
#include "platform/windows/ComClasses.h"
#include "support/HostProcess.h"
#include "support/TemporaryFolder.h"
#include "support/TestCarrier.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <objbase.h>

namespace zv::test {

namespace {

constexpr const char* kName = "Zelvora.Served";

wire::Content error(wire::FailureCode code, const char* text = "")
{
    return wire::Failure{code, text};
}

/// This process as a program that is driven, and the one that drives it.
class ComServed : public testing::Test {
protected:
    ComServed() { ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED); }
    ~ComServed() override
    {
        carrier.reset();
        ::RegDeleteTreeW(classesRoot(), L"Software\\Classes\\Zelvora.Served");
    }

    AutomationObjectPtr attached()
    {
        auto application = carrier->attach(kName);
        return application ? *application : nullptr;
    }
    std::string lastRequest() const
    {
        return requests.empty() ? std::string() : wire::writeLine(requests.back());
    }

    std::unique_ptr<EventPump> pump = testPump();
    std::unique_ptr<Automation> carrier = testCarrier(*pump);
    std::vector<wire::Request> requests;
    std::function<wire::Content(const wire::Request&)> answer = [](const wire::Request&) {
        return wire::Value();
    };
    ComServer server{[this](const wire::Request& request, const ComServer::Respond& respond) {
                         requests.push_back(request);
                         respond({request.id, answer(request)});
                     },
                     [](const std::function<bool()>&) { return false; }};
};

TEST_F(ComServed, IsFoundByItsNameUntilItsEnd)
{
    EXPECT_EQ(carrier->attach(kName).error().code, ErrorCode::NotFound);
    {
        ComServer shortLived(
            [](const wire::Request&, const ComServer::Respond& respond) {
                respond({0, wire::Value("20.0")});
            },
            [](const std::function<bool()>&) { return false; });
        ASSERT_TRUE(shortLived.open(kName));
        ASSERT_TRUE(attached());
        EXPECT_EQ(*asText(attached()->get("Version")), "20.0");
    }
    EXPECT_EQ(carrier->attach(kName).error().code, ErrorCode::NotFound);
}

TEST_F(ComServed, NeverTakesTheNameOfAnotherProgram)
{
    HostPlace place;
    EXPECT_EQ(server.open("AutoCAD.Application").error().code, ErrorCode::Denied);
}

TEST_F(ComServed, ASecondOneOfTheSameClassIsRefused)
{
    ASSERT_TRUE(server.open(kName));
    ComServer second([](const wire::Request&, const ComServer::Respond&) {},
                     [](const std::function<bool()>&) { return false; });
    EXPECT_EQ(second.open(kName).error().code, ErrorCode::Busy);
}

TEST_F(ComServed, RequestsAreThoseOfTheLocalCarrier)
{
    ASSERT_TRUE(server.open(kName));
    const AutomationObjectPtr application = attached();
    ASSERT_TRUE(application);
    static_cast<void>(application->get("Caption"));
    EXPECT_EQ(lastRequest(), R"({"id":0,"op":"get","object":0,"name":"CAPTION"})");
    static_cast<void>(application->set("Visible", true));
    EXPECT_EQ(lastRequest(), R"({"id":0,"op":"set","object":0,"name":"VISIBLE","value":true})");
    static_cast<void>(
        application->call("TranslateCoordinates", {AutomationPoint{1, 2.5, 0}, MissingArgument{},
                                                   std::int64_t{3}, std::string("x"), 0.5}));
    EXPECT_EQ(lastRequest(), R"({"id":0,"op":"call","object":0,"name":"TRANSLATECOORDINATES","args":)"
                             R"([{"point":[1.0,2.5,0.0]},{"missing":true},3,"x",0.5]})");
}

TEST_F(ComServed, ValuesComeBackAsWhatTheyAre)
{
    ASSERT_TRUE(server.open(kName));
    const AutomationObjectPtr application = attached();
    ASSERT_TRUE(application);
    const auto given = [&](wire::Value value) {
        answer = [value](const wire::Request&) { return value; };
        return *application->get("Any");
    };
    EXPECT_EQ(given({}), AutomationValue());
    EXPECT_EQ(given(true), AutomationValue(true));
    EXPECT_EQ(given(std::int64_t{-7}), AutomationValue(std::int64_t{-7}));
    EXPECT_EQ(given(2.5), AutomationValue(2.5));
    EXPECT_EQ(given("D 1"), AutomationValue(std::string("D 1")));
    EXPECT_EQ(given("\xE9\x97\xA8 \xC3\x9C"), AutomationValue(std::string("\xE9\x97\xA8 \xC3\x9C")));
    EXPECT_EQ(given(AutomationPoint{1, 2, 3}), AutomationValue(AutomationPoint{1, 2, 3}));
}

TEST_F(ComServed, ObjectsAreAskedByTheirNumberAndReleased)
{
    ASSERT_TRUE(server.open(kName));
    const AutomationObjectPtr application = attached();
    ASSERT_TRUE(application);
    answer = [](const wire::Request&) { return wire::Value(wire::ObjectNumber{7}); };
    AutomationObjectPtr documents = *asObject(application->get("Documents"));
    answer = [](const wire::Request&) { return wire::Values{wire::ObjectNumber{8}, wire::ObjectNumber{9}}; };
    auto members = documents->items();
    ASSERT_TRUE(members);
    ASSERT_EQ(members->size(), 2u);
    answer = [](const wire::Request& request) { return wire::Value(request.object); };
    EXPECT_EQ(*std::get<AutomationObjectPtr>((*members)[1])->get("Name"), AutomationValue(std::int64_t{9}));
    members = Error{ErrorCode::Failed, ""};
    documents.reset();
    const auto isReleased = [this] {
        return std::any_of(requests.begin(), requests.end(), [](const wire::Request& request) {
            return request.operation == wire::Operation::Release && request.object == 7;
        });
    };
    while (!isReleased())
        pump->wait(-1, 5);
}

TEST_F(ComServed, FailuresKeepTheirKind)
{
    ASSERT_TRUE(server.open(kName));
    const AutomationObjectPtr application = attached();
    ASSERT_TRUE(application);
    const auto failed = [&](const wire::Content& failure) {
        answer = [failure](const wire::Request&) { return failure; };
        return application->call("Open", {}).error();
    };
    EXPECT_EQ(failed(error(wire::FailureCode::UnknownName)).code, ErrorCode::NotFound);
    EXPECT_EQ(failed(error(wire::FailureCode::Cancelled)).code, ErrorCode::Cancelled);
    EXPECT_EQ(failed(error(wire::FailureCode::Failed, "No Document object")).code, ErrorCode::Failed);
    EXPECT_EQ(failed(error(wire::FailureCode::Failed, "No Document object")).text, "No Document object");
}

TEST_F(ComServed, ABusyProgramIsAskedAgain)
{
    ASSERT_TRUE(server.open(kName));
    const AutomationObjectPtr application = attached();
    ASSERT_TRUE(application);
    int asked = 0;
    answer = [&asked](const wire::Request&) {
        return ++asked < 3 ? error(wire::FailureCode::Busy) : wire::Value("free");
    };
    EXPECT_EQ(*asText(application->get("Version")), "free");
    EXPECT_EQ(asked, 3);
}

TEST_F(ComServed, AScriptOfTheSystemDrivesIt)
{
    ASSERT_TRUE(server.open(kName));
    answer = [](const wire::Request& request) -> wire::Content {
        if (request.operation == wire::Operation::Items)
            return wire::Values{wire::ObjectNumber{2}, wire::ObjectNumber{3}};
        if (request.operation == wire::Operation::Get && request.name == "DOCUMENTS")
            return wire::Value(wire::ObjectNumber{1});
        if (request.operation == wire::Operation::Get && request.name == "COUNT")
            return wire::Value(std::int64_t{2});
        if (request.operation == wire::Operation::Get && request.name == "NAME")
            return wire::Value(request.object == 2 ? "a.dwg" : "b.dwg");
        const bool known = request.operation == wire::Operation::Set ||
                           request.operation == wire::Operation::Release || request.name == "SENDCOMMAND";
        return known ? wire::Value() : error(wire::FailureCode::UnknownName);
    };
    const TemporaryFolder folder;
    const std::string script = folder.write("drive.vbs", R"(Set program = CreateObject("Zelvora.Served")
program.Visible = True
told = program.Documents.Count
For Each drawing In program.Documents
told = told & " " & drawing.Name
Next
program.SendCommand "_ZOOM "
On Error Resume Next
program.NoSuchMember
told = told & " " & (Err.Number <> 0)
Set file = CreateObject("Scripting.FileSystemObject").CreateTextFile(WScript.Arguments(0) & ".new")
file.Write told
file.Close
CreateObject("Scripting.FileSystemObject").MoveFile WScript.Arguments(0) & ".new", WScript.Arguments(0)
)");
    const std::string told = folder.file("told.txt");
    startProgram({"cscript.exe", "//nologo", script, told});
    const auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(60);
    while (!readFile(told) && std::chrono::steady_clock::now() < deadline)
        pump->wait(-1, 20);
    EXPECT_EQ(readFile(told).valueOr(""), "2 a.dwg b.dwg True");
    EXPECT_TRUE(std::any_of(requests.begin(), requests.end(), [](const wire::Request& request) {
        return wire::writeLine(request) ==
               R"({"id":0,"op":"call","object":0,"name":"SENDCOMMAND","args":["_ZOOM "]})";
    }));
}

TEST(ComServer, EventsTurnWhileTheUserIsAsked)
{
    ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    const std::unique_ptr<EventPump> pump = testPump();
    const std::unique_ptr<Automation> carrier = testCarrier(*pump);
    ComServer::Respond waiting;
    int turns = 0;
    ComServer server(
        [&waiting](const wire::Request&, const ComServer::Respond& respond) { waiting = respond; },
        [&](const std::function<bool()>& isDone) {
            for (; !isDone(); ++turns) {
                if (turns == 3)
                    waiting({0, wire::Value("picked")});
                pump->wait(-1, 1);
            }
            return true;
        });
    ASSERT_TRUE(server.open(kName));
    const auto application = carrier->attach(kName);
    ASSERT_TRUE(application);
    EXPECT_EQ(*asText((*application)->call("GetString", {})), "picked");
    EXPECT_GE(turns, 3);
    ::RegDeleteTreeW(classesRoot(), L"Software\\Classes\\Zelvora.Served");
}

} // namespace

} // namespace zv::test
