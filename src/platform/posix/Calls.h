#pragma once

#include "platform/FileSteps.h"

#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

/// The system's calls on files under their own names, each one step that a test can let fail.
namespace zv::calls {

inline bool fails(FileStep step)
{
    if (outcomeOf(step) != StepOutcome::Failed)
        return false;
    errno = EIO;
    return true;
}

inline int open(const char* path, int flags, mode_t rights = 0)
{
    return fails(FileStep::Open) ? -1 : ::open(path, flags, rights);
}

inline int stat(const char* path, struct stat* status)
{
    return fails(FileStep::Status) ? -1 : ::stat(path, status);
}

inline int lstat(const char* path, struct stat* status)
{
    return fails(FileStep::Status) ? -1 : ::lstat(path, status);
}

inline int fstat(int file, struct stat* status)
{
    return fails(FileStep::Status) ? -1 : ::fstat(file, status);
}

inline char* realpath(const char* path)
{
    return fails(FileStep::Status) ? nullptr : ::realpath(path, nullptr);
}

inline DIR* opendir(const char* path)
{
    return fails(FileStep::List) ? nullptr : ::opendir(path);
}

/// Null at the folder's end, with errno 0, and where it cannot be read on.
inline dirent* readdir(DIR* folder)
{
    if (fails(FileStep::List))
        return nullptr;
    errno = 0;
    return ::readdir(folder);
}

inline ssize_t read(int file, void* into, std::size_t size)
{
    return fails(FileStep::Read) ? -1 : ::read(file, into, size);
}

inline ssize_t pread(int file, void* into, std::size_t size, off_t place)
{
    return fails(FileStep::Read) ? -1 : ::pread(file, into, size, place);
}

/// Room for a file of this size, which it does not take yet. True where the file system cannot tell.
inline bool reserve(int file, off_t size)
{
    if (outcomeOf(FileStep::Reserve) != StepOutcome::Made) {
        errno = ENOSPC;
        return false;
    }
    return ::fallocate(file, FALLOC_FL_KEEP_SIZE, 0, size) == 0 || errno == EOPNOTSUPP || errno == ENOSYS;
}

inline ssize_t write(int file, const void* bytes, std::size_t size)
{
    switch (outcomeOf(FileStep::Write)) {
    case StepOutcome::Made:
        break;
    case StepOutcome::Half:
        return ::write(file, bytes, size / 2);
    case StepOutcome::Failed:
        errno = ENOSPC;
        return -1;
    }
    return ::write(file, bytes, size);
}

inline ssize_t overwrite(int file, const void* bytes, std::size_t size)
{
    return fails(FileStep::Overwrite) ? -1 : ::pwrite(file, bytes, size, 0);
}

inline int fsync(int file)
{
    return fails(FileStep::Flush) ? -1 : ::fsync(file);
}

inline int ftruncate(int file, off_t size)
{
    return fails(FileStep::Cut) ? -1 : ::ftruncate(file, size);
}

inline int flock(int file, int operation)
{
    return fails(FileStep::Lock) ? -1 : ::flock(file, operation);
}

inline int access(const char* path, int mode)
{
    return fails(FileStep::Status) ? -1 : ::access(path, mode);
}

inline int fchmod(int file, mode_t rights)
{
    return fails(FileStep::Rights) ? -1 : ::fchmod(file, rights);
}

inline int fchown(int file, uid_t owner, gid_t group)
{
    return fails(FileStep::Rights) ? -1 : ::fchown(file, owner, group);
}

inline int futimens(int file, const timespec* times)
{
    return fails(FileStep::Rights) ? -1 : ::futimens(file, times);
}

inline int rename(const char* from, const char* to)
{
    return fails(FileStep::Rename) ? -1 : ::rename(from, to);
}

/// Refuses to take the place of what has the new name; EINVAL or ENOSYS where the file system cannot.
inline int renameNew(const char* from, const char* to)
{
    return fails(FileStep::Rename) ? -1 : ::renameat2(AT_FDCWD, from, AT_FDCWD, to, RENAME_NOREPLACE);
}

inline int link(const char* from, const char* to)
{
    return fails(FileStep::Link) ? -1 : ::link(from, to);
}

/// Gives an open file without a name its first one.
inline int linkOpen(int file, const char* to)
{
    if (fails(FileStep::Link))
        return -1;
    const std::string open = "/proc/self/fd/" + std::to_string(file);
    return ::linkat(AT_FDCWD, open.c_str(), AT_FDCWD, to, AT_SYMLINK_FOLLOW);
}

inline int unlink(const char* path)
{
    return fails(FileStep::Delete) ? -1 : ::unlink(path);
}

} // namespace zv::calls
