#pragma once

#include "platform/Result.h"
#include "platform/posix/Descriptor.h"

#include <string>
#include <string_view>

namespace zv {

/// A new file under its own name that takes another file's place in one step. While it is open, other
/// processes that open the same working copy wait, so that none takes a place with another's half-written
/// bytes.
class WorkingCopy {
public:
    /// Opens the working copy empty. Errors: Denied; Busy, another process does not let go of it; Failed.
    static Result<WorkingCopy> open(const std::string& path);
    WorkingCopy(WorkingCopy&&) noexcept = default;
    WorkingCopy& operator=(WorkingCopy&&) = delete;
    /// Deletes what has not taken its place.
    ~WorkingCopy();

    /// Writes the bytes, flushes them to disk, and takes the place of `target`, with its rights but always
    /// writable by the owner. On failure `target` is as it was. Errors: Denied, Failed.
    Result<void> replace(const std::string& target, std::string_view bytes);
    /// The same for a target that is not there. Errors: Busy, when it is; Denied, Failed.
    Result<void> become(const std::string& target, std::string_view bytes);

private:
    WorkingCopy(std::string path, Descriptor file) : m_path(std::move(path)), m_file(std::move(file)) {}

    Result<void> fill(std::string_view bytes);

    std::string m_path;
    Descriptor m_file;
    bool m_placed = false;
};

} // namespace zv
