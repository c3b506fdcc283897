#include "platform/Profile.h"

#include <windows.h>

#include <cstring>

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

std::vector<std::string> profileStrings(const std::string& file, const std::string& section,
                                        const std::vector<std::string>& keys)
{
    std::vector<std::string> values;
    values.reserve(keys.size());
    for (const std::string& key : keys)
        values.push_back(profileString(file, section, key, ""));
    return values;
}

} // namespace zv
