#include "drawing/bits/BitReader.h"
#include "drawing/preview/Preview.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

namespace zv::dwg {

namespace {

constexpr std::uint32_t kPlain = 0, kRle8 = 1, kRle4 = 2, kBitFields = 3, kAlphaBitFields = 6;
constexpr std::uint32_t kCoreHeader = 12, kInfoHeader = 40;

using Bgra = std::array<std::uint8_t, 4>;

Error damaged(const char* text)
{
    return {ErrorCode::Damaged, std::string("bitmap: ") + text};
}

struct Dib {
    int width = 0, height = 0;
    bool topDown = false;
    int bits = 0;
    std::uint32_t compression = kPlain;
    std::array<std::uint32_t, 3> masks{}; ///< Red, green, blue.
    std::vector<Bgra> palette;
    std::span<const std::byte> rows;
};

Result<void> checkKind(const Dib& dib)
{
    if (dib.width <= 0 || dib.height <= 0)
        return damaged("it has no pixels");
    if (dib.width > kLargestPictureEdge || dib.height > kLargestPictureEdge)
        return Error{ErrorCode::TooLarge,
                     "bitmap: " + std::to_string(dib.width) + " x " + std::to_string(dib.height) + " pixels"};
    const bool masked = dib.compression == kBitFields || dib.compression == kAlphaBitFields;
    const bool known = (dib.compression == kRle8 && dib.bits == 8) ||
                       (dib.compression == kRle4 && dib.bits == 4) ||
                       (masked && (dib.bits == 16 || dib.bits == 32)) ||
                       (dib.compression == kPlain && (dib.bits == 1 || dib.bits == 4 || dib.bits == 8 ||
                                                      dib.bits == 16 || dib.bits == 24 || dib.bits == 32));
    if (!known)
        return Error{ErrorCode::Unsupported, "bitmap: " + std::to_string(dib.bits) + " bits, compression " +
                                                 std::to_string(dib.compression)};
    return {};
}

/// Header, masks and palette; `rows` is what follows them.
Result<Dib> readHeader(std::span<const std::byte> bytes)
{
    BitReader in(bytes);
    Dib dib;
    const std::uint32_t headerSize = in.rawLong();
    const bool core = headerSize == kCoreHeader;
    std::uint32_t colours = 0;
    if (core) {
        dib.width = in.rawShort();
        dib.height = in.rawShort();
        in.rawShort();
        dib.bits = in.rawShort();
    } else {
        const auto width = static_cast<std::int32_t>(in.rawLong());
        const std::int64_t height = static_cast<std::int32_t>(in.rawLong());
        dib.width = width;
        dib.topDown = height < 0;
        dib.height = static_cast<int>(std::min<std::int64_t>(std::abs(height), INT32_MAX));
        in.rawShort();
        dib.bits = in.rawShort();
        dib.compression = in.rawLong();
        in.skip(std::size_t{3} * 32); // size, resolution
        colours = in.rawLong();
        in.rawLong();
    }
    if (!in.ok() || (!core && headerSize < kInfoHeader))
        return damaged("its header is cut short");
    if (const auto known = checkKind(dib); !known)
        return known.error();
    if (dib.compression == kBitFields || dib.compression == kAlphaBitFields) {
        for (std::uint32_t& mask : dib.masks)
            mask = in.rawLong();
        if (dib.compression == kAlphaBitFields && headerSize == kInfoHeader)
            in.rawLong();
    } else if (dib.bits == 16) {
        dib.masks = {0x7C00, 0x03E0, 0x001F};
    }
    // Later kinds of header hold the masks themselves.
    in.seek(std::max(in.position(), std::size_t{headerSize} * 8));
    const std::uint32_t most = dib.bits <= 8 ? 1u << dib.bits : 0;
    const std::uint32_t entries = colours == 0 || dib.bits > 8 ? std::max(most, colours) : colours;
    const unsigned entryBits = core ? 24 : 32;
    if (in.checkedCount(entries, entryBits) != entries || !in.ok())
        return damaged("its palette is cut short");
    dib.palette.resize(most, Bgra{0, 0, 0, 255});
    for (std::uint32_t i = 0; i < entries; ++i) {
        const Bgra entry{in.rawChar(), in.rawChar(), in.rawChar(), 255};
        if (!core)
            in.rawChar();
        if (i < most)
            dib.palette[i] = entry;
    }
    dib.rows = bytes.subspan(in.position() / 8);
    return dib;
}

/// A colour part under its mask, stretched to 8 bits.
std::uint8_t maskedPart(std::uint32_t value, std::uint32_t mask)
{
    if (mask == 0)
        return 0;
    const std::uint64_t most = mask >> std::countr_zero(mask);
    const std::uint64_t part = (value & mask) >> std::countr_zero(mask);
    return static_cast<std::uint8_t>((part * 255 + most / 2) / most);
}

void decodeIndexedRow(const Dib& dib, const std::uint8_t* row, std::uint8_t* to)
{
    const int perByte = 8 / dib.bits, mask = (1 << dib.bits) - 1;
    for (int x = 0; x < dib.width; ++x, to += 4) {
        const int shift = 8 - dib.bits * (x % perByte + 1);
        std::memcpy(to, dib.palette[static_cast<std::size_t>(row[x / perByte] >> shift & mask)].data(), 4);
    }
}

void decodeMaskedRow(const Dib& dib, const std::uint8_t* row, std::uint8_t* to)
{
    const int bytes = dib.bits / 8;
    for (int x = 0; x < dib.width; ++x, to += 4) {
        std::uint32_t value = 0;
        for (int i = 0; i < bytes; ++i)
            value |= std::uint32_t{row[x * bytes + i]} << (8 * i);
        for (std::size_t part = 0; part < 3; ++part)
            to[part] = maskedPart(value, dib.masks[2 - part]);
        to[3] = 255;
    }
}

void decodeRow(const Dib& dib, const std::uint8_t* row, std::uint8_t* to)
{
    if (dib.bits == 8) {
        for (int x = 0; x < dib.width; ++x)
            std::memcpy(to + std::ptrdiff_t{4} * x, dib.palette[row[x]].data(), 4);
    } else if (dib.bits < 8) {
        decodeIndexedRow(dib, row, to);
    } else if (dib.bits == 16 || dib.compression != kPlain) {
        decodeMaskedRow(dib, row, to);
    } else {
        const int bytes = dib.bits / 8;
        for (int x = 0; x < dib.width; ++x, to += 4, row += bytes) {
            to[0] = row[0];
            to[1] = row[1];
            to[2] = row[2];
            to[3] = 255;
        }
    }
}

Result<void> decodePlain(const Dib& dib, Pixels& pixels)
{
    const std::size_t used = (static_cast<std::size_t>(dib.width) * dib.bits + 7) / 8;
    const std::size_t stride = (used + 3) & ~std::size_t{3};
    const auto rows = static_cast<std::size_t>(dib.height);
    // The last row may come without its filling.
    if (dib.rows.size() < stride * (rows - 1) + used)
        return damaged("its rows are cut short");
    pixels.bgra.resize(static_cast<std::size_t>(dib.width) * rows * 4);
    for (std::size_t i = 0; i < rows; ++i) {
        const std::size_t y = dib.topDown ? i : rows - 1 - i;
        decodeRow(dib, reinterpret_cast<const std::uint8_t*>(dib.rows.data()) + i * stride,
                  pixels.bgra.data() + y * static_cast<std::size_t>(dib.width) * 4);
    }
    return {};
}

/// Run-length code of 4 or 8 bits: pairs of count and index, with escapes behind a count of 0.
class RunLengthDecoder {
public:
    RunLengthDecoder(const Dib& dib, Pixels& pixels) : m_dib(dib), m_pixels(pixels), m_in(dib.rows) {}

