#include "platform/posix/Descriptor.h"

#include "platform/posix/Calls.h"

#include <algorithm>
#include <cstring>
#include <thread>

namespace zv {

namespace {

constexpr std::size_t kChunk = 0x10000;
constexpr mode_t kAnyoneMayWrite = S_IWUSR | S_IWGRP | S_IWOTH;
constexpr std::chrono::milliseconds kLockPause{1};

bool hasNoLocks(int reason)
{
    return reason == ENOLCK || reason == EOPNOTSUPP || reason == ENOSYS || reason == EINVAL ||
           reason == EBADF;
}

} // namespace

Descriptor::~Descriptor()
{
    if (m_number >= 0)
        ::close(m_number);
}

Error systemError(std::string_view path)
{
    const int reason = errno;
    ErrorCode code = ErrorCode::Failed;
    if (reason == ENOENT || reason == ENOTDIR)
        code = ErrorCode::NotFound;
    else if (reason == EACCES || reason == EPERM || reason == EROFS)
        code = ErrorCode::Denied;
    return Error{code, std::string(path) + ": " + std::strerror(reason)};
}

Error writingError(std::string_view path)
{
    Error error = systemError(path);
    if (error.code == ErrorCode::NotFound)
        error.code = ErrorCode::Failed;
    return error;
}

bool isReadOnly(const struct stat& status)
{
    return S_ISREG(status.st_mode) && !(status.st_mode & kAnyoneMayWrite);
}

Result<Descriptor> openForReading(const std::string& path)
{
    // A pipe or a device in the file's place must not hold the program up.
    Descriptor file(calls::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file)
        return systemError(path);
    struct stat status {};
    if (calls::fstat(file.number(), &status) != 0)
        return systemError(path);
    if (!S_ISREG(status.st_mode))
        return Error{ErrorCode::Failed, path + ": not a regular file"};
    return file;
}

Result<Descriptor> openForWriting(const std::string& path, int flags)
{
    struct stat status {};
    if (calls::stat(path.c_str(), &status) != 0) {
        if (errno != ENOENT)
            return writingError(path);
    } else if (isReadOnly(status)) {
        return Error{ErrorCode::Denied, path + ": read-only"};
    } else if (!S_ISREG(status.st_mode)) {
        // What a pipe is told is lost.
        return Error{ErrorCode::Failed, path + ": not a regular file"};
    }
    Descriptor file(calls::open(path.c_str(), O_CREAT | O_CLOEXEC | O_NONBLOCK | flags, 0666));
    if (!file)
        return writingError(path);
    return file;
}

Descriptor openToLock(const std::string& path, int flags)
{
    const int all = O_CLOEXEC | O_NONBLOCK | flags;
    Descriptor file(calls::open(path.c_str(), O_RDWR | all));
    if (!file && errno != ENOENT && errno != ELOOP)
        file = Descriptor(calls::open(path.c_str(), O_RDONLY | all));
    return file;
}

Descriptor openUnnamed(const std::string& path, mode_t rights)
{
    const std::size_t separator = path.rfind('/');
    const std::string folder = separator == std::string::npos ? "." : path.substr(0, separator + 1);
    return Descriptor(calls::open(folder.c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, rights));
}

Result<std::string> readAll(const Descriptor& file, const std::string& path, std::uint64_t most)
{
    const Error tooLarge{ErrorCode::TooLarge, path + ": larger than " + std::to_string(most) + " bytes"};
    struct stat status {};
    if (calls::fstat(file.number(), &status) != 0)
        return systemError(path);
    const auto expected = static_cast<std::uint64_t>(std::max<off_t>(status.st_size, 0));
    if (expected > most)
        return tooLarge;
    std::string bytes;
    bytes.reserve(static_cast<std::size_t>(expected) + 1);
    for (;;) {
        const std::size_t held = bytes.size();
        bytes.resize(std::max(held + 1, std::min(bytes.capacity(), held + kChunk)));
        const ssize_t count = calls::read(file.number(), bytes.data() + held, bytes.size() - held);
        bytes.resize(held + (count > 0 ? static_cast<std::size_t>(count) : 0));
        if (count == 0)
            return bytes;
        if (count < 0 && errno != EINTR)
            return systemError(path);
        if (bytes.size() > most)
            return tooLarge;
    }
}

Result<void> writeAll(const Descriptor& file, const std::string& path, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = calls::write(file.number(), bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            return systemError(path);
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

Result<void> writeFlushed(const Descriptor& file, const std::string& path, std::string_view bytes)
{
    if (Result<void> written = writeAll(file, path, bytes); !written)
        return written;
    return calls::fsync(file.number()) == 0 ? Result<void>() : writingError(path);
}

Result<void> lockFile(const Descriptor& file, const std::string& path, std::chrono::milliseconds patience)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    while (calls::flock(file.number(), LOCK_EX | LOCK_NB) != 0) {
        if (hasNoLocks(errno))
            return {};
        if (errno != EWOULDBLOCK && errno != EINTR)
            return systemError(path);
        if (std::chrono::steady_clock::now() >= end)
            return Error{ErrorCode::Busy, path + ": in use by another program"};
        pauseForLock();
    }
    return {};
}

void pauseForLock()
{
    std::this_thread::sleep_for(kLockPause);
}

Result<bool> standsAt(const Descriptor& file, const std::string& path)
{
    struct stat open {};
    struct stat there {};
    if (calls::fstat(file.number(), &open) != 0)
        return writingError(path);
    if (calls::stat(path.c_str(), &there) != 0)
        return errno == ENOENT ? Result<bool>(false) : writingError(path);
    return open.st_dev == there.st_dev && open.st_ino == there.st_ino;
}

} // namespace zv
