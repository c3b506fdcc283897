#pragma once

#include "platform/Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace zv {

/// The places that paths begin at, in order: drives on Windows ("C:\"), mounted places on Linux ("/",
/// "/media/stick"). What the system mounts for itself is left out.
std::vector<std::string> drives();
/// Of `roots`, the one that a path lies on: the longest that it begins with. Empty when there is none.
std::string driveOf(const std::string& path, const std::vector<std::string>& roots);

/// Names of the folders in a folder, and of its files with an ending (".dwg", in any case; empty for all),
/// sorted without regard to case. Hidden ones are left out, and names that are no text.
/// Errors: NotFound, Denied, Failed.
Result<std::vector<std::string>> foldersIn(const std::string& folder);
Result<std::vector<std::string>> filesIn(const std::string& folder, std::string_view ending);

/// The folders from the root down to a full path, that path included.
std::vector<std::string> foldersDownTo(const std::string& path);
/// Folder + separator + name; a root already ends in its separator.
std::string inFolder(const std::string& folder, std::string_view name);
/// The folder that a path lies in, without a separator at its end, unless it is a root; empty for a bare
/// name.
std::string parentFolder(const std::string& path);
/// A path in full, from the current folder where it does not say more, without "." and ".." and without a
/// separator at its end, unless it is a root.
std::string fullPath(const std::string& path);

/// The process's current folder; its root where that folder has gone.
std::string currentFolder();
/// Makes a folder, and its drive, the current one. Errors: NotFound, Denied, Failed.
Result<void> setCurrentFolder(const std::string& folder);
/// Makes a folder in one that is there. Errors: Busy, something of that name is there; Denied, Failed.
Result<void> makeFolder(const std::string& folder);

} // namespace zv
