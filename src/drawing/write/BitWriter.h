#pragma once

#include "drawing/Document.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace zv::dwg {

/// Writes the packed fields of DWG objects, most significant bit of each byte first. The short names in the
/// comments are those of the format's description.
class BitWriter {
public:
    /// How many bits are written.
    std::size_t size() const { return m_bits; }
    /// The bytes written; the last one is filled up with zeros.
    const std::string& bytes() const { return m_bytes; }

    void bits(std::uint64_t value, unsigned count);      ///< The lowest `count` bits, 0 to 64, highest first.
    void bit(bool value) { bits(value ? 1 : 0, 1); }     ///< B
    void bitPair(unsigned value) { bits(value, 2); }     ///< BB
    void rawChar(std::uint8_t value) { bits(value, 8); } ///< RC
    void rawShort(std::uint16_t value);                  ///< RS
    void rawLong(std::uint32_t value);                   ///< RL
    void rawDouble(double value);                        ///< RD
    void bitShort(std::int16_t value);                   ///< BS
    void bitLong(std::int32_t value);                    ///< BL
    void bitDouble(double value);                        ///< BD
    void defaultDouble(double value, double from);       ///< DD
    void thickness(double value);                        ///< BT
    void extrusion(Point3 normal);                       ///< BE
    void handle(unsigned code, Handle value);            ///< H
    void text(std::string_view bytes);                   ///< TV, in the file's code page; cut at 32767.
    void rawBytes(std::string_view bytes);
    void rawPoint2(Point2 point); ///< 2RD
    void bitPoint2(Point2 point); ///< 2BD
    void bitPoint3(Point3 point); ///< 3BD
    void append(const BitWriter& other);

private:
    std::string m_bytes;
    std::size_t m_bits = 0;
};

/// The cyclic check of the format (16 bits, reflected polynomial 0xA001), from a start value.
std::uint16_t checkCode(std::string_view bytes, std::uint16_t start = 0xC0C1);

/// Plain little-endian numbers for the parts of a file that are not packed.
void putShort(std::string& out, std::uint16_t value);
void putLong(std::string& out, std::uint32_t value);
void putLongLong(std::string& out, std::uint64_t value);
/// The number in groups of seven bits, lowest first; a negative one marked in its last byte (MC).
void putModularChar(std::string& out, std::int64_t value);
void putModularCharUnsigned(std::string& out, std::uint64_t value);
/// A length in groups of fifteen bits, lowest first (MS).
void putModularShort(std::string& out, std::uint32_t value);

} // namespace zv::dwg
