#include "drawing/preview/PngWriter.h"

#include <algorithm>
#include <array>

namespace zv::dwg {

namespace {

constexpr auto kCrcTable = [] {
    std::array<std::uint32_t, 256> table{};
    for (std::uint32_t i = 0; i < table.size(); ++i) {
        std::uint32_t value = i;
        for (int bit = 0; bit < 8; ++bit)
            value = (value & 1) != 0 ? value >> 1 ^ 0xEDB88320 : value >> 1;
        table[i] = value;
    }
    return table;
}();

std::uint32_t crc32(std::string_view bytes)
{
    std::uint32_t value = 0xFFFFFFFF;
    for (const char c : bytes)
        value = value >> 8 ^ kCrcTable[(value ^ static_cast<std::uint8_t>(c)) & 0xFF];
    return ~value;
}

std::uint32_t adler32(std::string_view bytes)
{
    constexpr std::uint32_t kModulus = 65521;
    std::uint32_t low = 1, high = 0;
    for (const char c : bytes) {
        low = (low + static_cast<std::uint8_t>(c)) % kModulus;
        high = (high + low) % kModulus;
    }
    return high << 16 | low;
}

std::string bigEndian(std::uint32_t value)
{
    return {static_cast<char>(value >> 24), static_cast<char>(value >> 16), static_cast<char>(value >> 8),
            static_cast<char>(value)};
}

std::string chunk(std::string_view type, std::string_view data)
{
    const std::string body = std::string(type) + std::string(data);
    return bigEndian(static_cast<std::uint32_t>(data.size())) + body + bigEndian(crc32(body));
}

/// Deflate with its fixed codes, and with repetitions of the byte before only: rows that store the difference
/// from the row above are long runs of zeros, so that is all a drawing's picture needs.
class RunDeflater {
public:
    std::string deflate(std::string_view bytes)
    {
        put(1, 1); // the last block
        put(1, 2); // fixed codes
        for (std::size_t i = 0; i < bytes.size();) {
            std::size_t run = 0;
            if (i > 0) {
                const std::size_t most = std::min(kLongest, bytes.size() - i);
                while (run < most && bytes[i + run] == bytes[i - 1])
                    ++run;
            }
            if (run >= kShortest) {
                putRun(run);
                i += run;
            } else {
                putLiteral(static_cast<std::uint8_t>(bytes[i++]));
            }
        }
        putCode(0, 7); // end of block
        put(0, (8 - m_held) % 8);
        return std::move(m_out);
    }

private:
    static constexpr std::size_t kShortest = 3, kLongest = 258;

    /// Bits with the lowest first.
    void put(std::uint32_t value, int count)
    {
        m_bits |= value << m_held;
        m_held += count;
        for (; m_held >= 8; m_held -= 8) {
            m_out += static_cast<char>(m_bits);
            m_bits >>= 8;
        }
    }
    /// A code, which goes out with the highest bit first.
    void putCode(std::uint32_t code, int count)
    {
        std::uint32_t turned = 0;
        for (int i = 0; i < count; ++i)
            turned |= (code >> i & 1) << (count - 1 - i);
        put(turned, count);
    }
    void putSymbol(std::uint32_t symbol)
    {
        if (symbol < 144)
            putCode(0x30 + symbol, 8);
        else if (symbol < 256)
            putCode(0x190 + symbol - 144, 9);
        else if (symbol < 280)
            putCode(symbol - 256, 7);
        else
            putCode(0xC0 + symbol - 280, 8);
    }
    void putLiteral(std::uint8_t byte) { putSymbol(byte); }
    void putRun(std::size_t length)
    {
        if (length == kLongest) {
            putSymbol(285);
        } else {
            // Lengths come in groups of four symbols, each group with one more extra bit.
            int extra = 0;
            std::uint32_t rest = static_cast<std::uint32_t>(length - kShortest), symbol = 257;
            if (rest >= 8) {
                while (rest >> (extra + 3) != 0)
                    ++extra;
                symbol += static_cast<std::uint32_t>(4 * extra) + (rest >> extra);
            } else {
                symbol += rest;
            }
            putSymbol(symbol);
            put(rest & ((1u << extra) - 1), extra);
        }
        putCode(0, 5); // one byte back
    }

    std::string m_out;
    std::uint32_t m_bits = 0;
    int m_held = 0;
};

/// Red, green, blue rows, each as its difference from the row above.
std::string filteredRows(const Pixels& pixels)
{
    constexpr char kUp = 2;
    const auto width = static_cast<std::size_t>(pixels.width),
               height = static_cast<std::size_t>(pixels.height);
    std::string rows;
    rows.reserve(height * (1 + width * 3));
    for (std::size_t y = 0; y < height; ++y) {
        rows += kUp;
        const std::uint8_t* row = pixels.bgra.data() + y * width * 4;
        for (std::size_t x = 0; x < width; ++x) {
            for (const std::size_t part : {2u, 1u, 0u}) {
                const std::uint8_t* at = row + x * 4 + part;
                rows += static_cast<char>(*at - (y == 0 ? 0 : *(at - width * 4)));
            }
        }
    }
    return rows;
}

} // namespace

std::string encodePng(const Pixels& pixels)
{
    const std::string rows = filteredRows(pixels);
    std::string header = bigEndian(static_cast<std::uint32_t>(pixels.width)) +
                         bigEndian(static_cast<std::uint32_t>(pixels.height));
    header += {8, 2, 0, 0, 0}; // 8 bits each of red, green and blue
    const std::string data = "\x78\x01" + RunDeflater().deflate(rows) + bigEndian(adler32(rows));
    return "\x89PNG\r\n\x1A\n" + chunk("IHDR", header) + chunk("IDAT", data) + chunk("IEND", {});
}

} // namespace zv::dwg
