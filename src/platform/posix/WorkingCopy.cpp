#include "platform/posix/WorkingCopy.h"

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zv {

namespace {

constexpr int kLockTries = 2000;
constexpr long kLockPauseNs = 1'000'000;
constexpr mode_t kRights = 07777;

/// False when another process keeps the lock. A file system without locks counts as locked.
bool lockWhole(const Descriptor& file)
{
    for (int i = 0; i < kLockTries; ++i) {
        if (::flock(file.number(), LOCK_EX | LOCK_NB) == 0)
            return true;
        if (errno != EWOULDBLOCK && errno != EINTR)
            return true;
        const timespec pause{0, kLockPauseNs};
        ::nanosleep(&pause, nullptr);
    }
    return false;
}

/// Whether the file that stands at the path now is the open one.
bool standsAt(const Descriptor& file, const std::string& path)
{
    struct stat open {};
    struct stat there {};
    return ::fstat(file.number(), &open) == 0 && ::lstat(path.c_str(), &there) == 0 &&
           open.st_dev == there.st_dev && open.st_ino == there.st_ino;
}

Error denied(const std::string& path)
{
    Error error = systemError(path);
    if (error.code == ErrorCode::NotFound)
        error.code = ErrorCode::Failed;
    return error;
}

} // namespace

Result<WorkingCopy> WorkingCopy::open(const std::string& path)
{
    for (;;) {
        Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0666));
        if (!file && (errno == EACCES || errno == ELOOP) && ::unlink(path.c_str()) == 0)
            continue; // A read-only one or a link that somebody left behind.
        if (!file)
            return denied(path);
        if (!lockWhole(file))
            return Error{ErrorCode::Busy, path + ": in use by another process"};
        // The process that had the lock may have moved this very file to its place.
        if (!standsAt(file, path))
            continue;
        if (::ftruncate(file.number(), 0) != 0)
            return denied(path);
        return WorkingCopy(path, std::move(file));
    }
}

WorkingCopy::~WorkingCopy()
{
    if (m_file && !m_placed)
        ::unlink(m_path.c_str());
}

Result<void> WorkingCopy::replace(const std::string& target, std::string_view bytes)
{
    struct stat old {};
    if (::stat(target.c_str(), &old) == 0) {
        if (!S_ISREG(old.st_mode))
            return Error{ErrorCode::Failed, target + ": not a regular file"};
        ::fchmod(m_file.number(), (old.st_mode & kRights) | S_IWUSR);
    }
    if (Result<void> written = fill(bytes); !written)
        return written;
    if (::rename(m_path.c_str(), target.c_str()) != 0)
        return denied(target);
    m_placed = true;
    return {};
}

Result<void> WorkingCopy::become(const std::string& target, std::string_view bytes)
{
    if (Result<void> written = fill(bytes); !written)
        return written;
    // A rename would take the place of a file that somebody made meanwhile; a second name does not.
    int placed = ::link(m_path.c_str(), target.c_str());
    if (placed != 0 && errno != EEXIST && ::access(target.c_str(), F_OK) != 0) {
        placed = ::rename(m_path.c_str(), target.c_str());
        m_placed = placed == 0;
    }
    if (placed != 0)
        return errno == EEXIST ? Error{ErrorCode::Busy, target + ": is there already"} : denied(target);
    return {};
}

Result<void> WorkingCopy::fill(std::string_view bytes)
{
    if (Result<void> written = writeAll(m_file, m_path, bytes); !written)
        return written;
    if (::fsync(m_file.number()) != 0)
        return denied(m_path);
    return {};
}

} // namespace zv
