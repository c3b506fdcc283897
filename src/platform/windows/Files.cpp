#include "platform/Files.h"

#include "platform/windows/WorkingCopy.h"

#include <algorithm>
#include <optional>

namespace zv {

namespace {

constexpr std::size_t kChunk = 1u << 20;
/// How long another program's rewrite of the same list is waited for.
constexpr std::chrono::milliseconds kRewritePatience{2000};
/// How long one that adds waits for the end of a rewrite.
constexpr std::chrono::milliseconds kAppendPatience{500};
constexpr std::string_view kNewEnding = ".new"; ///< Of a file that is being made.
constexpr std::string_view kLineEnd = "\r\n";
constexpr int kMostTries = 100;

/// Keeps other programs from appending at the same moment, where the end of a file is looked up before the
/// write (on a network, or under Wine). The locked byte is far behind any content, so that readers are not
/// hindered.
class AppendLock {
public:
    explicit AppendLock(const FileHandle& file) : m_file(file)
    {
        m_place.OffsetHigh = 0x7fffffff;
        m_locked = calls::lock(m_file.get(), &m_place);
    }
    AppendLock(const AppendLock&) = delete;
    AppendLock& operator=(const AppendLock&) = delete;
    ~AppendLock()
    {
        if (m_locked)
            ::UnlockFileEx(m_file.get(), 0, 1, 0, &m_place);
    }

private:
    const FileHandle& m_file;
    OVERLAPPED m_place{};
    bool m_locked = false;
};

/// Opens a file to be added to. Without the right to write elsewhere the system itself puts each write at the
/// end. The lock and the look at the last line need the right to read, which a file that users may only add
/// to does not give. Errors: Denied, Failed.
Result<FileHandle> openForAppending(const std::string& path)
{
    const auto end = std::chrono::steady_clock::now() + kAppendPatience;
    for (;;) {
        FileHandle file(path, FILE_APPEND_DATA | FILE_READ_DATA, kShareAll, OPEN_ALWAYS);
        if (file)
            return file;
        if (::GetLastError() == ERROR_ACCESS_DENIED) {
            FileHandle blind(path, FILE_APPEND_DATA, kShareAll, OPEN_ALWAYS);
            if (blind)
                return blind;
        }
        // A program that has just rewritten or deleted the file lets go of it a moment later.
        const DWORD reason = ::GetLastError();
        if ((reason != ERROR_SHARING_VIOLATION && !isGoing(path, reason)) ||
            std::chrono::steady_clock::now() >= end) {
            ::SetLastError(reason);
            return writingError(path);
        }
        ::Sleep(1);
    }
}

/// Whether the file's last line has no end.
Result<bool> endsOpen(const FileHandle& file, const std::string& path, LARGE_INTEGER size)
{
    if (size.QuadPart == 0)
        return false;
    OVERLAPPED place{};
    place.Offset = static_cast<DWORD>((size.QuadPart - 1) & 0xFFFFFFFF);
    place.OffsetHigh = static_cast<DWORD>((size.QuadPart - 1) >> 32);
    char last = '\n';
    DWORD count = 0;
    if (calls::read(file.get(), &last, 1, &count, &place))
        return count == 1 && last != '\n' && last != '\r';
    // A file that users may only add to does not tell.
    return ::GetLastError() == ERROR_ACCESS_DENIED ? Result<bool>(false) : writingError(path);
}

/// Takes a line back that did not fit on the disk, so that no half of it stays. An end that somebody else has
/// moved meanwhile stays.
void takeBack(const std::string& path, LARGE_INTEGER before, DWORD count)
{
    const FileHandle file(path, GENERIC_WRITE, kShareAll, OPEN_EXISTING);
    LARGE_INTEGER size{};
    if (file && calls::size(file.get(), &size) && size.QuadPart == before.QuadPart + count)
        calls::cut(file.get(), before);
}

bool isThere(DWORD reason)
{
    return reason == ERROR_FILE_EXISTS || reason == ERROR_ALREADY_EXISTS;
}

/// Makes a new file once an older one of the name, deleted while another program has it open, is gone. None,
/// with the system's reason, where that cannot be had in time.
FileHandle makeNew(const std::string& path)
{
    const auto end = std::chrono::steady_clock::now() + kAppendPatience;
    for (;;) {
        FileHandle file(path, GENERIC_WRITE, FILE_SHARE_READ | FILE_SHARE_DELETE, CREATE_NEW,
                        FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT);
        const DWORD reason = ::GetLastError();
        if (file || !isGoing(path, reason) || std::chrono::steady_clock::now() >= end) {
            ::SetLastError(reason);
            return file;
        }
        ::Sleep(1);
    }
}

} // namespace

const char kPathSeparator = '\\';

bool fileExists(const std::string& path)
{
    const DWORD attributes = calls::attributes(path);
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool folderExists(const std::string& path)
{
    const DWORD attributes = calls::attributes(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

Result<std::uint64_t> fileLength(const std::string& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (calls::fails(FileStep::Status) ||
        !::GetFileAttributesExW(widePath(path).c_str(), GetFileExInfoStandard, &data))
        return lastError(path);
    if (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY)
        return Error{ErrorCode::NotFound, path + ": no such file"};
    return (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

Result<FileStamp> fileStamp(const std::string& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExW(widePath(path).c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
        return Error{ErrorCode::NotFound, lastError(path).text};
    const auto joined = [](DWORD high, DWORD low) { return (static_cast<std::uint64_t>(high) << 32) | low; };
    return FileStamp{joined(data.nFileSizeHigh, data.nFileSizeLow),
                     static_cast<std::int64_t>(
                         joined(data.ftLastWriteTime.dwHighDateTime, data.ftLastWriteTime.dwLowDateTime))};
}

Result<std::string> readFile(const std::string& path, std::uint64_t most)
{
    const FileHandle file(path, GENERIC_READ, kShareAll, OPEN_EXISTING);
    if (!file)
        return lastError(path);
    if (::GetFileType(file.get()) != FILE_TYPE_DISK)
        return Error{ErrorCode::Failed, path + ": not a regular file"};
    const Error tooLarge{ErrorCode::TooLarge, path + ": larger than " + std::to_string(most) + " bytes"};
    LARGE_INTEGER size{};
    if (!calls::size(file.get(), &size))
        return lastError(path);
    if (static_cast<std::uint64_t>(size.QuadPart) > most)
        return tooLarge;
    std::string bytes;
    for (;;) {
        const std::size_t held = bytes.size();
        bytes.resize(held + kChunk);
        DWORD count = 0;
        if (!calls::read(file.get(), bytes.data() + held, kChunk, &count))
            return lastError(path);
        bytes.resize(held + count);
        if (count == 0)
            return bytes;
        if (bytes.size() > most)
            return tooLarge;
    }
}

Result<void> writeFile(const std::string& path, std::string_view bytes)
{
    const FileHandle file(path, GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS);
    if (!file)
        return writingError(path);
    return writeAll(file, path, bytes);
}

Result<void> writeNewFile(const std::string& path, std::string_view bytes)
{
    for (int i = 0; i < kMostTries; ++i) {
        const FileHandle file = makeNew(path);
        if (file)
            return writeAll(file, path, bytes);
        if (!isThere(::GetLastError()))
            return writingError(path);
        // A read-only one is not deleted.
        if (!calls::remove(path) && ::GetLastError() != ERROR_FILE_NOT_FOUND)
            return writingError(path);
    }
    return Error{ErrorCode::Failed, path + ": is made again and again"};
}

Result<void> createFile(const std::string& path, std::string_view bytes)
{
    if (bytes.empty()) {
        const FileHandle file = makeNew(path);
        if (!file && isThere(::GetLastError()))
            return Error{ErrorCode::Busy, path + ": is there already"};
        return file ? Result<void>() : writingError(path);
    }
    Result<WorkingCopy> copy = WorkingCopy::open(path + std::string(kNewEnding), kRewritePatience);
    return copy ? copy->become(path, bytes) : copy.error();
}

Result<void> appendLines(const std::string& path, std::string_view lines, const std::string& workingCopy,
                         const std::function<void()>& whileOpen)
{
    // A rewrite has read the file and puts another in its place. A folder that takes no new files has none,
    // and a program that never ends its rewrite holds nobody up.
    std::optional<Result<WorkingCopy>> rewritesWait;
    if (!workingCopy.empty())
        rewritesWait.emplace(WorkingCopy::open(workingCopy, kAppendPatience));
    Result<FileHandle> file = openForAppending(path);
    if (!file)
        return file.error();
    {
        const AppendLock alone(*file);
        LARGE_INTEGER before{};
        if (!calls::size(file->get(), &before))
            return writingError(path);
        const Result<bool> open = endsOpen(*file, path, before);
        if (!open)
            return open.error();
        const std::string bytes = (*open ? std::string(kLineEnd) : std::string()) + std::string(lines);
        DWORD count = 0;
        if (!calls::write(file->get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count))
            return writingError(path);
        if (count < bytes.size()) {
            takeBack(path, before, count);
            return Error{ErrorCode::Failed, path + ": the disk is full"};
        }
    }
    rewritesWait.reset();
    if (whileOpen)
        whileOpen();
    return {};
}

Result<void> replaceFile(const std::string& path, const std::string& workingCopy, std::string_view bytes)
{
    Result<WorkingCopy> copy = WorkingCopy::open(workingCopy, kRewritePatience);
    return copy ? copy->replace(path, bytes) : copy.error();
}

Result<void> rewriteFile(const std::string& path, const std::string& workingCopy, std::uint64_t most,
                         const FileChange& change)
{
    if (const Result<std::uint64_t> there = fileLength(path); !there)
        return there.error();
    Result<WorkingCopy> copy = WorkingCopy::open(workingCopy, kRewritePatience);
    if (!copy)
        return copy.error();
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
    if (folderExists(path))
        return Error{ErrorCode::Failed, path + ": a folder"};
    allowWriting(path);
    if (!calls::remove(path))
        return lastError(path);
    return {};
}

Result<void> renameFile(const std::string& from, const std::string& to)
{
    // The system itself finds nothing wrong with a new name that differs in case alone, or not at all.
    if (calls::attributes(to) != INVALID_FILE_ATTRIBUTES)
        return Error{ErrorCode::Busy, to + ": is there already"};
    if (!calls::move(from, to))
        return lastError(from);
    return {};
}

} // namespace zv
