#include "platform/ProfileWrites.h"

#include "platform/Profile.h"
#include "support/HeldLock.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <optional>

namespace zv {
namespace {

using namespace std::chrono_literals;

class PosixProfileWritesTest : public testing::Test {
protected:
    TemporaryFolder folder;
    const std::string old = "[a]\r\nk=1\r\n";
    const std::string file = folder.write("user.ini", old);
    ProfileWrites::Time now{};
    ProfileWrites writes{[this] { return now; }};

    /// Another program is writing the profile.
    void hold() { m_held.emplace(file + ".new"); }
    void letGo() { m_held.reset(); }
    std::string held() const { return folder.read("user.ini"); }
    bool write(const char* key, const char* value) { return writes.write({file, "a", key, value, {}}); }

    void TearDown() override { profileWrites().end(0ms); }

private:
    std::optional<HeldLock> m_held;
};

TEST_F(PosixProfileWritesTest, AFreeProfileIsWrittenAtOnce)
{
    EXPECT_TRUE(write("k", "2"));
    EXPECT_EQ(held(), "[a]\r\nk=2\r\n");
    EXPECT_FALSE(writes.retry());
}

TEST_F(PosixProfileWritesTest, ABusyOneIsNotWrittenAndTheWriteWaits)
{
    hold();
    EXPECT_TRUE(write("k", "2"));
    EXPECT_TRUE(writes.retry());
    EXPECT_EQ(held(), old);
    letGo();
    EXPECT_FALSE(writes.retry());
    EXPECT_EQ(held(), "[a]\r\nk=2\r\n");
}

TEST_F(PosixProfileWritesTest, OneThatIsHeldUnderItsOwnNameIsBusyToo)
{
    const HeldLock lock(file);
    EXPECT_TRUE(write("k", "2"));
    EXPECT_EQ(held(), old);
    EXPECT_FALSE(std::filesystem::exists(file + ".new"));
}

TEST_F(PosixProfileWritesTest, ThePlatformsOwnCallFailsAtOnce)
{
    hold();
    EXPECT_EQ(WritePrivateProfileStringA("a", "k", "2", file.c_str()), 0);
    EXPECT_EQ(held(), old);
}

TEST_F(PosixProfileWritesTest, WhatTheOtherProgramHasWrittenStays)
{
    hold();
    write("k", "2");
    folder.write("user.ini", "[a]\r\nk=1\r\ntheirs=x\r\n");
    letGo();
    writes.retry();
    EXPECT_EQ(held(), "[a]\r\nk=2\r\ntheirs=x\r\n");
}

TEST_F(PosixProfileWritesTest, LaterWritesWaitBehindEarlierOnes)
{
    hold();
    write("k", "2");
    writes.write({file, "a", {}, {}, {" "}});
    write("m", "3");
    letGo();
    write("k", "4");
    EXPECT_EQ(held(), "[a]\r\nm=3\r\nk=4\r\n");
}

TEST_F(PosixProfileWritesTest, AnotherProfileIsNotHeldUp)
{
    hold();
    write("k", "2");
    EXPECT_TRUE(writes.write({folder.file("other.ini"), "a", "k", "1", {}}));
    EXPECT_EQ(folder.read("other.ini"), "[a]\r\nk=1\r\n");
}

TEST_F(PosixProfileWritesTest, AWriteIsGivenUpAfterTenSeconds)
{
    hold();
    write("k", "2");
    now += 9s;
    write("m", "3");
    EXPECT_TRUE(writes.retry());
    now += 1s;
    EXPECT_TRUE(writes.retry()) << "the later one has its own ten seconds";
    letGo();
    EXPECT_FALSE(writes.retry());
    EXPECT_EQ(held(), "[a]\r\nk=1\r\nm=3\r\n");
}

TEST_F(PosixProfileWritesTest, TheLastTryIsMadeBeforeTheEnd)
{
    hold();
    write("k", "2");
    letGo();
    writes.end(0ms);
    EXPECT_EQ(held(), "[a]\r\nk=2\r\n");
    hold();
    write("k", "3");
    writes.end(0ms);
    letGo();
    EXPECT_FALSE(writes.retry());
    EXPECT_EQ(held(), "[a]\r\nk=2\r\n");
}

TEST_F(PosixProfileWritesTest, TheFirstWriteThatWaitsIsTold)
{
    int told = 0;
    writes.whenWaiting([&] { ++told; });
    hold();
    write("k", "2");
    write("k", "3");
    EXPECT_EQ(told, 1);
    letGo();
    writes.retry();
    write("k", "4");
    EXPECT_EQ(told, 1);
}

TEST_F(PosixProfileWritesTest, TheProgramReadsWhatItHasWritten)
{
    hold();
    EXPECT_TRUE(writeProfileString(file, "A", "K", "\" 7 \""));
    EXPECT_EQ(profileString(folder.file("USER.INI"), "a", "k", "-"), " 7 ");
    EXPECT_EQ(profileInt(file, "a", "k", -1), 7);
    EXPECT_EQ(readProfileStrings(file, "a", {"k", "m"}).valueOr({}), (std::vector<std::string>{" 7 ", ""}));
    EXPECT_TRUE(writeProfileSection(file, "a", {"m=5"}));
    EXPECT_EQ(profileString(file, "a", "k", "-"), "-");
    EXPECT_EQ(profileInt(file, "a", "m", -1), 5);
    EXPECT_EQ(held(), old);
}

TEST_F(PosixProfileWritesTest, AWriteThatChangesNothingNeedsNoLock)
{
    hold();
    EXPECT_EQ(WritePrivateProfileStringA("a", "k", "1", file.c_str()), 1);
}

} // namespace
} // namespace zv
