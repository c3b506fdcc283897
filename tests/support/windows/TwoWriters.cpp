#include "support/TwoWriters.h"

#include "platform/windows/WidePath.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <windows.h>

namespace zv {

namespace {

constexpr const char* kFile = "ZELVORA_SECOND_WRITER";

/// This very test in a process of its own; null when it cannot be started.
HANDLE startSecond()
{
    wchar_t program[MAX_PATH];
    ::GetModuleFileNameW(nullptr, program, MAX_PATH);
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    std::wstring command = L"\"" + std::wstring(program) + L"\" --gtest_filter=" +
                           wideText(std::string(test.test_suite_name()) + "." + test.name());
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!::CreateProcessW(nullptr, command.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr, &start,
                          &process))
        return nullptr;
    ::CloseHandle(process.hThread);
    return process.hProcess;
}

} // namespace

bool runTwoWriters(const std::string& file,
                   const std::function<void(const std::string& file, int writer)>& write)
{
    if (const char* const shared = std::getenv(kFile)) {
        write(shared, 1);
        std::_Exit(0);
    }
    ::SetEnvironmentVariableW(wideText(kFile).c_str(), wideText(file).c_str());
    const HANDLE second = startSecond();
    ::SetEnvironmentVariableW(wideText(kFile).c_str(), nullptr);
    if (second == nullptr)
        return false;
    write(file, 0);
    DWORD status = 1;
    ::WaitForSingleObject(second, INFINITE);
    ::GetExitCodeProcess(second, &status);
    ::CloseHandle(second);
    return status == 0;
}

} // namespace zv
