#include "platform/Files.h"

#include "platform/posix/Descriptor.h"
#include "platform/posix/WorkingCopy.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace zv {

namespace {

/// Takes a line back that did not fit on the disk, so that no half of it stays.
void takeBack(const Descriptor& file, off_t end, ssize_t count)
{
    struct stat status {};
    if (::fstat(file.number(), &status) == 0 && status.st_size == end)
        static_cast<void>(::ftruncate(file.number(), end - count) == 0);
}

} // namespace

const char kPathSeparator = '/';

bool fileExists(const std::string& path)
{
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool folderExists(const std::string& path)
{
    struct stat status {};
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

Result<std::uint64_t> fileLength(const std::string& path)
{
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0 || !S_ISREG(status.st_mode))
        return Error{ErrorCode::NotFound, path + ": no such file"};
    return static_cast<std::uint64_t>(status.st_size);
}

Result<std::string> readFile(const std::string& path)
{
    Result<Descriptor> file = openForReading(path);
    if (!file)
        return file.error();
    return readAll(*file, path);
}

Result<void> writeFile(const std::string& path, std::string_view bytes)
{
    Result<Descriptor> file = openForWriting(path, O_TRUNC);
    if (!file)
        return file.error();
    return writeAll(*file, path, bytes);
}

Result<void> createFile(const std::string& path, std::string_view bytes)
{
    const std::string made = path + "." + std::to_string(::getpid());
    Result<WorkingCopy> copy = WorkingCopy::open(made);
    if (!copy)
        return copy.error();
    return copy->become(path, bytes);
}

Result<void> appendFile(const std::string& path, std::string_view bytes,
                        const std::function<void()>& whileOpen)
{
    Result<Descriptor> file = openForWriting(path, O_APPEND);
    if (!file)
        return file.error();
    ssize_t count = -1;
    do
        count = ::write(file->number(), bytes.data(), bytes.size());
    while (count < 0 && errno == EINTR);
    if (count < 0)
        return systemError(path);
    if (static_cast<std::size_t>(count) < bytes.size()) {
        takeBack(*file, ::lseek(file->number(), 0, SEEK_CUR), count);
        return Error{ErrorCode::Failed, path + ": the disk is full"};
    }
    if (whileOpen)
        whileOpen();
    return {};
}

Result<void> replaceFile(const std::string& path, const std::string& workingCopy, std::string_view bytes)
{
    Result<WorkingCopy> copy = WorkingCopy::open(workingCopy);
    if (!copy)
        return copy.error();
    return copy->replace(path, bytes);
}

Result<void> deleteFileForced(const std::string& path)
{
    struct stat status {};
    if (::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode))
        return Error{ErrorCode::Failed, path + ": a folder"};
    if (::unlink(path.c_str()) != 0)
        return systemError(path);
    return {};
}

Result<void> renameFile(const std::string& from, const std::string& to)
{
    int renamed = ::renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE);
    struct stat there {};
    // Not every file system can refuse by itself to take another file's place.
    if (renamed != 0 && (errno == EINVAL || errno == ENOSYS) && ::lstat(to.c_str(), &there) != 0)
        renamed = ::rename(from.c_str(), to.c_str());
    if (renamed == 0)
        return {};
    if (::lstat(to.c_str(), &there) == 0)
        return Error{ErrorCode::Busy, to + ": is there already"};
    return systemError(from);
}

Result<void> copyFile(const std::string& from, const std::string& to)
{
    Result<Descriptor> source = openForReading(from);
    if (!source)
        return source.error();
    struct stat old {};
    struct stat there {};
    if (::fstat(source->number(), &old) == 0 && ::stat(to.c_str(), &there) == 0 &&
        old.st_dev == there.st_dev && old.st_ino == there.st_ino)
        return Error{ErrorCode::Denied, to + ": is the file itself"};
    Result<std::string> bytes = readAll(*source, from);
    if (!bytes)
        return bytes.error();
    Result<Descriptor> target = openForWriting(to, O_TRUNC);
    if (!target)
        return target.error();
    if (Result<void> written = writeAll(*target, to, *bytes); !written) {
        ::unlink(to.c_str());
        return written;
    }
    const timespec times[2] = {old.st_atim, old.st_mtim};
    ::futimens(target->number(), times);
    return {};
}

} // namespace zv
