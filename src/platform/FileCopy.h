#pragma once

#include "platform/Result.h"

#include <string>

namespace zv {

/// Whether two paths lead to one file that is there.
bool isSameFile(const std::string& a, const std::string& b);

/// Whether a file that is there is marked as one that nobody may write, though an administrator could.
bool isMarkedReadOnly(const std::string& path);

/// The file that a link leads to, by its own path; the path itself where it is no link to a file.
std::string behindLink(const std::string& path);

/// Copies a file over whatever file is there. The copy is written beside its target and takes its place in
/// one step; it has the time of the source, and the rights of the file whose place it takes, else those of
/// the source. A file onto itself is left as it is. On failure the old target stays, or none. Errors:
/// NotFound, no file is there to be copied; Denied (a read-only target among them), Failed.
Result<void> copyIntoPlace(const std::string& from, const std::string& to);

} // namespace zv
