#pragma once

#include "drawing/PagedContainer.h"

#include <unordered_map>

namespace zv::dwg {

class BitReader;

/// R2004, R2010, R2013 and R2018: an encrypted header leads to the map of pages and the map of sections; data
/// pages have masked headers.
class ContainerR2004 final : public PagedContainer {
public:
    /// Errors: Damaged.
    static Result<std::unique_ptr<Container>> open(const ByteSource& source, Version version);

protected:
    Result<void> unpackPage(const SectionEntry& section, const SectionPage& page,
                            std::span<std::byte> into) const override;

private:
    struct FilePage {
        std::uint64_t position = 0;
        std::uint32_t size = 0;
        bool used = false;
    };

    using PagedContainer::PagedContainer;
    Result<std::vector<std::byte>> systemPage(std::uint64_t position, std::uint32_t type,
                                              const char* name) const;
    Result<void> readPageMap(std::uint64_t position);
    Result<void> readSectionMap(std::uint32_t pageNumber);
    Result<void> readSectionEntry(BitReader& in);

    std::unordered_map<std::uint32_t, FilePage> m_pages;
    bool m_encrypted = false;
};

} // namespace zv::dwg
