#pragma once

#include "platform/FileSteps.h"
#include "platform/windows/LastError.h"
#include "platform/windows/WidePath.h"

#include <windows.h>

/// The system's calls on files, each one step that a test can let fail.
namespace zv::calls {

inline bool fails(FileStep step)
{
    if (outcomeOf(step) != StepOutcome::Failed)
        return false;
    ::SetLastError(ERROR_IO_DEVICE);
    return true;
}

inline HANDLE open(const std::string& path, DWORD access, DWORD share, DWORD disposition, DWORD flags)
{
    return fails(FileStep::Open)
               ? INVALID_HANDLE_VALUE
               : ::CreateFileW(widePath(path).c_str(), access, share, nullptr, disposition, flags, nullptr);
}

inline DWORD attributes(const std::string& path)
{
    return fails(FileStep::Status) ? INVALID_FILE_ATTRIBUTES : ::GetFileAttributesW(widePath(path).c_str());
}

inline bool setAttributes(const std::string& path, DWORD attributes)
{
    return !fails(FileStep::Rights) && ::SetFileAttributesW(widePath(path).c_str(), attributes);
}

inline bool size(HANDLE file, LARGE_INTEGER* size)
{
    return !fails(FileStep::Status) && ::GetFileSizeEx(file, size);
}

inline bool read(HANDLE file, void* into, DWORD size, DWORD* count, OVERLAPPED* place = nullptr)
{
    return !fails(FileStep::Read) && ::ReadFile(file, into, size, count, place);
}

inline bool write(HANDLE file, const void* bytes, DWORD size, DWORD* count)
{
    const StepOutcome outcome = outcomeOf(FileStep::Write);
    if (outcome == StepOutcome::Failed) {
        ::SetLastError(ERROR_DISK_FULL);
        return false;
    }
    return ::WriteFile(file, bytes, outcome == StepOutcome::Half ? size / 2 : size, count, nullptr);
}

inline bool flush(HANDLE file)
{
    return !fails(FileStep::Flush) && ::FlushFileBuffers(file);
}

/// Makes the file end at a place.
inline bool cut(HANDLE file, LARGE_INTEGER end)
{
    return !fails(FileStep::Cut) && ::SetFilePointerEx(file, end, nullptr, FILE_BEGIN) &&
           ::SetEndOfFile(file);
}

inline bool lock(HANDLE file, OVERLAPPED* place)
{
    return !fails(FileStep::Lock) && ::LockFileEx(file, LOCKFILE_EXCLUSIVE_LOCK, 0, 1, 0, place);
}

/// Gives a file its name unless there is one of it.
inline bool move(const std::string& from, const std::string& to)
{
    return !fails(FileStep::Rename) &&
           ::MoveFileExW(widePath(from).c_str(), widePath(to).c_str(), MOVEFILE_WRITE_THROUGH);
}

/// Gives a file its name, also where another one has it.
inline bool moveOver(const std::string& from, const std::string& to)
{
    return !fails(FileStep::Rename) && ::MoveFileExW(widePath(from).c_str(), widePath(to).c_str(),
                                                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH);
}

inline bool copy(const std::string& from, const std::string& to)
{
    if (outcomeOf(FileStep::Write) != StepOutcome::Made) {
        ::SetLastError(ERROR_DISK_FULL);
        return false;
    }
    return ::CopyFileW(widePath(from).c_str(), widePath(to).c_str(), FALSE);
}

/// Lets an open file take the place of another in one step.
inline bool replace(HANDLE file, FILE_RENAME_INFO* name, DWORD size)
{
    return !fails(FileStep::Rename) && ::SetFileInformationByHandle(file, FileRenameInfo, name, size);
}

inline bool remove(const std::string& path)
{
    return !fails(FileStep::Delete) && ::DeleteFileW(widePath(path).c_str());
}

} // namespace zv::calls
