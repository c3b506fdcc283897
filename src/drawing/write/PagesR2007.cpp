#include "drawing/write/PagesR2007.h"

#include "drawing/container/PagesR2004.h"
#include "drawing/container/ReedSolomon.h"
#include "drawing/write/BitWriter.h"
#include "drawing/write/Bytes.h"
#include "drawing/write/CompressionR2007.h"

#include <algorithm>
#include <array>

namespace zv::dwg {

namespace {

// All checks take their start from the number of bytes, by steps of this sequence.
constexpr std::uint64_t kFactor = 0x343FD, kAddend = 0x269EC3;

/// Bytes in the order of the checks: groups of eight, and of four and two at the end, with their words of 16
/// bits the last one first.
std::string inCheckOrder(std::string_view bytes)
{
    std::string ordered;
    ordered.reserve(bytes.size());
    for (std::size_t group = 8; !bytes.empty();) {
        while (group > bytes.size())
            group /= 2;
        for (std::size_t word = group; word > 1; word -= 2)
            ordered += bytes.substr(word - 2, 2);
        if (group == 1)
            ordered += bytes[0];
        bytes.remove_prefix(group);
    }
    return ordered;
}

/// A cyclic code of 64 bits, lowest bit first, of the polynomial 0xAD93D23594C935A9.
std::uint64_t mirroredCode(std::string_view bytes, std::uint64_t code)
{
    static constexpr auto kTable = [] {
        std::array<std::uint64_t, 256> table{};
        for (std::uint64_t i = 0; i < table.size(); ++i) {
            std::uint64_t value = i;
            for (int bit = 0; bit < 8; ++bit)
                value = (value & 1) != 0 ? value >> 1 ^ 0x95AC9329AC4BC9B5 : value >> 1;
            table[i] = value;
        }
        return table;
    }();
    for (const char c : inCheckOrder(bytes))
        code = code >> 8 ^ kTable[(code ^ static_cast<unsigned char>(c)) & 0xFF];
    return code;
}

/// The code of the header: 64 bits, highest bit first, of the polynomial 0x42F0E1EBA9EA3693.
std::uint64_t headerCode(std::string_view bytes)
{
    constexpr std::uint64_t kPolynomial = 0x42F0E1EBA9EA3693, kHighest = std::uint64_t{1} << 63;
    const std::uint64_t step = bytes.size() * kFactor + kAddend;
    std::uint64_t code = ~(step * ((std::uint64_t{1} << 32) + kFactor) + bytes.size() + kAddend);
    for (const char c : inCheckOrder(bytes)) {
        code ^= std::uint64_t{static_cast<unsigned char>(c)} << 56;
        for (int bit = 0; bit < 8; ++bit)
            code = (code & kHighest) != 0 ? code << 1 ^ kPolynomial : code << 1;
    }
    return ~code;
}

std::string woven(std::string_view data, std::size_t dataBytes)
{
    return textOf(ReedSolomon::woven(bytesOf(data), dataBytes));
}

constexpr std::size_t roundedTo(std::size_t size, std::size_t step)
{
    return (size + step - 1) / step * step;
}
constexpr std::size_t kPageStep = 0x20;

} // namespace

std::uint32_t checksumR2007(std::string_view bytes)
{
    const auto start = static_cast<std::uint32_t>(bytes.size() * kFactor + kAddend);
    return pageChecksum(start, bytesOf(inCheckOrder(bytes)));
}

std::uint64_t pageCodeR2007(std::string_view bytes)
{
    const std::uint64_t first = bytes.size() * kFactor + kAddend, second = first * kFactor + kAddend;
    return mirroredCode(bytes, ~(first | second << 32));
}

std::size_t systemPageSize(std::size_t size)
{
    constexpr std::size_t kSmallest = 0x400;
    const std::size_t blocks = ReedSolomon::blocks(2 * ReedSolomon::padded(size), ReedSolomon::kSystemData);
    return std::max(kSmallest, roundedTo(blocks * ReedSolomon::kBlock, kPageStep));
}

SystemPageR2007::SystemPageR2007(std::string_view content)
{
    std::string packed = compressR2007(content);
    size = content.size();
    packedSize = packed.size();
    code = pageCodeR2007(content);
    packedCode = pageCodeR2007(packed);
    packed.resize(ReedSolomon::padded(packed.size()), '\0');
    const std::size_t room = systemPageSize(content.size()) / ReedSolomon::kBlock * ReedSolomon::kSystemData;
    std::string data;
    for (; data.size() + packed.size() <= room; ++repeats)
        data += packed;
    page = woven(data, ReedSolomon::kSystemData);
    page.resize(systemPageSize(content.size()), '\0');
}

std::string plainPage(std::string_view content, std::size_t room)
{
    std::string page(content);
    page.resize(ReedSolomon::padded(page.size()), '\0');
    const std::size_t data = page.size();
    for (std::size_t at = 0; at < data; at += ReedSolomon::kPageData) {
        const std::string block = page.substr(at, std::min(ReedSolomon::kPageData, data - at));
        page += textOf(ReedSolomon::guards(bytesOf(block), ReedSolomon::kPageData));
    }
    constexpr std::size_t kGuards = ReedSolomon::kBlock - ReedSolomon::kPageData;
    page.resize(roundedTo(room + ReedSolomon::blocks(room, ReedSolomon::kPageData) * kGuards, kPageStep),
                '\0');
    return page;
}

std::string headerPage(HeaderR2007 header)
{
    header.set(HeaderR2007::kCode, 0);
    header.set(HeaderR2007::kCode, headerCode(textOf(header.bytes)));
    const std::string packed = compressR2007(textOf(header.bytes));
    std::string unit = textOf(header.sequence);
    putLongLong(unit, headerCode(packed));
    // A header that is not packed has a negative length.
    const auto length = static_cast<std::int32_t>(packed.size());
    putLong(unit, static_cast<std::uint32_t>(packed.size() < header.bytes.size() ? length : -length));
    putLong(unit, 0);
    unit += packed;
    unit.resize(ReedSolomon::padded(unit.size()), '\0');
    // It stands in the page as many times as it fits.
    constexpr std::size_t kRoom = HeaderR2007::kBlocks * ReedSolomon::kSystemData;
    std::string data;
    while (data.size() + unit.size() <= kRoom)
        data += unit;
    data.resize(kRoom, '\0');
    return woven(data, ReedSolomon::kSystemData);
}

} // namespace zv::dwg
