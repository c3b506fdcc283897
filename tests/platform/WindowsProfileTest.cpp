#include "platform/Profile.h"

#include "platform/ProfileWrites.h"
#include "platform/windows/LastError.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace zv {
namespace {

class WindowsProfileTest : public testing::Test {
protected:
    TemporaryFolder folder;
    const std::string old = "[a]\r\nk=1\r\n";
    const std::string file = folder.write("user.ini", old);
    /// Another program has the profile for itself.
    HANDLE held = ::CreateFileW(widePath(file).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);

    void SetUp() override { ASSERT_NE(held, INVALID_HANDLE_VALUE); }
    void TearDown() override
    {
        letGo();
        profileWrites().end({});
    }
    void letGo()
    {
        if (held != INVALID_HANDLE_VALUE)
            ::CloseHandle(held);
        held = INVALID_HANDLE_VALUE;
    }
};

TEST_F(WindowsProfileTest, OneThatAnotherProgramHasForItselfIsUnreadableAndNotAbsent)
{
    EXPECT_FALSE(readProfileString(file, "a", "k", ""));
    EXPECT_EQ(profileString(file, "a", "k", "default"), "default");
    EXPECT_TRUE(profileExists(file));
    letGo();
    EXPECT_EQ(readProfileString(file, "a", "k", "").valueOr("-"), "1");
}

TEST_F(WindowsProfileTest, AWriteToABusyOneWaitsAndIsReadMeanwhile)
{
    EXPECT_TRUE(writeProfileString(file, "a", "k", "2"));
    EXPECT_EQ(profileString(file, "a", "k", "-"), "2");
    EXPECT_TRUE(profileWrites().retry());
    letGo();
    EXPECT_EQ(folder.read("user.ini"), old);
    EXPECT_FALSE(profileWrites().retry());
    EXPECT_EQ(folder.read("user.ini"), "[a]\r\nk=2\r\n");
}

} // namespace
} // namespace zv
