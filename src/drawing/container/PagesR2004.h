#pragma once

#include "platform/ByteSource.h"

#include <cstdint>
#include <string>

namespace zv::dwg {

/// The pages of R2004, R2010, R2013 and R2018. Pages of the system hold the maps, data pages hold sections.
enum class PageType : std::uint32_t { PageMap = 0x41630E3B, SectionMap = 0x4163003B, Data = 0x4163043B };

/// The bytes before the content of a page of the system: type, unpacked size, packed size, packing, checksum.
inline constexpr std::size_t kSystemPageHeader = 20;
/// A packing or a section's packing: packed, or as it is.
inline constexpr std::uint32_t kPacked = 2, kNotPacked = 1;

/// What stands before the content of a data page, hidden under its place in the file.
struct DataPageHeader {
    static constexpr std::size_t kSize = 32;
    std::uint32_t type, section, packedSize, pageSize, offset, headerChecksum, dataChecksum, unknown;

    /// `bytes`: kSize or more.
    static DataPageHeader read(std::span<const std::byte> bytes, std::uint64_t position);
    /// The number under which the fields of a page at `position` are hidden.
    static std::uint32_t mask(std::uint64_t position)
    {
        return 0x4164536B ^ static_cast<std::uint32_t>(position);
    }
};

/// The sum that pages carry: two running sums, as in Adler-32, of the bytes on top of `seed`.
std::uint32_t pageChecksum(std::uint32_t seed, std::span<const std::byte> bytes);

/// The content of a page of the system. A checksum that differs is told in `damage` and not refused, because
/// other writers have got it wrong in files that are whole. Errors: Damaged.
Result<std::vector<std::byte>> readSystemPage(const ByteSource& source, std::uint64_t position, PageType type,
                                              std::vector<std::string>& damage);

} // namespace zv::dwg
