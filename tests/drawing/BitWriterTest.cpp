#include "drawing/write/BitWriter.h"

#include "drawing/bits/BitReader.h"
#include "drawing/write/Record.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zv::dwg {
namespace {
std::span<const std::byte> bytesOf(const std::string& text)
{
    return std::as_bytes(std::span(text.data(), text.size()));
}

TEST(BitWriter, NumbersComeBackAsTheyWereWritten)
{
    BitWriter out;
    out.bit(true);
    for (const int value : {0, 1, 255, 256, 257, -1, 32767, -32768}) {
        out.bitShort(static_cast<std::int16_t>(value));
        out.bitLong(value * 1000);
    }
    for (const double value : {0.0, 1.0, -0.0, 3.25, -1e300})
        out.bitDouble(value);
    BitReader in(bytesOf(out.bytes()));
    EXPECT_TRUE(in.bit());
    for (const int value : {0, 1, 255, 256, 257, -1, 32767, -32768}) {
        EXPECT_EQ(in.bitShort(), value);
        EXPECT_EQ(in.bitLong(), value * 1000);
    }
    for (const double value : {0.0, 1.0, -0.0, 3.25, -1e300}) {
        const double read = in.bitDouble();
        EXPECT_EQ(read, value);
        EXPECT_EQ(std::signbit(read), std::signbit(value));
    }
    EXPECT_TRUE(in.ok());
}

TEST(BitWriter, DefaultedDoublesComeBackWhateverTheyShareWithTheDefault)
{
    const double from = 1234.5;
    const double values[] = {from, std::nextafter(from, 2000), from + 1e-6, from + 0.01, -from, 0, 7};
    BitWriter out;
    for (const double value : values)
        out.defaultDouble(value, from);
    BitReader in(bytesOf(out.bytes()));
    for (const double value : values)
        EXPECT_EQ(in.defaultDouble(from), value);
}

TEST(BitWriter, HandlesAndLengthsComeBack)
{
    BitWriter out;
    for (const Handle handle : {Handle{0}, Handle{0xFF}, Handle{0x1234567}, ~Handle{0}})
        out.handle(5, handle);
    BitReader in(bytesOf(out.bytes()));
    for (const Handle handle : {Handle{0}, Handle{0xFF}, Handle{0x1234567}, ~Handle{0}}) {
        const HandleReference read = in.handleReference();
        EXPECT_EQ(read.code, 5);
        EXPECT_EQ(read.value, handle);
    }
    std::string plain;
    for (const std::int64_t value : {0, 63, 64, -64, -1, 8191, -1000000})
        putModularChar(plain, value);
    for (const std::uint32_t value : {0u, 0x7FFFu, 0x8000u, 0x12345678u})
        putModularShort(plain, value);
    BitReader modular(bytesOf(plain));
    for (const std::int64_t value : {0, 63, 64, -64, -1, 8191, -1000000})
        EXPECT_EQ(modular.modularChar(), value);
    for (const std::uint32_t value : {0u, 0x7FFFu, 0x8000u, 0x12345678u})
        EXPECT_EQ(modular.modularShort(), value);
}

TEST(BitWriter, AppendedBitsFollowWithoutAGap)
{
    BitWriter first, second;
    first.bits(0b101, 3);
    second.bits(0b0110011001, 10);
    first.append(second);
    EXPECT_EQ(first.size(), 13u);
    BitReader in(bytesOf(first.bytes()));
    EXPECT_EQ(in.bits(13), 0b1010110011001u);
}

TEST(EncodeText, KeepsAnsiAndEscapesTheRest)
{
    EXPECT_EQ(encodeText(u"A\u00BD\u20AC\u2013"), "A\xBD\x80\x96");
    EXPECT_EQ(encodeText(u"\u2300\u4E2D"), "\\U+2300\\U+4E2D");
    EXPECT_EQ(encodeText(u"\u0081"), "\\U+0081");
}
} // namespace
} // namespace zv::dwg
