#include "platform/windows/CodePage.h"

#include "platform/FileText.h"
#include "platform/Text.h"
#include "platform/Utf8.h"

#include <windows.h>

#include <algorithm>

namespace zv {

namespace {

constexpr unsigned kWestern = 1252;
constexpr std::size_t kLongestCharacter = 4;
constexpr std::string_view kLineEnds = "\r\n";
/// Some editors set these bytes before a text in UTF-8.
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

/// The 8-bit code page of a language; 0 when it has none.
unsigned pageOf(LPCWSTR locale)
{
    DWORD page = 0;
    ::GetLocaleInfoEx(locale, LOCALE_IDEFAULTANSICODEPAGE | LOCALE_RETURN_NUMBER,
                      reinterpret_cast<LPWSTR>(&page), sizeof page / sizeof(wchar_t));
    return page;
}

std::u16string decode(std::string_view bytes, unsigned page)
{
    if (bytes.empty())
        return {};
    std::wstring text(bytes.size(), L'\0');
    const int count = ::MultiByteToWideChar(page, 0, bytes.data(), static_cast<int>(bytes.size()),
                                            text.data(), static_cast<int>(text.size()));
    return std::u16string(text.begin(), text.begin() + count);
}

std::string encode(std::u16string_view text, unsigned page)
{
    if (text.empty())
        return {};
    const std::wstring units(text.begin(), text.end());
    std::string bytes(units.size() * kLongestCharacter, '\0');
    const int count = ::WideCharToMultiByte(page, 0, units.data(), static_cast<int>(units.size()),
                                            bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(count));
    return bytes;
}

/// How many bytes at the front are one character that comes back as the same bytes; 0 when none are.
std::size_t characterLength(std::string_view bytes, unsigned page)
{
    for (std::size_t length = 1; length <= std::min(bytes.size(), kLongestCharacter); ++length) {
        const std::string_view part = bytes.substr(0, length);
        const std::u16string text = decode(part, page);
        if (std::none_of(text.begin(), text.end(), [](char16_t unit) { return unit == kReplacement; }) &&
            encode(text, page) == part)
            return length;
    }
    return 0;
}

} // namespace

unsigned systemCodePage()
{
    static const unsigned known = [] {
        const LPCWSTR locales[] = {LOCALE_NAME_SYSTEM_DEFAULT, LOCALE_NAME_USER_DEFAULT};
        for (const LPCWSTR locale : locales) {
            if (const unsigned page = pageOf(locale); page != 0 && page != CP_UTF8)
                return page;
        }
        return kWestern;
    }();
    return known;
}

std::u16string fromCodePage(std::string_view bytes, unsigned page)
{
    std::u16string text = decode(bytes, page);
    if (encode(text, page) == bytes)
        return text;
    text.clear();
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes, page);
        if (length)
            text += decode(bytes.substr(0, length), page);
        else
            text.push_back(escapedByte(static_cast<unsigned char>(bytes.front())));
        bytes.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return text;
}

std::string toCodePage(std::u16string_view text, unsigned page)
{
    std::string bytes;
    while (!text.empty()) {
        const auto escaped = std::find_if(text.begin(), text.end(), isEscapedByte);
        const auto plain = static_cast<std::size_t>(escaped - text.begin());
        bytes += encode(text.substr(0, plain), page);
        text.remove_prefix(plain);
        if (!text.empty()) {
            bytes.push_back(unescapedByte(text.front()));
            text.remove_prefix(1);
        }
    }
    return bytes;
}

std::string textFromFile(std::string bytes, unsigned page)
{
    if (isUtf8(bytes) && bytes.find(kUtf8Mark) == std::string::npos)
        return bytes;
    std::string text;
    text.reserve(bytes.size() + bytes.size() / 2);
    // In no code page are the bytes of a line end part of another character.
    for (std::string_view rest = bytes; !rest.empty();) {
        std::string_view line = rest.substr(0, rest.find_first_of(kLineEnds));
        rest.remove_prefix(line.size());
        if (!isUtf8(line))
            text += narrow(fromCodePage(line, page));
        else
            text += line.substr(line.starts_with(kUtf8Mark) ? kUtf8Mark.size() : 0);
        const std::size_t next = std::min(rest.find_first_not_of(kLineEnds), rest.size());
        text += rest.substr(0, next);
        rest.remove_prefix(next);
    }
    return text;
}

std::string textForFile(std::string line, unsigned page)
{
    // A byte that was no text in the code page keeps the whole line there.
    return isUtf8(line) ? line : toCodePage(wide(line), page);
}

std::string textFromFile(std::string bytes)
{
    return textFromFile(std::move(bytes), systemCodePage());
}

std::string textForFile(std::string line)
{
    return textForFile(std::move(line), systemCodePage());
}

} // namespace zv
