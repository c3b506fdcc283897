#include "platform/Folders.h"

#include "platform/Files.h"
#include "platform/FolderRoots.h"
#include "platform/Text.h"

#include <algorithm>
#include <utility>

namespace zv {

namespace {

bool lies(std::string_view path, std::string_view root)
{
    if (!samePathText(path.substr(0, root.size()), root))
        return false;
    return path.size() <= root.size() || root.ends_with(kPathSeparator) ||
           path[root.size()] == kPathSeparator;
}

} // namespace

std::string driveOf(const std::string& path, const std::vector<std::string>& roots)
{
    std::string longest;
    for (const std::string& root : roots) {
        if (root.size() > longest.size() && lies(path, root))
            longest = root;
    }
    return longest;
}

std::vector<std::string> foldersDownTo(const std::string& path)
{
    std::size_t end = rootLength(path);
    std::vector<std::string> folders;
    if (end > 0)
        folders.push_back(path.substr(0, end));
    while (end < path.size()) {
        // Past the separator before the next name.
        end = path.find(kPathSeparator, end + 1);
        if (end == std::string::npos)
            end = path.size();
        folders.push_back(path.substr(0, end));
    }
    return folders;
}

std::string parentFolder(const std::string& path)
{
    const std::size_t name = path.size() - fileNamePart(path).size();
    return path.substr(0, std::min(name, std::max(rootLength(path), name > 0 ? name - 1 : 0)));
}

void sortNames(std::vector<std::string>& names)
{
    std::vector<std::pair<std::string, std::string>> keyed;
    keyed.reserve(names.size());
    for (std::string& name : names)
        keyed.emplace_back(upper(name), std::move(name));
    std::sort(keyed.begin(), keyed.end());
    for (std::size_t i = 0; i < names.size(); ++i)
        names[i] = std::move(keyed[i].second);
}

std::string inFolder(const std::string& folder, std::string_view name)
{
    return folder.ends_with(kPathSeparator) ? folder + std::string(name) : joinPath(folder, name);
}

} // namespace zv
