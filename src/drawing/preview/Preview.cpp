#include "drawing/preview/Preview.h"

#include "drawing/bits/BitReader.h"
#include "drawing/container/Container.h"
#include "drawing/container/FileStart.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <optional>

namespace zv::dwg {

namespace {

constexpr std::array<std::uint8_t, 16> kSentinel{0x1F, 0x25, 0x6D, 0x07, 0xD4, 0x36, 0x28, 0x28,
                                                 0x9D, 0x57, 0xCA, 0x3F, 0x9D, 0x44, 0x10, 0x2B};
constexpr std::size_t kCountAt = kSentinel.size() + 4, kRecordsAt = kCountAt + 1, kRecordSize = 9;
constexpr std::size_t kMostRecords = 8;
constexpr std::size_t kTableSize = kRecordsAt + kMostRecords * kRecordSize;

struct Record {
    PreviewKind kind = PreviewKind::None;
    std::uint64_t position = 0, size = 0; ///< In the file.
};

bool hasSentinel(std::span<const std::byte> bytes)
{
    return bytes.size() >= kRecordsAt &&
           std::equal(kSentinel.begin(), kSentinel.end(), bytes.begin(),
                      [](std::uint8_t a, std::byte b) { return a == std::to_integer<std::uint8_t>(b); });
}

/// The picture records of the table behind the sentinel.
std::vector<Record> readRecords(std::span<const std::byte> table)
{
    BitReader in(table);
    in.seek(kCountAt * 8);
    const std::size_t count = std::min<std::size_t>(in.rawChar(), kMostRecords);
    std::vector<Record> records;
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned code = in.rawChar();
        Record record;
        record.position = in.rawLong();
        record.size = in.rawLong();
        record.kind = code == 2   ? PreviewKind::Bmp
                      : code == 3 ? PreviewKind::Wmf
                      : code == 6 ? PreviewKind::Png
                                  : PreviewKind::None;
        if (in.ok() && record.kind != PreviewKind::None && record.size != 0)
            records.push_back(record);
    }
    return records;
}

std::uint32_t bigEndian(std::span<const std::byte> bytes, std::size_t at)
{
    BitReader in(bytes);
    in.seek(at * 8);
    return static_cast<std::uint32_t>(in.bits(32));
}

void measureBitmap(PreviewImage& image)
{
    constexpr std::size_t kFileHeader = 14;
    // A file header has no place here, and some programs write it all the same.
    if (image.bytes.size() > kFileHeader && image.bytes[0] == std::byte{'B'} &&
        image.bytes[1] == std::byte{'M'})
        image.bytes.erase(image.bytes.begin(), image.bytes.begin() + kFileHeader);
    BitReader in(image.bytes);
    const bool core = in.rawLong() == 12;
    image.width = core ? in.rawShort() : static_cast<int>(in.rawLong());
    const std::int64_t height = core ? in.rawShort() : static_cast<std::int32_t>(in.rawLong());
    image.height = static_cast<int>(std::min<std::int64_t>(std::abs(height), INT32_MAX));
    in.rawShort();
    image.bits = in.rawShort();
    if (!in.ok())
        image.kind = PreviewKind::None;
}

void measurePng(PreviewImage& image)
{
    constexpr std::uint32_t kSignature = 0x89504E47;
    constexpr std::size_t kWidthAt = 16, kDepthAt = 24, kHeaderEnd = 33;
    if (image.bytes.size() < kHeaderEnd || bigEndian(image.bytes, 0) != kSignature) {
        image.kind = PreviewKind::None;
        return;
    }
    image.width = static_cast<int>(bigEndian(image.bytes, kWidthAt) & INT32_MAX);
    image.height = static_cast<int>(bigEndian(image.bytes, kWidthAt + 4) & INT32_MAX);
    const int depth = std::to_integer<int>(image.bytes[kDepthAt]);
    switch (std::to_integer<int>(image.bytes[kDepthAt + 1])) {
    case 2:
        image.bits = depth * 3;
        break;
    case 3:
        image.bits = 8;
        break;
    case 4:
        image.bits = depth * 2;
        break;
    case 6:
        image.bits = depth * 4;
        break;
    default:
        image.bits = depth;
        break;
    }
}

PreviewImage measured(PreviewKind kind, std::vector<std::byte> bytes)
{
    PreviewImage image;
    image.kind = kind;
    image.bytes = std::move(bytes);
    if (kind == PreviewKind::Bmp)
        measureBitmap(image);
    else if (kind == PreviewKind::Png)
        measurePng(image);
    return image;
}

std::int64_t pixelCount(const PreviewImage& image)
{
    return std::int64_t{image.width} * image.height;
}

/// The pictures of the records, read by `read(position, size)`. What is no picture is left out.
template <class Read>
Result<std::vector<PreviewImage>> readImages(const std::vector<Record>& records, Read read)
{
    std::vector<PreviewImage> images;
    std::optional<Error> failure;
    for (const Record& record : records) {
        auto bytes = read(record.position, record.size);
        if (!bytes) {
            failure = bytes.error();
            continue;
        }
        PreviewImage image = measured(record.kind, std::move(*bytes));
        if (image.kind == PreviewKind::None)
            failure = Error{ErrorCode::Damaged, "preview: the picture at " + std::to_string(record.position) +
                                                    " has no valid header"};
        else
            images.push_back(std::move(image));
    }
    if (images.empty() && failure)
        return *failure;
    std::stable_sort(images.begin(), images.end(), [](const PreviewImage& a, const PreviewImage& b) {
        return pixelCount(a) > pixelCount(b);
    });
    return images;
}

/// For a file whose pointer to the preview is wrong: the section table leads to it.
Result<std::vector<PreviewImage>> readFromSection(const ByteSource& source)
{
    const auto container = Container::open(source);
    if (!container)
        return container.error();
    const auto section = (*container)->section(Section::Preview);
    if (!section && section.error().code == ErrorCode::NotFound)
        return std::vector<PreviewImage>();
    if (!section)
        return section.error();
    const std::span<const std::byte> bytes(*section);
    if (!hasSentinel(bytes))
        return std::vector<PreviewImage>();
    // The records count from the start of a file that the section is not where it was; the pictures follow
    // the table in its order.
    const std::vector<Record> records = readRecords(bytes);
    const std::uint64_t first =
        records.empty()
            ? 0
            : std::min_element(records.begin(), records.end(), [](const Record& a, const Record& b) {
                  return a.position < b.position;
              })->position;
    BitReader header(bytes);
    header.seek(kCountAt * 8);
    const std::size_t count = header.rawChar();
    std::uint64_t start = kRecordsAt + count * kRecordSize;
    for (std::size_t i = 0; i < count; ++i) {
        const unsigned code = header.rawChar();
        header.rawLong();
        const std::uint32_t size = header.rawLong();
        if (code == 1)
            start += size;
    }
    return readImages(records,
                      [&](std::uint64_t position, std::uint64_t size) -> Result<std::vector<std::byte>> {
                          const std::uint64_t at = start + (position - first);
                          if (at > bytes.size() || size > bytes.size() - at)
                              return Error{ErrorCode::Damaged, "preview: a picture lies outside its section"};
                          const auto part = bytes.subspan(at, size);
                          return std::vector<std::byte>(part.begin(), part.end());
                      });
}

} // namespace

Result<std::vector<PreviewImage>> readPreviews(const ByteSource& source)
{
    const auto start = FileStart::read(source);
    if (!start)
        return start.error();
    const std::uint64_t position = FileStart(*start).previewPosition(), fileSize = source.size();
    std::array<std::byte, kTableSize> store;
    const std::uint64_t tableSize = position == 0 || position >= fileSize
                                        ? 0
                                        : std::min<std::uint64_t>(store.size(), fileSize - position);
    const auto table = std::span(store).first(tableSize);
    if (const auto read = source.read(tableSize == 0 ? 0 : position, table); !read)
        return read.error();
    if (!hasSentinel(table))
        return readFromSection(source);
    return readImages(
        readRecords(table), [&](std::uint64_t at, std::uint64_t size) -> Result<std::vector<std::byte>> {
            if (at > fileSize || size > fileSize - at)
                return Error{ErrorCode::Damaged, "preview: the picture at " + std::to_string(at) +
                                                     " goes beyond the end of the file"};
            std::vector<std::byte> bytes(size);
            if (const auto read = source.read(at, bytes); !read)
                return read.error();
            return bytes;
        });
}

} // namespace zv::dwg
