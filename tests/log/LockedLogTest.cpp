#include "log/ActivityLog.h"

#include "platform/windows/WidePath.h"
#include "support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <windows.h>

namespace zv {
namespace {

TEST(LockedLog, EntryIsLostInSilenceWhileAnotherProgramHasTheLogForItself)
{
    const TemporaryFolder folder;
    const std::string log = folder.write("Zelvora_Log.csv", "old\r\n");
    const HANDLE held = ::CreateFileW(widePath(log).c_str(), GENERIC_READ | GENERIC_WRITE, 0, nullptr,
                                      OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    writeLog(log, "one");
    ::CloseHandle(held);
    EXPECT_EQ(folder.read("Zelvora_Log.csv"), "old\r\n");
    writeLog(log, "two");
    EXPECT_EQ(folder.read("Zelvora_Log.csv"), "old\r\ntwo\r\n");
}

} // namespace
} // namespace zv
