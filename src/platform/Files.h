#pragma once

#include "platform/Result.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace zv {

/// The separator between folder and name on this system.
extern const char kPathSeparator;

/// folder + separator + name, by plain concatenation: a folder that ends in a separator gives two.
std::string joinPath(std::string_view folder, std::string_view name);

/// The error's text, with the path before it where it does not begin with that by itself.
std::string namingFile(const std::string& path, const Error& error);

/// Whether a regular file stands at the path. A folder is no file.
bool fileExists(const std::string& path);
bool folderExists(const std::string& path);
/// Errors: NotFound, no regular file is there.
Result<std::uint64_t> fileLength(const std::string& path);
/// The whole file. Errors: NotFound, Denied, Failed (a folder among them).
Result<std::string> readFile(const std::string& path);
/// Empties or creates the file and writes the bytes. Errors: Denied, Failed.
Result<void> writeFile(const std::string& path, std::string_view bytes);
/// Makes a file of these bytes that was not there; it takes its name as a whole. Errors: Busy, a file of the
/// name is there; Denied, Failed.
Result<void> createFile(const std::string& path, std::string_view bytes);
/// Adds the bytes at the file's end with one write, creating the file; `whileOpen` is called before the file
/// is closed again. Errors: Denied, Failed.
Result<void> appendFile(const std::string& path, std::string_view bytes,
                        const std::function<void()>& whileOpen = {});
/// Writes `bytes` to `workingCopy`, flushes it to disk, and lets it take the place of `path` in one step,
/// also when `path` is read-only. On failure `path` is as it was. Errors: Denied, Failed.
Result<void> replaceFile(const std::string& path, const std::string& workingCopy, std::string_view bytes);
/// Deletes a file, read-only or not. Errors: NotFound, Denied, Failed.
Result<void> deleteFileForced(const std::string& path);
/// Gives a file another name. Errors: Busy, a file or folder of that name is there, the file itself among
/// them; NotFound, Denied, Failed.
Result<void> renameFile(const std::string& from, const std::string& to);
/// Copies a file over whatever file is there. Errors: NotFound, Denied, Failed.
Result<void> copyFile(const std::string& from, const std::string& to);

} // namespace zv
