#include "BenchProgram.h"
#include "HandOver.h"

#include "platform/LocalHosts.h"

namespace zv::bench {
namespace {

/// Keeps the bench's own events turning while its client waits.
class WindowPump final : public EventPump {
public:
    void wait(int, int timeoutMs) override { QTest::qWait(timeoutMs < 0 ? 1 : timeoutMs); }
};

/// The way to a question of the host to its user, which stays unanswered until that user picks.
constexpr const char* kAskForAPoint[] = {R"({"id":1,"op":"get","object":0,"name":"ActiveDocument"})",
                                         R"({"id":2,"op":"get","object":1,"name":"Utility"})",
                                         R"({"id":3,"op":"call","object":2,"name":"GetPoint","args":[]})"};

/// A request whose answer is about as long as its word.
std::string longRequest(std::size_t length)
{
    return R"({"id":1,"object":0,"op":")" + std::string(length, 'x') + "\"}";
}

TEST_F(BenchProgram, ClientThatNeverReadsDoesNotHoldUpTheOthersAndIsClosed)
{
    WindowPump pump;
    const auto deaf = connectToHost(kName, pump);
    ASSERT_TRUE(deaf);
    ASSERT_TRUE((*deaf)->send(longRequest(1'000'000), pump));
    drive([](AutomationObject& application) { EXPECT_TRUE(application.get("Version")); });
    for (int request = 0; request < 8; ++request)
        static_cast<void>((*deaf)->send(longRequest(1'000'000), pump));
    EXPECT_TRUE((*deaf)->ended());
}

TEST_F(BenchProgram, ClientThatReadsLateGetsEveryAnswerInOrder)
{
    WindowPump pump;
    const auto late = connectToHost(kName, pump);
    ASSERT_TRUE(late);
    constexpr int kRequests = 3;
    for (int request = 0; request < kRequests; ++request) {
        ASSERT_TRUE((*late)->send(longRequest(1'000'000 + std::size_t(request)), pump));
        ASSERT_TRUE((*late)->send(R"({"id":2,"op":"get","object":0,"name":"Name"})", pump));
    }
    std::vector<std::size_t> lengths;
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            (*late)->readAvailable();
            for (std::string answer; (*late)->nextLine(answer);)
                lengths.push_back(answer.size());
            return lengths.size() == 2 * kRequests || (*late)->ended();
        },
        20'000));
    ASSERT_EQ(lengths.size(), std::size_t(2 * kRequests));
    for (int request = 1; request < kRequests; ++request)
        EXPECT_EQ(lengths[std::size_t(2 * request)], lengths[0] + std::size_t(request));
    EXPECT_LT(lengths[1], 100U);
}

TEST_F(BenchProgram, WhatIsAskedWhileAnAnswerWaitsForTheUserIsAnsweredAfterIt)
{
    WindowPump pump;
    const auto hasty = connectToHost(kName, pump);
    ASSERT_TRUE(hasty);
    for (const char* request : kAskForAPoint)
        ASSERT_TRUE((*hasty)->send(request, pump));
    ASSERT_TRUE((*hasty)->send(R"({"id":4,"op":"get","object":0,"name":"Version"})", pump));
    std::vector<std::string> answers;
    const auto received = [&] {
        (*hasty)->readAvailable();
        for (std::string answer; (*hasty)->nextLine(answer);)
            answers.push_back(answer);
        return answers.size();
    };
    ASSERT_TRUE(waitForPrompt(QStringLiteral("Specify a point:")));
    ASSERT_TRUE(QTest::qWaitFor([&] { return received() >= 2; }, 10'000));
    EXPECT_EQ(answers.size(), 2U);
    pickAt(1, 2);
    ASSERT_TRUE(QTest::qWaitFor([&] { return received() >= 4; }, 10'000));
    EXPECT_EQ(answers[2].rfind(R"({"id":3,"result")", 0), 0U) << answers[2];
    EXPECT_EQ(answers[3], R"({"id":4,"result":"20.0"})");
}

TEST_F(BenchProgram, ClientThatAsksOnAndOnWhileItsAnswerWaitsIsClosed)
{
    WindowPump pump;
    const auto hasty = connectToHost(kName, pump);
    ASSERT_TRUE(hasty);
    for (const char* request : kAskForAPoint)
        ASSERT_TRUE((*hasty)->send(request, pump));
    ASSERT_TRUE(waitForPrompt(QStringLiteral("Specify a point:")));
    for (int request = 0; request < 3 && !(*hasty)->ended(); ++request)
        static_cast<void>((*hasty)->send(longRequest(1'000'000), pump));
    EXPECT_TRUE(waitForPrompt(QStringLiteral("Command:"))) << "its question goes with it";
}

TEST_F(BenchProgram, ManyRequestsThatCameAtOnceAreAllAnswered)
{
    WindowPump pump;
    const auto hasty = connectToHost(kName, pump);
    ASSERT_TRUE(hasty);
    constexpr int kRequests = 1000;
    std::string all;
    for (int id = 1; id <= kRequests; ++id)
        all += (id > 1 ? "\n" : "") + (R"({"id":)" + std::to_string(id)) +
               R"(,"op":"get","object":0,"name":"Name"})";
    ASSERT_TRUE((*hasty)->send(all, pump));
    std::string last;
    int count = 0;
    EXPECT_TRUE(QTest::qWaitFor(
        [&] {
            (*hasty)->readAvailable();
            while ((*hasty)->nextLine(last))
                ++count;
            return count == kRequests;
        },
        10'000));
    EXPECT_EQ(last, R"({"id":1000,"result":"AutoCAD"})");
}

TEST_F(BenchProgram, ASecondStartDoesNotWaitForEverForABenchThatIsSilent)
{
    server.reset();
    const auto silent = HostListener::open(kName);
    ASSERT_TRUE(silent);
    using std::chrono::milliseconds;
    const Result<void> refused = handOver(kName, makeRing(1), {milliseconds(500), milliseconds(20'000)});
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().text,
              "The bench that is running does not answer; perhaps it waits for its user");
}

} // namespace
} // namespace zv::bench
