#include "drawing/bits/BitReader.h"
#include "drawing/bits/CodePage.h"
#include "drawing/records/RecordReader.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace zv::dwg {
namespace {

std::vector<std::byte> bytesOf(std::initializer_list<int> values)
{
    std::vector<std::byte> bytes;
    for (const int value : values)
        bytes.push_back(static_cast<std::byte>(value));
    return bytes;
}

/// Bits written as "1 0 01" text, filled up with zeros to whole bytes.
std::vector<std::byte> bitsOf(std::string_view text)
{
    std::vector<std::byte> bytes;
    std::size_t count = 0;
    for (const char c : text) {
        if (c == ' ')
            continue;
        if (count % 8 == 0)
            bytes.push_back(std::byte{0});
        if (c == '1')
            bytes.back() |= std::byte(0x80 >> (count % 8));
        ++count;
    }
    return bytes;
}

TEST(BitReader, FirstBitReadIsTheHighest)
{
    const auto data = bytesOf({0xA5, 0x0F});
    BitReader in(data);
    EXPECT_EQ(in.bits(3), 5u);
    EXPECT_EQ(in.bits(5), 5u);
    EXPECT_EQ(in.bits(8), 0x0Fu);
    EXPECT_TRUE(in.ok());
}

TEST(BitReader, EveryCountAtEveryPlaceMatchesSingleBits)
{
    std::vector<std::byte> data;
    for (int i = 0; i < 24; ++i)
        data.push_back(static_cast<std::byte>(i * 73 + 41));
    for (std::size_t start = 0; start < data.size() * 8; ++start) {
        for (unsigned count = 0; count <= 64 && start + count <= data.size() * 8; ++count) {
            BitReader whole(data), single(data);
            whole.seek(start);
            single.seek(start);
            std::uint64_t expected = 0;
            for (unsigned i = 0; i < count; ++i)
                expected = expected << 1 | single.bits(1);
            ASSERT_EQ(whole.bits(count), expected) << start << " " << count;
            ASSERT_EQ(whole.position(), start + count);
        }
    }
}

TEST(BitReader, PastTheEndGivesZeroAndStaysFailed)
{
    const auto data = bytesOf({0xFF});
    BitReader in(data);
    in.bits(4);
    EXPECT_EQ(in.bits(5), 0u);
    EXPECT_FALSE(in.ok());
    EXPECT_EQ(in.bits(1), 0u);
    EXPECT_FALSE(in.ok());
}

TEST(BitReader, ReadsTheShortForms)
{
    const auto data =
        bitsOf("00 00000001 00000010  01 11111111  10  11   01 10000000  10  010 00000001 00000010");
    BitReader in(data);
    EXPECT_EQ(in.bitShort(), 0x0201);
    EXPECT_EQ(in.bitShort(), 255);
    EXPECT_EQ(in.bitShort(), 0);
    EXPECT_EQ(in.bitShort(), 256);
    EXPECT_EQ(in.bitLong(), 128);
    EXPECT_EQ(in.bitLong(), 0);
    EXPECT_EQ(in.bitLongLong(), 0x0201u);
    EXPECT_TRUE(in.ok());
}

TEST(BitReader, DefaultDoublePatchesLowBytesFirst)
{
    const double from = std::bit_cast<double>(std::uint64_t{0x1122334455667788});
    auto pattern = [](double value) { return std::bit_cast<std::uint64_t>(value); };
    const auto same = bitsOf("00");
    EXPECT_EQ(pattern(BitReader(same).defaultDouble(from)), 0x1122334455667788u);
    const auto four = bitsOf("01 00000001 00000010 00000011 00000100");
    EXPECT_EQ(pattern(BitReader(four).defaultDouble(from)), 0x1122334404030201u);
    const auto six = bitsOf("10 00000101 00000110 00000001 00000010 00000011 00000100");
    EXPECT_EQ(pattern(BitReader(six).defaultDouble(from)), 0x1122060504030201u);
}

TEST(BitReader, ModularNumbersRunLowGroupFirst)
{
    const auto signs = bytesOf({0x82, 0x24, 0xE9, 0x97, 0xE6, 0x35, 0x85, 0x4B});
    BitReader in(signs);
    EXPECT_EQ(in.modularChar(), 4610);
    EXPECT_EQ(in.modularChar(), 112823273);
    EXPECT_EQ(in.modularChar(), -1413);
    const auto words = bytesOf({0x31, 0xF4, 0x8D, 0x00});
    EXPECT_EQ(BitReader(words).modularShort(), 4650033u);
}

TEST(BitReader, ModularNumberWithoutEndFails)
{
    const std::vector<std::byte> data(32, std::byte{0xFF});
    BitReader in(data), other(data);
    in.modularChar();
    EXPECT_FALSE(in.ok());
    other.modularCharUnsigned();
    EXPECT_FALSE(other.ok());
}

TEST(BitReader, HandleCodesCountFromTheOwner)
{
    const auto data = bytesOf({0x52, 0x12, 0x34, 0x60, 0x80, 0xA1, 0x05, 0xC1, 0x05});
    BitReader in(data);
    EXPECT_EQ(in.handleReference().from(0x100), 0x1234u);
    EXPECT_EQ(in.handleReference().from(0x100), 0x101u);
    EXPECT_EQ(in.handleReference().from(0x100), 0xFFu);
    EXPECT_EQ(in.handleReference().from(0x100), 0x105u);
    EXPECT_EQ(in.handleReference().from(0x100), 0xFBu);
    EXPECT_TRUE(in.ok());
}

TEST(BitReader, CountThatCannotFollowFails)
{
    const auto data = bitsOf("01 00000100 00000000 00000000");
    BitReader in(data), other(data);
    EXPECT_EQ(in.count(4), 4u);
    EXPECT_TRUE(in.ok());
    EXPECT_EQ(other.count(8), 0u);
    EXPECT_FALSE(other.ok());
}

TEST(RecordReader, FindsTextsBeforeTheHandles)
{
    // Fields: one byte. Texts: BS length 2, two units. Then the size of 42 bits, the flag, a handle.
    const auto data = bitsOf("10101010  01 00000010  01000001 00000000  01000010 00000000  "
                             "00101010 00000000  1  0101 0001 00000111");
    RecordReader in(data, Version::R2007, 30);
    in.setHandlesAt(8 + 42 + 16 + 1);
    EXPECT_EQ(in.rawChar(), 0xAA);
    EXPECT_EQ(in.text(), u"AB");
    EXPECT_EQ(in.handle(), 7u);
    EXPECT_TRUE(in.ok());
}

TEST(RecordReader, TextSizeBeyondTheRecordFails)
{
    const auto data = bitsOf("10101010 11111111 00000000 1 0");
    RecordReader in(data, Version::R2010, 30);
    in.setHandlesAt(25);
    EXPECT_EQ(in.text(), u"");
    EXPECT_FALSE(in.ok());
}

TEST(CodePage, BytesBecomeUnicodeByTheFilesOwnNumber)
{
    EXPECT_EQ(decodeText("\xC4\x80", 30), u"\u00C4\u20AC");
    EXPECT_EQ(decodeText("\xC4", 29), u"\u0414");
    EXPECT_EQ(decodeText("\xB1", 28), u"\u00B1");
    EXPECT_EQ(decodeText("\x93\xFA\x96\x7B\xB1", 38), u"\u65E5\u672C\uFF71");
    EXPECT_EQ(decodeText("\xD6\xD0\xCE\xC4", 39), u"\u4E2D\u6587");
    EXPECT_EQ(decodeText("\xC7\xD1", 40), u"\uD55C");
    EXPECT_EQ(decodeText("\xA4\xA4", 41), u"\u4E2D");
    EXPECT_EQ(decodeText("\xC3\xA4", 43), u"\u00E4");
    EXPECT_EQ(decodeText("\xC4", 999), u"\u00C4");
}

TEST(CodePage, EscapesAreDecodedAndOtherBackslashesKept)
{
    EXPECT_EQ(decodeText("a\\U+00E4b\\P\\U+00", 30), u"a\u00E4b\\P\\U+00");
    EXPECT_EQ(decodeText("\\M+193FA", 30), u"\u65E5");
    EXPECT_EQ(decodeUnits(u"\\U+20AC\\\\"), u"\u20AC\\\\");
}

TEST(CodePage, ZerosAtTheEndAreLeftOff)
{
    EXPECT_EQ(decodeText(std::string_view("ab\0\0", 4), 30), u"ab");
}

TEST(CodePage, CutDoubleByteTextEndsInAMark)
{
    EXPECT_EQ(decodeText("\x93", 38), u"\uFFFD");
}

} // namespace
} // namespace zv::dwg
