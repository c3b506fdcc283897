#include "platform/Profile.h"

#include "platform/Files.h"
#include "platform/LocaleCase.h"

#include <windows.h>

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

bool profileExists(const std::string& file)
{
    return fileExists(file);
}

std::vector<std::string> profileStrings(const std::string& file, const std::string& section,
                                        const std::vector<std::string>& keys)
{
    const std::set<std::string> held = keysOf(file, section);
    std::vector<std::string> values;
    values.reserve(keys.size());
    for (const std::string& key : keys)
        values.push_back(held.count(foldedName(key)) ? profileString(file, section, key, "") : std::string());
    return values;
}

} // namespace zv
