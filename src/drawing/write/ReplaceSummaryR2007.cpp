// Properties of AC1021: the summary section.
#include "drawing/write/Replace.h"

#include "drawing/container/FileStart.h"
#include "drawing/container/MapsR2007.h"
#include "drawing/container/PagedContainer.h"
#include "drawing/write/BitWriter.h"
#include "drawing/write/Bytes.h"
#include "drawing/write/PageList.h"
#include "drawing/write/PagesR2007.h"
#include "drawing/write/SummaryContent.h"

namespace zv::dwg {

namespace {

std::string sectionMap(const std::vector<SectionR2007>& sections)
{
    std::string bytes;
    for (const SectionR2007& section : sections) {
        for (const std::uint64_t each : {section.size, section.pageSize, section.encryption, section.nameHash,
                                         std::uint64_t{section.name.size() * 2}, section.unknown,
                                         section.encoding, std::uint64_t{section.pages.size()}})
            putLongLong(bytes, each);
        for (const char16_t unit : section.name)
            putShort(bytes, unit);
        for (const SectionR2007::Page& page : section.pages)
            for (const std::uint64_t each : {page.offset, page.size, page.number, page.unpackedSize,
                                             page.packedSize, page.checksum, page.code})
                putLongLong(bytes, each);
    }
    return bytes;
}

std::string pageMap(const PageList& list)
{
    std::string bytes;
    for (const FilePage& page : list.pages()) {
        putLongLong(bytes, page.size);
        putLongLong(bytes, static_cast<std::uint64_t>(page.number));
    }
    return bytes;
}

/// The summary section in the map. A map without one gets it, before the nameless section at its end.
SectionR2007& summaryIn(std::vector<SectionR2007>& sections)
{
    constexpr std::uint64_t kNameHash = 0x717A060F;
    const std::string_view name = sectionName(Section::SummaryInfo);
    for (SectionR2007& section : sections)
        if (section.plainName() == name)
            return section;
    SectionR2007 added;
    added.name.assign(name.begin(), name.end());
    added.name += u'\0';
    added.nameHash = kNameHash;
    const bool ended = !sections.empty() && sections.back().name.empty();
    return *sections.insert(ended ? sections.end() - 1 : sections.end(), std::move(added));
}

} // namespace

// The summary stands in one page that is neither packed nor woven, as others write it too, so that programs
// that know nothing of the format's coding can show it.
Result<std::string> replaceSummaryR2007(std::string_view file, const Container& container,
                                        const Properties& properties)
{
    const auto old = container.section(Section::SummaryInfo);
    if (!old && old.error().code != ErrorCode::NotFound)
        return old.error();
    const auto content = summaryContent(container, old.valueOr({}), properties);
    if (!content)
        return content.error();
    auto maps = MapsR2007::read(MemorySource(bytesOf(file)));
    if (!maps)
        return maps.error();
    HeaderR2007& header = maps->header;
    PageList list(maps->pages, MapsR2007::kPagesAt);
    SectionR2007& summary = summaryIn(maps->sections);
    const auto free = [&](std::uint64_t page) {
        list.free(static_cast<std::int64_t>(page), -static_cast<std::int64_t>(page));
    };
    for (const SectionR2007::Page& page : summary.pages)
        free(page.number);
    for (const HeaderR2007::Field page : {HeaderR2007::kPageMapPage, HeaderR2007::kSecondPageMapPage,
                                          HeaderR2007::kSectionMapPage, HeaderR2007::kSecondSectionMapPage})
        free(header.number(page));
    list.dropLastGaps();
    const std::uint64_t begin = list.end();
    if (begin > file.size())
        return Error{ErrorCode::Damaged, "page map: tells pages beyond the end of the file"};
    std::string changed(file.substr(0, static_cast<std::size_t>(begin)));
    const auto number = [&] { return static_cast<std::uint64_t>(std::max(list.highest(), -list.lowest())); };
    const auto append = [&](const std::string& page) {
        list.add(static_cast<std::int64_t>(number() + 1), page.size());
        changed += page;
        return number();
    };

    constexpr std::size_t kRoomStep = 0x80;
    const std::size_t room = (content->size() + kRoomStep - 1) / kRoomStep * kRoomStep;
    summary.size = content->size();
    summary.pageSize = room;
    summary.encoding = SectionR2007::kPlain;
    summary.pages = {{0, room, append(plainPage(*content, room)), content->size(), content->size(),
                      checksumR2007(*content), pageCodeR2007(*content)}};

    const SystemPageR2007 sections(sectionMap(maps->sections));
    header.set(HeaderR2007::kSectionMapPage, append(sections.page));
    header.set(HeaderR2007::kSecondSectionMapPage, append(sections.page));
    header.set(HeaderR2007::kSections, maps->sections.size());
    header.set(HeaderR2007::kSectionMapSize, sections.size);
    header.set(HeaderR2007::kSectionMapPackedSize, sections.packedSize);
    header.set(HeaderR2007::kSectionMapCode, sections.code);
    header.set(HeaderR2007::kSectionMapPackedCode, sections.packedCode);
    header.set(HeaderR2007::kSectionMapRepeats, sections.repeats);

    // The page map tells its own two pages, whose length depends on how many pages it tells.
    const std::uint64_t mapAt = changed.size();
    const std::size_t mapPage = systemPageSize((list.pages().size() + 2) * 2 * sizeof(std::uint64_t));
    for (const HeaderR2007::Field field : {HeaderR2007::kPageMapPage, HeaderR2007::kSecondPageMapPage}) {
        list.add(static_cast<std::int64_t>(number() + 1), mapPage);
        header.set(field, number());
    }
    const SystemPageR2007 pages(pageMap(list));
    changed += pages.page + pages.page;
    header.set(HeaderR2007::kPageMapAt, mapAt - MapsR2007::kPagesAt);
    header.set(HeaderR2007::kSecondPageMapAt, mapAt + mapPage - MapsR2007::kPagesAt);
    header.set(HeaderR2007::kPageMapSize, pages.size);
    header.set(HeaderR2007::kPageMapPackedSize, pages.packedSize);
    header.set(HeaderR2007::kPageMapCode, pages.code);
    header.set(HeaderR2007::kPageMapPackedCode, pages.packedCode);
    header.set(HeaderR2007::kPageMapRepeats, pages.repeats);
    header.set(HeaderR2007::kPages, list.pages().size());
    header.set(HeaderR2007::kHighestPage, number());
    header.set(HeaderR2007::kSecondHeaderAt, changed.size() - MapsR2007::kPagesAt);
    header.set(HeaderR2007::kFileSize, changed.size() + HeaderR2007::kPageSize);
    const std::string blocks = headerPage(header);
    changed.replace(HeaderR2007::kAt, blocks.size(), blocks);
    std::string place;
    putLong(place, static_cast<std::uint32_t>(begin));
    changed.replace(FileStart::kSummaryAt, place.size(), place);
    // A copy of the header ends the file.
    return changed + changed.substr(HeaderR2007::kAt, HeaderR2007::kPageSize);
}

} // namespace zv::dwg
