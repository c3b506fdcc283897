#include "platform/Profile.h"

#include <windows.h>

namespace zv {

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
    return ::WritePrivateProfileSectionA(section, text, file);
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
