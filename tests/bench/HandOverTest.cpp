#include "BenchProgram.h"

#include "HandOver.h"

namespace zv::bench {

namespace {

using std::chrono::milliseconds;

/// A second start of the bench, in a thread of its own.
class HandOver : public BenchProgram {
protected:
    Result<void> start(const std::string& drawing, const std::function<void()>& meanwhile = {})
    {
        Result<void> outcome;
        std::atomic<bool> done = false;
        std::thread second([&] {
            outcome = handOver(kName, drawing, {milliseconds(500), milliseconds(20'000)});
            done = true;
        });
        if (meanwhile)
            meanwhile();
        EXPECT_TRUE(QTest::qWaitFor([&] { return done.load(); }, 30'000));
        second.join();
        return outcome;
    }
};

TEST_F(HandOver, OpensTheDrawingInTheBenchThatRuns)
{
    const std::string path = makeRing(1);
    EXPECT_TRUE(start(path));
    EXPECT_EQ(window->workshop().active()->path(), path);
    EXPECT_EQ(window->workshop().drawings().size(), 2U);
    EXPECT_TRUE(start(path)) << "a drawing that is open is only shown";
    EXPECT_EQ(window->workshop().drawings().size(), 2U);
}

TEST_F(HandOver, BringsAHiddenAndMinimisedBenchBack)
{
    window->showMinimized();
    window->hide();
    EXPECT_TRUE(start({}));
    EXPECT_TRUE(window->isVisible());
    EXPECT_FALSE(window->isMinimized());
}

TEST_F(HandOver, TellsWhyADrawingWasNotOpened)
{
    const Result<void> damaged = start(folder.write("Bad.dwg", "no drawing"));
    ASSERT_FALSE(damaged);
    EXPECT_NE(damaged.error().code, ErrorCode::NotFound);
    const Result<void> missing = start(folder.file("Missing.dwg"));
    ASSERT_FALSE(missing);
    EXPECT_NE(missing.error().code, ErrorCode::NotFound) << "that would start another bench";
}

TEST_F(HandOver, TellsThatTheBenchWaitsForItsUser)
{
    drive(
        [&](AutomationObject& application) {
            const auto drawing = asObject(application.get("ActiveDocument"));
            static_cast<void>((*asObject((*drawing)->get("Utility")))->call("GetPoint", {}));
        },
        [&] {
            EXPECT_TRUE(waitForPrompt(QStringLiteral("Specify a point:")));
            const Result<void> refused = start(makeRing(1));
            EXPECT_FALSE(refused);
            EXPECT_EQ(refused.error().text,
                      "The bench that is running does not answer; perhaps it waits for its user");
            QTest::keyClick(line, Qt::Key_Escape);
        });
    EXPECT_EQ(window->workshop().drawings().size(), 1U);
}

TEST_F(HandOver, IsNotFoundWhereNoneRuns)
{
    server.reset();
    EXPECT_EQ(start({}).error().code, ErrorCode::NotFound);
}

} // namespace

} // namespace zv::bench
