#include "platform/EndRequest.h"
#include "platform/Profile.h"
#include "support/AnsweredMessages.h"
#include "support/HeldLock.h"
#include "support/ProgramFixture.h"

#include <QTest>

#include <csignal>
#include <optional>

namespace zv {
namespace {

class BusyProfileTest : public testing::Test {
protected:
    TemporaryFolder folder;
    AnsweredMessages messages;
    std::optional<RunningProgram> program;
    const std::string old = "[Settings]\r\nAOT=1\r\n";
    const std::string file = folder.write("user.ini", old);
    std::optional<HeldLock> held;

    void SetUp() override
    {
        program.emplace(Folders{folder.path(), folder.path()}, messages);
        held.emplace(file + ".new");
        ASSERT_TRUE(held->isHeld());
        ASSERT_TRUE(writeProfileString(file, "Settings", "AOT", "0"));
        ASSERT_EQ(folder.read("user.ini"), old);
    }
    bool isWritten() const { return folder.read("user.ini") == "[Settings]\r\nAOT=0\r\n"; }
};

TEST_F(BusyProfileTest, ASettingIsWrittenFromTheEventLoopOnceTheProfileIsFree)
{
    EXPECT_EQ(profileInt(file, "Settings", "AOT", -1), 0);
    held.reset();
    EXPECT_TRUE(QTest::qWaitFor([this] { return isWritten(); }));
}

TEST_F(BusyProfileTest, ASettingIsWrittenAtTheLatestBeforeTheProgramEnds)
{
    held.reset();
    program.reset();
    EXPECT_TRUE(isWritten());
}

/// What a signal does to this process is seen instead.
class SignalledProgramTest : public BusyProfileTest {
protected:
    SignalledProgramTest() : m_before(std::signal(SIGTERM, [](int) { ended = true; })) { ended = false; }
    ~SignalledProgramTest() override { std::signal(SIGTERM, m_before); }
    void SetUp() override
    {
        BusyProfileTest::SetUp();
        if (endRequestDescriptor() < 0)
            GTEST_SKIP() << "no signal ends a program with windows on this system";
    }

    static inline bool ended = false;

private:
    void (*m_before)(int);
};

TEST_F(SignalledProgramTest, IsEndedOnceTheSettingIsWritten)
{
    ASSERT_EQ(std::raise(SIGTERM), 0);
    EXPECT_FALSE(ended);
    held.reset();
    EXPECT_TRUE(QTest::qWaitFor([] { return ended; }));
    EXPECT_TRUE(isWritten());
}

TEST_F(SignalledProgramTest, IsEndedAllTheSameWhereTheProfileStaysBusy)
{
    ASSERT_EQ(std::raise(SIGTERM), 0);
    EXPECT_TRUE(QTest::qWaitFor([] { return ended; }));
    EXPECT_EQ(folder.read("user.ini"), old);
}

TEST_F(SignalledProgramTest, IsEndedAtOnceWhereNothingWaits)
{
    held.reset();
    ASSERT_TRUE(QTest::qWaitFor([this] { return isWritten(); }));
    ASSERT_EQ(std::raise(SIGTERM), 0);
    EXPECT_TRUE(ended);
}

TEST_F(BusyProfileTest, AtTheEndASettingIsGivenUpWhereTheProfileStaysBusy)
{
    program.reset();
    held.reset();
    EXPECT_EQ(folder.read("user.ini"), old);
    EXPECT_EQ(profileInt(file, "Settings", "AOT", -1), 1);
}

} // namespace
} // namespace zv
