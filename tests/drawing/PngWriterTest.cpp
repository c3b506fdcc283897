#include "drawing/preview/PngWriter.h"

#include <gtest/gtest.h>

#include <random>

namespace zv::dwg {
namespace {

std::uint32_t bigEndian(const std::string& bytes, std::size_t at)
{
    std::uint32_t value = 0;
    for (std::size_t i = 0; i < 4; ++i)
        value = value << 8 | static_cast<std::uint8_t>(bytes.at(at + i));
    return value;
}

/// The data of the first chunk of a type.
std::string chunkData(const std::string& png, std::string_view type)
{
    for (std::size_t at = 8; at + 12 <= png.size(); at += 12 + bigEndian(png, at)) {
        if (png.compare(at + 4, 4, type) == 0)
            return png.substr(at + 8, bigEndian(png, at));
    }
    return {};
}

/// Unpacks one deflate block of fixed codes whose repetitions are all of the byte before.
class Inflater {
public:
    explicit Inflater(std::string bytes) : m_bytes(std::move(bytes)) {}

    std::string inflate()
    {
        EXPECT_EQ(bits(3), 3u); // last block, fixed codes
        std::string out;
        for (std::uint32_t code = symbol(); code != 256; code = symbol()) {
            if (code < 256) {
                out += static_cast<char>(code);
                continue;
            }
            const std::size_t length = lengthOf(code);
            EXPECT_EQ(codeBits(5), 0u);
            out.append(length, out.at(out.size() - 1));
        }
        return out;
    }

private:
    std::uint32_t bit()
    {
        const std::uint32_t value = static_cast<std::uint8_t>(m_bytes.at(m_at / 8)) >> (m_at % 8) & 1;
        ++m_at;
        return value;
    }
    std::uint32_t bits(int count)
    {
        std::uint32_t value = 0;
        for (int i = 0; i < count; ++i)
            value |= bit() << i;
        return value;
    }
    std::uint32_t codeBits(int count)
    {
        std::uint32_t value = 0;
        for (int i = 0; i < count; ++i)
            value = value << 1 | bit();
        return value;
    }
    std::uint32_t symbol()
    {
        std::uint32_t code = codeBits(7);
        if (code <= 0x17)
            return 256 + code;
        code = code << 1 | bit();
        if (code >= 0x30 && code <= 0xBF)
            return code - 0x30;
        if (code >= 0xC0 && code <= 0xC7)
            return 280 + code - 0xC0;
        return 144 + (code << 1 | bit()) - 0x190;
    }
    std::size_t lengthOf(std::uint32_t code)
    {
        static constexpr int kFirst[] = {3,  4,  5,  6,  7,  8,  9,  10, 11,  13,  15,  17,  19,  23, 27,
                                         31, 35, 43, 51, 59, 67, 83, 99, 115, 131, 163, 195, 227, 258};
        static constexpr int kExtra[] = {0, 0, 0, 0, 0, 0, 0, 0, 1, 1, 1, 1, 2, 2, 2,
                                         2, 3, 3, 3, 3, 4, 4, 4, 4, 5, 5, 5, 5, 0};
        return static_cast<std::size_t>(kFirst[code - 257]) + bits(kExtra[code - 257]);
    }

    std::string m_bytes;
    std::size_t m_at = 0;
};

/// The colours of a file that the writer made, as blue, green, red.
std::vector<std::uint8_t> decoded(const std::string& png, std::size_t width)
{
    const std::string rows = Inflater(chunkData(png, "IDAT").substr(2)).inflate();
    std::vector<std::uint8_t> pixels, above(width * 3);
    for (std::size_t at = 0; at + 1 + width * 3 <= rows.size(); at += 1 + width * 3) {
        EXPECT_EQ(rows[at], 2); // difference from the row above
        for (std::size_t i = 0; i < width * 3; ++i)
            above[i] = static_cast<std::uint8_t>(above[i] + static_cast<std::uint8_t>(rows[at + 1 + i]));
        for (std::size_t x = 0; x < width; ++x)
            pixels.insert(pixels.end(), {above[3 * x + 2], above[3 * x + 1], above[3 * x]});
    }
    return pixels;
}

std::vector<std::uint8_t> withoutAlpha(const Pixels& pixels)
{
    std::vector<std::uint8_t> colours;
    for (std::size_t i = 0; i < pixels.bgra.size(); ++i) {
        if (i % 4 != 3)
            colours.push_back(pixels.bgra[i]);
    }
    return colours;
}

TEST(PngWriter, GivesThePixelsBack)
{
    std::mt19937 random(3);
    for (const int width : {1, 7, 100, 300}) {
        Pixels pixels{width, 40, std::vector<std::uint8_t>(static_cast<std::size_t>(width) * 40 * 4)};
        // Long and short runs of all lengths, and noise.
        for (std::size_t i = 0; i < pixels.bgra.size();) {
            const auto value = static_cast<std::uint8_t>(random());
            for (std::size_t run = random() % 700; run > 0 && i < pixels.bgra.size(); --run)
                pixels.bgra[i++] = value;
            for (int noise = 0; noise < 9 && i < pixels.bgra.size(); ++noise)
                pixels.bgra[i++] = static_cast<std::uint8_t>(random());
        }
        const std::string png = encodePng(pixels);
        EXPECT_EQ(bigEndian(chunkData(png, "IHDR"), 0), static_cast<std::uint32_t>(width));
        EXPECT_EQ(bigEndian(chunkData(png, "IHDR"), 4), 40u);
        EXPECT_EQ(decoded(png, static_cast<std::size_t>(width)), withoutAlpha(pixels)) << width;
    }
}

TEST(PngWriter, EndsAsTheFormatDemands)
{
    const std::string png = encodePng(Pixels{1, 1, {1, 2, 3, 255}});
    // The sum over the empty last chunk is the same in every file.
    EXPECT_EQ(png.substr(png.size() - 12), std::string("\0\0\0\0IEND\xAE\x42\x60\x82", 12));
}

TEST(PngWriter, EvenPicturesGetSmall)
{
    const Pixels pixels{256, 256, std::vector<std::uint8_t>(256 * 256 * 4, 0x80)};
    EXPECT_LT(encodePng(pixels).size(), 2000u);
}

} // namespace
} // namespace zv::dwg
