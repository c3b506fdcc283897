// Properties of AC1018 and later, but not AC1021: the summary section.
#include "drawing/write/Replace.h"

#include "drawing/container/FileStart.h"
#include "drawing/container/MapsR2004.h"
#include "drawing/container/PagedContainer.h"
#include "drawing/write/BitWriter.h"
#include "drawing/write/Bytes.h"
#include "drawing/write/GapTree.h"
#include "drawing/write/PageList.h"
#include "drawing/write/Pages.h"
#include "drawing/write/SummaryContent.h"

namespace zv::dwg {

namespace {

std::string sectionMap(const MapsR2004& maps)
{
    std::string bytes;
    for (const std::uint32_t each : maps.sectionMapHead)
        putLong(bytes, each);
    for (const SectionR2004& section : maps.sections) {
        putLongLong(bytes, section.size);
        for (const std::uint32_t each :
             {static_cast<std::uint32_t>(section.pages.size()), section.pageSize, section.unknown,
              section.packing, section.number, section.encryption})
            putLong(bytes, each);
        std::string name = section.name;
        name.resize(SectionR2004::kNameSize);
        bytes += name;
        for (const SectionR2004::Page& page : section.pages) {
            putLong(bytes, page.number);
            putLong(bytes, page.size);
            putLongLong(bytes, page.offset);
        }
    }
    return bytes;
}

std::string pageMap(const PageList& list, const GapTree& gaps)
{
    std::string bytes;
    for (const FilePage& page : list.pages()) {
        putLong(bytes, static_cast<std::uint32_t>(page.number));
        putLong(bytes, static_cast<std::uint32_t>(page.size));
        if (page.isGap())
            for (const std::int32_t field : gaps.fields(static_cast<std::int32_t>(page.number)))
                putLong(bytes, static_cast<std::uint32_t>(field));
    }
    return bytes;
}

GapTree gapsOf(const PageList& list)
{
    GapTree gaps;
    for (const FilePage& page : list.pages())
        if (page.isGap())
            gaps.add(static_cast<std::int32_t>(page.number), static_cast<std::uint32_t>(page.size));
    return gaps;
}

/// The summary section in the map. A map without one gets it.
SectionR2004& summaryIn(MapsR2004& maps)
{
    const std::string_view name = sectionName(Section::SummaryInfo);
    std::uint32_t next = 0;
    for (SectionR2004& section : maps.sections) {
        if (section.name == name)
            return section;
        next = std::max(next, section.number + 1);
    }
    SectionR2004& added = maps.sections.emplace_back();
    added.name = name;
    added.number = next;
    maps.sectionMapHead.front() = maps.sectionMapHead.back() =
        static_cast<std::uint32_t>(maps.sections.size());
    return added;
}

void tellGaps(HeaderR2004& header, const GapTree& gaps)
{
    const auto set = [&](HeaderR2004::Field field, std::int32_t gap) {
        header.set(field, static_cast<std::uint32_t>(gap));
    };
    set(HeaderR2004::kRootGap, gaps.root());
    set(HeaderR2004::kLargestGap, gaps.largest());
    set(HeaderR2004::kSmallestGap, gaps.smallest());
    header.set(HeaderR2004::kGaps, gaps.count());
}

} // namespace

Result<std::string> replaceSummaryR2004(std::string_view file, const Container& container,
                                        const Properties& properties)
{
    const auto old = container.section(Section::SummaryInfo);
    if (!old && old.error().code != ErrorCode::NotFound)
        return old.error();
    auto made = summaryContent(container, old.valueOr({}), properties);
    if (!made)
        return made.error();
    auto maps = MapsR2004::read(MemorySource(bytesOf(file)));
    if (!maps)
        return maps.error();
    HeaderR2004& header = maps->header;
    PageList list(maps->pages, MapsR2004::kPagesAt);
    SectionR2004& summary = summaryIn(*maps);
    const auto free = [&](std::uint64_t page) {
        list.free(static_cast<std::int64_t>(page), list.lowest() - 1);
    };
    for (const SectionR2004::Page& page : summary.pages)
        free(page.number);
    free(header.number(HeaderR2004::kSectionMapPage));
    free(header.number(HeaderR2004::kPageMapPage));
    list.dropLastGaps();
    const std::uint64_t begin = list.end();
    if (begin > 0x7FFFFFFF)
        return Error{ErrorCode::TooLarge, "the drawing is larger than its page map holds"};
    std::string changed(file);
    changed.resize(static_cast<std::size_t>(begin), '\0');
    const auto append = [&](const std::string& page) {
        list.add(list.highest() + 1, page.size());
        changed += page;
        return static_cast<std::uint32_t>(list.highest());
    };

    constexpr std::size_t kLargestPage = 0x100;
    summary.size = made->size();
    summary.packing = kNotPacked;
    summary.pageSize = static_cast<std::uint32_t>(std::min(kLargestPage, roundedUp(made->size())));
    summary.pages.clear();
    for (std::size_t offset = 0; offset < summary.size; offset += summary.pageSize) {
        std::string content = made->substr(offset, summary.pageSize);
        content.resize(summary.pageSize, '\0');
        const std::uint32_t number = append(dataPage(content, summary.number, offset, changed.size()));
        summary.pages.push_back({number, summary.pageSize, offset});
    }
    header.set(HeaderR2004::kSectionMapPage,
               append(packedSystemPage(sectionMap(*maps), PageType::SectionMap)));

    // The map tells its own page's length, which depends on how many entries it has and not on what they say.
    const std::uint64_t mapAt = changed.size();
    const GapTree gaps = gapsOf(list);
    PageList withMap = list;
    withMap.add(list.highest() + 1, 0);
    const std::size_t mapSize = packedSystemPage(pageMap(withMap, gaps), PageType::PageMap).size();
    const std::int64_t mapNumber = list.highest() + 1;
    list.add(mapNumber, mapSize);
    changed += packedSystemPage(pageMap(list, gaps), PageType::PageMap);

    tellGaps(header, gaps);
    header.set(HeaderR2004::kLastPage, static_cast<std::uint64_t>(mapNumber));
    header.set(HeaderR2004::kPagesEnd, changed.size() - MapsR2004::kPagesAt);
    header.set(HeaderR2004::kSecondHeader, changed.size());
    header.set(HeaderR2004::kPages, list.pages().size() - gaps.count());
    header.set(HeaderR2004::kPageMapPage, static_cast<std::uint64_t>(mapNumber));
    header.set(HeaderR2004::kPageMapAt, mapAt - MapsR2004::kPagesAt);
    header.set(HeaderR2004::kHighestPage, static_cast<std::uint64_t>(mapNumber));
    header.set(HeaderR2004::kHighestGap, static_cast<std::uint64_t>(-list.lowest()));
    const std::string hidden = textOf(header.hidden());
    changed.replace(HeaderR2004::kAt, hidden.size(), hidden);
    changed += hidden;
    std::string place;
    putLong(place, static_cast<std::uint32_t>(begin + DataPageHeader::kSize));
    changed.replace(FileStart::kSummaryAt, place.size(), place);
    return changed;
}

} // namespace zv::dwg
