#include "platform/FileCopy.h"

#include "platform/Files.h"
#include "platform/windows/FileHandle.h"

#include <cstring>
#include <cwchar>

namespace zv {

namespace {

constexpr DWORD kLongestPath = 32 * 1024;

constexpr const char* kBesideStart = "zelvora-"; ///< Of a copy that has not taken its place.

/// What the names of this machine's copies end in.
std::string besideEnding()
{
    wchar_t name[MAX_COMPUTERNAME_LENGTH + 1];
    DWORD size = MAX_COMPUTERNAME_LENGTH + 1;
    const bool named = ::GetComputerNameW(name, &size);
    return "-" + textOf(std::wstring_view(name, named ? size : 0)) + ".tmp";
}

std::string folderOf(const std::string& path)
{
    const std::size_t separator = path.find_last_of("\\/");
    return path.substr(0, separator == std::string::npos ? 0 : separator + 1);
}

/// A short name of its own in the target's folder: the target's may be as long as names can be.
std::string nameBeside(const std::string& target)
{
    return folderOf(target) + kBesideStart + std::to_string(::GetCurrentProcessId()) + besideEnding();
}

bool hasEnded(DWORD process)
{
    const HANDLE open = ::OpenProcess(SYNCHRONIZE, FALSE, process);
    if (open == nullptr)
        return ::GetLastError() == ERROR_INVALID_PARAMETER;
    const bool ended = ::WaitForSingleObject(open, 0) == WAIT_OBJECT_0;
    ::CloseHandle(open);
    return ended;
}

/// Deletes what programs of this machine have left in the folder that were ended by force in a copy.
void deleteLeftCopies(const std::string& folder)
{
    WIN32_FIND_DATAW found{};
    const std::wstring names = widePath(folder + kBesideStart + "*" + besideEnding());
    const HANDLE search = ::FindFirstFileW(names.c_str(), &found);
    if (search == INVALID_HANDLE_VALUE)
        return;
    do {
        if (!hasEnded(std::wcstoul(found.cFileName + std::strlen(kBesideStart), nullptr, 10)))
            continue;
        const std::wstring path = widePath(folder + textOf(found.cFileName));
        ::SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_NORMAL);
        ::DeleteFileW(path.c_str());
    } while (::FindNextFileW(search, &found));
    ::FindClose(search);
}

/// As NotFound is told of the source, what is missing of the target is a failure.
Error targetError(const std::string& path)
{
    Error error = lastError(path);
    if (error.code == ErrorCode::NotFound)
        error.code = ErrorCode::Failed;
    return error;
}

} // namespace

bool isSameFile(const std::string& a, const std::string& b)
{
    const FileHandle first(a, 0, kShareAll, OPEN_EXISTING), second(b, 0, kShareAll, OPEN_EXISTING);
    BY_HANDLE_FILE_INFORMATION one{}, other{};
    return first && second && ::GetFileInformationByHandle(first.get(), &one) &&
           ::GetFileInformationByHandle(second.get(), &other) &&
           one.dwVolumeSerialNumber == other.dwVolumeSerialNumber &&
           one.nFileIndexHigh == other.nFileIndexHigh && one.nFileIndexLow == other.nFileIndexLow;
}

bool isMarkedReadOnly(const std::string& path)
{
    const DWORD attributes = calls::attributes(path);
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY);
}

std::string behindLink(const std::string& path)
{
    // The path of any other file stays as it is: the one of a mapped drive has another root behind it.
    const DWORD attributes = calls::attributes(path);
    if (attributes == INVALID_FILE_ATTRIBUTES || !(attributes & FILE_ATTRIBUTE_REPARSE_POINT))
        return path;
    const FileHandle file(path, 0, kShareAll, OPEN_EXISTING);
    std::wstring real(kLongestPath, L'\0');
    const DWORD length = file ? ::GetFinalPathNameByHandleW(file.get(), real.data(), kLongestPath, 0) : 0;
    return length > 0 && length < kLongestPath ? pathOf(std::wstring_view(real).substr(0, length)) : path;
}

Result<void> copyIntoPlace(const std::string& from, const std::string& to)
{
    if (!fileExists(from))
        return Error{ErrorCode::NotFound, from + ": no such file"};
    if (isSameFile(from, to))
        return {};
    if (isMarkedReadOnly(to))
        return Error{ErrorCode::Denied, to + ": read-only"};
    deleteLeftCopies(folderOf(to));
    const std::string beside = nameBeside(to);
    // A source that is read-only makes a copy that is, so that what a run that was ended by force has left
    // could not be written over.
    calls::setAttributes(beside, FILE_ATTRIBUTE_NORMAL);
    if (calls::copy(from, beside) && calls::moveOver(beside, to))
        return {};
    const Error error = targetError(to);
    calls::setAttributes(beside, FILE_ATTRIBUTE_NORMAL);
    calls::remove(beside);
    return error;
}

} // namespace zv
