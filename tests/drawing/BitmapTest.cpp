#include "drawing/preview/Preview.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace zv::dwg {
namespace {

/// The bytes of a bitmap, put together field by field.
class Dib {
public:
    Dib(int width, int height, int bits, std::uint32_t compression = 0, std::uint32_t colours = 0)
    {
        number(40, 4)
            .number(static_cast<std::uint32_t>(width), 4)
            .number(static_cast<std::uint32_t>(height), 4);
        number(1, 2).number(static_cast<std::uint32_t>(bits), 2).number(compression, 4);
        number(0, 4).number(0, 4).number(0, 4).number(colours, 4).number(0, 4);
    }
    Dib& number(std::uint32_t value, int size)
    {
        for (int i = 0; i < size; ++i)
            m_bytes.push_back(static_cast<std::byte>(value >> (8 * i)));
        return *this;
    }
    Dib& bytes(std::initializer_list<int> values)
    {
        for (const int value : values)
            m_bytes.push_back(static_cast<std::byte>(value));
        return *this;
    }
    /// Palette entries, 0xRRGGBB.
    Dib& palette(std::initializer_list<std::uint32_t> colours)
    {
        for (const std::uint32_t colour : colours)
            number(colour, 4);
        return *this;
    }
    std::span<const std::byte> data() const { return m_bytes; }

private:
    std::vector<std::byte> m_bytes;
};

/// The pixels as 0xRRGGBB, row by row from the top; empty when they cannot be decoded.
std::vector<std::uint32_t> colours(const Dib& dib)
{
    const auto pixels = decodeBitmap(dib.data());
    std::vector<std::uint32_t> result;
    if (!pixels)
        return result;
    for (std::size_t i = 0; i + 3 < pixels->bgra.size(); i += 4) {
        EXPECT_EQ(pixels->bgra[i + 3], 255);
        result.push_back(pixels->bgra[i + 2] << 16u | pixels->bgra[i + 1] << 8u | pixels->bgra[i]);
    }
    return result;
}

using Colours = std::vector<std::uint32_t>;

TEST(Bitmap, OneBitRowsRunFromTheBottom)
{
    const Dib dib = Dib(3, 2, 1).palette({0x000000, 0xFFFFFF}).bytes({0xA0, 0, 0, 0, 0x40, 0, 0, 0});
    EXPECT_EQ(colours(dib), (Colours{0, 0xFFFFFF, 0, 0xFFFFFF, 0, 0xFFFFFF}));
}

TEST(Bitmap, FourBitsHighHalfFirst)
{
    const Dib dib = Dib(3, 1, 4, 0, 3).palette({0x010203, 0x112233, 0xFF0000}).bytes({0x12, 0x00, 0, 0});
    EXPECT_EQ(colours(dib), (Colours{0x112233, 0xFF0000, 0x010203}));
}

TEST(Bitmap, EightBitsThroughThePalette)
{
    const Dib dib = Dib(2, 1, 8, 0, 2).palette({0x00FF00, 0x0000FF}).bytes({1, 0, 0, 0});
    EXPECT_EQ(colours(dib), (Colours{0x0000FF, 0x00FF00}));
}

TEST(Bitmap, IndexBeyondTheStoredPaletteIsBlack)
{
    const Dib dib = Dib(1, 1, 8, 0, 1).palette({0x00FF00}).bytes({9, 0, 0, 0});
    EXPECT_EQ(colours(dib), Colours{0});
}

TEST(Bitmap, SixteenBitsAreStretched)
{
    EXPECT_EQ(colours(Dib(2, 1, 16).number(0x7C1F, 2).number(0x03E0, 2)), (Colours{0xFF00FF, 0x00FF00}));
    const Dib masked =
        Dib(1, 1, 16, 3).number(0xF800, 4).number(0x07E0, 4).number(0x001F, 4).number(0xF81F, 2).number(0, 2);
    EXPECT_EQ(colours(masked), Colours{0xFF00FF});
}

TEST(Bitmap, TwentyFourAndThirtyTwoBits)
{
    EXPECT_EQ(colours(Dib(1, 1, 24).bytes({1, 2, 3, 0})), Colours{0x030201});
    EXPECT_EQ(colours(Dib(1, 1, 32).bytes({1, 2, 3, 0})), Colours{0x030201});
    const Dib masked =
        Dib(1, 1, 32, 3).number(0xFF, 4).number(0xFF00, 4).number(0xFF0000, 4).bytes({1, 2, 3, 0});
    EXPECT_EQ(colours(masked), Colours{0x010203});
}

TEST(Bitmap, NegativeHeightRunsFromTheTop)
{
    const Dib dib = Dib(1, -2, 24).bytes({1, 0, 0, 0, 2, 0, 0, 0});
    EXPECT_EQ(colours(dib), (Colours{1, 2}));
}

TEST(Bitmap, RunsOfEightBits)
{
    const Dib dib = Dib(4, 2, 8, 1, 3)
                        .palette({0, 1, 2})
                        .bytes({2, 1, 0, 0, 0, 3, 2, 1, 2, 0, 0, 1}); // two of 1; next row: 2 1 2 literally
    EXPECT_EQ(colours(dib), (Colours{2, 1, 2, 0, 1, 1, 0, 0}));
}

TEST(Bitmap, RunsOfFourBitsTakeTurns)
{
    const Dib dib = Dib(5, 1, 4, 2, 3).palette({0, 1, 2}).bytes({5, 0x12, 0, 1});
    EXPECT_EQ(colours(dib), (Colours{1, 2, 1, 2, 1}));
}

TEST(Bitmap, RunStepsMoveOn)
{
    const Dib dib = Dib(2, 2, 8, 1, 2).palette({0, 1}).bytes({0, 2, 1, 1, 1, 1, 0, 1});
    EXPECT_EQ(colours(dib), (Colours{0, 1, 0, 0}));
}

TEST(Bitmap, RunsBeyondTheEdgeAreDropped)
{
    const Dib dib = Dib(1, 1, 8, 1, 2).palette({0, 1}).bytes({200, 1, 0, 2, 255, 255, 9, 1, 0, 1});
    EXPECT_EQ(colours(dib), Colours{1});
}

TEST(Bitmap, LastRowMayLackItsFilling)
{
    EXPECT_EQ(colours(Dib(1, 1, 24).bytes({1, 2, 3})), Colours{0x030201});
}

TEST(Bitmap, EveryTruncationOfRowsIsRefused)
{
    const Dib dib = Dib(2, 2, 8, 0, 2).palette({0, 1}).bytes({1, 0, 0, 0, 1, 0});
    ASSERT_TRUE(decodeBitmap(dib.data()).ok());
    for (std::size_t size = 0; size < dib.data().size(); ++size) {
        const auto pixels = decodeBitmap(dib.data().first(size));
        ASSERT_FALSE(pixels) << size;
        EXPECT_EQ(pixels.error().code, ErrorCode::Damaged);
    }
}

TEST(Bitmap, RefusesWhatItCannotHold)
{
    EXPECT_EQ(decodeBitmap(Dib(4097, 1, 24).data()).error().code, ErrorCode::TooLarge);
    EXPECT_EQ(decodeBitmap(Dib(1, 1, 24, 4).data()).error().code, ErrorCode::Unsupported);
    EXPECT_EQ(decodeBitmap(Dib(1, 1, 7).data()).error().code, ErrorCode::Unsupported);
    EXPECT_EQ(decodeBitmap(Dib(0, 1, 24).data()).error().code, ErrorCode::Damaged);
    EXPECT_EQ(decodeBitmap(Dib(1, INT32_MIN, 24).data()).error().code, ErrorCode::TooLarge);
}

TEST(Bitmap, HugeRunLengthPictureOfFewBytesIsRefused)
{
    const Dib dib = Dib(4096, 4096, 8, 1, 1).palette({0}).bytes({0, 1});
    EXPECT_EQ(decodeBitmap(dib.data()).error().code, ErrorCode::Damaged);
}

} // namespace
} // namespace zv::dwg
