#include "platform/Profile.h"

#include "platform/FileCopy.h"
#include "platform/Files.h"
#include "platform/ProfileFile.h"
#include "platform/Text.h"
#include "platform/windows/FileHandle.h"
#include "platform/windows/WorkingCopy.h"

namespace zv {

namespace {

constexpr const char* kWorkingEnding = ".new";

/// The system's last failure for a profile that is to be written: Busy where another program has it.
Error profileError(const std::string& path)
{
    const bool held = isHeld(::GetLastError());
    Error error = writingError(path);
    if (held)
        error.code = ErrorCode::Busy;
    return error;
}

/// Whether the user may put another file in the place of this one. Who may not may be allowed to write it all
/// the same. Errors: Busy; Denied, it is read-only or others'; Failed.
Result<bool> canBeReplaced(const std::string& path)
{
    if (isMarkedReadOnly(path))
        return Error{ErrorCode::Denied, path + ": read-only"};
    const FileHandle whole(path, GENERIC_WRITE | DELETE, kShareAll, OPEN_EXISTING);
    if (whole)
        return true;
    if (::GetLastError() != ERROR_ACCESS_DENIED)
        return profileError(path);
    const FileHandle writable(path, GENERIC_WRITE, kShareAll, OPEN_EXISTING);
    return writable ? Result<bool>(false) : profileError(path);
}

/// Writes a profile over itself, where no second file can be made: in one write, with line ends for what is
/// left of a longer old text until it is cut off.
Result<void> rewriteInPlace(const std::string& path, const ProfileEdit& edit)
{
    const FileHandle file(path, GENERIC_READ | GENERIC_WRITE, FILE_SHARE_READ, OPEN_EXISTING);
    if (!file)
        return profileError(path);
    const Result<std::string> before = readFile(path, kMostProfileBytes);
    if (!before)
        return before.error();
    const std::string after = edit(*before);
    std::string bytes = after;
    while (bytes.size() < before->size())
        bytes += isWideProfile(*before) && bytes.size() % 2 != 0 ? '\0' : '\n';
    DWORD count = 0;
    if (!calls::write(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &count))
        return profileError(path);
    LARGE_INTEGER end{};
    if (count < bytes.size()) {
        end.QuadPart = static_cast<LONGLONG>(before->size());
        if (::SetFilePointerEx(file.get(), {}, nullptr, FILE_BEGIN) &&
            calls::write(file.get(), before->data(), static_cast<DWORD>(before->size()), &count))
            calls::cut(file.get(), end);
        return Error{ErrorCode::Failed, path + ": the disk is full"};
    }
    end.QuadPart = static_cast<LONGLONG>(after.size());
    if (after.size() < bytes.size())
        calls::cut(file.get(), end);
    return calls::flush(file.get()) ? Result<void>() : profileError(path);
}

/// An absent profile has no bytes. Errors: Busy; Denied, Failed.
Result<std::optional<std::string>> bytesBefore(const std::string& path)
{
    {
        const FileHandle file(path, GENERIC_READ, kShareAll, OPEN_EXISTING);
        if (!file) {
            const bool absent = lastError(path).code == ErrorCode::NotFound;
            return absent ? Result(std::optional<std::string>()) : profileError(path);
        }
    }
    Result<std::string> bytes = readFile(path, kMostProfileBytes);
    return bytes ? Result(std::optional(std::move(*bytes))) : bytes.error();
}

} // namespace

std::string cutToBuffer(std::string value)
{
    if (value.size() < kProfileBuffer)
        return value;
    std::u16string text = wide(value);
    if (text.size() < kProfileBuffer)
        return value;
    text.resize(kProfileBuffer - 1);
    if (text.back() >= 0xD800 && text.back() < 0xDC00)
        text.pop_back();
    return narrow(text);
}

Result<std::string> loadProfile(const std::string& file)
{
    if (file.empty())
        return std::string();
    Result<std::string> bytes = readFile(file, kMostProfileBytes);
    if (!bytes && bytes.error().code != ErrorCode::NotFound)
        return bytes.error();
    return std::move(bytes).valueOr({});
}

Result<void> rewriteProfile(const std::string& named, const ProfileEdit& edit)
{
    if (named.empty())
        return Error{};
    const std::string file = behindLink(named);
    Result<std::optional<std::string>> before = bytesBefore(file);
    if (!before)
        return before.error();
    if (*before) {
        if (edit(**before) == **before)
            return {};
        const Result<bool> replaceable = canBeReplaced(file);
        if (!replaceable)
            return replaceable.error();
        if (!*replaceable)
            return rewriteInPlace(file, edit);
    }
    Result<WorkingCopy> copy = WorkingCopy::open(file + kWorkingEnding, {});
    if (!copy)
        return copy.error().code == ErrorCode::Denied && *before ? rewriteInPlace(file, edit) : copy.error();
    before = bytesBefore(file);
    if (!before)
        return before.error();
    const std::string after = edit(before->value_or(std::string()));
    if (*before && after == **before)
        return {};
    Result<void> replaced = copy->replace(file, after, {});
    // One that may be replaced is refused only while somebody has it open.
    if (!replaced && replaced.error().code == ErrorCode::Denied)
        return Error{ErrorCode::Busy, replaced.error().text};
    return replaced;
}

bool profileExists(const std::string& file)
{
    const Result<std::uint64_t> length = fileLength(file);
    return length || length.error().code != ErrorCode::NotFound;
}

Result<void> createProfile(const std::string& file)
{
    return createFile(file, {});
}

} // namespace zv
