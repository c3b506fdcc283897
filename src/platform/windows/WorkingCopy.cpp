#include "platform/windows/WorkingCopy.h"

#include <aclapi.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <optional>
#include <vector>

namespace zv {

namespace {

constexpr std::size_t kChunk = 1u << 20;
constexpr DWORD kLockPauseMs = 1;

bool isGone(DWORD reason)
{
    return reason == ERROR_FILE_NOT_FOUND || reason == ERROR_PATH_NOT_FOUND;
}

/// Whether there are rights among these that come from no folder.
bool hasOwnRights(ACL* rights)
{
    for (DWORD i = 0; i < rights->AceCount; ++i) {
        void* entry = nullptr;
        if (::GetAce(rights, i, &entry) && !(static_cast<ACE_HEADER*>(entry)->AceFlags & INHERITED_ACE))
            return true;
    }
    return false;
}

/// Gives a file the rights that somebody has given to another one itself, beside those of its folder or in
/// their place. Where the system does not allow that it has those of its folder.
void takeRights(const std::string& path, const std::string& from)
{
    ACL* rights = nullptr;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    if (::GetNamedSecurityInfoW(widePath(from).c_str(), SE_FILE_OBJECT, DACL_SECURITY_INFORMATION, nullptr,
                                nullptr, &rights, nullptr, &descriptor) != ERROR_SUCCESS)
        return;
    const std::unique_ptr<void, HLOCAL(WINAPI*)(HLOCAL)> held(descriptor, ::LocalFree);
    SECURITY_DESCRIPTOR_CONTROL control = 0;
    DWORD revision = 0;
    ::GetSecurityDescriptorControl(descriptor, &control, &revision);
    const bool isProtected = (control & SE_DACL_PROTECTED) != 0;
    if (rights && (isProtected || hasOwnRights(rights)))
        ::SetNamedSecurityInfoW(
            widePath(path).data(), SE_FILE_OBJECT,
            DACL_SECURITY_INFORMATION |
                (isProtected ? PROTECTED_DACL_SECURITY_INFORMATION : UNPROTECTED_DACL_SECURITY_INFORMATION),
            nullptr, nullptr, rights, nullptr);
}

/// Deletes what stands under a working copy's name, unless it is one that another program is writing: then
/// false. Errors: Denied, Failed.
Result<bool> clearAway(const std::string& path)
{
    allowWriting(path);
    if (calls::remove(path) || isGone(::GetLastError()))
        return true;
    return isHeld(::GetLastError()) ? Result<bool>(false) : writingError(path);
}

} // namespace

bool isHeld(DWORD reason)
{
    return reason == ERROR_SHARING_VIOLATION || reason == ERROR_LOCK_VIOLATION;
}

Error writingError(const std::string& path)
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
        if (!calls::write(file.get(), bytes.data(), static_cast<DWORD>(std::min(bytes.size(), kChunk)),
                          &count))
            return writingError(path);
        bytes.remove_prefix(count);
    }
    return {};
}

bool isGoing(const std::string& path, DWORD reason)
{
    // Of a file that a user may not write he can still ask for its attributes.
    return reason == ERROR_DELETE_PENDING ||
           (reason == ERROR_ACCESS_DENIED && calls::attributes(path) == INVALID_FILE_ATTRIBUTES &&
            ::GetLastError() == ERROR_ACCESS_DENIED);
}

void allowWriting(const std::string& path)
{
    const DWORD attributes = calls::attributes(path);
    if (attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY))
        calls::setAttributes(path, attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
}

Result<WorkingCopy> WorkingCopy::open(const std::string& path, std::chrono::milliseconds patience)
{
    const auto end = std::chrono::steady_clock::now() + patience;
    for (;;) {
        // Readers are let in, for it is what they read from the moment that it takes its place.
        FileHandle file(path, GENERIC_WRITE | DELETE, FILE_SHARE_READ, CREATE_NEW,
                        FILE_ATTRIBUTE_NORMAL | FILE_FLAG_OPEN_REPARSE_POINT);
        if (file)
            return WorkingCopy(path, std::move(file));
        const DWORD reason = ::GetLastError();
        const bool isUsed = isHeld(reason) || isGoing(path, reason);
        if (reason != ERROR_FILE_EXISTS && reason != ERROR_ALREADY_EXISTS && !isUsed) {
            ::SetLastError(reason);
            return writingError(path);
        }
        const Result<bool> cleared = isUsed ? Result<bool>(false) : clearAway(path);
        if (!cleared)
            return cleared.error();
        if (*cleared)
            continue;
        if (std::chrono::steady_clock::now() >= end)
            return Error{ErrorCode::Busy, path + ": in use by another program"};
        ::Sleep(kLockPauseMs);
    }
}

WorkingCopy::~WorkingCopy()
{
    if (!m_file || m_placed)
        return;
    // Gone at the moment of its closing, so that nobody else's is deleted instead.
    FILE_DISPOSITION_INFO disposition{};
    disposition.DeleteFile = TRUE;
    if (!calls::fails(FileStep::Delete))
        ::SetFileInformationByHandle(m_file.get(), FileDispositionInfo, &disposition, sizeof disposition);
}

Result<void> WorkingCopy::replace(const std::string& target, std::string_view bytes,
                                  std::chrono::milliseconds patience)
{
    if (Result<void> written = fill(bytes); !written)
        return written;
    allowWriting(target);
    takeRights(m_path, target);
    // A file that somebody reads or adds to at this moment keeps its place until it is closed.
    const auto end = std::chrono::steady_clock::now() + patience;
    while (!place(target, true)) {
        const DWORD reason = ::GetLastError();
        if ((!isHeld(reason) && reason != ERROR_ACCESS_DENIED) || std::chrono::steady_clock::now() >= end) {
            ::SetLastError(reason);
            return writingError(target);
        }
        ::Sleep(kLockPauseMs);
    }
    return {};
}

Result<void> WorkingCopy::become(const std::string& target, std::string_view bytes)
{
    if (Result<void> written = fill(bytes); !written)
        return written;
    if (place(target, false))
        return {};
    const DWORD reason = ::GetLastError();
    if (reason == ERROR_FILE_EXISTS || reason == ERROR_ALREADY_EXISTS)
        return Error{ErrorCode::Busy, target + ": is there already"};
    return writingError(target);
}

Result<void> WorkingCopy::fill(std::string_view bytes)
{
    if (Result<void> written = writeAll(m_file, m_path, bytes); !written)
        return written;
    return calls::flush(m_file.get()) ? Result<void>() : writingError(m_path);
}

bool WorkingCopy::place(const std::string& target, bool overAnother)
{
    const std::wstring name = widePath(target);
    const std::size_t nameBytes = name.size() * sizeof(wchar_t);
    std::vector<char> buffer(sizeof(FILE_RENAME_INFO) + nameBytes);
    auto* const info = reinterpret_cast<FILE_RENAME_INFO*>(buffer.data());
    info->ReplaceIfExists = overAnother;
    info->FileNameLength = static_cast<DWORD>(nameBytes);
    std::memcpy(info->FileName, name.data(), nameBytes);
    m_placed = calls::replace(m_file.get(), info, static_cast<DWORD>(buffer.size()));
    return m_placed;
}

} // namespace zv
