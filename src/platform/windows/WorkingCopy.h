#pragma once

#include "platform/Result.h"
#include "platform/windows/FileHandle.h"

#include <chrono>
#include <string>
#include <string_view>

namespace zv {

/// The system's last failure for a file that is to be written: a folder that is not there is a failure too.
Error writingError(const std::string& path);
/// Whether the reason is that another program has the file.
bool isHeld(DWORD reason);
/// Writes all bytes. Errors: Denied, Failed.
Result<void> writeAll(const FileHandle& file, const std::string& path, std::string_view bytes);
/// Whether a call failed for this `reason` because the file has been deleted and is still open elsewhere. Its
/// name is free a moment later.
bool isGoing(const std::string& path, DWORD reason);
/// Takes the mark read-only off, where there is one.
void allowWriting(const std::string& path);

/// How long one that has a target open is waited for.
inline constexpr std::chrono::milliseconds kReadersPatience{500};

/// A new file under its own name that takes another file's place in one step. While it is open, other
/// programs that open the same working copy wait, so that none takes a place with another's half-written
/// bytes, and each finds what the one before it has placed.
class WorkingCopy {
public:
    /// Makes the working copy anew; what a crash has left of the name, or a link that somebody has put there,
    /// goes. Waits at most `patience` for another program. Errors: Denied; Busy, that program does not let go
    /// of it; Failed.
    static Result<WorkingCopy> open(const std::string& path, std::chrono::milliseconds patience);
    WorkingCopy(WorkingCopy&&) noexcept = default;
    WorkingCopy& operator=(WorkingCopy&&) = delete;
    /// Deletes what has not taken its place.
    ~WorkingCopy();

    /// Writes the bytes, flushes them to disk, and takes the place of `target`, read-only or not, with the
    /// rights that were given to that one. Waits at most `patience` for who has it open. On failure
    /// `target` is as it was. Errors: Denied, Failed.
    Result<void> replace(const std::string& target, std::string_view bytes,
                         std::chrono::milliseconds patience = kReadersPatience);
    /// The same for a target that is not there. Errors: Busy, when it is; Denied, Failed.
    Result<void> become(const std::string& target, std::string_view bytes);

private:
    WorkingCopy(std::string path, FileHandle file) : m_path(std::move(path)), m_file(std::move(file)) {}

    Result<void> fill(std::string_view bytes);
    /// Gives it the target's name. False with the system's reason.
    bool place(const std::string& target, bool overAnother);

    std::string m_path;
    FileHandle m_file;
    bool m_placed = false;
};

} // namespace zv
