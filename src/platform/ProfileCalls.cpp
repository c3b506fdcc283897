#include "platform/Profile.h"

#include "platform/ProfileFile.h"
#include "platform/ProfileText.h"
#include "platform/Text.h"

#include <algorithm>
#include <cstring>
#include <functional>

// The profile-file calls, the same on every system. Those of Windows itself read and write every value in the
// code page of the process, and so would lose what other programs have written in another one.

namespace zv {

namespace {

/// An editor's mark of a file whose characters take two bytes each, low byte first.
constexpr std::string_view kWideMark = "\xFF\xFE";

std::string decoded(std::string bytes)
{
    if (!isWideProfile(bytes))
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

/// For calls that have no errors.
std::string loadOrEmpty(const char* file)
{
    return decoded(loadProfile(file ? file : "").valueOr({}));
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

using TextEdit = std::function<void(ProfileText& profile)>;

std::string edited(const std::string& before, const TextEdit& edit)
{
    ProfileText profile(decoded(before));
    edit(profile);
    return encoded(profile.text(), isWideProfile(before));
}

Result<void> changeBytes(const std::string& file, const TextEdit& edit)
{
    return rewriteProfile(file, [&edit](const std::string& before) { return edited(before, edit); });
}

/// The lines of a list that is ended by an empty one.
std::vector<std::string_view> linesOf(const char* text)
{
    std::vector<std::string_view> lines;
    for (const char* line = text; *line; line += std::strlen(line) + 1)
        lines.emplace_back(line);
    return lines;
}

} // namespace

bool isWideProfile(std::string_view bytes)
{
    return bytes.starts_with(kWideMark);
}

unsigned long GetPrivateProfileStringA(const char* section, const char* key, const char* fallback,
                                       char* buffer, unsigned long size, const char* file)
{
    if (!buffer || size == 0)
        return 0;
    const ProfileText profile(loadOrEmpty(file));
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
    return profileNumber(buffer);
}

int WritePrivateProfileStringA(const char* section, const char* key, const char* value, const char* file)
{
    if (!section || !file)
        return 0;
    const Result<void> done = changeBytes(file, [&](ProfileText& profile) {
        if (!key)
            profile.removeSection(section);
        else if (!value)
            profile.removeKey(section, key);
        else
            profile.setValue(section, key, value);
    });
    return done.ok();
}

int WritePrivateProfileSectionA(const char* section, const char* text, const char* file)
{
    if (!section || !file)
        return 0;
    const Result<void> done = changeBytes(file, [&](ProfileText& profile) {
        if (text)
            profile.setLines(section, linesOf(text));
        else
            profile.removeSection(section);
    });
    return done.ok();
}

Result<void> changeProfile(const ProfileChange& change)
{
    return changeBytes(change.file, [&](ProfileText& profile) { changeText(profile, change); });
}

Result<std::vector<std::optional<std::string>>>
readProfile(const std::string& file, const std::string& section, const std::vector<std::string>& keys)
{
    Result<std::string> bytes = loadProfile(file);
    if (!bytes)
        return bytes.error();
    return ProfileText::valuesIn(decoded(std::move(*bytes)), section, keys);
}

} // namespace zv
