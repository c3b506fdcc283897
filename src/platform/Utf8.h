#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zv {

/// One character at the front of a text, and how many units it takes. A length of 0 means damaged.
struct Decoded {
    char32_t character = 0;
    std::size_t length = 0;
};

/// The first character of a text that is not empty. Overlong forms, surrogates and values past U+10FFFF are
/// damaged.
Decoded decodeUtf8(std::string_view bytes);
void appendUtf8(std::string& bytes, char32_t character);
/// Whether the bytes are whole, shortest-form UTF-8 without surrogates.
bool isUtf8(std::string_view bytes);

/// The first character of a text that is not empty. A lone surrogate is damaged.
Decoded decodeUtf16(std::u16string_view text);
void appendUtf16(std::u16string& text, char32_t character);

inline constexpr char32_t kReplacement = 0xFFFD;
inline constexpr bool isSurrogate(char32_t character)
{
    return character >= 0xD800 && character <= 0xDFFF;
}

/// A byte that is no text travels as a lone low surrogate.
inline constexpr char16_t escapedByte(unsigned char byte)
{
    return static_cast<char16_t>(0xDC00 + byte);
}
inline constexpr bool isEscapedByte(char16_t unit)
{
    return unit >= 0xDC80 && unit <= 0xDCFF;
}
inline constexpr char unescapedByte(char16_t unit)
{
    return static_cast<char>(unit - 0xDC00);
}

/// wide() and narrow() where the program's own text is UTF-8.
std::u16string wideFromUtf8(std::string_view bytes);
std::string utf8FromWide(std::u16string_view text);

} // namespace zv
