#pragma once

#include "platform/Result.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

/// One drawing of a library.
struct ListEntry {
    std::string path;  ///< As written; it may hold ";".
    std::string label; ///< Shown in the label list; may be empty.
};

/// One line of a list as it is read.
struct ListLine : ListEntry {
    /// False for a line without ";", which no program writes. It is all label, under the path of the line
    /// before it, or under an empty path when it is the first.
    bool separated = true;

    /// The path as the windows that change lists show it: the whole line where there is no ";".
    const std::string& shownPath() const { return separated ? path : label; }
};

/// Splits a line of the program's own text, without its end, at its last ";"; none when it has none.
std::optional<ListEntry> splitListLine(std::string_view line);

/// Lines of a library are counted in 16 bits.
inline constexpr std::size_t kMostListLines = 32767;
/// More than a library of the longest paths that a system takes in practice: 2 KiB a line.
inline constexpr std::uint64_t kMostListBytes = std::uint64_t{kMostListLines} * 2048;

/// folder + separator + name + ".lst".
std::string listFilePath(const std::string& folder, const std::string& name);
/// The working copy of a list during a rewrite: ".ls$" in place of ".lst".
std::string listWorkingCopy(const std::string& listPath);

/// The lines of a text, without their line ends. CR LF, LF and CR end a line; the last line may have no end.
std::vector<std::string_view> textLines(std::string_view bytes);

/// All lines of a list, in the order of the file. Errors: NotFound; Denied; TooLarge, more lines than a
/// library can have; Failed.
Result<std::vector<ListLine>> readListFile(const std::string& listPath);

/// The label of one line, by its place from 1. None when the list has no such line or cannot be read.
std::optional<std::string> listLabel(const std::string& listPath, std::size_t index);

/// Makes a list of the entries; an old list of the name is replaced. Errors: TooLarge, and nothing is
/// changed; Denied; Failed, a line end in a name among them.
Result<void> createList(const std::string& listPath, const std::vector<ListEntry>& entries);
/// Adds the entries at the list's end; a missing list is made. Errors: as createList().
Result<void> appendToList(const std::string& listPath, const std::vector<ListEntry>& entries);

// A rewrite changes one line, by its place from 1; the others keep their bytes. A crash or a full disk leaves
// the old list or the new one. `shown` is the path that the user sees in that place: where the list has
// another one there by now, nothing is changed. Errors of all three: Busy for that; NotFound, TooLarge,
// Denied, Failed; nothing is changed then.

/// Leaves the line out. Without `shown`, a list that has no such line stays as it is.
Result<void> removeListLine(const std::string& listPath, std::size_t index,
                            const std::optional<std::string>& shown = {});
/// Gives the line another label, and a line without ";" its first one.
Result<void> changeListLabel(const std::string& listPath, std::size_t index, const std::string& label,
                             const std::optional<std::string>& shown = {});
/// Moves the line to another place.
Result<void> moveListLine(const std::string& listPath, std::size_t from, std::size_t to,
                          const std::string& shown);

} // namespace zv
