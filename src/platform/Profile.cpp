#include "platform/Profile.h"

#include "platform/ProfileFile.h"
#include "platform/ProfileWrites.h"

namespace zv {

namespace {

/// One value as the program left it, nothing when it is absent.
Result<std::optional<std::string>> readValue(const std::string& file, const std::string& section,
                                             const std::string& key)
{
    if (std::optional<std::optional<std::string>> waiting = profileWrites().waitingValue(file, section, key))
        return *std::move(waiting);
    Result<std::vector<std::optional<std::string>>> values = readProfile(file, section, {key});
    if (!values)
        return values.error();
    return std::move(values->front());
}

/// Not every system drops the trailing blanks of a default that has nothing else.
std::string shownDefault(const std::string& fallback)
{
    return cutToBuffer(fallback.substr(0, fallback.find_last_not_of(' ') + 1));
}

} // namespace

Result<std::string> readProfileString(const std::string& file, const std::string& section,
                                      const std::string& key, const std::string& fallback)
{
    Result<std::optional<std::string>> value = readValue(file, section, key);
    if (!value)
        return value.error();
    return *value ? cutToBuffer(**std::move(value)) : shownDefault(fallback);
}

Result<int> readProfileInt(const std::string& file, const std::string& section, const std::string& key,
                           int fallback)
{
    const Result<std::string> value = readProfileString(file, section, key, {});
    if (!value)
        return value.error();
    return value->empty() ? fallback : static_cast<int>(profileNumber(*value));
}

Result<std::vector<std::string>> readProfileStrings(const std::string& file, const std::string& section,
                                                    const std::vector<std::string>& keys)
{
    Result<std::vector<std::optional<std::string>>> stored = readProfile(file, section, keys);
    if (!stored)
        return stored.error();
    std::vector<std::string> values;
    values.reserve(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i) {
        const auto waiting = profileWrites().waitingValue(file, section, keys[i]);
        values.push_back(cutToBuffer(waiting.value_or((*stored)[i]).value_or(std::string())));
    }
    return values;
}

std::string profileString(const std::string& file, const std::string& section, const std::string& key,
                          const std::string& fallback)
{
    return readProfileString(file, section, key, fallback).valueOr(shownDefault(fallback));
}

int profileInt(const std::string& file, const std::string& section, const std::string& key, int fallback)
{
    return readProfileInt(file, section, key, fallback).valueOr(fallback);
}

bool writeProfileString(const std::string& file, const std::string& section, const std::string& key,
                        const std::string& value)
{
    return profileWrites().write({file, section, key, value, {}});
}

bool writeProfileSection(const std::string& file, const std::string& section,
                         const std::vector<std::string>& lines)
{
    return profileWrites().write({file, section, {}, {}, lines});
}

unsigned profileNumber(const std::string& value)
{
    const char* text = value.c_str();
    while (*text == ' ' || *text == '\t')
        ++text;
    const bool negative = *text == '-';
    if (negative || *text == '+')
        ++text;
    unsigned number = 0;
    for (; *text >= '0' && *text <= '9'; ++text)
        number = number * 10 + static_cast<unsigned>(*text - '0');
    return negative ? 0u - number : number;
}

} // namespace zv
