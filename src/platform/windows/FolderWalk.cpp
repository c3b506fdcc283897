#include "platform/FolderWalk.h"

#include "platform/Folders.h"
#include "platform/Text.h"
#include "platform/windows/FoundEntries.h"

#include <algorithm>

namespace zv {

namespace {

/// Adds the files of a folder, and its folders to those that are still to be walked. False when it cannot be
/// read.
bool walk(const std::string& folder, std::string_view ending, std::vector<std::string>& files,
          std::vector<std::string>& folders)
{
    FoundEntries entries(folder);
    while (entries.next()) {
        const std::string name = entries.name();
        const DWORD attributes = entries.attributes();
        const bool fits =
            name.size() > ending.size() && sameText(name.substr(name.size() - ending.size()), ending);
        if (!(attributes & FILE_ATTRIBUTE_DIRECTORY) && fits)
            files.push_back(inFolder(folder, name));
        // A link may lead back to where it stands.
        else if ((attributes & FILE_ATTRIBUTE_DIRECTORY) && !(attributes & FILE_ATTRIBUTE_REPARSE_POINT))
            folders.push_back(inFolder(folder, name));
    }
    return entries.atEnd();
}

} // namespace

Result<std::vector<std::string>> filesBelow(const std::string& folder, std::string_view ending)
{
    std::vector<std::string> files, folders;
    if (!walk(folder, ending, files, folders))
        return Error{ErrorCode::NotFound, "no such folder"};
    while (!folders.empty()) {
        const std::string next = std::move(folders.back());
        folders.pop_back();
        static_cast<void>(walk(next, ending, files, folders));
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace zv
