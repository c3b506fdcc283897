#include "platform/FileCopy.h"

#include "platform/Files.h"
#include "platform/windows/FileHandle.h"

namespace zv {

namespace {

constexpr DWORD kLongestPath = 32 * 1024;
constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// A short name of its own in the target's folder: the target's may be as long as names can be.
std::string nameBeside(const std::string& target)
{
    const std::size_t separator = target.find_last_of("\\/");
    return target.substr(0, separator == std::string::npos ? 0 : separator + 1) + "zelvora-" +
           std::to_string(::GetCurrentProcessId()) + ".tmp";
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
