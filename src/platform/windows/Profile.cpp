#include "platform/Profile.h"

#include "platform/Files.h"
#include "platform/LocaleCase.h"
#include "platform/ProfileFile.h"
#include "platform/windows/FileHandle.h"

#include <algorithm>
#include <cstring>
#include <set>

namespace zv {

namespace {

/// The system's call takes no longer text for a section.
constexpr std::size_t kLongestSection = 65535;

int writeLongSection(const char* section, const char* text, const char* file)
{
    int done = ::WritePrivateProfileSectionA(section, "\0", file);
    for (const char* line = text; *line && done; line += std::strlen(line) + 1) {
        const char* equals = std::strchr(line, '=');
        if (equals)
            done = ::WritePrivateProfileStringA(section, std::string(line, equals).c_str(), equals + 1, file);
    }
    return done;
}

constexpr std::size_t kFirstKeyList = 64 * 1024;
constexpr std::size_t kLongestKeyList = 16 * 1024 * 1024;

/// The folded names of a section's keys. Each call goes to the file, so that keys that are not there are
/// better not asked for.
std::set<std::string> keysOf(const std::string& file, const std::string& section)
{
    std::vector<char> list;
    unsigned long count = 0;
    do {
        list.assign(std::max(list.size() * 4, kFirstKeyList), '\0');
        count = ::GetPrivateProfileStringA(section.c_str(), nullptr, "", list.data(),
                                           static_cast<DWORD>(list.size()), file.c_str());
    } while (count + 2 >= list.size() && list.size() < kLongestKeyList);
    std::set<std::string> keys;
    for (const char* key = list.data(); *key; key += std::strlen(key) + 1)
        keys.insert(foldedName(key));
    return keys;
}

/// A value that no profile can hold, for a key that is absent.
constexpr std::string_view kAbsentKey = "\n";

std::optional<std::string> valueOf(const std::string& file, const std::string& section,
                                   const std::string& key)
{
    char buffer[kProfileBuffer];
    const DWORD count = ::GetPrivateProfileStringA(section.c_str(), key.c_str(), kAbsentKey.data(), buffer,
                                                   sizeof buffer, file.c_str());
    const std::string value(buffer, count);
    return value == kAbsentKey ? std::nullopt : std::optional(value);
}

} // namespace

unsigned long GetPrivateProfileStringA(const char* section, const char* key, const char* fallback,
                                       char* buffer, unsigned long size, const char* file)
{
    return ::GetPrivateProfileStringA(section, key, fallback, buffer, size, file);
}

unsigned GetPrivateProfileIntA(const char* section, const char* key, int fallback, const char* file)
{
    return ::GetPrivateProfileIntA(section, key, fallback, file);
}

int WritePrivateProfileStringA(const char* section, const char* key, const char* value, const char* file)
{
    return ::WritePrivateProfileStringA(section, key, value, file);
}

int WritePrivateProfileSectionA(const char* section, const char* text, const char* file)
{
    std::size_t size = 0;
    for (const char* line = text; line && *line; line += std::strlen(line) + 1)
        size += std::strlen(line) + 1;
    return size < kLongestSection ? ::WritePrivateProfileSectionA(section, text, file)
                                  : writeLongSection(section, text, file);
}

Result<void> changeProfile(const ProfileChange& change)
{
    std::string text;
    for (const std::string& line : change.lines)
        text += line + '\0';
    ::SetLastError(ERROR_SUCCESS);
    const bool done =
        !calls::fails(FileStep::Write) &&
        (change.key ? WritePrivateProfileStringA(change.section.c_str(), change.key->c_str(),
                                                 change.value.c_str(), change.file.c_str())
                    : WritePrivateProfileSectionA(change.section.c_str(), text.c_str(), change.file.c_str()));
    if (done)
        return {};
    const DWORD reason = ::GetLastError();
    Error error = lastError(change.file);
    if (reason == ERROR_SHARING_VIOLATION || reason == ERROR_LOCK_VIOLATION)
        error.code = ErrorCode::Busy;
    return error;
}

Result<std::vector<std::optional<std::string>>>
readProfile(const std::string& file, const std::string& section, const std::vector<std::string>& keys)
{
    std::vector<std::optional<std::string>> values(keys.size());
    // While it is open here nobody can shut the system's own calls out of it.
    const FileHandle open(file, GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                          OPEN_EXISTING);
    if (!open) {
        const Error error = lastError(file);
        return error.code == ErrorCode::NotFound ? Result(std::move(values)) : error;
    }
    const std::set<std::string> held = keys.size() > 1 ? keysOf(file, section) : std::set<std::string>();
    for (std::size_t i = 0; i < keys.size(); ++i) {
        if (keys.size() == 1 || held.count(foldedName(keys[i])))
            values[i] = valueOf(file, section, keys[i]);
    }
    return values;
}

bool profileExists(const std::string& file)
{
    const Result<std::uint64_t> length = fileLength(file);
    return length || length.error().code != ErrorCode::NotFound;
}

Result<void> createProfile(const std::string& file)
{
    return createFile(file, {});
}

} // namespace zv
