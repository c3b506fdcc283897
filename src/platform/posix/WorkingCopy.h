#pragma once

#include "platform/Result.h"
#include "platform/posix/Descriptor.h"

#include <chrono>
#include <string>
#include <string_view>

namespace zv {

/// A new file under its own name that takes another file's place in one step. While it is open, other
/// processes that open the same working copy wait, so that none takes a place with another's half-written
/// bytes, and each finds what the one before it has placed.
class WorkingCopy {
public:
    /// Makes the working copy anew; what a crash has left of the name, or a link that somebody has put there,
    /// goes. Waits at most `patience` for another process. Errors: Denied; Busy, that process does not let go
    /// of it; Failed.
    static Result<WorkingCopy> open(const std::string& path, std::chrono::milliseconds patience,
                                    mode_t rights = 0666);
    /// Deletes a working copy that a process which has ended left behind. One that another process is writing
    /// stays, and so does any where the file system has no locks.
    static void deleteLeft(const std::string& path);
    WorkingCopy(WorkingCopy&&) noexcept = default;
    WorkingCopy& operator=(WorkingCopy&&) = delete;
    /// Deletes what has not taken its place.
    ~WorkingCopy();

    /// Waits in the same way for processes that add to `target` or write it in place, and keeps them waiting
    /// until the end of the working copy. A target that is not there needs nothing. Errors: Busy, Failed.
    Result<void> hold(const std::string& target, std::chrono::milliseconds patience);

    /// Writes the bytes, flushes them to disk, and takes the place of `target`, with its rights but always
    /// writable by the owner, and with its owner and group where the system allows. On failure `target` is as
    /// it was. Errors: Denied, Failed.
    Result<void> replace(const std::string& target, std::string_view bytes);
    /// The same for a target that is not there. Errors: Busy, when it is; Denied, Failed.
    Result<void> become(const std::string& target, std::string_view bytes);

    // For one who writes and flushes the file himself.

    const Descriptor& file() const { return m_file; }
    /// Takes the place of `target` as it is. Errors: Denied, Failed.
    Result<void> place(const std::string& target);
    /// The same for a target that is not there. Errors: Busy, when it is; Denied, Failed.
    Result<void> takeName(const std::string& target);

private:
    WorkingCopy(std::string path, Descriptor file) : m_path(std::move(path)), m_file(std::move(file)) {}

    std::string m_path;
    Descriptor m_file;
    Descriptor m_target;
    bool m_placed = false;
};

} // namespace zv
