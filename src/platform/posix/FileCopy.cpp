#include "platform/FileCopy.h"

#include "platform/posix/Calls.h"
#include "platform/posix/Descriptor.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <optional>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace zv {

namespace {

constexpr std::size_t kChunk = std::size_t{256} * 1024;
constexpr mode_t kRights = 0777;
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

/// A short name of its own in the target's folder: the target's may be as long as names can be.
std::string nameBeside(const std::string& target)
{
    return target.substr(0, target.rfind('/') + 1) + ".zelvora-" + std::to_string(::getpid()) + ".tmp";
}

/// The copy while it has not taken its place.
class Beside {
public:
    Beside(const std::string& target, mode_t rights) : m_path(nameBeside(target)), m_file(open(rights))
    {
        // Left by a run that was ended by force.
        if (!m_file && errno == EEXIST && calls::unlink(m_path.c_str()) == 0)
            m_file = open(rights);
    }
    Beside(const Beside&) = delete;
    Beside& operator=(const Beside&) = delete;
    ~Beside()
    {
        if (m_file && !m_placed)
            calls::unlink(m_path.c_str());
    }

    const Descriptor& file() const { return m_file; }
    bool takePlaceOf(const std::string& target)
    {
        m_placed = calls::rename(m_path.c_str(), target.c_str()) == 0;
        return m_placed;
    }

private:
    Descriptor open(mode_t rights) const
    {
        return Descriptor(
            calls::open(m_path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, rights));
    }

    std::string m_path;
    Descriptor m_file;
    bool m_placed = false;
};

Result<void> copyBytes(const Descriptor& source, const std::string& from, const Descriptor& target,
                       const std::string& to)
{
    std::vector<char> buffer(kChunk);
    for (;;) {
        const ssize_t count = calls::read(source.number(), buffer.data(), buffer.size());
        if (count == 0)
            return {};
        if (count < 0 && errno == EINTR)
            continue;
        if (count < 0)
            return systemError(from);
        Result<void> written = writeAll(target, to, {buffer.data(), static_cast<std::size_t>(count)});
        if (!written)
            return written;
    }
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
    const Result<Descriptor> source = openForReading(from);
    if (!source)
        return source.error();
    struct stat old {};
    if (calls::fstat(source->number(), &old) != 0)
        return systemError(from);
    const auto asked = statusOf(to);
    if (!asked)
        return asked.error();
    const std::optional<struct stat>& there = *asked;
    if (there) {
        if (isSame(old, *there))
            return {};
        if (!S_ISREG(there->st_mode))
            return Error{ErrorCode::Failed, to + ": not a regular file"};
        if (!(there->st_mode & kAnyoneMayWrite) || calls::access(to.c_str(), W_OK) != 0)
            return Error{ErrorCode::Denied, to + ": read-only"};
    }
    const Result<std::string> target = there ? behindLinks(to) : to;
    if (!target)
        return target.error();
    Beside copy(*target, old.st_mode & kRights);
    if (!copy.file())
        return writingError(to);
    if (auto copied = copyBytes(*source, from, copy.file(), to); !copied)
        return copied;
    if (there) {
        calls::fchmod(copy.file().number(), there->st_mode & kRights);
        static_cast<void>(calls::fchown(copy.file().number(), there->st_uid, there->st_gid) == 0);
    }
    const timespec times[2] = {old.st_atim, old.st_mtim};
    calls::futimens(copy.file().number(), times);
    // A disk on another machine may tell only now that it is full.
    if (calls::fsync(copy.file().number()) != 0 || !copy.takePlaceOf(*target))
        return writingError(to);
    return {};
}

} // namespace zv
