#include "platform/Profile.h"

#include "platform/Files.h"
#include "platform/Text.h"
#include "platform/posix/Descriptor.h"
#include "platform/posix/ProfileText.h"
#include "platform/posix/WorkingCopy.h"

#include <algorithm>
#include <climits>
#include <cstdlib>
#include <cstring>
#include <dirent.h>
#include <memory>
#include <sys/stat.h>

namespace zv {

namespace {

constexpr const char* kWorkingEnding = ".new";
/// An editor's mark of a file whose characters take two bytes each, low byte first.
constexpr std::string_view kWideMark = "\xFF\xFE";

bool isWideText(std::string_view bytes)
{
    return bytes.starts_with(kWideMark);
}

std::string decoded(std::string bytes)
{
    if (!isWideText(bytes))
        return bytes;
    std::u16string text;
    for (std::size_t i = kWideMark.size(); i + 1 < bytes.size(); i += 2)
        text.push_back(static_cast<char16_t>(static_cast<unsigned char>(bytes[i]) |
                                             (static_cast<unsigned char>(bytes[i + 1]) << 8)));
    return narrow(text);
}

std::string encoded(const std::string& text, bool asWideText)
{
    if (!asWideText)
        return text;
    std::string bytes(kWideMark);
    for (const char16_t unit : wide(text)) {
        bytes.push_back(static_cast<char>(unit & 0xFF));
        bytes.push_back(static_cast<char>(unit >> 8));
    }
    return bytes;
}

std::string folderOf(const std::string& path)
{
    const std::size_t separator = path.rfind('/');
    return separator == std::string::npos ? std::string() : path.substr(0, separator + 1);
}

/// The file that the name means: the one of exactly this name, else the first by name that differs only in
/// case, else the name itself. A link leads to what it names, so that a rewrite leaves the link in place.
std::string realFile(const std::string& path)
{
    std::string found = path;
    struct stat status {};
    if (::lstat(path.c_str(), &status) != 0) {
        const std::string folder = folderOf(path);
        const std::string name = path.substr(folder.size());
        const std::unique_ptr<DIR, int (*)(DIR*)> open(::opendir(folder.empty() ? "." : folder.c_str()),
                                                       ::closedir);
        std::string best;
        while (const dirent* entry = open ? ::readdir(open.get()) : nullptr) {
            if (sameName(entry->d_name, name) && (best.empty() || entry->d_name < best))
                best = entry->d_name;
        }
        if (best.empty())
            return path;
        found = folder + best;
    }
    const std::unique_ptr<char, void (*)(void*)> real(::realpath(found.c_str(), nullptr), std::free);
    return real ? real.get() : found;
}

/// An absent or unreadable file is an empty one.
ProfileText load(const char* file)
{
    if (!file || !*file)
        return ProfileText({});
    return ProfileText(decoded(readFile(realFile(file)).valueOr({})));
}

/// The text as far as the buffer holds it; the count is without the NUL.
unsigned long copyCut(std::string_view text, char* buffer, unsigned long size)
{
    const std::size_t count = std::min<std::size_t>(text.size(), size - 1);
    std::memcpy(buffer, text.data(), count);
    buffer[count] = '\0';
    return static_cast<unsigned long>(count);
}

/// Names one after the other, each with a NUL, and a second NUL at the end, also of a list that is cut.
unsigned long copyList(const std::vector<std::string>& names, char* buffer, unsigned long size)
{
    std::string list;
    for (const std::string& name : names)
        list += name + '\0';
    if (size < 2 || list.size() < size)
        return copyCut(list, buffer, size);
    std::memcpy(buffer, list.data(), size - 2);
    buffer[size - 2] = buffer[size - 1] = '\0';
    return size - 2;
}

std::string_view withoutTrailingBlanks(std::string_view text)
{
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

/// A profile that is read, changed and put back in one step, while other processes that do the same wait.
template <class Change> int rewrite(const char* file, Change change)
{
    if (!file || !*file)
        return 0;
    const std::string path = realFile(file);
    Result<std::string> old = readFile(path);
    if (!old && old.error().code != ErrorCode::NotFound)
        return 0;
    // A file whose owner has marked it read-only stays as it is.
    if (old && !openForWriting(path, 0))
        return 0;
    Result<WorkingCopy> copy = WorkingCopy::open(path + kWorkingEnding);
    if (copy)
        old = readFile(path);
    const std::string before = old.valueOr({});
    ProfileText profile(decoded(before));
    change(profile);
    const std::string after = encoded(profile.text(), isWideText(before));
    if (old && after == before)
        return 1;
    // In a folder where no second file can be made the profile is written in place.
    return copy ? copy->replace(path, after).ok() : writeFile(path, after).ok();
}

} // namespace

unsigned long GetPrivateProfileStringA(const char* section, const char* key, const char* fallback,
                                       char* buffer, unsigned long size, const char* file)
{
    if (!buffer || size == 0)
        return 0;
    const ProfileText profile = load(file);
    if (!section)
        return copyList(profile.sections(), buffer, size);
    if (!key) {
        const std::vector<std::string> keys = profile.keys(section);
        if (!keys.empty())
            return copyList(keys, buffer, size);
    } else if (const std::optional<std::string> value = profile.value(section, key)) {
        return copyCut(*value, buffer, size);
    }
    return copyCut(withoutTrailingBlanks(fallback ? fallback : ""), buffer, size);
}

unsigned GetPrivateProfileIntA(const char* section, const char* key, int fallback, const char* file)
{
    char buffer[kProfileBuffer];
    if (GetPrivateProfileStringA(section, key, "", buffer, sizeof buffer, file) == 0)
        return static_cast<unsigned>(fallback);
    const char* text = buffer;
    while (*text == ' ' || *text == '\t')
        ++text;
    const bool negative = *text == '-';
    if (negative || *text == '+')
        ++text;
    unsigned value = 0;
    for (; *text >= '0' && *text <= '9'; ++text)
        value = value * 10 + static_cast<unsigned>(*text - '0');
    return negative ? 0u - value : value;
}

int WritePrivateProfileStringA(const char* section, const char* key, const char* value, const char* file)
{
    if (!section)
        return 0;
    return rewrite(file, [&](ProfileText& profile) {
        if (!key)
            profile.removeSection(section);
        else if (!value)
            profile.removeKey(section, key);
        else
            profile.setValue(section, key, value);
    });
}

int WritePrivateProfileSectionA(const char* section, const char* text, const char* file)
{
    if (!section)
        return 0;
    return rewrite(file, [&](ProfileText& profile) {
        if (!text) {
            profile.removeSection(section);
            return;
        }
        std::vector<std::string_view> lines;
        for (const char* line = text; *line; line += std::strlen(line) + 1)
            lines.emplace_back(line);
        profile.setLines(section, lines);
    });
}

bool profileExists(const std::string& file)
{
    return fileExists(realFile(file));
}

std::vector<std::string> profileStrings(const std::string& file, const std::string& section,
                                        const std::vector<std::string>& keys)
{
    std::vector<std::string> values;
    values.reserve(keys.size());
    for (std::optional<std::string>& value : load(file.c_str()).values(section, keys)) {
        values.push_back(std::move(value).value_or(std::string()));
        values.back().resize(std::min<std::size_t>(values.back().size(), kProfileBuffer - 1));
    }
    return values;
}

} // namespace zv
