#include "drawing/container/PagesR2004.h"

#include "drawing/bits/BitReader.h"
#include "drawing/container/Decompression.h"
#include "drawing/container/FilePages.h"

#include <algorithm>
#include <array>

namespace zv::dwg {

namespace {

/// The most bytes that a packed byte can stand for.
constexpr std::uint64_t kMostUnpacked = 256;

} // namespace

DataPageHeader DataPageHeader::read(std::span<const std::byte> bytes, std::uint64_t position)
{
    BitReader in(bytes);
    const auto next = [&] { return in.rawLong() ^ mask(position); };
    return {next(), next(), next(), next(), next(), next(), next(), next()};
}

std::uint32_t pageChecksum(std::uint32_t seed, std::span<const std::byte> bytes)
{
    constexpr std::uint32_t kModulus = 0xFFF1;
    constexpr std::size_t kRun = 0x15B0; // as many as fit before the sums must be reduced
    std::uint32_t low = seed & 0xFFFF, high = seed >> 16;
    while (!bytes.empty()) {
        for (const std::byte byte : bytes.first(std::min(kRun, bytes.size()))) {
            low += std::to_integer<std::uint32_t>(byte);
            high += low;
        }
        low %= kModulus;
        high %= kModulus;
        bytes = bytes.subspan(std::min(kRun, bytes.size()));
    }
    return high << 16 | low;
}

Result<std::vector<std::byte>> readSystemPage(const ByteSource& source, std::uint64_t position, PageType type,
                                              std::vector<std::string>& damage)
{
    const std::string name =
        (type == PageType::PageMap ? "page map at " : "section map at ") + std::to_string(position);
    std::array<std::byte, kSystemPageHeader> header;
    if (position > source.size() || source.size() - position < header.size())
        return Error{ErrorCode::Damaged, name + ": beyond the end of the file"};
    if (const auto read = source.read(position, header); !read)
        return read.error();
    BitReader in(header);
    const std::uint32_t foundType = in.rawLong(), unpackedSize = in.rawLong(), packedSize = in.rawLong();
    const std::uint32_t packing = in.rawLong(), checksum = in.rawLong();
    if (foundType != static_cast<std::uint32_t>(type))
        return Error{ErrorCode::Damaged, name + ": another kind of page stands there"};
    auto packed = readBytes(source, position + kSystemPageHeader, packedSize);
    if (!packed)
        return packed.error();
    if (unpackedSize > kMostUnpacked * packedSize)
        return Error{ErrorCode::Damaged, name + ": claims " + std::to_string(unpackedSize) + " bytes"};
    std::fill(header.end() - 4, header.end(), std::byte{0});
    if (pageChecksum(pageChecksum(0, header), *packed) != checksum)
        damage.push_back(name + ": its checksum differs");
    if (packing != kPacked)
        return packed;
    std::vector<std::byte> bytes(unpackedSize);
    if (decompressR2004(*packed, bytes) != unpackedSize)
        return Error{ErrorCode::Damaged, name + ": cannot be unpacked"};
    return bytes;
}

} // namespace zv::dwg
