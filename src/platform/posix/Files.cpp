#include "platform/Files.h"

#include "platform/posix/Calls.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/WorkingCopy.h"

namespace zv {

namespace {

/// How long another program's rewrite of the same list is waited for.
constexpr std::chrono::milliseconds kRewritePatience{2000};
/// How long one that adds waits for the end of a rewrite; it is not held up by a program that never ends.
constexpr std::chrono::milliseconds kAppendPatience{500};
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kNewEnding = ".new"; ///< Of a file that is being made.
constexpr int kMostTries = 100;

/// Takes a line back that did not fit on the disk, so that no half of it stays.
void takeBack(const Descriptor& file, off_t end, ssize_t count)
{
    struct stat status {};
    if (calls::fstat(file.number(), &status) == 0 && status.st_size == end)
        static_cast<void>(calls::ftruncate(file.number(), end - count) == 0);
}

/// Opens a file to be added to, alone if that can be had in time. Errors: Denied, Failed.
Result<Descriptor> openForAppending(const std::string& path)
{
    for (int i = 0;; ++i) {
        Result<Descriptor> file = openForWriting(path, O_RDWR | O_APPEND);
        // A file that users may only add to does not tell how its last line ends.
        if (!file && file.error().code == ErrorCode::Denied)
            file = openForWriting(path, O_WRONLY | O_APPEND);
        if (!file)
            return file;
        const Result<void> locked = lockFile(*file, path, kAppendPatience);
        if (!locked && locked.error().code != ErrorCode::Busy)
            return locked.error();
        // A rewrite that was waited for has put another file in this one's place.
        const Result<bool> stands = standsAt(*file, path);
        if (!stands)
            return stands.error();
        if (*stands || i == kMostTries)
            return file;
    }
}

/// Whether the file's last line has no end.
Result<bool> endsOpen(const Descriptor& file, const std::string& path)
{
    struct stat status {};
    if (calls::fstat(file.number(), &status) != 0)
        return writingError(path);
    const int mode = ::fcntl(file.number(), F_GETFL);
    if (!S_ISREG(status.st_mode) || status.st_size == 0 || (mode & O_ACCMODE) != O_RDWR)
        return false;
    char last = 0;
    if (calls::pread(file.number(), &last, 1, status.st_size - 1) != 1)
        return writingError(path);
    return last != '\n' && last != '\r';
}

} // namespace

const char kPathSeparator = '/';

bool fileExists(const std::string& path)
{
    struct stat status {};
    return calls::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode);
}

