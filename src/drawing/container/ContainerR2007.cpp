#include "drawing/container/ContainerR2007.h"

#include "drawing/container/Decompression.h"
#include "drawing/container/MapsR2007.h"
#include "drawing/container/ReedSolomon.h"

#include <algorithm>

namespace zv::dwg {

Result<std::unique_ptr<Container>> ContainerR2007::open(const ByteSource& source, const FileStart& start)
{
    const auto maps = MapsR2007::read(source);
    if (!maps)
        return maps.error();
    std::unique_ptr<ContainerR2007> container(new ContainerR2007(source, start));
    FilePages filePages(maps->pages);
    for (const SectionR2007& section : maps->sections) {
        SectionEntry entry;
        entry.name = section.plainName();
        entry.size = section.size;
        entry.woven = section.encoding == SectionR2007::kWoven;
        for (const SectionR2007::Page& each : section.pages) {
            SectionPage page;
            page.offset = each.offset;
            page.unpackedSize = each.unpackedSize;
            page.packedSize = each.packedSize;
            filePages.take(each.number, page);
            entry.pages.push_back(page);
        }
        container->m_sections.push_back(std::move(entry));
    }
    return std::unique_ptr<Container>(std::move(container));
}

Result<void> ContainerR2007::unpackPage(const SectionEntry& section, const SectionPage& page,
                                        std::span<std::byte> into) const
{
    const std::string where = "section " + section.name + ": page at " + std::to_string(page.filePosition);
    if (page.packedSize > page.fileSize)
        return Error{ErrorCode::Damaged, where + " claims more than its place holds"};
    auto bytes = readBytes(m_source, page.filePosition, page.fileSize);
    if (!bytes)
        return Error{ErrorCode::Damaged, where + " is cut short"};
    if (section.woven) {
        const std::uint64_t blocks =
            ReedSolomon::blocks(ReedSolomon::padded(page.packedSize), ReedSolomon::kPageData);
        if (blocks * ReedSolomon::kBlock > bytes->size())
            return Error{ErrorCode::Damaged, where + " claims more than its place holds"};
        ReedSolomon::correct(*bytes, blocks, ReedSolomon::kPageData);
        *bytes = ReedSolomon::data(*bytes, blocks, ReedSolomon::kPageData);
    }
    const auto packed = std::span<const std::byte>(*bytes).first(page.packedSize);
    if (page.packedSize == page.unpackedSize) {
        std::copy_n(packed.begin(), std::min(packed.size(), into.size()), into.begin());
        return {};
    }
    if (!decompressR2007(packed, into))
        return Error{ErrorCode::Damaged, where + " cannot be unpacked"};
    return {};
}

} // namespace zv::dwg
