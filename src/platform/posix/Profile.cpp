#include "platform/Profile.h"

#include "platform/Files.h"
#include "platform/ProfileFile.h"
#include "platform/Text.h"
#include "platform/posix/Calls.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/WorkingCopy.h"

#include <climits>
#include <cstdlib>
#include <memory>

namespace zv {

namespace {

constexpr const char* kWorkingEnding = ".new";

std::string folderOf(const std::string& path)
{
    const std::size_t separator = path.rfind('/');
    return separator == std::string::npos ? std::string() : path.substr(0, separator + 1);
}

/// The first name of a folder that differs from `name` only in case; empty when there is none. Errors:
/// Denied, Failed: the folder cannot be read.
Result<std::string> nameInOtherCase(const std::string& folder, const std::string& name)
{
    const std::unique_ptr<DIR, int (*)(DIR*)> open(calls::opendir(folder.empty() ? "." : folder.c_str()),
                                                   ::closedir);
    if (!open)
        return errno == ENOENT || errno == ENOTDIR ? Result<std::string>(std::string()) : systemError(folder);
    std::string best;
    while (const dirent* entry = calls::readdir(open.get())) {
        if (sameName(entry->d_name, name) && (best.empty() || entry->d_name < best))
            best = entry->d_name;
    }
    return errno == 0 ? Result<std::string>(best) : systemError(folder);
}

/// The file that the name means: the one of exactly this name, else the first by name that differs only in
/// case, else the name itself. A link leads to what it names, so that a rewrite leaves the link in place.
/// Errors: Denied, Failed: it cannot be told.
Result<std::string> realFile(const std::string& path)
{
    std::string found = path;
    struct stat status {};
    if (calls::lstat(path.c_str(), &status) != 0) {
        if (errno != ENOENT && errno != ENOTDIR)
            return systemError(path);
        const std::string folder = folderOf(path);
        const Result<std::string> name = nameInOtherCase(folder, path.substr(folder.size()));
        if (!name || name->empty())
            return name ? Result<std::string>(path) : name.error();
        found = folder + *name;
    }
    const std::unique_ptr<char, void (*)(void*)> real(calls::realpath(found.c_str()), std::free);
    if (real)
        return std::string(real.get());
    return errno == ENOENT ? Result<std::string>(found) : systemError(found);
}

/// Writes a profile over itself, in one write that leaves a whole file behind wherever the program is ended:
/// line ends fill up what is left of a longer old text until it is cut off.
Result<void> overwrite(const Descriptor& file, const std::string& path, const std::string& before,
                       const std::string& after)
{
    std::string bytes = after;
    while (bytes.size() < before.size())
        bytes += isWideProfile(before) && bytes.size() % 2 != 0 ? '\0' : '\n';
    if (!calls::reserve(file.number(), static_cast<off_t>(bytes.size())))
        return writingError(path);
    const ssize_t count = calls::overwrite(file.number(), bytes.data(), bytes.size());
    if (count < 0)
        return writingError(path);
    if (static_cast<std::size_t>(count) < bytes.size()) {
        // The room was not there after all.
        if (calls::overwrite(file.number(), before.data(), before.size()) >= 0)
            static_cast<void>(calls::ftruncate(file.number(), static_cast<off_t>(before.size())) == 0);
        return Error{ErrorCode::Failed, path + ": the disk is full"};
    }
    if (after.size() < bytes.size())
        static_cast<void>(calls::ftruncate(file.number(), static_cast<off_t>(after.size())) == 0);
    return calls::fsync(file.number()) == 0 ? Result<void>() : writingError(path);
}

/// For a folder where no second file can be made.
Result<void> rewriteInPlace(const std::string& path, const ProfileEdit& edit)
{
    const Descriptor file(calls::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NONBLOCK));
    if (!file)
        return writingError(path);
    if (Result<void> locked = lockFile(file, path, {}); !locked)
        return locked;
    // One that has been replaced meanwhile is to be read anew, a little later.
    const Result<bool> stands = standsAt(file, path);
    if (!stands || !*stands)
        return stands ? Error{ErrorCode::Busy, path + ": replaced by another program"} : stands.error();
    const Result<std::string> before = readAll(file, path, kMostProfileBytes);
    if (!before)
        return before.error();
    return overwrite(file, path, *before, edit(*before));
}

} // namespace

std::string cutToBuffer(std::string value)
{
    if (value.size() >= kProfileBuffer)
        value.resize(kProfileBuffer - 1);
    return value;
}

Result<std::string> loadProfile(const std::string& file)
{
    if (file.empty())
        return std::string();
    const Result<std::string> path = realFile(file);
    if (!path)
        return path.error();
    Result<std::string> bytes = readFile(*path, kMostProfileBytes);
    if (!bytes && bytes.error().code != ErrorCode::NotFound)
        return bytes.error();
    return std::move(bytes).valueOr({});
}

Result<void> rewriteProfile(const std::string& file, const ProfileEdit& edit)
{
    const Result<std::string> found = file.empty() ? Error{} : realFile(file);
    if (!found)
        return found.error();
    const std::string& path = *found;
    Result<std::string> before = readFile(path, kMostProfileBytes);
    if (!before && before.error().code != ErrorCode::NotFound)
        return before.error();
    const std::string seen = before.valueOr({});
    const std::string edited = edit(seen);
    if (before && edited == seen)
        return {};
    // A file whose owner has marked it read-only stays as it is.
    if (before) {
        if (const Result<Descriptor> writable = openForWriting(path, O_WRONLY); !writable)
            return writable.error();
    }
    Result<WorkingCopy> copy = WorkingCopy::open(path + kWorkingEnding, {});
    if (!copy)
        return copy.error().code == ErrorCode::Denied ? rewriteInPlace(path, edit) : copy.error();
    if (Result<void> held = copy->hold(path, {}); !held)
        return held;
    before = readFile(path, kMostProfileBytes);
    if (!before && before.error().code != ErrorCode::NotFound)
        return before.error();
    const std::string now = before.valueOr({});
    const std::string after = now == seen ? edited : edit(now);
    return before && after == now ? Result<void>() : copy->replace(path, after);
}

bool profileExists(const std::string& file)
{
    const Result<std::string> path = realFile(file);
    if (!path)
        return true;
    const Result<std::uint64_t> length = fileLength(*path);
    return length || length.error().code != ErrorCode::NotFound;
}

Result<void> createProfile(const std::string& file)
{
    const Result<std::string> path = realFile(file);
    if (!path)
        return path.error();
    // A second file is made only where one seems to be missing.
    if (fileExists(*path))
        return Error{ErrorCode::Busy, *path + ": is there already"};
    return createFile(*path, {});
}

} // namespace zv
