#include "drawing/container/PagedContainer.h"

#include "drawing/container/FileStart.h"

#include <algorithm>
#include <cstring>

namespace zv::dwg {

namespace {

// A page of zeros packs to next to nothing, so a section may be larger than its file, within reason.
constexpr std::uint64_t kSectionBase = 1 << 20, kSectionPerFileByte = 32,
                        kSectionLimit = std::uint64_t{1} << 30;
constexpr std::size_t kCachedPages = 16;
constexpr std::uint64_t kLargestCachedPage = 1 << 20;

std::uint64_t bytesInPage(const SectionEntry& section, const SectionPage& page)
{
    return std::min(page.unpackedSize, section.size - page.offset);
}

} // namespace

std::string_view sectionName(Section which)
{
    switch (which) {
    case Section::Header:
        return "AcDb:Header";
    case Section::Classes:
        return "AcDb:Classes";
    case Section::ObjectMap:
        return "AcDb:Handles";
    case Section::Objects:
        return "AcDb:AcDbObjects";
    case Section::Template:
        return "AcDb:Template";
    case Section::AuxHeader:
        return "AcDb:AuxHeader";
    case Section::Preview:
        return "AcDb:Preview";
    case Section::SummaryInfo:
        return "AcDb:SummaryInfo";
    }
    return {};
}

const SectionEntry* PagedContainer::find(std::string_view name) const
{
    const auto found = std::find_if(m_sections.begin(), m_sections.end(),
                                    [&](const SectionEntry& s) { return s.name == name; });
    return found == m_sections.end() ? nullptr : &*found;
}

Result<void> PagedContainer::checkSection(const SectionEntry& section) const
{
    if (section.size > std::min(kSectionLimit, kSectionBase + kSectionPerFileByte * m_source.size()))
        return Error{ErrorCode::TooLarge, "section " + section.name + ": claims " +
                                              std::to_string(section.size) + " bytes, too many for its file"};
    std::uint64_t end = 0;
    for (const SectionPage& page : section.pages) {
        if (page.offset < end || page.offset >= section.size || page.unpackedSize == 0)
            return Error{ErrorCode::Damaged, "section " + section.name + ": page at " +
                                                 std::to_string(page.offset) + " overlaps or lies outside"};
        end = page.offset + bytesInPage(section, page);
    }
    return {};
}

PagedContainer::PagedContainer(const ByteSource& source, const FileStart& start) : m_source(source)
{
    m_version = start.version();
    m_versionText = start.versionText();
    m_codePage = start.codePage();
    m_maintenance = start.maintenance();
}

Result<void> PagedContainer::unpack(const SectionEntry& section, const SectionPage& page,
                                    std::span<std::byte> into) const
{
    if (page.filePosition == 0)
        return Error{ErrorCode::Damaged, "section " + section.name + ": its page for place " +
                                             std::to_string(page.offset) +
                                             " is not in the page map, or is another's"};
    return unpackPage(section, page, into);
}

Result<std::vector<std::byte>> PagedContainer::section(Section which) const
{
    const SectionEntry* entry = find(sectionName(which));
    if (entry == nullptr)
        return Error{ErrorCode::NotFound, "no section " + std::string(sectionName(which))};
    if (const auto checked = checkSection(*entry); !checked)
        return checked.error();
    std::vector<std::byte> bytes(entry->size);
    for (const SectionPage& page : entry->pages) {
        const auto into = std::span(bytes).subspan(page.offset, bytesInPage(*entry, page));
        if (const auto unpacked = unpack(*entry, page, into); !unpacked) {
            // Of the records only those of the damaged page are lost.
            if (which != Section::Objects)
                return unpacked.error();
            m_damage.push_back(unpacked.error().text);
        }
    }
    return bytes;
}

Result<const std::vector<std::byte>*> PagedContainer::cachedPage(const SectionEntry& section,
                                                                 const SectionPage& page) const
{
    const auto found =
        std::find_if(m_cache.begin(), m_cache.end(), [&](const CachedPage& c) { return c.page == &page; });
    if (found != m_cache.end()) {
        m_cache.splice(m_cache.begin(), m_cache, found);
        return &m_cache.front().bytes;
    }
    const std::uint64_t size = bytesInPage(section, page);
    std::vector<std::byte> bytes(size);
    if (const auto unpacked = unpack(section, page, bytes); !unpacked)
        return unpacked.error();
    if (m_cache.size() == kCachedPages || size > kLargestCachedPage)
        m_cache.clear();
    m_cache.push_front({&page, std::move(bytes)});
    return &m_cache.front().bytes;
}

Result<std::vector<std::byte>> PagedContainer::objectBytes(std::uint64_t offset, std::size_t length) const
{
    const SectionEntry* entry = find(sectionName(Section::Objects));
    if (entry == nullptr)
        return Error{ErrorCode::NotFound, "no section of objects"};
    if (const auto checked = checkSection(*entry); !checked)
        return checked.error();
    if (offset > entry->size || length > entry->size - offset)
        return Error{ErrorCode::Damaged, "record at " + std::to_string(offset) + " lies outside the objects"};
    std::vector<std::byte> bytes(length);
    const std::uint64_t end = offset + length;
    auto page = std::partition_point(entry->pages.begin(), entry->pages.end(), [&](const SectionPage& p) {
        return p.offset + bytesInPage(*entry, p) <= offset;
    });
    for (; page != entry->pages.end() && page->offset < end; ++page) {
        const auto unpacked = cachedPage(*entry, *page);
        if (!unpacked)
            return unpacked.error();
        const std::vector<std::byte>& from = **unpacked;
        const std::uint64_t first = std::max(offset, page->offset);
        const std::uint64_t last = std::min(end, page->offset + from.size());
        std::memcpy(bytes.data() + (first - offset), from.data() + (first - page->offset), last - first);
    }
    return bytes;
}

} // namespace zv::dwg
