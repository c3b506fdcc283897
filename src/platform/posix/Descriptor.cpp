#include "platform/posix/Descriptor.h"

#include <cerrno>
#include <cstring>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zv {

namespace {

constexpr std::size_t kChunk = 64 * 1024;
constexpr mode_t kAnyoneMayWrite = S_IWUSR | S_IWGRP | S_IWOTH;

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

Result<Descriptor> openForReading(const std::string& path)
{
    // A pipe or a device in the file's place must not hold the program up.
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    if (!file)
        return systemError(path);
    struct stat status {};
    if (::fstat(file.number(), &status) != 0)
        return systemError(path);
    if (!S_ISREG(status.st_mode))
        return Error{ErrorCode::Failed, path + ": not a regular file"};
    return file;
}

Result<Descriptor> openForWriting(const std::string& path, int flags)
{
    struct stat status {};
    if (::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && !(status.st_mode & kAnyoneMayWrite))
        return Error{ErrorCode::Denied, path + ": read-only"};
    Descriptor file(::open(path.c_str(), O_WRONLY | O_CREAT | O_CLOEXEC | O_NONBLOCK | flags, 0666));
    if (!file) {
        Error error = systemError(path);
        if (error.code == ErrorCode::NotFound)
            error.code = ErrorCode::Failed;
        return error;
    }
    return file;
}

Result<std::string> readAll(const Descriptor& file, const std::string& path)
{
    std::string bytes;
    struct stat status {};
    if (::fstat(file.number(), &status) == 0 && status.st_size > 0)
        bytes.reserve(static_cast<std::size_t>(status.st_size) + 1);
    for (;;) {
        const std::size_t held = bytes.size();
        bytes.resize(std::max(held + 1, std::min(bytes.capacity(), held + kChunk)));
        const ssize_t count = ::read(file.number(), bytes.data() + held, bytes.size() - held);
        bytes.resize(held + (count > 0 ? static_cast<std::size_t>(count) : 0));
        if (count == 0)
            return bytes;
        if (count < 0 && errno != EINTR)
            return systemError(path);
    }
}

Result<void> writeAll(const Descriptor& file, const std::string& path, std::string_view bytes)
{
    while (!bytes.empty()) {
        const ssize_t count = ::write(file.number(), bytes.data(), bytes.size());
        if (count < 0 && errno != EINTR)
            return systemError(path);
        if (count > 0)
            bytes.remove_prefix(static_cast<std::size_t>(count));
    }
    return {};
}

} // namespace zv
