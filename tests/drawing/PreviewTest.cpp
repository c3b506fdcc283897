#include "drawing/preview/Preview.h"

#include <gtest/gtest.h>

#include <string>

namespace zv::dwg {
namespace {

constexpr std::size_t kPointerAt = 0x0D;
const std::string kSentinel = "\x1F\x25\x6D\x07\xD4\x36\x28\x28\x9D\x57\xCA\x3F\x9D\x44\x10\x2B";

std::string number(std::uint32_t value, int size = 4)
{
    std::string bytes;
    for (int i = 0; i < size; ++i)
        bytes += static_cast<char>(value >> (8 * i));
    return bytes;
}

std::string bitmap(int width, int height, int bits)
{
    std::string bytes = number(40) + number(static_cast<std::uint32_t>(width)) +
                        number(static_cast<std::uint32_t>(height)) + number(1, 2) +
                        number(static_cast<std::uint32_t>(bits), 2);
    return bytes + std::string(24, '\0') + "rows";
}

std::string png(std::uint8_t depth, std::uint8_t colourType)
{
    return std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\x01\0\0\0\0\x66", 24) + static_cast<char>(depth) +
           static_cast<char>(colourType) + std::string(7, '\0');
}

struct Picture {
    int code;
    std::string bytes;
};

/// A file of R2000 whose header leads to these pictures.
std::string fileWith(const std::vector<Picture>& pictures)
{
    std::string file = "AC1015" + std::string(0x60 - 6, '\0');
    file[0x15] = 1; // one section locator, all zeros
    const std::size_t start = file.size();
    file.replace(kPointerAt, 4, number(static_cast<std::uint32_t>(start)));
    std::string table, data;
    const std::size_t dataAt = start + 16 + 4 + 1 + pictures.size() * 9;
    for (const Picture& picture : pictures) {
        table += static_cast<char>(picture.code);
        table += number(static_cast<std::uint32_t>(dataAt + data.size()));
        table += number(static_cast<std::uint32_t>(picture.bytes.size()));
        data += picture.bytes;
    }
    return file + kSentinel + number(static_cast<std::uint32_t>(table.size() + data.size() + 1)) +
           static_cast<char>(pictures.size()) + table + data;
}

Result<std::vector<PreviewImage>> previews(const std::string& file)
{
    const MemorySource source(std::as_bytes(std::span(file)));
    return readPreviews(source);
}

TEST(Preview, BitmapAsStored)
{
    const auto found = previews(fileWith({{1, std::string(80, '\0')}, {2, bitmap(180, -90, 8)}}));
    ASSERT_TRUE(found.ok());
    ASSERT_EQ(found->size(), 1u);
    const PreviewImage& image = found->front();
    EXPECT_EQ(image.kind, PreviewKind::Bmp);
    EXPECT_EQ(image.width, 180);
    EXPECT_EQ(image.height, 90);
    EXPECT_EQ(image.bits, 8);
    EXPECT_EQ(image.bytes.size(), bitmap(180, 90, 8).size());
}

TEST(Preview, FileHeaderBeforeTheBitmapIsLeftOff)
{
    const auto found = previews(fileWith({{2, "BM" + std::string(12, '\0') + bitmap(3, 4, 24)}}));
    ASSERT_TRUE(found.ok());
    ASSERT_EQ(found->size(), 1u);
    EXPECT_EQ(found->front().width, 3);
    EXPECT_EQ(found->front().bytes.size(), bitmap(3, 4, 24).size());
}

TEST(Preview, PngBitsByItsKindOfColour)
{
    const auto bits = [](std::uint8_t depth, std::uint8_t colourType) {
        const auto found = previews(fileWith({{6, png(depth, colourType)}}));
        return found.ok() && found->size() == 1 ? found->front().bits : -1;
    };
    EXPECT_EQ(bits(4, 3), 8);
    EXPECT_EQ(bits(8, 3), 8);
    EXPECT_EQ(bits(8, 2), 24);
    EXPECT_EQ(bits(8, 6), 32);
    EXPECT_EQ(bits(8, 0), 8);
    const auto found = previews(fileWith({{6, png(8, 2)}}));
    EXPECT_EQ(found->front().kind, PreviewKind::Png);
    EXPECT_EQ(found->front().width, 256);
    EXPECT_EQ(found->front().height, 102);
}

TEST(Preview, MostPixelsFirstAndMetafilesLast)
{
    const auto found = previews(fileWith({{3, "metafile"}, {2, bitmap(10, 10, 8)}, {2, bitmap(20, 10, 32)}}));
    ASSERT_TRUE(found.ok());
    ASSERT_EQ(found->size(), 3u);
    EXPECT_EQ((*found)[0].width, 20);
    EXPECT_EQ((*found)[1].width, 10);
    EXPECT_EQ((*found)[2].kind, PreviewKind::Wmf);
}

TEST(Preview, NoneWithoutPictures)
{
    const auto empty = previews(fileWith({{1, "head"}}));
    ASSERT_TRUE(empty.ok());
    EXPECT_TRUE(empty->empty());
    std::string file = fileWith({{2, bitmap(1, 1, 8)}});
    file.replace(kPointerAt, 4, number(0));
    EXPECT_TRUE(previews(file).ok() && previews(file)->empty());
    file.replace(kPointerAt, 4, number(0x7FFFFFFF));
    EXPECT_TRUE(previews(file).ok() && previews(file)->empty());
}

TEST(Preview, CutPictureIsDamagedUnlessAnotherIsWhole)
{
    std::string file = fileWith({{2, bitmap(5, 5, 8)}, {2, bitmap(9, 9, 8)}});
    file.resize(file.size() - 10);
    ASSERT_TRUE(previews(file).ok());
    EXPECT_EQ(previews(file)->size(), 1u);
    EXPECT_EQ(previews(file)->front().width, 5);
    std::string single = fileWith({{2, bitmap(5, 5, 8)}});
    single.resize(single.size() - 10);
    ASSERT_FALSE(previews(single).ok());
    EXPECT_EQ(previews(single).error().code, ErrorCode::Damaged);
}

TEST(Preview, PictureWithoutValidHeaderIsDamaged)
{
    EXPECT_EQ(previews(fileWith({{6, "no picture at all, but long enough for one"}})).error().code,
              ErrorCode::Damaged);
    EXPECT_EQ(previews(fileWith({{2, "x"}})).error().code, ErrorCode::Damaged);
}

TEST(Preview, EveryTruncationGivesAnAnswer)
{
    const std::string file = fileWith({{2, bitmap(5, 5, 8)}});
    for (std::size_t size = 0; size < file.size(); ++size) {
        const auto found = previews(file.substr(0, size));
        EXPECT_TRUE(!found || found->empty()) << size;
    }
}

TEST(Preview, RefusalSaysTheVersion)
{
    EXPECT_EQ(previews("AC1009" + std::string(100, '\0')).error().text,
              "drawing of release R11/R12 (AC1009), earlier than R13");
    EXPECT_EQ(previews("AC1003" + std::string(100, '\0')).error().text,
              "drawing of release R2.6 (AC1003), earlier than R13");
    EXPECT_EQ(previews("AC2.10" + std::string(100, '\0')).error().text,
              "drawing of release R2.1 (AC2.10), earlier than R13");
    EXPECT_EQ(previews("AC1099" + std::string(100, '\0')).error().text,
              "drawing of version AC1099, later than 2018 (AC1032)");
    EXPECT_EQ(previews("AC1009" + std::string(100, '\0')).error().code, ErrorCode::Unsupported);
    EXPECT_EQ(previews("%PDF-1.7").error().code, ErrorCode::Damaged);
    EXPECT_EQ(previews("").error().code, ErrorCode::Damaged);
}

} // namespace
} // namespace zv::dwg
