#include "platform/Console.h"

#include "platform/windows/WidePath.h"

#include <windows.h>

#include <shellapi.h>

#include <algorithm>
#include <cstdio>
#include <memory>

namespace zv {

namespace {

constexpr std::size_t kPiece = 8192;

} // namespace

// What `main` is given is in the code page of the process and may have lost letters.
std::vector<std::string> programArguments(int, char**)
{
    int count = 0;
    const std::unique_ptr<LPWSTR, HLOCAL(WINAPI*)(HLOCAL)> words(
        ::CommandLineToArgvW(::GetCommandLineW(), &count), ::LocalFree);
    std::vector<std::string> arguments;
    for (int i = 1; words && i < count; ++i)
        arguments.push_back(textOf(words.get()[i]));
    return arguments;
}

void print(std::string_view text, Output to)
{
    const bool isError = to == Output::Errors;
    std::FILE* const file = isError ? stderr : stdout;
    const HANDLE handle = ::GetStdHandle(isError ? STD_ERROR_HANDLE : STD_OUTPUT_HANDLE);
    DWORD mode = 0;
    if (!::GetConsoleMode(handle, &mode)) {
        std::fwrite(text.data(), 1, text.size(), file);
        return;
    }
    std::fflush(file);
    const std::wstring units = wideText(text);
    std::wstring_view rest = units;
    DWORD written = 0;
    // Older consoles take no long texts.
    while (!rest.empty() &&
           ::WriteConsoleW(handle, rest.data(), static_cast<DWORD>(std::min(rest.size(), kPiece)), &written,
                           nullptr) &&
           written > 0)
        rest.remove_prefix(written);
}

} // namespace zv
