#include "platform/windows/WidePath.h"

#include "platform/Text.h"

#include <windows.h>

#include <mutex>

namespace zv {

namespace {

/// The calls that make folders keep room for a short file name below 260 characters, and those that list them
/// for a pattern.
constexpr std::size_t kLongestPlain = 240;
constexpr std::wstring_view kLongForm = L"\\\\?\\";
constexpr std::wstring_view kLongShareForm = L"\\\\?\\UNC\\";
constexpr std::wstring_view kDeviceForm = L"\\\\.\\";
constexpr std::wstring_view kShare = L"\\\\";

std::mutex g_currentMutex;
std::wstring g_current; ///< Empty where it is the system's own.

bool isSeparator(wchar_t c)
{
    return c == L'\\' || c == L'/';
}

bool isFull(std::wstring_view path)
{
    if (path.size() >= 2 && isSeparator(path[0]) && isSeparator(path[1]))
        return true;
    return path.size() >= 3 && path[1] == L':' && isSeparator(path[2]);
}

/// Whether the current folder says all that the path does not.
bool isBare(std::wstring_view path)
{
    return !path.empty() && !isSeparator(path[0]) && (path.size() < 2 || path[1] != L':');
}

std::wstring heldCurrentFolder()
{
    const std::lock_guard<std::mutex> lock(g_currentMutex);
    return g_current;
}

std::wstring inFull(std::wstring path)
{
    if (path.empty() || path.starts_with(kLongForm) || path.starts_with(kDeviceForm))
        return path;
    if (isBare(path)) {
        if (const std::wstring folder = heldCurrentFolder(); !folder.empty())
            path = folder + L'\\' + path;
    }
    std::wstring full(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(::GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    return full;
}

} // namespace

std::wstring wideText(std::string_view text)
{
    const std::u16string units = wide(text);
    return std::wstring(units.begin(), units.end());
}

std::string textOf(std::wstring_view text)
{
    return narrow(std::u16string(text.begin(), text.end()));
}

std::wstring widePath(std::string_view path)
{
    std::wstring given = wideText(path);
    if (isFull(given) && given.size() < kLongestPlain)
        return given;
    const std::wstring full = inFull(given);
    if (full.size() < kLongestPlain)
        return isFull(given) ? full : given;
    if (full.starts_with(kLongForm) || full.starts_with(kDeviceForm))
        return full;
    if (full.starts_with(kShare))
        return std::wstring(kLongShareForm) + full.substr(kShare.size());
    return std::wstring(kLongForm) + full;
}

std::string pathOf(std::wstring_view path)
{
    if (path.starts_with(kLongShareForm))
        return textOf(std::wstring(kShare) + std::wstring(path.substr(kLongShareForm.size())));
    return textOf(path.starts_with(kLongForm) ? path.substr(kLongForm.size()) : path);
}

std::wstring wideFullPath(std::string_view path)
{
    return inFull(wideText(path));
}

void holdCurrentFolder(std::wstring folder)
{
    const std::lock_guard<std::mutex> lock(g_currentMutex);
    g_current = std::move(folder);
}

} // namespace zv
