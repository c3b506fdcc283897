#include "drawing/write/BitWriter.h"

#include <algorithm>
#include <array>
#include <bit>

namespace zv::dwg {

void BitWriter::bits(std::uint64_t value, unsigned count)
{
    while (count > 0) {
        const unsigned used = m_bits & 7;
        if (used == 0)
            m_bytes.push_back('\0');
        const unsigned take = std::min(8 - used, count);
        const auto part = static_cast<unsigned>(value >> (count - take)) & ((1u << take) - 1);
        const unsigned shifted = part << (8 - used - take);
        m_bytes.back() = static_cast<char>(static_cast<unsigned char>(m_bytes.back()) | shifted);
        m_bits += take;
        count -= take;
    }
}

void BitWriter::rawShort(std::uint16_t value)
{
    rawChar(static_cast<std::uint8_t>(value));
    rawChar(static_cast<std::uint8_t>(value >> 8));
}

void BitWriter::rawLong(std::uint32_t value)
{
    rawShort(static_cast<std::uint16_t>(value));
    rawShort(static_cast<std::uint16_t>(value >> 16));
}

void BitWriter::rawDouble(double value)
{
    const auto word = std::bit_cast<std::uint64_t>(value);
    rawLong(static_cast<std::uint32_t>(word));
    rawLong(static_cast<std::uint32_t>(word >> 32));
}

void BitWriter::bitShort(std::int16_t value)
{
    if (value == 0) {
        bitPair(2);
    } else if (value == 256) {
        bitPair(3);
    } else if (value > 0 && value < 256) {
        bitPair(1);
        rawChar(static_cast<std::uint8_t>(value));
    } else {
        bitPair(0);
        rawShort(static_cast<std::uint16_t>(value));
    }
}

void BitWriter::bitLong(std::int32_t value)
{
    if (value == 0) {
        bitPair(2);
    } else if (value > 0 && value < 256) {
        bitPair(1);
        rawChar(static_cast<std::uint8_t>(value));
    } else {
        bitPair(0);
        rawLong(static_cast<std::uint32_t>(value));
    }
}

void BitWriter::bitDouble(double value)
{
    // A negative zero has its own bits and keeps them.
    const auto word = std::bit_cast<std::uint64_t>(value);
    if (word == 0) {
        bitPair(2);
    } else if (value == 1.0) {
        bitPair(1);
    } else {
        bitPair(0);
        rawDouble(value);
    }
}

void BitWriter::defaultDouble(double value, double from)
{
    const auto word = std::bit_cast<std::uint64_t>(value);
    const std::uint64_t differing = word ^ std::bit_cast<std::uint64_t>(from);
    if (differing == 0) {
        bitPair(0);
    } else if ((differing >> 32) == 0) {
        bitPair(1);
        rawLong(static_cast<std::uint32_t>(word));
    } else if ((differing >> 48) == 0) {
        bitPair(2);
        rawShort(static_cast<std::uint16_t>(word >> 32));
        rawLong(static_cast<std::uint32_t>(word));
    } else {
        bitPair(3);
        rawDouble(value);
    }
}

void BitWriter::thickness(double value)
{
    bit(value == 0);
    if (value != 0)
        bitDouble(value);
}

void BitWriter::extrusion(Point3 normal)
{
    const bool plain = normal.x == 0 && normal.y == 0 && normal.z == 1;
    bit(plain);
    if (!plain)
        bitPoint3(normal);
}

void BitWriter::handle(unsigned code, Handle value)
{
    const auto length = static_cast<unsigned>((std::bit_width(value) + 7) / 8);
    bits(code, 4);
    bits(length, 4);
    bits(value, length * 8);
}

void BitWriter::text(std::string_view bytes)
{
    bytes = bytes.substr(0, 32767);
    bitShort(static_cast<std::int16_t>(bytes.size()));
    rawBytes(bytes);
}

void BitWriter::rawBytes(std::string_view bytes)
{
    for (const char c : bytes)
        rawChar(static_cast<std::uint8_t>(c));
}

void BitWriter::rawPoint2(Point2 point)
{
    rawDouble(point.x);
    rawDouble(point.y);
}

void BitWriter::bitPoint2(Point2 point)
{
    bitDouble(point.x);
    bitDouble(point.y);
}

void BitWriter::bitPoint3(Point3 point)
{
    bitDouble(point.x);
    bitDouble(point.y);
    bitDouble(point.z);
}

void BitWriter::append(const BitWriter& other)
{
    std::size_t left = other.m_bits;
    for (const char c : other.m_bytes) {
        const auto count = static_cast<unsigned>(std::min<std::size_t>(8, left));
        bits(static_cast<unsigned char>(c) >> (8 - count), count);
        left -= count;
    }
}

namespace {
constexpr std::array<std::uint16_t, 256> kCheckTable = [] {
    std::array<std::uint16_t, 256> table{};
    for (unsigned i = 0; i < 256; ++i) {
        unsigned value = i;
        for (int k = 0; k < 8; ++k)
            value = (value & 1) != 0 ? (value >> 1) ^ 0xA001u : value >> 1;
        table[i] = static_cast<std::uint16_t>(value);
    }
    return table;
}();
}

std::uint16_t checkCode(std::string_view bytes, std::uint16_t start)
{
    std::uint16_t code = start;
    for (const char c : bytes)
        code = static_cast<std::uint16_t>((code >> 8) ^
                                          kCheckTable[(code ^ static_cast<unsigned char>(c)) & 0xFF]);
    return code;
}

void putShort(std::string& out, std::uint16_t value)
{
    out.push_back(static_cast<char>(value & 0xFF));
    out.push_back(static_cast<char>(value >> 8));
}

void putLong(std::string& out, std::uint32_t value)
{
    putShort(out, static_cast<std::uint16_t>(value));
    putShort(out, static_cast<std::uint16_t>(value >> 16));
}

void putLongLong(std::string& out, std::uint64_t value)
{
    putLong(out, static_cast<std::uint32_t>(value));
    putLong(out, static_cast<std::uint32_t>(value >> 32));
}

void putModularChar(std::string& out, std::int64_t value)
{
    auto rest = static_cast<std::uint64_t>(value < 0 ? -value : value);
    while (rest >= 0x40) {
        out.push_back(static_cast<char>((rest & 0x7F) | 0x80));
        rest >>= 7;
    }
    out.push_back(static_cast<char>(rest | (value < 0 ? 0x40 : 0)));
}

void putModularCharUnsigned(std::string& out, std::uint64_t value)
{
    while (value >= 0x80) {
        out.push_back(static_cast<char>((value & 0x7F) | 0x80));
        value >>= 7;
    }
    out.push_back(static_cast<char>(value));
}

void putModularShort(std::string& out, std::uint32_t value)
{
    while (value >= 0x8000) {
        putShort(out, static_cast<std::uint16_t>((value & 0x7FFF) | 0x8000));
        value >>= 15;
    }
    putShort(out, static_cast<std::uint16_t>(value));
}

} // namespace zv::dwg
