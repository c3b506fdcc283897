#include "platform/RunProgram.h"

#include "platform/Text.h"

#include <windows.h>

namespace zv {

namespace {

/// One argument as the C runtime of the other program takes it apart again.
std::wstring quoted(const std::u16string& text)
{
    std::wstring result = L"\"";
    std::size_t slashes = 0;
    for (const char16_t unit : text) {
        if (unit == u'\\') {
            ++slashes;
            continue;
        }
        result.append(unit == u'"' ? 2 * slashes + 1 : slashes, L'\\');
        slashes = 0;
        result += static_cast<wchar_t>(unit);
    }
    result.append(2 * slashes, L'\\');
    return result + L"\"";
}

} // namespace

Result<int> runProgram(const std::vector<std::string>& command)
{
    std::wstring line;
    for (const std::string& text : command)
        line += (line.empty() ? L"" : L" ") + quoted(wide(text));
    STARTUPINFOW start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION process{};
    if (!CreateProcessW(nullptr, line.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &process))
        return Error{ErrorCode::NotFound, "the program cannot be started"};
    WaitForSingleObject(process.hProcess, INFINITE);
    DWORD status = 0;
    GetExitCodeProcess(process.hProcess, &status);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(status);
}

} // namespace zv
