#include "library/ListFile.h"

#include "config/FileNames.h"
#include "platform/FileText.h"
#include "platform/Files.h"
#include "platform/Text.h"

#include <algorithm>
#include <functional>
#include <optional>

namespace zv {

namespace {

constexpr char kSeparator = ';';
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kWorkingEnding = ".ls$";

Error tooManyLines(const std::string& listPath)
{
    return Error{ErrorCode::TooLarge,
                 listPath + ": a library holds at most " + std::to_string(kMostListLines) + " drawings"};
}

/// Splits a line of the program's own text.
ListLine splitLine(std::string_view line, std::string_view pathBefore)
{
    if (std::optional<ListEntry> entry = splitListLine(line))
        return {std::move(*entry), true};
    return {{std::string(pathBefore), std::string(line)}, false};
}

/// Splits a line as the file has it, without regard to the lines before it.
ListLine splitStored(std::string_view line)
{
    return splitLine(textFromFile(std::string(line)), {});
}

std::string storedLine(const std::string& path, const std::string& label)
{
    return textForFile(path + kSeparator + label);
}

/// The lines of the entries. Errors: Failed, one has a line end in its name, as some systems allow.
Result<std::string> joined(const std::vector<ListEntry>& entries)
{
    std::string bytes;
    for (const ListEntry& entry : entries) {
        const std::string line = storedLine(entry.path, entry.label);
        if (line.find_first_of(kLineEnd) != std::string::npos)
            return Error{ErrorCode::Failed, entry.path + ": no library can hold this name"};
        bytes += line;
        bytes += kLineEnd;
    }
    return bytes;
}

using Lines = std::vector<std::string_view>;

/// A file that is larger than any list has too many lines as well.
template <class T> T inLines(T done, const std::string& listPath)
{
    return !done && done.error().code == ErrorCode::TooLarge ? T(tooManyLines(listPath)) : done;
}

Result<std::string> readList(const std::string& listPath)
{
    return inLines(readFile(listPath, kMostListBytes), listPath);
}

/// Rewrites a list through its working copy, with its lines as `change` leaves them. They must hold the line
/// of `index`, under the path `shown` where one is given; without one, a list that is shorter stays as it is.
Result<void> rewrite(const std::string& listPath, std::size_t index, const std::optional<std::string>& shown,
                     const std::function<void(Lines&)>& change)
{
    const auto changed = [&](const std::string& old) -> Result<std::string> {
        Lines lines = textLines(old);
        if (lines.size() > kMostListLines)
            return tooManyLines(listPath);
        const bool there = index >= 1 && index <= lines.size();
        if (shown && !(there && splitStored(lines[index - 1]).shownPath() == *shown))
            return Error{ErrorCode::Busy, listPath + ": has been changed by another user"};
        if (!there)
            return old;
        change(lines);
        std::string bytes;
        bytes.reserve(old.size() + kLineEnd.size());
        for (const std::string_view line : lines) {
            bytes += line;
            bytes += kLineEnd;
        }
        return bytes;
    };
    return inLines(rewriteFile(listPath, listWorkingCopy(listPath), kMostListBytes, changed), listPath);
}

} // namespace

std::string listFilePath(const std::string& folder, const std::string& name)
{
    return joinPath(folder, name + kListEnding);
}

std::string listWorkingCopy(const std::string& listPath)
{
    const std::string_view ending = kListEnding;
    const std::size_t stem = listPath.size() - std::min(listPath.size(), ending.size());
    const bool hasEnding = sameName(std::string_view(listPath).substr(stem), ending);
    return listPath.substr(0, hasEnding ? stem : listPath.size()) + std::string(kWorkingEnding);
}

std::optional<ListEntry> splitListLine(std::string_view line)
{
    const std::size_t separator = line.rfind(kSeparator);
    if (separator == std::string_view::npos)
        return {};
    return ListEntry{std::string(line.substr(0, separator)), std::string(line.substr(separator + 1))};
}

std::vector<std::string_view> textLines(std::string_view bytes)
{
    std::vector<std::string_view> lines;
    std::size_t feed = bytes.find('\n');
    for (std::size_t begin = 0; begin < bytes.size();) {
        if (feed != std::string_view::npos && feed < begin)
            feed = bytes.find('\n', begin);
        // Nearly every line ends in CR LF, so the CR is looked for only in front of the next LF.
        const std::size_t end =
            std::min(bytes.substr(0, feed).find('\r', begin), std::min(feed, bytes.size()));
        lines.push_back(bytes.substr(begin, end - begin));
        begin = end + (bytes.substr(end).starts_with(kLineEnd) ? 2 : 1);
    }
    return lines;
}

Result<std::vector<ListLine>> readListFile(const std::string& listPath)
{
    Result<std::string> bytes = readList(listPath);
    if (!bytes)
        return bytes.error();
    const std::string text = textFromFile(std::move(*bytes));
    const std::vector<std::string_view> lines = textLines(text);
    if (lines.size() > kMostListLines)
        return tooManyLines(listPath);
    std::vector<ListLine> list;
    list.reserve(lines.size());
    for (const std::string_view line : lines)
        list.push_back(splitLine(line, list.empty() ? std::string_view() : list.back().path));
    return list;
}

std::optional<std::string> listLabel(const std::string& listPath, std::size_t index)
{
    const Result<std::string> bytes = readList(listPath);
    const std::vector<std::string_view> lines = textLines(bytes ? *bytes : std::string_view());
    if (index < 1 || index > lines.size())
        return {};
    return splitStored(lines[index - 1]).label;
}

Result<void> createList(const std::string& listPath, const std::vector<ListEntry>& entries)
{
    if (entries.size() > kMostListLines)
        return tooManyLines(listPath);
    const Result<std::string> lines = joined(entries);
    return lines ? replaceFile(listPath, listWorkingCopy(listPath), *lines) : lines.error();
}

Result<void> appendToList(const std::string& listPath, const std::vector<ListEntry>& entries)
{
    const Result<std::string> old = readList(listPath);
    if (!old && old.error().code != ErrorCode::NotFound)
        return old.error();
    if (textLines(old.valueOr({})).size() + entries.size() > kMostListLines)
        return tooManyLines(listPath);
    const Result<std::string> lines = joined(entries);
    return lines ? appendLines(listPath, *lines, listWorkingCopy(listPath)) : lines.error();
}

Result<void> removeListLine(const std::string& listPath, std::size_t index,
                            const std::optional<std::string>& shown)
{
    return rewrite(listPath, index, shown,
                   [&](Lines& lines) { lines.erase(lines.begin() + std::ptrdiff_t(index) - 1); });
}

Result<void> changeListLabel(const std::string& listPath, std::size_t index, const std::string& label,
                             const std::optional<std::string>& shown)
{
    std::string changed;
    return rewrite(listPath, index, shown, [&](Lines& lines) {
        changed = storedLine(splitStored(lines[index - 1]).shownPath(), label);
        lines[index - 1] = changed;
    });
}

Result<void> moveListLine(const std::string& listPath, std::size_t from, std::size_t to,
                          const std::string& shown)
{
    return rewrite(listPath, from, shown, [&](Lines& lines) {
        const std::string_view moved = lines[from - 1];
        lines.erase(lines.begin() + std::ptrdiff_t(from) - 1);
        lines.insert(lines.begin() + std::ptrdiff_t(std::clamp<std::size_t>(to, 1, lines.size() + 1)) - 1,
                     moved);
    });
}

} // namespace zv
