#include "drawing/write/PagesR2007.h"

#include "drawing/container/Decompression.h"
#include "drawing/container/ReedSolomon.h"
#include "drawing/write/Bytes.h"
#include "drawing/write/CompressionR2007.h"
#include "platform/Files.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <map>
#include <random>

namespace zv::dwg {
namespace {

std::string unpacked(const std::string& packed, std::size_t size)
{
    if (packed.size() == size)
        return packed;
    std::vector<std::byte> bytes(size);
    EXPECT_EQ(decompressR2007(bytesOf(packed), bytes), size);
    return textOf(bytes);
}

std::string noise(std::size_t size, unsigned values, unsigned seed)
{
    std::mt19937 random(seed);
    std::string bytes;
    for (std::size_t i = 0; i < size; ++i)
        bytes += static_cast<char>(random() % values);
    return bytes;
}

TEST(CompressionR2007, PacksWhatItsReaderUnpacks)
{
    // Few values give many repetitions of all lengths, many values long literal runs.
    for (const unsigned values : {1u, 2u, 4u, 20u, 256u})
        for (const std::size_t size :
             {0u, 1u, 7u, 8u, 9u, 31u, 32u, 33u, 100u, 300u, 5000u, 70000u, 140000u}) {
            const std::string bytes = noise(size, values, static_cast<unsigned>(size));
            const std::string twice = bytes + noise(40, 256, 1) + bytes;
            EXPECT_EQ(unpacked(compressR2007(bytes), bytes.size()), bytes) << values << " of " << size;
            EXPECT_EQ(unpacked(compressR2007(twice), twice.size()), twice) << values << " of " << size;
        }
}

TEST(CompressionR2007, MakesZerosShortAndNothingLonger)
{
    EXPECT_LT(compressR2007(std::string(10000, '\0')).size(), 200u);
    const std::string bytes = noise(1000, 256, 3);
    EXPECT_EQ(compressR2007(bytes), bytes);
}

TEST(ReedSolomon, GuardsWhatItWeaves)
{
    for (const std::size_t dataBytes : {ReedSolomon::kSystemData, ReedSolomon::kPageData}) {
        const std::string data = noise(600, 256, 5);
        auto woven = ReedSolomon::woven(bytesOf(data), dataBytes);
        ASSERT_EQ(woven.size(), 3 * ReedSolomon::kBlock);
        const auto right = woven;
        ASSERT_TRUE(ReedSolomon::correct(woven, 3, dataBytes));
        EXPECT_EQ(woven, right) << "there was nothing to correct";
        for (std::size_t block = 0; block < 3; ++block)
            woven[30 + block] ^= std::byte{0x21};
        ASSERT_TRUE(ReedSolomon::correct(woven, 3, dataBytes));
        EXPECT_EQ(woven, right);
        EXPECT_EQ(textOf(ReedSolomon::data(woven, 3, dataBytes)).substr(0, data.size()), data);
    }
}

TEST(PagesR2007, ChecksAreThoseOfTheFormat)
{
    EXPECT_EQ(checksumR2007("a"), 0xE34AE321);
    EXPECT_EQ(checksumR2007("The quick brown fox jumps over the lazy dog"), 0x16FE1A1B);
    EXPECT_EQ(pageCodeR2007("a"), 0x3CE511D81E11CEFB);
    EXPECT_EQ(pageCodeR2007("The quick brown fox jumps over the lazy dog"), 0x4D7784FA1E09A7DE);
}

TEST(PagesR2007, ChecksAreThoseOfRealDrawings)
{
    const std::filesystem::path folder = std::filesystem::path(ZELVORA_REAL_DRAWINGS) / "2007";
    if (!std::filesystem::exists(folder))
        GTEST_SKIP() << "no drawings in " << folder;
    int compared = 0;
    for (const auto& entry : std::filesystem::directory_iterator(folder)) {
        const auto file = readFile(entry.path().string());
        ASSERT_TRUE(file.ok()) << entry.path();
        const auto maps = MapsR2007::read(MemorySource(bytesOf(*file)));
        ASSERT_TRUE(maps.ok()) << entry.path();
        std::map<std::uint64_t, std::uint64_t> places;
        for (const FilePage& page : maps->pages)
            places[static_cast<std::uint64_t>(page.number)] = page.position;
        for (const SectionR2007& section : maps->sections)
            for (const SectionR2007::Page& page : section.pages) {
                if (section.encoding != SectionR2007::kPlain)
                    continue;
                const std::string content = file->substr(places[page.number], page.unpackedSize);
                EXPECT_EQ(checksumR2007(content), page.checksum) << entry.path() << section.plainName();
                EXPECT_EQ(pageCodeR2007(content), page.code) << entry.path() << section.plainName();
                ++compared;
            }
    }
    EXPECT_GT(compared, 0);
}

TEST(PagesR2007, PageOfTheSystemHoldsItsMapAsOftenAsItSays)
{
    for (const std::size_t size : {16u, 320u, 2188u, 30000u}) {
        const std::string map = noise(size, 3, 9);
        const SystemPageR2007 made(map);
        EXPECT_EQ(made.page.size(), systemPageSize(size));
        const std::size_t unit = ReedSolomon::padded(made.packedSize);
        const std::size_t blocks = ReedSolomon::blocks(unit * made.repeats, ReedSolomon::kSystemData);
        ASSERT_LE(blocks * ReedSolomon::kBlock, made.page.size());
        ASSERT_GE(made.repeats, 2u);
        const std::string data =
            textOf(ReedSolomon::data(bytesOf(made.page), blocks, ReedSolomon::kSystemData));
        for (std::size_t i = 0; i < made.repeats; ++i)
            EXPECT_EQ(unpacked(data.substr(i * unit, made.packedSize), size), map);
    }
}

} // namespace
} // namespace zv::dwg
