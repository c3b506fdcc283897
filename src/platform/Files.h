#pragma once

#include "platform/Result.h"

#include <cstdint>
#include <functional>
#include <limits>
#include <string>
#include <string_view>

namespace zv {

/// The separator between folder and name on this system.
extern const char kPathSeparator;

inline constexpr std::uint64_t kAnySize = std::numeric_limits<std::uint64_t>::max();

/// folder + separator + name, by plain concatenation: a folder that ends in a separator gives two.
std::string joinPath(std::string_view folder, std::string_view name);

/// The error's text, with the path before it where it does not begin with that by itself.
std::string namingFile(const std::string& path, const Error& error);

/// Whether a regular file stands at the path. A folder is no file.
bool fileExists(const std::string& path);
bool folderExists(const std::string& path);
/// Errors: NotFound, no regular file is there; Denied, Failed: nobody knows.
Result<std::uint64_t> fileLength(const std::string& path);
/// By what a file that has been changed is told from what it was.
struct FileStamp {
    std::uint64_t size = 0;
    std::int64_t time = 0; ///< Of the last write, in the system's own count.
    bool operator==(const FileStamp&) const = default;
};
/// Errors: as fileLength().
Result<FileStamp> fileStamp(const std::string& path);
/// The whole file. Errors: NotFound; TooLarge, it has more than `most` bytes; Denied, Failed (a folder among
/// them).
Result<std::string> readFile(const std::string& path, std::uint64_t most = kAnySize);
/// Empties or creates the file and writes the bytes. Errors: Denied, Failed.
Result<void> writeFile(const std::string& path, std::string_view bytes);
/// The same with a new file in place of an old one, for folders in which others may have put a link under
/// the name: the link goes, and what it leads to stays. A read-only file is not replaced. Errors: Denied,
/// Failed.
Result<void> writeNewFile(const std::string& path, std::string_view bytes);
/// Makes a file of these bytes that was not there; it takes its name as a whole. Errors: Busy, something of
/// the name is there; Denied, Failed.
Result<void> createFile(const std::string& path, std::string_view bytes);
/// Adds whole lines, each with its end, at the file's end with one write, creating the file. A last line that
/// somebody left without its end gets one first. `workingCopy` is that of the programs which rewrite the
/// file, where there are any: each waits for the other. `whileOpen` is called before the file is closed
/// again. Errors: Denied, Failed, and the file is as it was.
Result<void> appendLines(const std::string& path, std::string_view lines, const std::string& workingCopy = {},
                         const std::function<void()>& whileOpen = {});
/// Writes `bytes` to `workingCopy`, flushes it to disk, and lets it take the place of `path` in one step,
/// also when `path` is read-only. Two programs that do so with one working copy wait for each other. On
/// failure `path` is as it was. Errors: Busy, the other program does not end; Denied, Failed.
Result<void> replaceFile(const std::string& path, const std::string& workingCopy, std::string_view bytes);
/// What becomes of a file's bytes.
using FileChange = std::function<Result<std::string>(const std::string& bytes)>;
/// The same for a file that is there, with its bytes as they are once no other program changes them. Bytes
/// that stay the same leave the file untouched. Errors: NotFound; TooLarge, the file has more than `most`
/// bytes; those of `change`; Busy, Denied, Failed.
Result<void> rewriteFile(const std::string& path, const std::string& workingCopy, std::uint64_t most,
                         const FileChange& change);
/// Deletes a file, read-only or not. Errors: NotFound, Denied, Failed.
Result<void> deleteFileForced(const std::string& path);
/// Gives a file another name. Errors: Busy, a file or folder of that name is there, the file itself among
/// them; NotFound, Denied, Failed.
Result<void> renameFile(const std::string& from, const std::string& to);

} // namespace zv
