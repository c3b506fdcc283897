#include "platform/Folders.h"

#include "platform/Files.h"
#include "platform/FolderRoots.h"
#include "platform/Text.h"
#include "platform/windows/FoundEntries.h"
#include "platform/windows/LastError.h"
#include "platform/windows/WidePath.h"

#include <windows.h>

#include <algorithm>

namespace zv {

namespace {

/// With the separator behind it, it is kept in 260 characters.
constexpr std::size_t kLongestCurrentFolder = MAX_PATH - 2;
constexpr DWORD kHidden = FILE_ATTRIBUTE_HIDDEN | FILE_ATTRIBUTE_SYSTEM;

Result<std::vector<std::string>> namesIn(const std::string& folder, bool folders, std::string_view ending)
{
    std::vector<std::string> names;
    FoundEntries entries(folder);
    while (entries.next()) {
        const std::string name = entries.name();
        const bool isFolder = (entries.attributes() & FILE_ATTRIBUTE_DIRECTORY) != 0;
        const bool fits =
            name.size() >= ending.size() && sameName(name.substr(name.size() - ending.size()), ending);
        if (!name.empty() && fits && isFolder == folders && !(entries.attributes() & kHidden))
            names.push_back(name);
    }
    if (!entries.atEnd())
        return lastError(folder);
    sortNames(names);
    return names;
}

bool isSeparator(char c)
{
    return c == '\\' || c == '/';
}

/// How much of "server\share\..." is the share, which is the root of what lies on it.
std::size_t shareLength(std::string_view path)
{
    const std::size_t share = path.find_first_of("\\/");
    if (share == std::string_view::npos)
        return path.size();
    return std::min(path.find_first_of("\\/", share + 1), path.size());
}

} // namespace

std::size_t rootLength(std::string_view path)
{
    // The form for paths of any length has its own marks before the same roots.
    constexpr std::string_view kLongForm = "\\\\?\\", kShare = "UNC\\";
    if (path.starts_with(kLongForm)) {
        const std::string_view rest = path.substr(kLongForm.size());
        if (!rest.starts_with(kShare))
            return kLongForm.size() + rootLength(rest);
        return kLongForm.size() + kShare.size() + shareLength(rest.substr(kShare.size()));
    }
    if (path.size() >= 3 && path[1] == ':' && isSeparator(path[2]))
        return 3;
    if (path.size() < 3 || !isSeparator(path[0]) || !isSeparator(path[1]))
        return 0;
    return 2 + shareLength(path.substr(2));
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
    std::string text = pathOf(wideFullPath(path));
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
    std::wstring full = wideFullPath(folder);
    if (::SetCurrentDirectoryW(full.c_str())) {
        holdCurrentFolder({});
        return {};
    }
    const Error error = lastError(folder);
    // The system's own current folder cannot be that long.
    if (full.size() < kLongestCurrentFolder || !folderExists(folder))
        return error;
    holdCurrentFolder(std::move(full));
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
