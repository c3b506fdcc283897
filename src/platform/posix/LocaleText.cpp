#include "platform/FileText.h"
#include "platform/LocaleCase.h"
#include "platform/Text.h"
#include "platform/Utf8.h"

#include <climits>
#include <clocale>
#include <cstring>
#include <cwchar>
#include <cwctype>
#include <langinfo.h>

namespace zv {

namespace {

bool localeIsUtf8()
{
    return std::strcmp(nl_langinfo(CODESET), "UTF-8") == 0;
}

bool encodes(wchar_t character, std::string_view bytes)
{
    char buffer[MB_LEN_MAX];
    std::mbstate_t state{};
    const std::size_t count = std::wcrtomb(buffer, character, &state);
    return count == bytes.size() && std::memcmp(buffer, bytes.data(), count) == 0;
}

/// The first character of a text in the locale's code page. One that would not come back as the same bytes
/// counts as damaged.
Decoded decodeLocale(std::string_view bytes)
{
    if (bytes.front() == '\0')
        return {0, 1};
    wchar_t character = 0;
    std::mbstate_t state{};
    const std::size_t length = std::mbrtowc(&character, bytes.data(), bytes.size(), &state);
    if (length == 0 || length > bytes.size() || isSurrogate(static_cast<char32_t>(character)) ||
        !encodes(character, bytes.substr(0, length)))
        return {};
    return {static_cast<char32_t>(character), length};
}

void appendLocale(std::string& bytes, char32_t character)
{
    char buffer[MB_LEN_MAX];
    std::mbstate_t state{};
    const std::size_t count = std::wcrtomb(buffer, static_cast<wchar_t>(character), &state);
    if (count == static_cast<std::size_t>(-1))
        bytes.push_back('?');
    else
        bytes.append(buffer, count);
}

template <class Change> std::u16string changed(std::u16string_view text, Change change)
{
    std::u16string result;
    result.reserve(text.size());
    while (!text.empty()) {
        const Decoded next = decodeUtf16(text);
        const std::size_t length = next.length ? next.length : 1;
        const std::size_t before = result.size();
        if (next.length)
            appendUtf16(result, static_cast<char32_t>(change(static_cast<std::wint_t>(next.character))));
        if (result.size() - before != length) {
            result.resize(before);
            result.append(text.substr(0, length));
        }
        text.remove_prefix(length);
    }
    return result;
}

} // namespace

std::u16string wide(std::string_view bytes)
{
    if (localeIsUtf8())
        return wideFromUtf8(bytes);
    std::u16string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const Decoded next = decodeLocale(bytes);
        if (next.length)
            appendUtf16(text, next.character);
        else
            text.push_back(escapedByte(static_cast<unsigned char>(bytes.front())));
        bytes.remove_prefix(next.length ? next.length : 1);
    }
    return text;
}

std::string narrow(std::u16string_view text)
{
    if (localeIsUtf8())
        return utf8FromWide(text);
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        const Decoded next = decodeUtf16(text);
        if (next.length)
            appendLocale(bytes, next.character);
        else
            bytes.push_back(isEscapedByte(text.front()) ? unescapedByte(text.front()) : '?');
        text.remove_prefix(next.length ? next.length : 1);
    }
    return bytes;
}

std::string textFromFile(std::string bytes)
{
    return bytes;
}

std::string textForFile(std::string line)
{
    return line;
}

std::u16string upperAsLocale(std::u16string_view text)
{
    return changed(text, std::towupper);
}

std::u16string upperAsAnywhere(std::u16string_view text)
{
    return changed(text, [](std::wint_t c) {
        if (c < 0x80)
            return c >= 'a' && c <= 'z' ? c - 'a' + 'A' : c;
        return std::towupper(c);
    });
}

} // namespace zv
