#include "platform/Folders.h"

#include "platform/Files.h"
#include "platform/FolderRoots.h"
#include "platform/Text.h"
#include "platform/posix/Descriptor.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <climits>
#include <dirent.h>
#include <memory>
#include <mntent.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zv {

namespace {

struct CloseFolder {
    void operator()(DIR* folder) const { ::closedir(folder); }
};
struct CloseMounts {
    void operator()(std::FILE* mounts) const { ::endmntent(mounts); }
};

bool liesUnder(std::string_view path, std::string_view folder)
{
    return path.starts_with(folder) && (path.size() == folder.size() || path[folder.size()] == '/');
}

/// Places where a user has nothing to look for.
bool isOfTheSystem(std::string_view place)
{
    if (liesUnder(place, "/run/media"))
        return false;
    constexpr std::array<std::string_view, 7> own = {"/proc", "/sys",  "/dev",           "/run",
                                                     "/boot", "/snap", "/var/lib/docker"};
    return std::any_of(own.begin(), own.end(),
                       [place](std::string_view folder) { return liesUnder(place, folder); });
}

/// A place on another machine is not asked: where that machine is away, the answer would be waited for.
bool isRemote(std::string_view kind)
{
    constexpr std::array<std::string_view, 7> kinds = {"nfs", "cifs", "smb", "9p", "fuse.", "ceph", "autofs"};
    return std::any_of(kinds.begin(), kinds.end(),
                       [kind](std::string_view start) { return kind.starts_with(start); });
}

Result<std::unique_ptr<DIR, CloseFolder>> openFolder(const std::string& folder)
{
    std::unique_ptr<DIR, CloseFolder> open(::opendir(folder.c_str()));
    if (!open)
        return systemError(folder);
    return open;
}

/// The kind of an entry; what a link points to counts.
mode_t kindOf(DIR* folder, const dirent& entry)
{
    if (entry.d_type == DT_DIR)
        return S_IFDIR;
    if (entry.d_type == DT_REG)
        return S_IFREG;
    struct stat status {};
    return ::fstatat(::dirfd(folder), entry.d_name, &status, 0) == 0 ? status.st_mode & S_IFMT : 0;
}

Result<std::vector<std::string>> namesIn(const std::string& folder, mode_t kind, std::string_view ending)
{
    auto open = openFolder(folder);
    if (!open)
        return open.error();
    std::vector<std::string> names;
    errno = 0;
    while (const dirent* entry = ::readdir(open->get())) {
        const std::string_view name = entry->d_name;
        const bool fits =
            name.size() >= ending.size() && sameName(name.substr(name.size() - ending.size()), ending);
        // A name that ends a line would be two in every list.
        const bool isOneLine = name.find_first_of("\r\n") == std::string_view::npos;
        if (!name.starts_with('.') && isOneLine && fits && kindOf(open->get(), *entry) == kind)
            names.emplace_back(name);
        errno = 0;
    }
    if (errno != 0)
        return systemError(folder);
    sortNames(names);
    return names;
}

} // namespace

std::size_t rootLength(std::string_view path)
{
    return path.starts_with('/') ? 1 : 0;
}

bool samePathText(std::string_view a, std::string_view b)
{
    return a == b;
}

std::vector<std::string> drives()
{
    std::vector<std::string> places = {"/"};
    const std::unique_ptr<std::FILE, CloseMounts> mounts(::setmntent("/proc/self/mounts", "r"));
    if (!mounts)
        return places;
    mntent entry{};
    std::vector<char> buffer(std::size_t{4} * PATH_MAX);
    while (::getmntent_r(mounts.get(), &entry, buffer.data(), static_cast<int>(buffer.size()))) {
        const std::string place = entry.mnt_dir;
        // A single file can be mounted as well.
        if (!isOfTheSystem(place) && (isRemote(entry.mnt_type) || folderExists(place)))
            places.push_back(place);
    }
    std::sort(places.begin(), places.end());
    places.erase(std::unique(places.begin(), places.end()), places.end());
    return places;
}

Result<std::vector<std::string>> foldersIn(const std::string& folder)
{
    return namesIn(folder, S_IFDIR, {});
}

Result<std::vector<std::string>> filesIn(const std::string& folder, std::string_view ending)
{
    return namesIn(folder, S_IFREG, ending);
}

std::string fullPath(const std::string& path)
{
    const std::string whole = rootLength(path) > 0 ? path : inFolder(currentFolder(), path);
    std::string full;
    for (std::size_t start = 1; start <= whole.size();) {
        const std::size_t end = std::min(whole.find('/', start), whole.size());
        const std::string_view name = std::string_view(whole).substr(start, end - start);
        if (name == "..")
            full.erase(full.empty() ? 0 : full.rfind('/'));
        else if (!name.empty() && name != ".")
            full.append("/").append(name);
        start = end + 1;
    }
    return full.empty() ? "/" : full;
}

std::string currentFolder()
{
    std::vector<char> buffer(PATH_MAX);
    return ::getcwd(buffer.data(), buffer.size()) && buffer[0] == '/' ? buffer.data() : "/";
}

Result<void> setCurrentFolder(const std::string& folder)
{
    if (::chdir(folder.c_str()) != 0)
        return systemError(folder);
    return {};
}

Result<void> makeFolder(const std::string& folder)
{
    if (::mkdir(folder.c_str(), 0777) == 0)
        return {};
    if (errno == EEXIST)
        return Error{ErrorCode::Busy, folder + ": is there already"};
    return systemError(folder);
}

} // namespace zv
