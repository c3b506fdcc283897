#include "platform/Files.h"

#include "platform/windows/FileHandle.h"

#include <algorithm>
#include <optional>

namespace zv {

namespace {

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;
constexpr std::size_t kChunk = 1u << 20;

DWORD attributesOf(const std::string& path)
{
    return ::GetFileAttributesW(widePath(path).c_str());
}

Error refused(const std::string& path)
{
    Error error = lastError(path);
    if (error.code == ErrorCode::NotFound)
        error.code = ErrorCode::Failed;
    return error;
}

Result<void> writeAll(const FileHandle& file, const std::string& path, std::string_view bytes)
{
    while (!bytes.empty()) {
        DWORD count = 0;
        if (!::WriteFile(file.get(), bytes.data(), static_cast<DWORD>(std::min(bytes.size(), kChunk)), &count,
                         nullptr))
            return refused(path);
        bytes.remove_prefix(count);
    }
    return {};
}

/// Keeps other programs from appending at the same moment, where the end of a file is looked up before the
/// write (on a network, or under Wine). The locked byte is far behind any content, so that readers are not
/// hindered.
class AppendLock {
public:
    explicit AppendLock(const FileHandle& file) : m_file(file)
    {
        m_place.OffsetHigh = 0x7fffffff;
        m_locked = ::LockFileEx(m_file.get(), LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, &m_place) != 0;
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

/// Writes a new file and flushes it to disk.
Result<void> writeFlushed(const std::string& path, std::string_view bytes)
{
    const FileHandle file(path, GENERIC_WRITE, 0, CREATE_ALWAYS);
    if (!file)
        return refused(path);
    if (Result<void> written = writeAll(file, path, bytes); !written)
        return written;
    if (!::FlushFileBuffers(file.get()))
        return refused(path);
    return {};
}

void allowWriting(const std::string& path)
{
    const DWORD attributes = attributesOf(path);
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY))
        ::SetFileAttributesW(widePath(path).c_str(),
                             attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
}

} // namespace

const char kPathSeparator = '\\';

bool fileExists(const std::string& path)
{
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY);
}

bool folderExists(const std::string& path)
{
    const DWORD attributes = attributesOf(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY);
}

Result<std::uint64_t> fileLength(const std::string& path)
{
    WIN32_FILE_ATTRIBUTE_DATA data{};
    if (!::GetFileAttributesExW(widePath(path).c_str(), GetFileExInfoStandard, &data) ||
        (data.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY))
        return Error{ErrorCode::NotFound, lastError(path).text};
    return (static_cast<std::uint64_t>(data.nFileSizeHigh) << 32) | data.nFileSizeLow;
}

Result<std::string> readFile(const std::string& path)
{
    const FileHandle file(path, GENERIC_READ, kShareAll, OPEN_EXISTING);
    if (!file)
        return lastError(path);
    if (::GetFileType(file.get()) != FILE_TYPE_DISK)
        return Error{ErrorCode::Failed, path + ": not a regular file"};
    std::string bytes;
    for (;;) {
        const std::size_t held = bytes.size();
        bytes.resize(held + kChunk);
        DWORD count = 0;
        if (!::ReadFile(file.get(), bytes.data() + held, kChunk, &count, nullptr))
            return lastError(path);
        bytes.resize(held + count);
        if (count == 0)
            return bytes;
    }
}

Result<void> writeFile(const std::string& path, std::string_view bytes)
{
    const FileHandle file(path, GENERIC_WRITE, FILE_SHARE_READ, CREATE_ALWAYS);
    if (!file)
        return refused(path);
    return writeAll(file, path, bytes);
}

Result<void> createFile(const std::string& path, std::string_view bytes)
{
    const std::string made = path + "." + std::to_string(::GetCurrentProcessId());
    Result<void> written = writeFlushed(made, bytes);
    if (written && !::MoveFileExW(widePath(made).c_str(), widePath(path).c_str(), MOVEFILE_WRITE_THROUGH)) {
        const DWORD reason = ::GetLastError();
        written = refused(path);
        if (reason == ERROR_ALREADY_EXISTS || reason == ERROR_FILE_EXISTS)
            written = Error{ErrorCode::Busy, path + ": is there already"};
    }
    if (!written)
        ::DeleteFileW(widePath(made).c_str());
    return written;
}

Result<void> appendFile(const std::string& path, std::string_view bytes,
                        const std::function<void()>& whileOpen)
{
    // Without the right to write elsewhere the system itself puts each write at the end. The lock needs the
    // right to read, which a file that users may only add to does not give.
    std::optional<FileHandle> file;
    file.emplace(path, FILE_APPEND_DATA | FILE_READ_DATA, kShareAll, OPEN_ALWAYS);
    if (!*file)
        file.emplace(path, FILE_APPEND_DATA, kShareAll, OPEN_ALWAYS);
    if (!*file)
        return refused(path);
    {
        const AppendLock alone(*file);
        DWORD count = 0;
        if (!::WriteFile(file->get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count, nullptr))
            return refused(path);
        if (count < bytes.size())
            return Error{ErrorCode::Failed, path + ": the disk is full"};
    }
    if (whileOpen)
        whileOpen();
    return {};
}

Result<void> replaceFile(const std::string& path, const std::string& workingCopy, std::string_view bytes)
{
    allowWriting(workingCopy);
    if (Result<void> written = writeFlushed(workingCopy, bytes); !written) {
        ::DeleteFileW(widePath(workingCopy).c_str());
        return written;
    }
    allowWriting(path);
    if (!::MoveFileExW(widePath(workingCopy).c_str(), widePath(path).c_str(),
                       MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH)) {
        const Error error = refused(path);
        ::DeleteFileW(widePath(workingCopy).c_str());
        return error;
    }
    return {};
}

Result<void> deleteFileForced(const std::string& path)
{
    if (folderExists(path))
        return Error{ErrorCode::Failed, path + ": a folder"};
    allowWriting(path);
    if (!::DeleteFileW(widePath(path).c_str()))
        return lastError(path);
    return {};
}

Result<void> renameFile(const std::string& from, const std::string& to)
{
    // The system itself finds nothing wrong with a new name that differs in case alone, or not at all.
    if (attributesOf(to) != INVALID_FILE_ATTRIBUTES)
        return Error{ErrorCode::Busy, to + ": is there already"};
    if (!::MoveFileExW(widePath(from).c_str(), widePath(to).c_str(), MOVEFILE_WRITE_THROUGH))
        return lastError(from);
    return {};
}

Result<void> copyFile(const std::string& from, const std::string& to)
{
    if (!fileExists(from))
        return Error{ErrorCode::NotFound, from + ": no such file"};
    if (!::CopyFileW(widePath(from).c_str(), widePath(to).c_str(), FALSE))
        return refused(to);
    return {};
}

} // namespace zv
