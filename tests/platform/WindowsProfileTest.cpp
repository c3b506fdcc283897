#include "platform/Profile.h"

#include "platform/ProfileWrites.h"
#include "platform/windows/CodePage.h"
#include "platform/windows/WidePath.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <windows.h>

#include <aclapi.h>
#include <sddl.h>

#include <algorithm>

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

TEST_F(WindowsProfileTest, EachValueIsReadInItsOwnEncodingAndWrittenInUtf8)
{
    if (systemCodePage() != 1252)
        GTEST_SKIP() << "the values are of code page 1252";
    const std::string mixed = "[a]\r\nold=T\xFCr\r\nnew=\xE9\x97\xA8\r\nk=";
    const std::string both = folder.write("mixed.ini", mixed + "\xFC\r\n");
    EXPECT_EQ(profileString(both, "a", "old", ""), "T\xC3\xBCr");
    EXPECT_EQ(readProfileStrings(both, "a", {"old", "new", "k"}).valueOr({}),
              (std::vector<std::string>{"T\xC3\xBCr", "\xE9\x97\xA8", "\xC3\xBC"}));
    EXPECT_TRUE(writeProfileString(both, "a", "k", "\xC3\x9C"));
    EXPECT_EQ(folder.read("mixed.ini"), mixed + "\xC3\x9C\r\n");
}

TEST_F(WindowsProfileTest, AValueIsCutAfter255CharactersInAnyScript)
{
    std::string chinese;
    for (int i = 0; i < 255; ++i)
        chinese += "\xE9\x97\xA8";
    const std::string path = folder.write("long.ini", "[a]\r\nk=" + chinese + "\xE9\x97\xA8\r\n");
    EXPECT_EQ(profileString(path, "a", "k", ""), chinese);
}

/// The rights to a file, in the system's own words, without what it says of their origin.
std::wstring rightsOf(const std::string& file)
{
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    LPWSTR words = nullptr;
    if (::GetNamedSecurityInfoW(widePath(file).c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                nullptr, nullptr, nullptr, &descriptor) != ERROR_SUCCESS)
        return {};
    ::ConvertSecurityDescriptorToStringSecurityDescriptorW(descriptor, SDDL_REVISION_1,
                                                           DACL_SECURITY_INFORMATION, &words, nullptr);
    const std::wstring rights = words ? words : L"";
    ::LocalFree(words);
    ::LocalFree(descriptor);
    return rights.substr(std::min(rights.find(L'('), rights.size()));
}

TEST_F(WindowsProfileTest, AReplacedOneKeepsTheRightsThatWereGivenToIt)
{
    letGo();
    const std::wstring asTheFolder = rightsOf(file);
    PSECURITY_DESCRIPTOR given = nullptr;
    ASSERT_TRUE(::ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;FA;;;WD)(A;;FA;;;BA)",
                                                                       SDDL_REVISION_1, &given, nullptr));
    ASSERT_TRUE(::SetFileSecurityW(widePath(file).c_str(), DACL_SECURITY_INFORMATION, given));
    ::LocalFree(given);
    const std::wstring before = rightsOf(file);
    EXPECT_NE(before, asTheFolder);
    EXPECT_TRUE(writeProfileString(file, "a", "k", "2"));
    EXPECT_EQ(folder.read("user.ini"), "[a]\r\nk=2\r\n");
    EXPECT_EQ(rightsOf(file), before);
}

TEST_F(WindowsProfileTest, AReadOnlyOneStaysAsItIs)
{
    letGo();
    ASSERT_TRUE(::SetFileAttributesW(widePath(file).c_str(), FILE_ATTRIBUTE_READONLY));
    EXPECT_FALSE(writeProfileString(file, "a", "k", "2"));
    EXPECT_EQ(folder.read("user.ini"), old);
    ::SetFileAttributesW(widePath(file).c_str(), FILE_ATTRIBUTE_NORMAL);
}

} // namespace
} // namespace zv
