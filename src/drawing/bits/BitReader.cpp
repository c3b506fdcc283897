#include "drawing/bits/BitReader.h"

namespace zv::dwg {

void BitReader::seek(std::size_t bit)
{
    if (bit > m_end)
        fail();
    else
        m_position = bit;
}

void BitReader::skip(std::size_t bits)
{
    if (bits > left())
        fail();
    else
        m_position += bits;
}

void BitReader::endAt(std::size_t bit)
{
    if (bit > m_end || bit < m_position)
        fail();
    else
        m_end = bit;
}

std::uint64_t BitReader::bitsPastEnd()
{
    m_ok = false;
    m_position = m_end;
    return 0;
}

std::uint64_t BitReader::bitsNearEnd(const std::uint8_t* at, unsigned shift, unsigned count)
{
    // The caller has checked that the bits are there, so no byte beyond the last one is touched.
    std::uint64_t value = at[0] & (0xFFu >> shift);
    unsigned have = 8 - shift;
    if (have >= count)
        return value >> (have - count);
    while (count - have >= 8) {
        value = (value << 8) | *++at;
        have += 8;
    }
    if (const unsigned rest = count - have; rest != 0)
        value = (value << rest) | (*++at >> (8 - rest));
    return value;
}

std::int16_t BitReader::bitShort()
{
    switch (bitPair()) {
    case 0:
        return static_cast<std::int16_t>(rawShort());
    case 1:
        return rawChar();
    case 2:
        return 0;
    default:
        return 256;
    }
}

std::int32_t BitReader::bitLong()
{
    switch (bitPair()) {
    case 0:
        return static_cast<std::int32_t>(rawLong());
    case 1:
        return rawChar();
    case 2:
        return 0;
    default:
        fail();
        return 0;
    }
}

std::uint64_t BitReader::bitLongLong()
{
    const auto length = static_cast<unsigned>(bits(3));
    std::uint64_t value = 0;
    for (unsigned i = 0; i < length; ++i)
        value |= std::uint64_t{rawChar()} << (8 * i);
    return value;
}

double BitReader::bitDouble()
{
    switch (bitPair()) {
    case 0:
        return rawDouble();
    case 1:
        return 1.0;
    case 2:
        return 0.0;
    default:
        fail();
        return 0.0;
    }
}

double BitReader::defaultDouble(double from)
{
    auto pattern = std::bit_cast<std::uint64_t>(from);
    switch (bitPair()) {
    case 0:
        return from;
    case 1:
        pattern = (pattern & 0xFFFFFFFF00000000) | rawLong();
        return std::bit_cast<double>(pattern);
    case 2: {
        const std::uint64_t middle = rawShort();
        pattern = (pattern & 0xFFFF000000000000) | middle << 32 | rawLong();
        return std::bit_cast<double>(pattern);
    }
    default:
        return rawDouble();
    }
}

std::int64_t BitReader::modularChar()
{
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 63; shift += 7) {
        const std::uint64_t part = rawChar();
        if ((part & 0x80) == 0) {
            value |= (part & 0x3F) << shift;
            const auto number = static_cast<std::int64_t>(value);
            return (part & 0x40) != 0 ? -number : number;
        }
        value |= (part & 0x7F) << shift;
    }
    fail();
    return 0;
}

std::uint64_t BitReader::modularCharUnsigned()
{
    std::uint64_t value = 0;
    for (unsigned shift = 0; shift < 63; shift += 7) {
        const std::uint64_t part = rawChar();
        value |= (part & 0x7F) << shift;
        if ((part & 0x80) == 0)
            return value;
    }
    fail();
    return 0;
}

std::uint32_t BitReader::modularShort()
{
    const std::uint32_t low = rawShort();
    if ((low & 0x8000) == 0)
        return low;
    const std::uint32_t high = rawShort();
    if ((high & 0x8000) != 0)
        fail();
    return (low & 0x7FFF) | (high & 0x7FFF) << 15;
}

HandleReference BitReader::handleReference()
{
    HandleReference handle;
    handle.code = static_cast<std::uint8_t>(bits(4));
    const auto length = static_cast<unsigned>(bits(4));
    if (length > 8)
        fail();
    else
        handle.value = bits(length * 8);
    return handle;
}

Point2 BitReader::rawPoint2()
{
    Point2 point;
    point.x = rawDouble();
    point.y = rawDouble();
    return point;
}

Point3 BitReader::rawPoint3()
{
    Point3 point;
    point.x = rawDouble();
    point.y = rawDouble();
    point.z = rawDouble();
    return point;
}

Point2 BitReader::bitPoint2()
{
    Point2 point;
    point.x = bitDouble();
    point.y = bitDouble();
    return point;
}

Point3 BitReader::bitPoint3()
{
    Point3 point;
    point.x = bitDouble();
    point.y = bitDouble();
    point.z = bitDouble();
    return point;
}

std::uint32_t BitReader::count(unsigned minBits)
{
    return checkedCount(bitLong(), minBits);
}

std::uint32_t BitReader::checkedCount(std::int64_t number, unsigned minBits)
{
    if (number < 0 || static_cast<std::uint64_t>(number) > left() / minBits || !m_ok) {
        fail();
        return 0;
    }
    return static_cast<std::uint32_t>(number);
}

std::string BitReader::bytes(std::size_t length)
{
    if (!m_ok || length > left() / 8) {
        fail();
        return {};
    }
    std::string text(length, '\0');
    if ((m_position & 7) == 0) {
        std::memcpy(text.data(), m_data + (m_position >> 3), length);
        m_position += length * 8;
    } else {
        for (char& c : text)
            c = static_cast<char>(rawChar());
    }
    return text;
}

std::u16string BitReader::units(std::size_t length)
{
    if (!m_ok || length > left() / 16) {
        fail();
        return {};
    }
    std::u16string text(length, u'\0');
    for (char16_t& unit : text)
        unit = rawShort();
    return text;
}

} // namespace zv::dwg