bool folderExists(const std::string& path)
{
    struct stat status {};
    return calls::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

Result<std::uint64_t> fileLength(const std::string& path)
{
    struct stat status {};
    if (calls::stat(path.c_str(), &status) != 0)
        return systemError(path);
    if (!S_ISREG(status.st_mode))
        return Error{ErrorCode::NotFound, path + ": no such file"};
    return static_cast<std::uint64_t>(status.st_size);
}

Result<FileStamp> fileStamp(const std::string& path)
{
    struct stat status {};
    if (calls::stat(path.c_str(), &status) != 0)
        return systemError(path);
    if (!S_ISREG(status.st_mode))
        return Error{ErrorCode::NotFound, path + ": no such file"};
    constexpr std::int64_t kPerSecond = 1'000'000'000;
    return FileStamp{static_cast<std::uint64_t>(status.st_size),
                     status.st_mtim.tv_sec * kPerSecond + status.st_mtim.tv_nsec};
}

Result<std::string> readFile(const std::string& path, std::uint64_t most)
{
    Result<Descriptor> file = openForReading(path);
    if (!file)
        return file.error();
    return readAll(*file, path, most);
}

Result<void> writeFile(const std::string& path, std::string_view bytes)
{
    Result<Descriptor> file = openForWriting(path, O_WRONLY | O_TRUNC);
    if (!file)
        return file.error();
    return writeAll(*file, path, bytes);
}

Result<void> writeNewFile(const std::string& path, std::string_view bytes)
{
    for (int i = 0; i < kMostTries; ++i) {
        const Descriptor file(
            calls::open(path.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC | O_NOFOLLOW, 0666));
        if (file)
            return writeAll(file, path, bytes);
        if (errno != EEXIST)
            return writingError(path);
        struct stat old {};
        if (calls::lstat(path.c_str(), &old) != 0 && errno != ENOENT)
            return writingError(path);
        if (isReadOnly(old))
            return Error{ErrorCode::Denied, path + ": read-only"};
        if (calls::unlink(path.c_str()) != 0 && errno != ENOENT)
            return writingError(path);
    }
    return Error{ErrorCode::Failed, path + ": is made again and again"};
}

Result<void> createFile(const std::string& path, std::string_view bytes)
{
    if (const Descriptor file = openUnnamed(path, 0666)) {
        if (Result<void> written = writeFlushed(file, path, bytes); !written)
            return written;
        if (calls::linkOpen(file.number(), path.c_str()) == 0)
            return {};
        if (errno == EEXIST)
            return Error{ErrorCode::Busy, path + ": is there already"};
    }
    Result<WorkingCopy> copy = WorkingCopy::open(path + std::string(kNewEnding), kRewritePatience);
    return copy ? copy->become(path, bytes) : copy.error();
}

Result<void> appendLines(const std::string& path, std::string_view lines, const std::string&,
                         const std::function<void()>& whileOpen)
{
    // A rewrite holds the file itself, so its working copy need not be asked.
    Result<Descriptor> file = openForAppending(path);
    if (!file)
        return file.error();
    const Result<bool> open = endsOpen(*file, path);
    if (!open)
        return open.error();
    const std::string bytes = (*open ? std::string(kLineEnd) : std::string()) + std::string(lines);
    ssize_t count = -1;
    do
        count = calls::write(file->number(), bytes.data(), bytes.size());
    while (count < 0 && errno == EINTR);
    if (count < 0)
        return writingError(path);
    if (static_cast<std::size_t>(count) < bytes.size()) {
        takeBack(*file, ::lseek(file->number(), 0, SEEK_CUR), count);
        return Error{ErrorCode::Failed, path + ": the disk is full"};
    }
    if (whileOpen) {
        // Nobody else has to wait for what the user reads meanwhile.
        ::flock(file->number(), LOCK_UN);
        whileOpen();
    }
    return {};
}

Result<void> replaceFile(const std::string& path, const std::string& workingCopy, std::string_view bytes)
{
    Result<WorkingCopy> copy = WorkingCopy::open(workingCopy, kRewritePatience);
    if (!copy)
        return copy.error();
    if (Result<void> held = copy->hold(path, kRewritePatience); !held)
        return held;
    return copy->replace(path, bytes);
}

Result<void> rewriteFile(const std::string& path, const std::string& workingCopy, std::uint64_t most,
                         const FileChange& change)
{
    if (const Result<std::uint64_t> there = fileLength(path); !there)
        return there.error();
    Result<WorkingCopy> copy = WorkingCopy::open(workingCopy, kRewritePatience);
    if (!copy)
        return copy.error();
    if (Result<void> held = copy->hold(path, kRewritePatience); !held)
        return held;
    const Result<std::string> before = readFile(path, most);
    if (!before)
        return before.error();
    const Result<std::string> after = change(*before);
    if (!after)
        return after.error();
    return *after == *before ? Result<void>() : copy->replace(path, *after);
}

Result<void> deleteFileForced(const std::string& path)
{
    struct stat status {};
    if (calls::lstat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode))
        return Error{ErrorCode::Failed, path + ": a folder"};
    if (calls::unlink(path.c_str()) != 0)
        return systemError(path);
    return {};
}

Result<void> renameFile(const std::string& from, const std::string& to)
{
    if (calls::renameNew(from.c_str(), to.c_str()) == 0)
        return {};
    const int reason = errno;
    const Error error = systemError(from);
    struct stat there {};
    if (reason == EEXIST || calls::lstat(to.c_str(), &there) == 0)
        return Error{ErrorCode::Busy, to + ": is there already"};
    // Not every file system can refuse by itself to take another file's place.
    if ((reason == EINVAL || reason == ENOSYS) && errno == ENOENT)
        return calls::rename(from.c_str(), to.c_str()) == 0 ? Result<void>() : systemError(from);
    return error;
}

} // namespace zv
