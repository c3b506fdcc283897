#include "platform/System.h"

#include "platform/Profile.h"
#include "platform/windows/WidePath.h"

#include <windows.h>
#include <winnetwk.h>

#include <algorithm>
#include <cwchar>

namespace zv {

namespace {

constexpr std::size_t kPath = 32 * 1024;
constexpr DWORD kLoginBuffer = 256;

std::wstring settingsFolder(const std::string& application, const std::string& section)
{
    return wideText("Software\\" + application + "\\" + section);
}

/// One argument as a program reads it back: quotes around it when it holds blanks, marks before inner quotes.
std::wstring quoted(const std::wstring& argument)
{
    if (!argument.empty() && argument.find_first_of(L" \t\"") == std::wstring::npos)
        return argument;
    std::wstring result = L"\"";
    std::size_t slashes = 0;
    for (const wchar_t c : argument) {
        if (c == L'"')
            result.append(slashes + 1, L'\\');
        slashes = c == L'\\' ? slashes + 1 : 0;
        result += c;
    }
    result.append(slashes, L'\\');
    return result + L'"';
}

/// Starts what a command line says, without waiting for it.
/// `program` is the file to start where the line itself does not name it by its whole path.
void startLine(std::wstring line, ProgramWindow window = ProgramWindow::Normal,
               const wchar_t* program = nullptr)
{
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    if (window == ProgramWindow::Minimized) {
        startup.dwFlags = STARTF_USESHOWWINDOW;
        startup.wShowWindow = SW_SHOWMINNOACTIVE;
    }
    PROCESS_INFORMATION process{};
    if (line.empty() || !::CreateProcessW(program, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                                          &startup, &process))
        return;
    ::CloseHandle(process.hThread);
    ::CloseHandle(process.hProcess);
}

/// A path that a program can be given which knows none beyond 260 characters: a longer one by the short names
/// of its folders, where the disk has such.
std::wstring shortForm(const std::string& path)
{
    std::wstring plain = wideText(path);
    if (plain.size() < MAX_PATH)
        return plain;
    std::wstring brief(kPath, L'\0');
    brief.resize(::GetShortPathNameW(widePath(path).c_str(), brief.data(), static_cast<DWORD>(kPath)));
    return brief.empty() || brief.size() > kPath ? plain : wideText(pathOf(brief));
}

using DateText = int (*)(LPWSTR buffer, int size);

std::string dateText(DateText ask)
{
    wchar_t buffer[128];
    const int count = ask(buffer, static_cast<int>(std::size(buffer)));
    return count > 0 ? textOf(std::wstring_view(buffer, static_cast<std::size_t>(count - 1))) : std::string();
}

} // namespace

std::string installationFolder()
{
    std::wstring path(kPath, L'\0');
    path.resize(::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
    const std::size_t separator = path.find_last_of(L"\\/");
    return separator == std::wstring::npos ? "." : pathOf(std::wstring_view(path).substr(0, separator));
}

std::string userFolder()
{
    wchar_t buffer[MAX_PATH + 2];
    std::wstring path(buffer, ::GetTempPathW(static_cast<DWORD>(std::size(buffer)), buffer));
    while (!path.empty() && path.back() == L'\\')
        path.pop_back();
    ::CreateDirectoryW(path.c_str(), nullptr);
    return textOf(path);
}

std::string systemLoginName()
{
    wchar_t buffer[kLoginBuffer] = {};
    DWORD size = kLoginBuffer;
    if (::WNetGetUserW(nullptr, buffer, &size) != NO_ERROR)
        return {};
    return textOf(std::wstring_view(buffer, ::wcsnlen(buffer, kLoginBuffer)));
}

std::string settingsValue(const std::string& application, const std::string& section, const std::string& key,
                          const std::string& fallback)
{
    wchar_t buffer[kProfileBuffer] = {};
    DWORD size = sizeof buffer;
    if (::RegGetValueW(HKEY_CURRENT_USER, settingsFolder(application, section).c_str(), wideText(key).c_str(),
                       RRF_RT_REG_SZ, nullptr, buffer, &size) != ERROR_SUCCESS)
        return fallback;
    return textOf(buffer);
}

void setSettingsValue(const std::string& application, const std::string& section, const std::string& key,
                      const std::string& value)
{
    const std::wstring text = wideText(value);
    ::RegSetKeyValueW(HKEY_CURRENT_USER, settingsFolder(application, section).c_str(), wideText(key).c_str(),
                      REG_SZ, text.c_str(), static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

const char* const kProgramEnding = ".exe";

void startProgram(const std::vector<std::string>& command, ProgramWindow window)
{
    std::wstring line;
    for (const std::string& argument : command)
        line += (line.empty() ? L"" : L" ") + quoted(wideText(argument));
    startLine(line, window);
}

void showFolder(const std::string& folder)
{
    // A program of this name in the current folder, which may be a shared one, must not be taken for the
    // system's.
    wchar_t place[MAX_PATH] = {};
    ::GetWindowsDirectoryW(place, MAX_PATH);
    const std::wstring explorer = std::wstring(place) + L"\\explorer.exe";
    // It takes quotes as they stand, without the marks that other programs need before them.
    startLine(L"explorer.exe /n,/e,\"" + shortForm(folder) + L"\"", ProgramWindow::Normal, explorer.c_str());
}

const bool kSystemHasPrintDialog = true;

std::string shortDateTime()
{
    const std::string date = dateText([](LPWSTR buffer, int size) {
        return ::GetDateFormatEx(LOCALE_NAME_USER_DEFAULT, DATE_SHORTDATE, nullptr, nullptr, buffer, size,
                                 nullptr);
    });
    const std::string time = dateText([](LPWSTR buffer, int size) {
        return ::GetTimeFormatEx(LOCALE_NAME_USER_DEFAULT, 0, nullptr, nullptr, buffer, size);
    });
    std::string text = date + " " + time;
    text.erase(std::remove(text.begin(), text.end(), ','), text.end());
    return text;
}

} // namespace zv
