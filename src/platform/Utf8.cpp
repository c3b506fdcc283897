#include "platform/Utf8.h"

#include "platform/Text.h"

#include <algorithm>

namespace zv {

namespace {

constexpr char32_t kLast = 0x10FFFF;

/// The length that a first byte announces, and the smallest character that needs it.
struct Lead {
    std::size_t length;
    char32_t bits;
    char32_t smallest;
};

Lead leadOf(unsigned char byte)
{
    if (byte < 0x80)
        return {1, byte, 0};
    if ((byte & 0xE0) == 0xC0)
        return {2, byte & 0x1Fu, 0x80};
    if ((byte & 0xF0) == 0xE0)
        return {3, byte & 0x0Fu, 0x800};
    if ((byte & 0xF8) == 0xF0)
        return {4, byte & 0x07u, 0x10000};
    return {0, 0, 0};
}

/// How many bytes at the front are plain ASCII, as nearly all of paths and names are.
std::size_t plainLength(std::string_view bytes)
{
    const auto end = std::find_if(bytes.begin(), bytes.end(),
                                  [](char c) { return static_cast<unsigned char>(c) >= 0x80; });
    return static_cast<std::size_t>(end - bytes.begin());
}

} // namespace

Decoded decodeUtf8(std::string_view bytes)
{
    const Lead lead = leadOf(static_cast<unsigned char>(bytes.front()));
    if (lead.length == 0 || lead.length > bytes.size())
        return {};
    char32_t character = lead.bits;
    for (std::size_t i = 1; i < lead.length; ++i) {
        const auto byte = static_cast<unsigned char>(bytes[i]);
        if ((byte & 0xC0) != 0x80)
            return {};
        character = (character << 6) | (byte & 0x3Fu);
    }
    if (character < lead.smallest || character > kLast || isSurrogate(character))
        return {};
    return {character, lead.length};
}

void appendUtf8(std::string& bytes, char32_t character)
{
    const auto trail = [&](unsigned shift) {
        bytes.push_back(static_cast<char>(0x80 | ((character >> shift) & 0x3F)));
    };
    if (character < 0x80) {
        bytes.push_back(static_cast<char>(character));
    } else if (character < 0x800) {
        bytes.push_back(static_cast<char>(0xC0 | (character >> 6)));
        trail(0);
    } else if (character < 0x10000) {
        bytes.push_back(static_cast<char>(0xE0 | (character >> 12)));
        trail(6);
        trail(0);
    } else {
        bytes.push_back(static_cast<char>(0xF0 | (character >> 18)));
        trail(12);
        trail(6);
        trail(0);
    }
}

bool isUtf8(std::string_view bytes)
{
    for (;;) {
        bytes.remove_prefix(plainLength(bytes));
        if (bytes.empty())
            return true;
        const std::size_t length = decodeUtf8(bytes).length;
        if (length == 0)
            return false;
        bytes.remove_prefix(length);
    }
}

Decoded decodeUtf16(std::u16string_view text)
{
    const char32_t first = text.front();
    if (!isSurrogate(first))
        return {first, 1};
    if (first >= 0xDC00 || text.size() < 2 || text[1] < 0xDC00 || text[1] > 0xDFFF)
        return {};
    return {0x10000 + ((first - 0xD800) << 10) + (text[1] - 0xDC00u), 2};
}

void appendUtf16(std::u16string& text, char32_t character)
{
    if (character < 0x10000) {
        text.push_back(static_cast<char16_t>(character));
        return;
    }
    text.push_back(static_cast<char16_t>(0xD800 + ((character - 0x10000) >> 10)));
    text.push_back(static_cast<char16_t>(0xDC00 + ((character - 0x10000) & 0x3FF)));
}

std::u16string fromUtf8(std::string_view bytes)
{
    std::u16string text;
    text.reserve(bytes.size());
    while (!bytes.empty()) {
        const Decoded next = decodeUtf8(bytes);
        appendUtf16(text, next.length ? next.character : kReplacement);
        bytes.remove_prefix(next.length ? next.length : 1);
    }
    return text;
}

std::string toUtf8(std::u16string_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        const Decoded next = decodeUtf16(text);
        appendUtf8(bytes, next.length ? next.character : kReplacement);
        text.remove_prefix(next.length ? next.length : 1);
    }
    return bytes;
}

std::u16string wideFromUtf8(std::string_view bytes)
{
    std::u16string text;
    text.reserve(bytes.size());
    for (;;) {
        const std::size_t plain = plainLength(bytes);
        text.append(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(plain));
        bytes.remove_prefix(plain);
        if (bytes.empty())
            return text;
        const Decoded next = decodeUtf8(bytes);
        if (next.length)
            appendUtf16(text, next.character);
        else
            text.push_back(escapedByte(static_cast<unsigned char>(bytes.front())));
        bytes.remove_prefix(next.length ? next.length : 1);
    }
}

std::string utf8FromWide(std::u16string_view text)
{
    std::string bytes;
    bytes.reserve(text.size());
    while (!text.empty()) {
        const Decoded next = decodeUtf16(text);
        if (next.length)
            appendUtf8(bytes, next.character);
        else
            bytes.push_back(isEscapedByte(text.front()) ? unescapedByte(text.front()) : '?');
        text.remove_prefix(next.length ? next.length : 1);
    }
    return bytes;
}

} // namespace zv
