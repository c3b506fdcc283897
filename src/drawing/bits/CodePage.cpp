#include "drawing/bits/CodePage.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <span>

namespace zv::dwg {

namespace {

constexpr char16_t kNoCharacter = u'\uFFFD';

struct SingleBytePage {
    int number;
    std::u16string_view upper; ///< Bytes 0x80 to 0xFF.
};
constexpr SingleBytePage kSingleBytePages[] = {
#include "drawing/bits/codepages/SingleByte.inc"
};

struct Row {
    std::uint8_t lead, firstTrail;
    std::u16string_view characters;
};
constexpr Row kPage932[] = {
#include "drawing/bits/codepages/Page932.inc"
};
constexpr Row kPage936[] = {
#include "drawing/bits/codepages/Page936.inc"
};
constexpr Row kPage949[] = {
#include "drawing/bits/codepages/Page949.inc"
};
constexpr Row kPage950[] = {
#include "drawing/bits/codepages/Page950.inc"
};

std::span<const Row> doubleByteRows(int page)
{
    switch (page) {
    case 932:
        return kPage932;
    case 936:
        return kPage936;
    case 949:
        return kPage949;
    case 950:
        return kPage950;
    default:
        return {};
    }
}

char16_t doubleByteCharacter(std::span<const Row> rows, std::uint8_t lead, std::uint8_t trail)
{
    const auto row = std::lower_bound(rows.begin(), rows.end(), lead,
                                      [](const Row& a, std::uint8_t b) { return a.lead < b; });
    if (row == rows.end() || row->lead != lead || trail < row->firstTrail)
        return kNoCharacter;
    const std::size_t index = trail - row->firstTrail;
    return index < row->characters.size() ? row->characters[index] : kNoCharacter;
}

Text decodeDoubleByte(std::string_view bytes, int page)
{
    const std::span<const Row> rows = doubleByteRows(page);
    Text text;
    text.reserve(bytes.size());
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto byte = static_cast<std::uint8_t>(bytes[i]);
        if (byte < 0x80)
            text += static_cast<char16_t>(byte);
        else if (page == 932 && byte >= 0xA1 && byte <= 0xDF)
            text += static_cast<char16_t>(0xFF61 + byte - 0xA1); // half-width katakana
        else if (i + 1 < bytes.size())
            text += doubleByteCharacter(rows, byte, static_cast<std::uint8_t>(bytes[++i]));
        else
            text += kNoCharacter;
    }
    return text;
}

Text decodeSingleByte(std::string_view bytes, int page)
{
    const auto found = std::find_if(std::begin(kSingleBytePages), std::end(kSingleBytePages),
                                    [&](const SingleBytePage& p) { return p.number == page; });
    const SingleBytePage& table =
        found == std::end(kSingleBytePages) ? std::end(kSingleBytePages)[-1] : *found;
    Text text;
    text.reserve(bytes.size());
    for (const char c : bytes) {
        const auto byte = static_cast<std::uint8_t>(c);
        text += byte < 0x80 ? static_cast<char16_t>(byte) : table.upper[byte - 0x80];
    }
    return text;
}

Text decodeUtf8(std::string_view bytes)
{
    Text text;
    for (std::size_t i = 0; i < bytes.size();) {
        const auto lead = static_cast<std::uint8_t>(bytes[i++]);
        if (lead < 0x80) {
            text += static_cast<char16_t>(lead);
            continue;
        }
        const unsigned more = lead >= 0xF0 ? 3 : lead >= 0xE0 ? 2 : lead >= 0xC2 ? 1 : 0;
        std::uint32_t code = more == 0 ? 0 : lead & (0x3Fu >> more);
        unsigned have = 0;
        for (; have < more && i < bytes.size() && (bytes[i] & 0xC0) == 0x80; ++have)
            code = code << 6 | (bytes[i++] & 0x3F);
        if (more == 0 || have < more || code > 0x10FFFF || (code >= 0xD800 && code < 0xE000)) {
            text += kNoCharacter;
        } else if (code < 0x10000) {
            text += static_cast<char16_t>(code);
        } else {
            text += static_cast<char16_t>(0xD7C0 + (code >> 10));
            text += static_cast<char16_t>(0xDC00 + (code & 0x3FF));
        }
    }
    return text;
}

int hexValue(std::u16string_view digits)
{
    int value = 0;
    for (const char16_t c : digits) {
        if (c >= u'0' && c <= u'9')
            value = value * 16 + (c - u'0');
        else if ((c | 0x20) >= u'a' && (c | 0x20) <= u'f')
            value = value * 16 + ((c | 0x20) - u'a' + 10);
        else
            return -1;
    }
    return value;
}

/// The character of an escape at the start of `rest`, and its length; 0 when none stands there.
std::size_t escapeAt(std::u16string_view rest, char16_t& character)
{
    constexpr std::size_t kUnicodeLength = 7, kMultiByteLength = 8;
    if (rest.size() >= kUnicodeLength && (rest[1] | 0x20) == u'u' && rest[2] == u'+') {
        const int value = hexValue(rest.substr(3, 4));
        if (value >= 0) {
            character = static_cast<char16_t>(value);
            return kUnicodeLength;
        }
    }
    if (rest.size() >= kMultiByteLength && (rest[1] | 0x20) == u'm' && rest[2] == u'+') {
        constexpr std::array<int, 6> kPages{0, 932, 950, 949, 1361, 936};
        const int page = rest[3] - u'0', value = hexValue(rest.substr(4, 4));
        if (page >= 1 && page <= 5 && value >= 0) {
            character =
                doubleByteCharacter(doubleByteRows(kPages[page]), static_cast<std::uint8_t>(value >> 8),
                                    static_cast<std::uint8_t>(value));
            return kMultiByteLength;
        }
    }
    return 0;
}

} // namespace

int windowsCodePage(int drawingCodePage)
{
    constexpr std::array<int, 45> kPages{
        65001, 1252, 1252, 28592, 28593, 28594, 28595, 28596, 28597, 28598, 28599, 437,  850,  852,   855,
        857,   860,  861,  863,   864,   865,   869,   932,   10000, 950,   949,   1361, 866,  1250,  1251,
        1252,  936,  1253, 1254,  1255,  1256,  1257,  874,   932,   936,   949,   950,  1361, 65001, 1258};
    if (drawingCodePage < 0 || drawingCodePage >= static_cast<int>(kPages.size()))
        return 0;
    return kPages[drawingCodePage];
}

Text decodeText(std::string_view bytes, int drawingCodePage)
{
    const int page = windowsCodePage(drawingCodePage);
    const bool ascii = std::all_of(bytes.begin(), bytes.end(), [](char c) { return (c & 0x80) == 0; });
    if (ascii)
        return decodeUnits(Text(bytes.begin(), bytes.end()));
    if (page == 65001)
        return decodeUnits(decodeUtf8(bytes));
    const bool doubleByte = page == 1361 || !doubleByteRows(page).empty();
    return decodeUnits(doubleByte ? decodeDoubleByte(bytes, page) : decodeSingleByte(bytes, page));
}

Text decodeUnits(Text units)
{
    while (!units.empty() && units.back() == u'\0')
        units.pop_back();
    std::size_t from = units.find(u'\\');
    if (from == Text::npos)
        return units;
    std::size_t to = from;
    while (from < units.size()) {
        char16_t character = units[from];
        std::size_t length = 0;
        if (character == u'\\')
            length = escapeAt(std::u16string_view(units).substr(from), character);
        units[to++] = character;
        from += length == 0 ? 1 : length;
    }
    units.resize(to);
    return units;
}

} // namespace zv::dwg
