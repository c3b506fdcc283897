#include "platform/FileCopy.h"
#include "platform/FileSteps.h"
#include "platform/Files.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace zv {
namespace {

/// A file that another program has open when it is deleted, and lets go of once this program has asked for
/// its name so many times.
class GoingFile final : public FileWatch {
public:
    GoingFile(const std::string& path, int asked)
        : m_file(::CreateFileA(path.c_str(), GENERIC_READ,
                               FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                               FILE_ATTRIBUTE_NORMAL, nullptr)),
          m_left(asked)
    {
        ::DeleteFileA(path.c_str());
        // Wine lets some folders have the name back at once.
        m_stays = ::GetFileAttributesA(path.c_str()) == INVALID_FILE_ATTRIBUTES &&
                  ::GetLastError() == ERROR_ACCESS_DENIED;
        watchFiles(this);
    }
    GoingFile(const GoingFile&) = delete;
    GoingFile& operator=(const GoingFile&) = delete;
    ~GoingFile() override
    {
        watchFiles(nullptr);
        if (m_left > 0)
            ::CloseHandle(m_file);
    }
    bool stays() const { return m_stays; }

    StepOutcome before(FileStep step) override
    {
        if (step == FileStep::Open && m_left > 0 && --m_left == 0)
            ::CloseHandle(m_file);
        return StepOutcome::Made;
    }

private:
    HANDLE m_file;
    int m_left;
    bool m_stays = false;
};

class WindowsFilesTest : public testing::Test {
protected:
    TemporaryFolder folder;
    const std::string path = folder.write("a", "old");
};

TEST_F(WindowsFilesTest, AFileThatIsDeletedWhileItIsOpenElsewhereIsWaitedFor)
{
    const auto ways = {
        +[](const std::string& file) { return writeNewFile(file, "new"); },
        +[](const std::string& file) { return createFile(file, {}); },
        +[](const std::string& file) { return appendLines(file, "new"); },
        +[](const std::string& file) { return replaceFile(file + ".lst", file, "new"); },
    };
    for (const auto way : ways) {
        folder.write("a", "old");
        const GoingFile other(path, 4);
        if (!other.stays())
            GTEST_SKIP() << "the name is free at once here";
        EXPECT_TRUE(way(path));
    }
}

TEST_F(WindowsFilesTest, WhatAProgramOfThisMachineHasLeftInACopyGoesWithTheNextOneIntoTheFolder)
{
    char machine[MAX_COMPUTERNAME_LENGTH + 1];
    DWORD size = sizeof machine;
    ASSERT_TRUE(::GetComputerNameA(machine, &size));
    const std::string nobody = "zelvora-4294967292-";
    const std::string left = folder.write(nobody + machine + ".tmp", "half");
    ::SetFileAttributesA(left.c_str(), FILE_ATTRIBUTE_READONLY);
    const std::string other = folder.write(nobody + "OTHER-" + machine + "S.tmp", "half");
    ASSERT_TRUE(copyIntoPlace(path, folder.file("b.dwg")));
    EXPECT_FALSE(fileExists(left));
    EXPECT_TRUE(fileExists(other)) << "of another machine";
}

} // namespace
} // namespace zv
