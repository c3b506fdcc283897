#include "platform/Folders.h"

#include "platform/FolderRoots.h"
#include "platform/Text.h"
#include "platform/windows/LastError.h"

#include <windows.h>

#include <algorithm>
#include <memory>

namespace zv {

namespace {

struct CloseFind {
    using pointer = HANDLE;
    void operator()(HANDLE find) const
    {
        if (find != INVALID_HANDLE_VALUE)
            ::FindClose(find);
    }
};

constexpr DWORD kHidden = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

std::string narrowed(std::wstring_view text)
{
    return narrow(std::u16string(text.begin(), text.end()));
}

/// A name in the 8-bit code page. One that it cannot hold is known by its short name as well; empty when it
/// has none.
std::string nameOf(const WIN32_FIND_DATAW& entry)
{
    const std::string name = narrowed(entry.cFileName);
    return widePath(name) == entry.cFileName ? name : narrowed(entry.cAlternateFileName);
}

Result<std::vector<std::string>> namesIn(const std::string& folder, bool folders, std::string_view ending)
{
    WIN32_FIND_DATAW entry{};
    const std::unique_ptr<HANDLE, CloseFind> find(
        ::FindFirstFileW(widePath(inFolder(folder, "*")).c_str(), &entry));
    std::vector<std::string> names;
    if (find.get() == INVALID_HANDLE_VALUE) {
        // The root of an empty drive holds not even itself.
        if (::GetLastError() == ERROR_FILE_NOT_FOUND)
            return names;
        return lastError(folder);
    }
    do {
        const std::string name = nameOf(entry);
        const bool isFolder = (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
        const bool fits =
            name.size() >= ending.size() && sameName(name.substr(name.size() - ending.size()), ending);
        if (!name.empty() && name != "." && name != ".." && fits && isFolder == folders &&
            !(entry.dwFileAttributes & kHidden))
            names.push_back(name);
    } while (::FindNextFileW(find.get(), &entry));
    if (::GetLastError() != ERROR_NO_MORE_FILES)
        return lastError(folder);
    sortNames(names);
    return names;
}

bool isSeparator(char c)
{
    return c == '\\' || c == '/';
}

} // namespace

std::size_t rootLength(std::string_view path)
{
    if (path.size() >= 3 && path[1] == ':' && isSeparator(path[2]))
        return 3;
    if (path.size() < 3 || !isSeparator(path[0]) || !isSeparator(path[1]))
        return 0;
    // A share is the root of what lies on it.
    const std::size_t share = path.find_first_of("\\/", 2);
    if (share == std::string_view::npos)
        return path.size();
    return std::min(path.find_first_of("\\/", share + 1), path.size());
}

bool samePathText(std::string_view a, std::string_view b)
{
    return sameName(a, b);
}

std::vector<std::string> drives()
{
    std::vector<std::string> roots;
    const DWORD there = ::GetLogicalDrives();
    for (char letter = 'A'; letter <= 'Z'; ++letter) {
        if (there & (1u << (letter - 'A')))
            roots.push_back(std::string(1, letter) + ":\\");
    }
    return roots;
}

Result<std::vector<std::string>> foldersIn(const std::string& folder)
{
    return namesIn(folder, true, {});
}

Result<std::vector<std::string>> filesIn(const std::string& folder, std::string_view ending)
{
    return namesIn(folder, false, ending);
}

std::string fullPath(const std::string& path)
{
    const std::wstring given = widePath(path);
    std::wstring full(::GetFullPathNameW(given.c_str(), 0, nullptr, nullptr), L'\0');
    full.resize(::GetFullPathNameW(given.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
    std::string text = narrowed(full);
    while (text.size() > rootLength(text) && isSeparator(text.back()))
        text.pop_back();
    return text;
}

std::string currentFolder()
{
    return fullPath(".");
}

Result<void> setCurrentFolder(const std::string& folder)
{
    // The call takes the drive along.
    if (!::SetCurrentDirectoryW(widePath(folder).c_str()))
        return lastError(folder);
    return {};
}

Result<void> makeFolder(const std::string& folder)
{
    if (::CreateDirectoryW(widePath(folder).c_str(), nullptr))
        return {};
    if (::GetLastError() == ERROR_ALREADY_EXISTS)
        return Error{ErrorCode::Busy, folder + ": is there already"};
    return lastError(folder);
}

} // namespace zv
