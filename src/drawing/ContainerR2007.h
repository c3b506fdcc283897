#pragma once

#include "drawing/PagedContainer.h"

#include <unordered_map>

namespace zv::dwg {

/// R2007: header, map of pages and map of sections are guarded by an error-correcting code, and so are most
/// data pages.
class ContainerR2007 final : public PagedContainer {
public:
    /// Errors: Damaged.
    static Result<std::unique_ptr<Container>> open(const ByteSource& source);

protected:
    Result<void> unpackPage(const SectionEntry& section, const SectionPage& page,
                            std::span<std::byte> into) const override;

private:
    struct FilePage {
        std::uint64_t position = 0, size = 0;
        bool used = false;
    };
    /// How a map is stored.
    struct MapPlace {
        std::uint64_t position, packedSize, unpackedSize, repeats;
    };

    using PagedContainer::PagedContainer;
    Result<void> readMaps(bool corrected);
    Result<std::vector<std::byte>> header(bool corrected) const;
    Result<std::vector<std::byte>> systemPage(const MapPlace& map, bool corrected, const char* name) const;
    Result<void> readPageMap(std::span<const std::byte> map);
    Result<void> readSectionMap(std::span<const std::byte> map);

    std::unordered_map<std::uint64_t, FilePage> m_pages;
};

} // namespace zv::dwg
