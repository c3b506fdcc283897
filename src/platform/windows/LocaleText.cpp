#include "platform/LocaleCase.h"
#include "platform/Text.h"
#include "platform/Utf8.h"

#include <windows.h>

namespace zv {

namespace {

std::u16string mapped(LPCWSTR locale, std::u16string_view text)
{
    const std::wstring units(text.begin(), text.end());
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
    return wideFromUtf8(bytes);
}

std::string narrow(std::u16string_view text)
{
    return utf8FromWide(text);
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
