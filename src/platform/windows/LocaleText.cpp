#include "platform/LocaleCase.h"
#include "platform/Text.h"
#include "platform/Utf8.h"

#include <windows.h>

#include <algorithm>

namespace zv {

namespace {

std::wstring asWide(std::u16string_view text)
{
    return std::wstring(text.begin(), text.end());
}

std::u16string decode(std::string_view bytes)
{
    std::wstring text(bytes.size(), L'\0');
    const int count = bytes.empty()
                          ? 0
                          : ::MultiByteToWideChar(CP_ACP, 0, bytes.data(), static_cast<int>(bytes.size()),
                                                  text.data(), static_cast<int>(text.size()));
    return std::u16string(text.begin(), text.begin() + count);
}

std::string encode(std::u16string_view text)
{
    if (text.empty())
        return {};
    const std::wstring units = asWide(text);
    std::string bytes(units.size() * 4, '\0');
    const int count = ::WideCharToMultiByte(CP_ACP, 0, units.data(), static_cast<int>(units.size()),
                                            bytes.data(), static_cast<int>(bytes.size()), nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(count));
    return bytes;
}

/// How many bytes at the front are one character that comes back as the same bytes; 0 when none are.
std::size_t characterLength(std::string_view bytes)
{
    for (std::size_t length = 1; length <= std::min<std::size_t>(bytes.size(), 4); ++length) {
        const std::string_view part = bytes.substr(0, length);
        const std::u16string text = decode(part);
        if (std::none_of(text.begin(), text.end(), [](char16_t unit) { return unit == kReplacement; }) &&
            encode(text) == part)
            return length;
    }
    return 0;
}

std::u16string mapped(LPCWSTR locale, std::u16string_view text)
{
    const std::wstring units = asWide(text);
    std::wstring capitals(units.size(), L'\0');
    const int count = units.empty()
                          ? 0
                          : ::LCMapStringEx(locale, LCMAP_UPPERCASE | (locale ? LCMAP_LINGUISTIC_CASING : 0),
                                            units.data(), static_cast<int>(units.size()), capitals.data(),
                                            static_cast<int>(capitals.size()), nullptr, nullptr, 0);
    if (static_cast<std::size_t>(count) != units.size())
        return std::u16string(text);
    return std::u16string(capitals.begin(), capitals.end());
}

} // namespace

std::u16string wide(std::string_view bytes)
{
    std::u16string text = decode(bytes);
    if (encode(text) == bytes)
        return text;
    text.clear();
    while (!bytes.empty()) {
        const std::size_t length = characterLength(bytes);
        if (length)
            text += decode(bytes.substr(0, length));
        else
            text.push_back(escapedByte(static_cast<unsigned char>(bytes.front())));
        bytes.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return text;
}

std::string narrow(std::u16string_view text)
{
    std::string bytes;
    while (!text.empty()) {
        std::size_t plain = 0;
        while (plain < text.size()) {
            const Decoded next = decodeUtf16(text.substr(plain));
            if (!next.length)
                break;
            plain += next.length;
        }
        bytes += encode(text.substr(0, plain));
        text.remove_prefix(plain);
        if (!text.empty()) {
            bytes.push_back(isEscapedByte(text.front()) ? unescapedByte(text.front()) : '?');
            text.remove_prefix(1);
        }
    }
    return bytes;
}

std::u16string upperAsLocale(std::u16string_view text)
{
    return mapped(LOCALE_NAME_USER_DEFAULT, text);
}

std::u16string upperAsAnywhere(std::u16string_view text)
{
    return mapped(LOCALE_NAME_INVARIANT, text);
}

} // namespace zv
