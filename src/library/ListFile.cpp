#include "library/ListFile.h"

#include "platform/Files.h"
#include "platform/Text.h"

#include <algorithm>
#include <functional>

namespace zv {

namespace {

constexpr char kSeparator = ';';
constexpr std::string_view kLineEnd = "\r\n";
constexpr std::string_view kListEnding = ".lst";
constexpr std::string_view kWorkingEnding = ".ls$";

Error tooManyLines(const std::string& listPath)
{
    return Error{ErrorCode::TooLarge, toUtf8(wide(listPath)) + ": a library holds at most " +
                                          std::to_string(kMostListLines) + " drawings"};
}

ListLine splitLine(std::string_view line, const std::string& pathBefore)
{
    const std::size_t separator = line.rfind(kSeparator);
    if (separator == std::string_view::npos)
        return {{pathBefore, std::string(line)}, false};
    return {{std::string(line.substr(0, separator)), std::string(line.substr(separator + 1))}, true};
}

std::string joined(const std::vector<ListEntry>& entries)
{
    std::string bytes;
    for (const ListEntry& entry : entries) {
        bytes += entry.path;
        bytes += kSeparator;
        bytes += entry.label;
        bytes += kLineEnd;
    }
    return bytes;
}

/// Rewrites a list through its working copy. `change` gives the new line of one, or false to leave it out.
Result<void> rewriteLine(const std::string& listPath, std::size_t index,
                         const std::function<bool(std::string& line)>& change)
{
    const Result<std::string> old = readFile(listPath);
    if (!old)
        return old.error();
    const std::vector<std::string_view> lines = textLines(*old);
    if (lines.size() > kMostListLines)
        return tooManyLines(listPath);
    if (index < 1 || index > lines.size())
        return {};
    std::string bytes;
    bytes.reserve(old->size() + kLineEnd.size());
    for (std::size_t i = 1; i <= lines.size(); ++i) {
        std::string line(lines[i - 1]);
        if (i != index || change(line)) {
            bytes += line;
            bytes += kLineEnd;
        }
    }
    return replaceFile(listPath, listWorkingCopy(listPath), bytes);
}

} // namespace

std::string listFilePath(const std::string& folder, const std::string& name)
{
    return joinPath(folder, name + std::string(kListEnding));
}

std::string listWorkingCopy(const std::string& listPath)
{
    const std::size_t stem = listPath.size() - std::min(listPath.size(), kListEnding.size());
    const bool hasEnding = sameName(std::string_view(listPath).substr(stem), kListEnding);
    return listPath.substr(0, hasEnding ? stem : listPath.size()) + std::string(kWorkingEnding);
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
    const Result<std::string> bytes = readFile(listPath);
    if (!bytes)
        return bytes.error();
    const std::vector<std::string_view> lines = textLines(*bytes);
    if (lines.size() > kMostListLines)
        return tooManyLines(listPath);
    std::vector<ListLine> list;
    list.reserve(lines.size());
    for (const std::string_view line : lines)
        list.push_back(splitLine(line, list.empty() ? std::string() : list.back().path));
    return list;
}

Result<void> createList(const std::string& listPath, const std::vector<ListEntry>& entries)
{
    if (entries.size() > kMostListLines)
        return tooManyLines(listPath);
    return replaceFile(listPath, listWorkingCopy(listPath), joined(entries));
}

Result<void> appendToList(const std::string& listPath, const std::vector<ListEntry>& entries)
{
    const Result<std::string> old = readFile(listPath);
    if (!old && old.error().code != ErrorCode::NotFound)
        return old.error();
    const std::string held = old.valueOr({});
    if (textLines(held).size() + entries.size() > kMostListLines)
        return tooManyLines(listPath);
    // A last line that somebody left without its end must not run into the new one.
    const bool open = !held.empty() && held.back() != '\n' && held.back() != '\r';
    return appendFile(listPath, (open ? std::string(kLineEnd) : std::string()) + joined(entries));
}

Result<void> removeListLine(const std::string& listPath, std::size_t index)
{
    return rewriteLine(listPath, index, [](std::string&) { return false; });
}

Result<void> changeListLabel(const std::string& listPath, std::size_t index, const std::string& label)
{
    const Result<std::vector<ListLine>> list = readListFile(listPath);
    if (!list)
        return list.error();
    if (index >= 1 && index <= list->size() && !(*list)[index - 1].separated)
        return Error{ErrorCode::Damaged, toUtf8(wide(listPath)) + ": line " + std::to_string(index) +
                                             " has no \";\" between drawing and label"};
    return rewriteLine(listPath, index, [&](std::string& line) {
        line.replace(line.rfind(kSeparator) + 1, std::string::npos, label);
        return true;
    });
}

} // namespace zv
