#include "platform/FileCopy.h"

#include "platform/posix/Calls.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/WorkingCopy.h"

#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace zv {

namespace {

constexpr std::size_t kChunk = std::size_t{256} * 1024;
constexpr mode_t kRights = 0777;
constexpr const char* kBesideStart = ".zelvora-"; ///< Of a copy that has not taken its place.
constexpr const char* kBesideEnding = ".tmp";
/// How long another program's look for copies that were left is waited for.
constexpr std::chrono::milliseconds kPatience{2000};
constexpr mode_t kAnyoneMayWrite = S_IWUSR | S_IWGRP | S_IWOTH;

/// Of what stands at the path, nothing where nothing does. Errors: Denied, Failed: nobody knows.
Result<std::optional<struct stat>> statusOf(const std::string& path)
{
    struct stat status {};
    if (calls::stat(path.c_str(), &status) == 0)
        return std::optional(status);
    if (errno == ENOENT)
        return std::optional<struct stat>();
    return writingError(path);
}

bool isSame(const struct stat& a, const struct stat& b)
{
    return a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

/// What a link leads to is what the copy replaces, not the link. Errors: Denied, Failed.
Result<std::string> behindLinks(const std::string& path)
{
    char* const real = calls::realpath(path.c_str());
    if (!real)
        return writingError(path);
    const std::string found = real;
    std::free(real);
    return found;
}

std::string folderOf(const std::string& path)
{
    return path.substr(0, path.rfind('/') + 1);
}

/// A short name of its own in the target's folder: the target's may be as long as names can be.
std::string nameBeside(const std::string& target)
{
    return folderOf(target) + kBesideStart + std::to_string(::getpid()) + kBesideEnding;
}

/// Deletes what copies into this folder have left that were ended by force.
void deleteLeftCopies(const std::string& folder)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> open(calls::opendir(folder.empty() ? "." : folder.c_str()),
                                                   ::closedir);
    if (!open)
        return;
    while (const dirent* entry = calls::readdir(open.get())) {
        const std::string_view name = entry->d_name;
        if (name.starts_with(kBesideStart) && name.ends_with(kBesideEnding))
            WorkingCopy::deleteLeft(folder + std::string(name));
    }
}

Result<void> copyBytes(const Descriptor& source, const std::string& from, const Descriptor& target,
                       const std::string& to)
{
    std::vector<char> buffer(kChunk);
    for (off_t place = 0;;) {
        const ssize_t count = calls::pread(source.number(), buffer.data(), buffer.size(), place);
        if (count == 0)
            return {};
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return systemError(from);
        place += count;
        Result<void> written = writeAll(target, to, {buffer.data(), static_cast<std::size_t>(count)});
        if (!written)
            return written;
    }
}

/// One copy on its way.
struct Source {
    const Descriptor& file;
    const std::string& path;
    struct stat status;
};

/// Writes the copy whole, with the rights of the file whose place it is to take. Errors: Denied, Failed.
Result<void> fill(const Descriptor& copy, const Source& source, const std::optional<struct stat>& there,
                  const std::string& to)
{
    if (auto copied = copyBytes(source.file, source.path, copy, to); !copied)
        return copied;
    if (there) {
        calls::fchmod(copy.number(), there->st_mode & kRights);
        static_cast<void>(calls::fchown(copy.number(), there->st_uid, there->st_gid) == 0);
    }
    const timespec times[2] = {source.status.st_atim, source.status.st_mtim};
    calls::futimens(copy.number(), times);
    // A disk on another machine may tell only now that it is full.
    return calls::fsync(copy.number()) == 0 ? Result<void>() : writingError(to);
}

/// Copies to where no file is, by a file without a name. False where that cannot be had.
Result<bool> copyUnnamed(const Source& source, const std::string& to)
{
    const Descriptor copy = openUnnamed(to, source.status.st_mode & kRights);
    if (!copy)
        return false;
    if (auto filled = fill(copy, source, {}, to); !filled)
        return filled.error();
    if (calls::linkOpen(copy.number(), to.c_str()) == 0)
        return true;
    return errno == EEXIST ? Result<bool>(Error{ErrorCode::Busy, to + ": is there already"}) : false;
}

/// Copies by a file beside the target.
Result<void> copyNamed(const Source& source, const std::optional<struct stat>& there, const std::string& to)
{
    deleteLeftCopies(folderOf(to));
    const std::string beside = nameBeside(to);
    Result<WorkingCopy> copy = WorkingCopy::open(beside, kPatience, source.status.st_mode & kRights);
    // The user knows the target alone.
    if (!copy)
        return Error{copy.error().code, to + copy.error().text.substr(beside.size())};
    if (auto filled = fill(copy->file(), source, there, to); !filled)
        return filled;
    return there ? copy->place(to) : copy->takeName(to);
}

} // namespace

bool isSameFile(const std::string& a, const std::string& b)
{
    const auto first = statusOf(a), second = statusOf(b);
    return first && second && *first && *second && isSame(**first, **second);
}

bool isMarkedReadOnly(const std::string& path)
{
    const auto status = statusOf(path);
    return status && *status && !((**status).st_mode & kAnyoneMayWrite);
}

std::string behindLink(const std::string& path)
{
    return behindLinks(path).valueOr(path);
}

Result<void> copyIntoPlace(const std::string& from, const std::string& to)
{
    const Result<Descriptor> opened = openForReading(from);
    if (!opened)
        return opened.error();
    struct stat status {};
    if (calls::fstat(opened->number(), &status) != 0)
        return systemError(from);
    const auto asked = statusOf(to);
    if (!asked)
        return asked.error();
    const std::optional<struct stat>& there = *asked;
    if (there) {
        if (isSame(status, *there))
            return {};
        if (!S_ISREG(there->st_mode))
            return Error{ErrorCode::Failed, to + ": not a regular file"};
        if (!(there->st_mode & kAnyoneMayWrite) || calls::access(to.c_str(), W_OK) != 0)
            return Error{ErrorCode::Denied, to + ": read-only"};
    }
    const Source source{*opened, from, status};
    if (!there) {
        const Result<bool> copied = copyUnnamed(source, to);
        if (!copied)
            return copied.error();
        if (*copied)
            return {};
    }
    const Result<std::string> target = there ? behindLinks(to) : to;
    return target ? copyNamed(source, there, *target) : target.error();
}

} // namespace zv
