#include "drawing/container/ContainerR2004.h"

#include "drawing/container/Decompression.h"
#include "drawing/container/FileStart.h"
#include "drawing/container/MapsR2004.h"
#include "drawing/container/PagesR2004.h"

#include <algorithm>

namespace zv::dwg {

ContainerR2004::ContainerR2004(const ByteSource& source, const FileStart& start)
    : PagedContainer(source, start), m_encrypted((start.security() & 1) != 0)
{
}

Result<std::unique_ptr<Container>> ContainerR2004::open(const ByteSource& source, const FileStart& start)
{
    const auto maps = MapsR2004::read(source);
    if (!maps)
        return maps.error();
    std::unique_ptr<ContainerR2004> container(new ContainerR2004(source, start));
    container->m_damage = maps->damage;
    FilePages filePages(maps->pages);
    for (const SectionR2004& section : maps->sections) {
        SectionEntry entry;
        entry.name = section.name;
        entry.size = section.size;
        entry.packed = section.packing == kPacked;
        for (const SectionR2004::Page& each : section.pages) {
            SectionPage page;
            page.offset = each.offset;
            page.unpackedSize = section.pageSize;
            page.packedSize = each.size;
            filePages.take(each.number, page);
            entry.pages.push_back(page);
        }
        std::sort(entry.pages.begin(), entry.pages.end(),
                  [](const SectionPage& a, const SectionPage& b) { return a.offset < b.offset; });
        container->m_sections.push_back(std::move(entry));
    }
    return std::unique_ptr<Container>(std::move(container));
}

Result<void> ContainerR2004::unpackPage(const SectionEntry& section, const SectionPage& page,
                                        std::span<std::byte> into) const
{
    const std::string where = "section " + section.name + ": page at " + std::to_string(page.filePosition);
    const std::uint64_t size =
        std::min(page.fileSize, m_source.size() - std::min(m_source.size(), page.filePosition));
    if (size < DataPageHeader::kSize)
        return Error{ErrorCode::Damaged, where + " lies beyond the end of the file"};
    const auto bytes = readBytes(m_source, page.filePosition, size);
    if (!bytes)
        return bytes.error();
    const std::span<const std::byte> whole(*bytes);
    const DataPageHeader header = DataPageHeader::read(whole, page.filePosition);
    if (header.type != static_cast<std::uint32_t>(PageType::Data))
        return Error{ErrorCode::Damaged,
                     where + (m_encrypted ? " is encrypted with a password" : " is no data page")};
    if (header.packedSize > size - DataPageHeader::kSize)
        return Error{ErrorCode::Damaged, where + " is cut short"};
    const auto packed = whole.subspan(DataPageHeader::kSize, header.packedSize);
    if (!section.packed) {
        std::copy_n(packed.begin(), std::min(packed.size(), into.size()), into.begin());
        return {};
    }
    if (!decompressR2004(packed, into))
        return Error{ErrorCode::Damaged,
                     where + (m_encrypted ? " is encrypted with a password" : " cannot be unpacked")};
    return {};
}

} // namespace zv::dwg
