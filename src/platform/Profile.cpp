#include "platform/Profile.h"

namespace zv {

std::string profileString(const std::string& file, const std::string& section, const std::string& key,
                          const std::string& fallback)
{
    // Not every system drops the trailing blanks of a default that has nothing else.
    const std::string shown = fallback.substr(0, fallback.find_last_not_of(' ') + 1);
    char buffer[kProfileBuffer];
    const unsigned long count = GetPrivateProfileStringA(section.c_str(), key.c_str(), shown.c_str(), buffer,
                                                         sizeof buffer, file.c_str());
    return std::string(buffer, count);
}

int profileInt(const std::string& file, const std::string& section, const std::string& key, int fallback)
{
    return static_cast<int>(GetPrivateProfileIntA(section.c_str(), key.c_str(), fallback, file.c_str()));
}

bool writeProfileString(const std::string& file, const std::string& section, const std::string& key,
                        const std::string& value)
{
    return WritePrivateProfileStringA(section.c_str(), key.c_str(), value.c_str(), file.c_str()) != 0;
}

bool writeProfileSection(const std::string& file, const std::string& section,
                         const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines) {
        text += line;
        text += '\0';
    }
    // c_str() adds the second of the two NULs that end the text.
    return WritePrivateProfileSectionA(section.c_str(), text.c_str(), file.c_str()) != 0;
}

} // namespace zv
