#include "platform/posix/WorkingCopy.h"

#include "platform/posix/Calls.h"

namespace zv {

namespace {

constexpr mode_t kRights = 07777;
constexpr uid_t kSameOwner = static_cast<uid_t>(-1);
constexpr std::chrono::milliseconds kNow{0};
constexpr int kNewFile = O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW;

bool deleted(const std::string& path)
{
    return calls::unlink(path.c_str()) == 0 || errno == ENOENT;
}

/// The lock of a file, if this process got it at once; false while another one has it. Errors: Denied,
/// Failed.
Result<bool> owns(const Descriptor& file, const std::string& path)
{
    if (const Result<void> locked = lockFile(file, path, kNow); !locked)
        return locked.error().code == ErrorCode::Busy ? Result<bool>(false) : locked.error();
    // The process that had the lock before may have moved or deleted this very file.
    return standsAt(file, path);
}

/// Deletes what stands under a working copy's name, unless it is one that another process is writing: then
/// false. Errors: Denied, Failed.
Result<bool> clearAway(const std::string& path)
{
    const Descriptor file = openToLock(path, O_NOFOLLOW);
    if (!file) {
        if (errno == ENOENT)
            return true;
        if (errno != ELOOP && errno != EACCES)
            return writingError(path);
    } else {
        Result<bool> left = owns(file, path);
        if (!left || !*left)
            return left;
    }
    return deleted(path) ? Result<bool>(true) : writingError(path);
}

bool mayHaveNoLinks(int reason)
{
    return reason == EPERM || reason == EOPNOTSUPP || reason == ENOSYS || reason == EMLINK;
}

} // namespace

Result<WorkingCopy> WorkingCopy::open(const std::string& path, std::chrono::milliseconds patience,
                                      mode_t rights)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        Descriptor file(calls::open(path.c_str(), kNewFile, rights));
        if (!file && errno != EEXIST)
            return writingError(path);
        // Between the two calls another process may have taken the new file for one that was left behind.
        const Result<bool> done = file ? owns(file, path) : clearAway(path);
        if (!done) {
            if (file)
                deleted(path);
            return done.error();
        }
        if (file && *done)
            return WorkingCopy(path, std::move(file));
        if (*done)
            continue;
        if (std::chrono::steady_clock::now() >= end)
            return Error{ErrorCode::Busy, path + ": in use by another program"};
        pauseForLock();
    }
}

void WorkingCopy::deleteLeft(const std::string& path)
{
    const Descriptor file = openToLock(path, O_NOFOLLOW);
    if (file && calls::flock(file.number(), LOCK_EX | LOCK_NB) == 0 && standsAt(file, path).valueOr(false))
        deleted(path);
}

WorkingCopy::~WorkingCopy()
{
    if (m_file && !m_placed)
        calls::unlink(m_path.c_str());
}

Result<void> WorkingCopy::hold(const std::string& target, std::chrono::milliseconds patience)
{
    m_target = openToLock(target);
    if (m_target)
        return lockFile(m_target, target, patience);
    // One that cannot be read can be replaced all the same.
    return errno == ENOENT || errno == EACCES ? Result<void>() : writingError(target);
}

Result<void> WorkingCopy::replace(const std::string& target, std::string_view bytes)
{
    struct stat old {};
    if (calls::stat(target.c_str(), &old) == 0) {
        if (!S_ISREG(old.st_mode))
            return Error{ErrorCode::Failed, target + ": not a regular file"};
        // Only an administrator can give a file away, but a user can leave it to a group of his own. A change
        // of owner takes rights away, so it comes first.
        if (calls::fchown(m_file.number(), old.st_uid, old.st_gid) != 0)
            static_cast<void>(calls::fchown(m_file.number(), kSameOwner, old.st_gid) == 0);
        calls::fchmod(m_file.number(), (old.st_mode & kRights) | S_IWUSR);
    } else if (errno != ENOENT) {
        return writingError(target);
    }
    if (Result<void> written = writeFlushed(m_file, m_path, bytes); !written)
        return written;
    return place(target);
}

Result<void> WorkingCopy::become(const std::string& target, std::string_view bytes)
{
    Result<void> written = writeFlushed(m_file, m_path, bytes);
    return written ? takeName(target) : written;
}

Result<void> WorkingCopy::takeName(const std::string& target)
{
    // A rename would take the place of a file that somebody made meanwhile; a second name does not.
    if (calls::link(m_path.c_str(), target.c_str()) == 0)
        return {};
    if (mayHaveNoLinks(errno)) {
        struct stat there {};
        errno = calls::lstat(target.c_str(), &there) == 0 ? EEXIST : errno;
        if (errno == ENOENT)
            return place(target);
    }
    return errno == EEXIST ? Error{ErrorCode::Busy, target + ": is there already"} : writingError(target);
}

Result<void> WorkingCopy::place(const std::string& target)
{
    if (calls::rename(m_path.c_str(), target.c_str()) != 0)
        return writingError(target);
    m_placed = true;
    return {};
}

} // namespace zv
