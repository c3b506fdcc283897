#pragma once

#include "drawing/Document.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>

namespace zv::dwg {

/// A handle as a record writes it: how it is told (and, in 2 to 5, what kind of tie it is) and its number.
struct HandleReference {
    std::uint8_t code = 0;
    Handle value = 0;

    /// The handle that is meant, told from the object `base` for the codes that count from it.
    Handle from(Handle base) const
    {
        switch (code) {
        case 0x6:
            return base + 1;
        case 0x8:
            return base - 1;
        case 0xA:
            return base + value;
        case 0xC:
            return base - value;
        default:
            return value;
        }
    }
};

/// Reads the packed fields of DWG objects, most significant bit of each byte first.
/// A read past the end gives zero and the reader stays failed from then on, so a record
/// is read straight through and ok() is asked once, before anything is kept.
/// The short names in the comments are those of the format's description.
class BitReader {
public:
    BitReader() = default;
    explicit BitReader(std::span<const std::byte> data)
        : m_data(reinterpret_cast<const std::uint8_t*>(data.data())), m_end(data.size() * 8)
    {
    }

    bool ok() const { return m_ok; }
    void fail() { m_ok = false; }
    /// The place of the next bit, from 0.
    std::size_t position() const { return m_position; }
    std::size_t end() const { return m_end; }
    std::size_t left() const { return m_end - m_position; }
    /// Goes to a bit; beyond the end the reader fails.
    void seek(std::size_t bit);
    void skip(std::size_t bits);
    /// Ends the data at a bit, which must not be beyond the end.
    void endAt(std::size_t bit);

    /// The next `count` bits, 0 to 64; the first one read becomes the highest.
    std::uint64_t bits(unsigned count)
    {
        if (count > m_end - m_position || !m_ok)
            return bitsPastEnd();
        if (count == 0)
            return 0;
        const std::uint8_t* at = m_data + (m_position >> 3);
        const unsigned shift = m_position & 7;
        const std::size_t bytesLeft = ((m_end + 7) >> 3) - (m_position >> 3);
        m_position += count;
        if (bytesLeft < 9)
            return bitsNearEnd(at, shift, count);
        std::uint64_t word;
        std::memcpy(&word, at, 8);
        if constexpr (std::endian::native == std::endian::little)
            word = __builtin_bswap64(word);
        if (shift != 0)
            word = (word << shift) | (at[8] >> (8 - shift));
        return word >> (64 - count);
    }

    bool bit() { return bits(1) != 0; }                                                          ///< B
    unsigned bitPair() { return static_cast<unsigned>(bits(2)); }                                ///< BB
    std::uint8_t rawChar() { return static_cast<std::uint8_t>(bits(8)); }                        ///< RC
    std::uint16_t rawShort() { return __builtin_bswap16(static_cast<std::uint16_t>(bits(16))); } ///< RS
    std::uint32_t rawLong() { return __builtin_bswap32(static_cast<std::uint32_t>(bits(32))); }  ///< RL
    std::uint64_t rawLongLong() { return __builtin_bswap64(bits(64)); }                          ///< RLL
    double rawDouble() { return std::bit_cast<double>(rawLongLong()); }                          ///< RD
    std::int16_t bitShort();                                                                     ///< BS
    std::int32_t bitLong();                                                                      ///< BL
    std::uint64_t bitLongLong();                                                                 ///< BLL
    double bitDouble();                                                                          ///< BD
    double defaultDouble(double);                                                                ///< DD
    std::int64_t modularChar();          ///< MC, with a sign.
    std::uint64_t modularCharUnsigned(); ///< UMC
    std::uint32_t modularShort();        ///< MS
    HandleReference handleReference();   ///< H

    Point2 rawPoint2(); ///< 2RD
    Point3 rawPoint3(); ///< 3RD
    Point2 bitPoint2(); ///< 2BD
    Point3 bitPoint3(); ///< 3BD

    /// A number of items (BL), each of at least `minBits` bits (1 or more). Fails the reader when the rest of
    /// the data cannot hold that many, and then gives 0.
    std::uint32_t count(unsigned minBits);
    /// The same for a number that was read in another way.
    std::uint32_t checkedCount(std::int64_t number, unsigned minBits);
    /// `length` bytes; empty, and the reader failed, when fewer are left.
    std::string bytes(std::size_t length);
    /// `length` units of UTF-16, low byte first; the same.
    std::u16string units(std::size_t length);

private:
    std::uint64_t bitsPastEnd();
    static std::uint64_t bitsNearEnd(const std::uint8_t* at, unsigned shift, unsigned count);

    const std::uint8_t* m_data = nullptr;
    std::size_t m_position = 0;
    std::size_t m_end = 0;
    bool m_ok = true;
};

} // namespace zv::dwg