    Result<void> decode()
    {
        // Far more pixels than codes can fill are no picture, whatever the header claims.
        const std::size_t area =
            static_cast<std::size_t>(m_dib.width) * static_cast<std::size_t>(m_dib.height);
        if (area > 65536 + 1024 * m_dib.rows.size())
            return damaged("its codes are cut short");
        m_pixels.bgra.resize(area * 4);
        for (std::size_t i = 0; i < area; ++i)
            std::copy_n(m_dib.palette[0].begin(), 4,
                        m_pixels.bgra.begin() + static_cast<std::ptrdiff_t>(i * 4));
        while (!m_done && m_in.left() >= 16)
            step();
        return {};
    }

private:
    void step()
    {
        const unsigned count = m_in.rawChar(), value = m_in.rawChar();
        if (count != 0) {
            for (unsigned i = 0; i < count; ++i)
                put(indexOf(value, i));
            return;
        }
        switch (value) {
        case 0:
            m_x = 0;
            ++m_y;
            break;
        case 1:
            m_done = true;
            break;
        case 2:
            m_x += m_in.rawChar();
            m_y += m_in.rawChar();
            break;
        default:
            literal(value);
            break;
        }
        m_done = m_done || m_y >= m_dib.height || !m_in.ok();
    }

    void literal(unsigned count)
    {
        const unsigned perByte = m_dib.bits == 8 ? 1 : 2;
        unsigned byte = 0;
        for (unsigned i = 0; i < count; ++i) {
            if (i % perByte == 0)
                byte = m_in.rawChar();
            put(indexOf(byte, i));
        }
        if (((count + perByte - 1) / perByte) % 2 != 0)
            m_in.rawChar(); // runs fill whole pairs of bytes
    }

    std::size_t indexOf(unsigned value, unsigned i) const
    {
        if (m_dib.bits == 8)
            return value;
        return i % 2 == 0 ? value >> 4 : value & 0xF;
    }

    void put(std::size_t index)
    {
        if (m_x < m_dib.width && m_y < m_dib.height) {
            const int y = m_dib.topDown ? m_y : m_dib.height - 1 - m_y;
            const std::size_t at = (static_cast<std::size_t>(y) * m_dib.width + m_x) * 4;
            std::copy_n(m_dib.palette[index].begin(), 4, m_pixels.bgra.data() + at);
        }
        ++m_x;
    }

    const Dib& m_dib;
    Pixels& m_pixels;
    BitReader m_in;
    int m_x = 0, m_y = 0;
    bool m_done = false;
};

} // namespace

Result<Pixels> decodeBitmap(std::span<const std::byte> bytes)
{
    const auto dib = readHeader(bytes);
    if (!dib)
        return dib.error();
    Pixels pixels;
    pixels.width = dib->width;
    pixels.height = dib->height;
    const bool runs = dib->compression == kRle8 || dib->compression == kRle4;
    const auto done = runs ? RunLengthDecoder(*dib, pixels).decode() : decodePlain(*dib, pixels);
    if (!done)
        return done.error();
    return pixels;
}

} // namespace zv::dwg
