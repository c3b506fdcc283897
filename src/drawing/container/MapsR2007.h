#pragma once

#include "drawing/container/FilePages.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace zv::dwg {

/// The header of R2007, which leads to the maps. It is packed and guarded by an error-correcting code.
class HeaderR2007 {
public:
    static constexpr std::size_t kAt = 0x80, kBlocks = 3, kSize = 0x110;
    /// Before the packed header stand a sequence that vouches only for itself, the packed bytes' check code
    /// and their length.
    static constexpr std::size_t kSequence = 16, kLengthAt = 24, kPrologue = 32;
    /// Blocks and what follows them up to the first page.
    static constexpr std::size_t kPageSize = 0x400;

    /// The places of its numbers, 64 bits each.
    enum Field : std::size_t {
        kFileSize = 0x08,
        kPageMapPackedCode = 0x10,
        kPageMapRepeats = 0x18,
        kSecondPageMapAt = 0x28,
        kSecondPageMapPage = 0x30,
        kPageMapAt = 0x38,
        kPageMapPage = 0x40,
        kSecondHeaderAt = 0x48,
        kPageMapPackedSize = 0x50,
        kPageMapSize = 0x58,
        kPages = 0x60,
        kHighestPage = 0x68,
        kPageMapCode = 0x80,
        kSections = 0xA0,
        kSectionMapCode = 0xA8,
        kSectionMapPackedSize = 0xB0,
        kSecondSectionMapPage = 0xB8,
        kSectionMapPage = 0xC0,
        kSectionMapSize = 0xC8,
        kSectionMapPackedCode = 0xD0,
        kSectionMapRepeats = 0xD8,
        kCode = 0x108,
    };

    std::uint64_t number(Field field) const;
    void set(Field field, std::uint64_t value);

    std::array<std::byte, kSequence> sequence{};
    std::array<std::byte, kSize> bytes{};
};

/// What the section map says of a section. Its last section has neither a name nor pages.
struct SectionR2007 {
    struct Page {
        std::uint64_t offset = 0; ///< In the unpacked section.
        std::uint64_t size = 0, number = 0, unpackedSize = 0, packedSize = 0;
        std::uint64_t checksum = 0, code = 0; ///< Of the unpacked and of the packed bytes.
    };
    /// As the pages stand in the file: as they are with guards behind them, or woven with their guards.
    static constexpr std::uint64_t kPlain = 1, kWoven = 4;

    std::uint64_t size = 0, pageSize = 0, encryption = 0, nameHash = 0, unknown = 0, encoding = kWoven;
    std::u16string name; ///< With the zero at its end.
    std::vector<Page> pages;

    /// The name without its zero; its characters are those of ASCII.
    std::string plainName() const;
};

/// Where the pages of a file stand, and which pages a section has.
struct MapsR2007 {
    /// The first page stands here; places in the header and the maps count from here.
    static constexpr std::uint64_t kPagesAt = 0x480;

    HeaderR2007 header;
    std::vector<FilePage> pages; ///< In the order of the file, gaps among them.
    std::vector<SectionR2007> sections;

    /// Errors: Damaged.
    static Result<MapsR2007> read(const ByteSource& source);
};

} // namespace zv::dwg
