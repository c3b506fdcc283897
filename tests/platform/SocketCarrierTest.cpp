#include "platform/Automation.h"
#include "platform/LocalHosts.h"
#include "support/HostProcess.h"
#include "support/TemporaryFolder.h"
#include "support/TestCarrier.h"

#include <gtest/gtest.h>

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <poll.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace zv::test {

namespace {

constexpr const char* kHost = "AutoCAD.Application";

class SocketCarrier : public testing::Test {
protected:
    AutomationObjectPtr attached()
    {
        auto application = carrier->attach(kHost);
        return application ? *application : nullptr;
    }
    AutomationObjectPtr document() { return *asObject(attached()->get("ActiveDocument")); }
    static std::string runtimeFolder() { return std::getenv("XDG_RUNTIME_DIR"); }
    static std::string hosts() { return runtimeFolder() + "/zelvora/hosts"; }
    ErrorCode attachError() { return carrier->attach(kHost).error().code; }

    HostPlace place;
    std::unique_ptr<EventPump> pump = testPump();
    std::unique_ptr<Automation> carrier = testCarrier(*pump);
};

TEST_F(SocketCarrier, WithNoFolderNoSocketOrAStaleSocketNoneRuns)
{
    EXPECT_EQ(attachError(), ErrorCode::NotFound);
    std::filesystem::create_directories(hosts());
    EXPECT_EQ(attachError(), ErrorCode::NotFound);
    place.run("");
    place.end();
    ASSERT_TRUE(std::filesystem::exists(hosts() + "/" + kHost + ".sock"));
    EXPECT_EQ(attachError(), ErrorCode::NotFound);
}

TEST_F(SocketCarrier, ListenerTakesAStaleSocketsPlaceButNotALiveOnes)
{
    place.run("");
    EXPECT_EQ(HostListener::open(kHost).error().code, ErrorCode::Busy);
    place.end();
    EXPECT_TRUE(HostListener::open(kHost));
    EXPECT_FALSE(std::filesystem::exists(hosts() + "/" + kHost + ".sock"));
}

// Between its look for another host and its listening a host cannot be found.
TEST_F(SocketCarrier, NameStaysWithItsOwnerAlsoWhileItIsNotListening)
{
    const auto owner = HostListener::open(kHost);
    ASSERT_TRUE(owner);
    std::filesystem::remove(hosts() + "/" + kHost + ".sock");
    EXPECT_EQ(HostListener::open(kHost).error().code, ErrorCode::Busy);
    EXPECT_FALSE(std::filesystem::exists(hosts() + "/" + kHost + ".sock"));
    EXPECT_TRUE(HostListener::open("AutoCAD.Application.20"));
}

TEST_F(SocketCarrier, NameIsFreeOnceItsOwnerHasGone)
{
    EXPECT_TRUE(HostListener::open(kHost));
    EXPECT_TRUE(HostListener::open(kHost));
}

TEST_F(SocketCarrier, FolderIsMadeForItsOwnerAlone)
{
    ASSERT_TRUE(hostsFolder(true));
    struct stat status {};
    ASSERT_EQ(::stat(hosts().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
}

TEST_F(SocketCarrier, FolderThatOthersMayWriteIsRefused)
{
    place.run("");
    ASSERT_NE(attached(), nullptr);
    for (const unsigned mode : {0720U, 0702U, 0777U}) {
        ASSERT_EQ(::chmod(hosts().c_str(), mode), 0);
        EXPECT_EQ(attachError(), ErrorCode::Denied) << mode;
        EXPECT_EQ(hostsFolder(true).error().code, ErrorCode::Denied);
    }
    ASSERT_EQ(::chmod(hosts().c_str(), 0755), 0);
    EXPECT_NE(attached(), nullptr);
}

TEST_F(SocketCarrier, FolderOfAnotherUserIsRefused)
{
    if (::getuid() != 0)
        GTEST_SKIP() << "only the superuser can give a folder away";
    place.run("");
    ASSERT_EQ(::chown(hosts().c_str(), 65534, 65534), 0);
    EXPECT_EQ(attachError(), ErrorCode::Denied);
}

TEST_F(SocketCarrier, FolderThatIsALinkIsRefused)
{
    const TemporaryFolder elsewhere;
    std::filesystem::create_directories(runtimeFolder() + "/zelvora");
    std::filesystem::create_directory_symlink(elsewhere.path(), hosts());
    EXPECT_EQ(attachError(), ErrorCode::Denied);
}

TEST_F(SocketCarrier, PathLongerThanAnAddressIsReachedAllTheSame)
{
    const TemporaryFolder folder;
    const std::string deep = folder.file(std::string(120, 'd'));
    std::filesystem::create_directories(deep);
    ::setenv("XDG_RUNTIME_DIR", deep.c_str(), 1);
    const auto listener = HostListener::open(kHost);
    ASSERT_TRUE(listener);
    EXPECT_NE(attached(), nullptr);
}

TEST_F(SocketCarrier, RequestsGoOutAsTheWireHasThem)
{
    const auto listener = HostListener::open(kHost);
    ASSERT_TRUE(listener);
    std::string received;
    std::thread host([&] {
        PlainEventPump().wait((*listener)->descriptor(), -1);
        const std::unique_ptr<LineChannel> channel = (*listener)->accept();
        PlainEventPump wait;
        const char* const answers[] = {R"({"id":1,"result":"20.0"})", R"({"id":2,"result":null})",
                                       R"({"id":3,"result":{"object":7}})",
                                       R"({"id":4,"result":{"point":[1.5,2.0,0.0]}})",
                                       R"({"id":5,"result":[{"object":12},{"object":13}]})"};
        for (const char* answer : answers) {
            std::string line;
            while (!channel->nextLine(line) && !channel->ended()) {
                wait.wait(channel->descriptor(), -1);
                channel->readAvailable();
            }
            received += line + "\n";
            static_cast<void>(channel->send(answer, wait));
        }
    });
    const AutomationObjectPtr application = attached();
    EXPECT_EQ(*asText(application->get("Version")), "20.0");
    EXPECT_TRUE(application->set("Visible", true));
    const AutomationObjectPtr utility = *asObject(application->get("Utility"));
    const auto point = asPoint(
        utility->call("GetPoint", {MissingArgument{}, std::string("Specify \"it\": "), std::monostate{},
                                   std::int64_t{2}, 2.0, false, utility, AutomationPoint{1, 2.5, 0}}));
    EXPECT_EQ(*point, (AutomationPoint{1.5, 2, 0}));
    EXPECT_EQ(utility->items()->size(), 2U);
    host.join();
    EXPECT_EQ(received, R"({"id":1,"op":"get","object":0,"name":"Version"})"
                        "\n"
                        R"({"id":2,"op":"set","object":0,"name":"Visible","value":true})"
                        "\n"
                        R"({"id":3,"op":"get","object":0,"name":"Utility"})"
                        "\n"
                        R"({"id":4,"op":"call","object":7,"name":"GetPoint","args":[{"missing":true},)"
                        R"("Specify \"it\": ",null,2,2.0,false,{"object":7},{"point":[1.0,2.5,0.0]}]})"
                        "\n"
                        R"({"id":5,"op":"items","object":7})"
                        "\n");
}

TEST_F(SocketCarrier, LostStaysLostAndEndsOnlyItsOwnConnection)
{
    place.run("fault Version#1 garbage");
    const AutomationObjectPtr first = attached();
    const AutomationObjectPtr second = attached();
    EXPECT_EQ(first->get("Version").error().code, ErrorCode::Lost);
    EXPECT_EQ(first->get("Caption").error().code, ErrorCode::Lost);
    EXPECT_TRUE(second->get("Version"));
}

TEST_F(SocketCarrier, AnswersThatDoNotFitEndTheConnection)
{
    for (const char* answer :
         {R"({"id":2,"result":1})", R"({"result":1})", R"({"id":1})",
          R"({"id":1,"result":1,"error":{"code":"x"}})", R"({"id":1,"error":{}})",
          R"({"id":1,"error":"busy"})", R"({"id":1,"result":[1]})", R"({"id":1,"result":{"point":[1,2]}})",
          R"({"id":"1","result":1})", R"([])", R"({"id":1,"result":1} x)", ""}) {
        const auto listener = HostListener::open(kHost);
        ASSERT_TRUE(listener);
        std::thread host([&] {
            PlainEventPump().wait((*listener)->descriptor(), -1);
            const std::unique_ptr<LineChannel> channel = (*listener)->accept();
            PlainEventPump wait;
            static_cast<void>(channel->send(answer, wait));
            // The connection ends from the other side.
            while (channel->readAvailable())
                wait.wait(channel->descriptor(), -1);
        });
        {
            const AutomationObjectPtr application = attached();
            EXPECT_EQ(application->get("Version").error().code, ErrorCode::Lost) << answer;
        }
        host.join();
    }
}

TEST_F(SocketCarrier, TextThatIsNoUtf8GoesNowhere)
{
    place.run("");
    const AutomationObjectPtr drawing = document();
    const auto sent = drawing->call("SendCommand", {std::string("a\xff")});
    EXPECT_EQ(sent.error().code, ErrorCode::Failed);
    EXPECT_EQ(place.transcript().find("SendCommand"), std::string::npos);
    EXPECT_TRUE(drawing->call("SendCommand", {std::string("\u00e9")}));
}

TEST_F(SocketCarrier, MessageThatIsTooLongFailsAndTheConnectionLives)
{
    place.run("");
    const AutomationObjectPtr drawing = document();
    const auto sent = drawing->call("SendCommand", {std::string(LineChannel::kLongestLine, 'x')});
    EXPECT_EQ(sent.error().code, ErrorCode::Failed);
    EXPECT_TRUE(drawing->get("ObjectSnapMode"));
    EXPECT_TRUE(drawing->call("SendCommand", {std::string(1'000'000, 'x')}));
}

/// Gives a wait up as soon as it is told of it.
class ToldPump final : public EventPump {
public:
    void wait(int, int) override { ++waits; }
    bool isGivenUp() const override { return isTold || waits > 1000; }
    void showWaiting(bool waiting) override { isTold = isTold || waiting; }
    bool isTold = false;
    int waits = 0;
};

TEST_F(SocketCarrier, WaitForAHostThatTakesNobodyInIsTold)
{
    const auto listener = HostListener::open(kHost);
    ASSERT_TRUE(listener);
    std::vector<std::unique_ptr<LineChannel>> waiting;
    ToldPump told;
    for (int client = 0; client < 200 && !told.isTold; ++client) {
        auto channel = connectToHost(kHost, told);
        if (channel)
            waiting.push_back(std::move(*channel));
        else
            EXPECT_EQ(channel.error().code, ErrorCode::Cancelled);
    }
    EXPECT_TRUE(told.isTold);
}

TEST_F(SocketCarrier, WaitForAHostThatStartsIsTold)
{
    place.install("Other.Application", "later 1000000 Other.Application");
    ToldPump told;
    const std::unique_ptr<Automation> own = testCarrier(told);
    EXPECT_EQ(own->create("Other.Application").error().code, ErrorCode::Cancelled);
    EXPECT_TRUE(told.isTold);
}

TEST_F(SocketCarrier, CreateWithoutAStartFileFailsAtOnce)
{
    EXPECT_EQ(carrier->create(kHost).error().code, ErrorCode::NotFound);
    EXPECT_EQ(carrier->create("../evil").error().code, ErrorCode::NotFound);
}

TEST_F(SocketCarrier, CreateFailsWithAHostThatEnds)
{
    place.install("Other.Application", "no such directive");
    EXPECT_EQ(carrier->create("Other.Application").error().code, ErrorCode::Lost);
}

TEST(EndRequests, ArriveInsteadOfEndingTheProgram)
{
    const int requests = openEndRequests();
    ASSERT_GE(requests, 0);
    pollfd watched{requests, POLLIN, 0};
    EXPECT_EQ(::poll(&watched, 1, 0), 0);
    ::raise(SIGTERM);
    EXPECT_EQ(::poll(&watched, 1, 0), 1);
    ::close(requests);
}

TEST(StartCommand, WordsAreSplitAtBlanksAndQuotesKeepThem)
{
    using Words = std::vector<std::string>;
    EXPECT_EQ(startCommand("../zelvora-bench", "/h"), Words({"/h/../zelvora-bench"}));
    EXPECT_EQ(startCommand("  /usr/bin/cad \t -a \"two words\" b\"c d\"e \"\"\r", "/h"),
              Words({"/usr/bin/cad", "-a", "two words", "bc de", ""}));
    EXPECT_EQ(startCommand("\"my cad\" $HOME ~ *", "/h"), Words({"/h/my cad", "$HOME", "~", "*"}));
    EXPECT_TRUE(startCommand("", "/h").empty());
    EXPECT_TRUE(startCommand("   ", "/h").empty());
    EXPECT_TRUE(startCommand("\"\" x", "/h").empty());
}

TEST_F(SocketCarrier, StartedHostThatHasEndedLeavesNoProcessBehind)
{
    place.install("Other.Application", "no such directive");
    EXPECT_FALSE(carrier->create("Other.Application"));
    siginfo_t child{};
    bool gone = false;
    for (int turn = 0; turn < 1000 && !gone; ++turn) {
        gone = ::waitid(P_ALL, 0, &child, WEXITED | WNOHANG | WNOWAIT) != 0 && errno == ECHILD;
        if (!gone)
            pump->wait(-1, 5);
    }
    EXPECT_TRUE(gone);
}

TEST_F(SocketCarrier, StartedHostGetsNoFileThatIsOpenHere)
{
    const TemporaryFolder folder;
    const std::string held = folder.write("held", "x"), seen = folder.file("seen");
    const int open = ::open(held.c_str(), O_RDONLY);
    ASSERT_GE(open, 0);
    const std::string starts = std::string(std::getenv("XDG_DATA_HOME")) + "/zelvora/hosts/";
    std::ofstream(starts + "Other.Application.start")
        << "/bin/sh -c \"ls -l /proc/$$/fd > '" << seen << "'\"\n";
    EXPECT_EQ(carrier->create("Other.Application").error().code, ErrorCode::Lost);
    ::close(open);
    const std::string list = folder.read("seen");
    EXPECT_NE(list.find("/dev/null"), std::string::npos) << list;
    EXPECT_EQ(list.find(held), std::string::npos) << list;
}

} // namespace

} // namespace zv::test
