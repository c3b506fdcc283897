#pragma once

#include "drawing/container/FilePages.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace zv::dwg {

/// The header of R2004, R2010, R2013 and R2018, which leads to the maps. In the file it is hidden under the
/// numbers of a fixed random sequence.
class HeaderR2004 {
public:
    static constexpr std::size_t kAt = 0x80, kSize = 0x6C;
    using Bytes = std::array<std::byte, kSize>;

    /// A number of the header.
    struct Field {
        std::size_t at;
        unsigned bytes;
    };
    static constexpr Field kRootGap{0x18, 4}, kLargestGap{0x1C, 4}, kSmallestGap{0x20, 4}, kLastPage{0x28, 4},
        kPagesEnd{0x2C, 8}, kSecondHeader{0x34, 8}, kGaps{0x3C, 4}, kPages{0x40, 4}, kPageMapPage{0x50, 4},
        kPageMapAt{0x54, 8}, kSectionMapPage{0x5C, 4}, kHighestPage{0x60, 4}, kHighestGap{0x64, 4};

    HeaderR2004() = default;
    /// The header as it stands in the file.
    explicit HeaderR2004(const Bytes& hidden);
    /// Whether it begins as every such header does.
    bool isNamed() const;
    std::uint64_t number(Field field) const;
    void set(Field field, std::uint64_t value);
    /// As it stands in the file, with its check code.
    Bytes hidden() const;

private:
    Bytes m_bytes{};
};

/// What the section map says of a section.
struct SectionR2004 {
    struct Page {
        std::uint32_t number = 0, size = 0;
        std::uint64_t offset = 0; ///< In the unpacked section.
    };
    std::uint64_t size = 0;
    std::uint32_t pageSize = 0, unknown = 1, packing = 0, number = 0, encryption = 0;
    std::string name; ///< At most kNameSize characters.
    std::vector<Page> pages;

    static constexpr std::size_t kNameSize = 64;
};

/// Where the pages of a file stand, and which pages a section has.
struct MapsR2004 {
    /// The first page stands here; places in the header and the maps count from here.
    static constexpr std::uint64_t kPagesAt = 0x100;

    HeaderR2004 header;
    std::vector<FilePage> pages; ///< In the order of the file, gaps among them.
    std::array<std::uint32_t, 5>
        sectionMapHead{}; ///< The first and the last number are the count of sections.
    std::vector<SectionR2004> sections;
    std::vector<std::string> damage; ///< What was passed over, in words.

    /// Errors: Damaged.
    static Result<MapsR2004> read(const ByteSource& source);
};

} // namespace zv::dwg
