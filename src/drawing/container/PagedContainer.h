#pragma once

#include "drawing/container/Container.h"
#include "drawing/container/FilePages.h"

#include <list>

namespace zv::dwg {

class FileStart;

/// A named section. Bytes between its pages are zeros that the file does not store.
struct SectionEntry {
    std::string name;
    std::uint64_t size = 0;
    bool packed = true, woven = false;
    std::vector<SectionPage> pages; ///< By rising offset, without overlaps.
};

/// What the containers of R2004 and later share: sections that are cut into pages, each packed on its own.
class PagedContainer : public Container {
public:
    Result<std::vector<std::byte>> section(Section which) const override;
    Result<std::vector<std::byte>> objectBytes(std::uint64_t offset, std::size_t length) const override;

protected:
    PagedContainer(const ByteSource& source, const FileStart& start);

    /// Unpacks a page into bytes that are zero. Errors: Damaged.
    virtual Result<void> unpackPage(const SectionEntry& section, const SectionPage& page,
                                    std::span<std::byte> into) const = 0;

    const SectionEntry* find(std::string_view name) const;
    /// Checks a section's size and the order of its pages. Errors: Damaged; TooLarge.
    Result<void> checkSection(const SectionEntry& section) const;

    const ByteSource& m_source;
    std::vector<SectionEntry> m_sections;

private:
    struct CachedPage {
        const SectionPage* page = nullptr;
        std::vector<std::byte> bytes;
    };
    Result<void> unpack(const SectionEntry& section, const SectionPage& page,
                        std::span<std::byte> into) const;
    Result<const std::vector<std::byte>*> cachedPage(const SectionEntry& section,
                                                     const SectionPage& page) const;

    mutable std::list<CachedPage> m_cache; ///< Last used first.
};

/// The name of a stream in the section table.
std::string_view sectionName(Section which);

} // namespace zv::dwg
