#include "drawing/container/Decompression.h"

#include <gtest/gtest.h>

#include <array>
#include <random>
#include <string>
#include <vector>

namespace zv::dwg {
namespace {

using Unpack = std::optional<std::size_t> (*)(std::span<const std::byte>, std::span<std::byte>);

/// The unpacked text, with "!" for damage.
std::string unpacked(Unpack unpack, std::string_view packed, std::size_t room = 1000)
{
    std::vector<std::byte> into(room);
    const auto written = unpack(std::as_bytes(std::span(packed)), into);
    if (!written)
        return "!";
    return std::string(reinterpret_cast<const char*>(into.data()), *written);
}

TEST(DecompressionR2004, LiteralThenRepetitions)
{
    // Four literals; a repetition of 3 from 4 back with two literals; the end.
    EXPECT_EQ(unpacked(decompressR2004, std::string("\x01"
                                                    "abcd"
                                                    "\x4E\x00"
                                                    "xy"
                                                    "\x11",
                                                    10)),
              "abcdabcxy");
}

TEST(DecompressionR2004, RepetitionMayOverlapItself)
{
    // Length 2 + 8 from one back, and no literal: then the end.
    EXPECT_EQ(unpacked(decompressR2004, std::string("\x01"
                                                    "abcd"
                                                    "\x28\x00\x00"
                                                    "\x11",
                                                    9)),
              "abcddddddddddd");
}

TEST(DecompressionR2004, LongLengths)
{
    // 0x0F + 0xFF + 1 + 3 literals.
    const std::string text(0x0F + 0xFF + 1 + 3, 'x');
    EXPECT_EQ(unpacked(decompressR2004, std::string("\x00\x00\x01", 3) + text + "\x11"), text);
}

TEST(DecompressionR2004, RepetitionBeforeTheStartIsDamage)
{
    EXPECT_EQ(unpacked(decompressR2004, std::string("\x01"
                                                    "abcd"
                                                    "\x4C\x01\x11",
                                                    8)),
              "!");
}

TEST(DecompressionR2004, CutInputIsDamage)
{
    const std::string whole("\x01"
                            "abcd"
                            "\x4E\x00"
                            "xy"
                            "\x11",
                            10);
    for (std::size_t size = 0; size < whole.size(); ++size)
        EXPECT_EQ(unpacked(decompressR2004, whole.substr(0, size)), "!") << size;
}

TEST(DecompressionR2004, OutputBeyondItsRoomIsLeftOut)
{
    EXPECT_EQ(unpacked(decompressR2004,
                       std::string("\x01"
                                   "abcd"
                                   "\x28\x00\x00"
                                   "\x11",
                                   9),
                       6),
              "abcddd");
}

TEST(DecompressionR2007, LiteralsComeLastPartFirst)
{
    // Nine literals: the last byte is stored before the eight.
    EXPECT_EQ(unpacked(decompressR2007, std::string("\x01"
                                                    "bcdefghia",
                                                    10)),
              "abcdefghi");
    // Eight stay as they are.
    EXPECT_EQ(unpacked(decompressR2007, std::string("\x00"
                                                    "abcdefgh",
                                                    9)),
              "abcdefgh");
}

TEST(DecompressionR2007, Repetition)
{
    // Eight literals, then length 4 from 8 back, and one literal.
    EXPECT_EQ(unpacked(decompressR2007, std::string("\x00"
                                                    "abcdefgh"
                                                    "\x47\x01"
                                                    "x",
                                                    12)),
              "abcdefghabcdx");
}

TEST(DecompressionR2007, RepetitionBeforeTheStartIsDamage)
{
    EXPECT_EQ(unpacked(decompressR2007, std::string("\x00"
                                                    "abcdefgh"
                                                    "\x48\x01"
                                                    "x",
                                                    12)),
              "!");
}

TEST(Decompression, NoInputMakesItReadOrWriteOutside)
{
    std::mt19937 random(1);
    for (int run = 0; run < 20000; ++run) {
        std::vector<std::byte> packed(random() % 64), into(random() % 512);
        for (std::byte& byte : packed)
            byte = static_cast<std::byte>(random() % (run % 2 == 0 ? 256 : 0x48));
        for (const Unpack unpack : {decompressR2004, decompressR2007}) {
            const auto written = unpack(packed, into);
            ASSERT_TRUE(!written || *written <= into.size());
        }
    }
}

} // namespace
} // namespace zv::dwg
