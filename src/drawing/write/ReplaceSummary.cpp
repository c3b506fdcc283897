// Properties of AC1018 and later: the summary section.
#include "drawing/write/Replace.h"

#include "drawing/Decompression.h"
#include "drawing/RecordReader.h"
#include "drawing/write/GapTree.h"
#include "drawing/write/Pages.h"
#include "drawing/write/Record.h"

#include <algorithm>
#include <map>

namespace zv::dwg {

namespace {

constexpr std::size_t kHeaderAt = 0x80, kHeaderSize = 0x6C, kSummaryAddressAt = 0x20;
constexpr std::uint64_t kPagesAt = 0x100;

std::span<const std::byte> bytesOf(std::string_view text)
{
    return std::as_bytes(std::span(text.data(), text.size()));
}

Error damaged(const char* what)
{
    return {ErrorCode::Damaged, what};
}

/// The texts and times of a summary section.
class SummaryContent {
public:
    SummaryContent(Version version, int codePage) : m_wide(version >= Version::R2007), m_codePage(codePage) {}

    /// `old` is the section that is replaced; its times stay.
    std::string made(std::span<const std::byte> old, const Properties& p)
    {
        constexpr std::size_t kTexts = 8, kTimes = 24;
        BitReader in(old);
        for (std::size_t i = 0; i < kTexts; ++i)
            in.skip(std::size_t{in.rawShort()} * (m_wide ? 16 : 8));
        std::string times = in.bytes(kTimes);
        times.resize(kTimes, '\0');
        for (const Text* text : {&p.title, &p.subject, &p.author, &p.keywords, &p.comments, &p.lastSavedBy,
                                 &p.revision, &p.hyperlinkBase})
            add(*text);
        m_bytes += times;
        putShort(m_bytes, static_cast<std::uint16_t>(p.custom.size()));
        for (const auto& [name, value] : p.custom) {
            add(name);
            add(value);
        }
        m_bytes += std::string(8, '\0');
        return m_bytes;
    }

private:
    /// A text with its length, which counts the zero at its end.
    void add(const Text& text)
    {
        constexpr std::size_t kMost = 0xFFFE;
        if (m_wide) {
            const std::size_t count = std::min(text.size(), kMost);
            putShort(m_bytes, static_cast<std::uint16_t>(count + 1));
            for (std::size_t i = 0; i < count; ++i)
                putShort(m_bytes, text[i]);
            putShort(m_bytes, 0);
            return;
        }
        const std::string bytes = encodeText(text, m_codePage).substr(0, kMost);
        putShort(m_bytes, static_cast<std::uint16_t>(bytes.size() + 1));
        m_bytes += bytes + '\0';
    }

    bool m_wide;
    int m_codePage;
    std::string m_bytes;
};

/// The section map, of which one entry is changed.
class SectionMap {
public:
    explicit SectionMap(std::string bytes) : m_bytes(std::move(bytes)) {}

    /// Finds the entry of the section. False when the map has none.
    bool find(std::string_view name)
    {
        constexpr std::size_t kHead = 20, kFields = 32, kName = 64, kPage = 16;
        if (m_bytes.size() < kHead)
            return false;
        BitReader head(bytesOf(m_bytes));
        const std::uint32_t count = head.rawLong();
        std::size_t at = kHead;
        for (std::uint32_t i = 0; i < count && m_bytes.size() - at >= kFields + kName; ++i) {
            const std::size_t pages = longAt(at + 8);
            if (pages > (m_bytes.size() - at - kFields - kName) / kPage)
                return false;
            const std::string_view entry(m_bytes.data() + at + kFields, kName);
            if (entry.substr(0, entry.find('\0')) == name) {
                m_at = at;
                m_length = kFields + kName + pages * kPage;
                return true;
            }
            at += kFields + kName + pages * kPage;
        }
        return false;
    }
    std::uint32_t number() const { return longAt(m_at + 24); }
    std::vector<std::uint32_t> pages() const
    {
        std::vector<std::uint32_t> result;
        for (std::size_t at = m_at + 96; at < m_at + m_length; at += 16)
            result.push_back(longAt(at));
        return result;
    }
    /// The map with the section found as `pages` pages from number `first` on, which are not packed.
    std::string changed(std::uint32_t first, std::uint32_t pages, std::size_t contentSize,
                        std::size_t pageSize) const
    {
        std::string entry;
        putLong(entry, static_cast<std::uint32_t>(contentSize));
        putLong(entry, 0);
        putLong(entry, pages);
        putLong(entry, static_cast<std::uint32_t>(pageSize));
        putLong(entry, longAt(m_at + 16));
        putLong(entry, 1);
        entry += m_bytes.substr(m_at + 24, 8 + 64);
        for (std::uint32_t i = 0; i < pages; ++i) {
            putLong(entry, first + i);
            putLong(entry, static_cast<std::uint32_t>(pageSize));
            putLong(entry, static_cast<std::uint32_t>(i * pageSize));
            putLong(entry, 0);
        }
        return m_bytes.substr(0, m_at) + entry + m_bytes.substr(m_at + m_length);
    }

private:
    std::uint32_t longAt(std::size_t at) const
    {
        BitReader in(bytesOf(std::string_view(m_bytes).substr(at, 4)));
        return in.rawLong();
    }

    std::string m_bytes;
    std::size_t m_at = 0, m_length = 0;
};

/// The pages of a file in order, with the gaps between them.
struct PageList {
    struct Page {
        std::int32_t number;
        std::uint32_t size;
        std::uint64_t position;
    };
    std::vector<Page> pages;

    static PageList read(std::string_view map)
    {
        PageList list;
        BitReader in(bytesOf(map));
        std::uint64_t at = kPagesAt;
        while (in.left() >= 64) {
            const auto number = static_cast<std::int32_t>(in.rawLong());
            const std::uint32_t size = in.rawLong();
            if (number < 0)
                in.skip(4 * 32);
            list.pages.push_back({number, size, at});
            at += size;
        }
        return list;
    }
    const Page* find(std::uint32_t number) const
    {
        const auto found = std::find_if(pages.begin(), pages.end(), [&](const Page& page) {
            return page.number > 0 && static_cast<std::uint32_t>(page.number) == number;
        });
        return found == pages.end() ? nullptr : &*found;
    }
    std::uint64_t end() const { return pages.empty() ? kPagesAt : pages.back().position + pages.back().size; }
    std::int32_t highest() const
    {
        std::int32_t number = 0;
        for (const Page& page : pages)
            number = std::max(number, page.number);
        return number;
    }
    std::int32_t lowest() const
    {
        std::int32_t number = 0;
        for (const Page& page : pages)
            number = std::min(number, page.number);
        return number;
    }
    void add(std::uint32_t number, std::size_t size)
    {
        pages.push_back({static_cast<std::int32_t>(number), static_cast<std::uint32_t>(size), end()});
    }
    /// Makes a gap of a page.
    void free(std::uint32_t number)
    {
        const std::int32_t gap = lowest() - 1;
        for (Page& page : pages)
            if (page.number > 0 && static_cast<std::uint32_t>(page.number) == number)
                page.number = gap;
    }
    GapTree gaps() const
    {
        GapTree tree;
        for (const Page& page : pages)
            if (page.number < 0)
                tree.add(page.number, page.size);
        return tree;
    }
    std::string map(const GapTree& tree) const
    {
        std::string bytes;
        for (const Page& page : pages) {
            putLong(bytes, static_cast<std::uint32_t>(page.number));
            putLong(bytes, page.size);
            if (page.number < 0)
                for (const std::int32_t field : tree.fields(page.number))
                    putLong(bytes, static_cast<std::uint32_t>(field));
        }
        return bytes;
    }
    std::uint32_t realPages() const
    {
        return static_cast<std::uint32_t>(
            std::count_if(pages.begin(), pages.end(), [](const Page& page) { return page.number > 0; }));
    }
};

/// The hidden header, shown.
class PageHeader {
public:
    explicit PageHeader(std::string_view file) : m_bytes(file.substr(kHeaderAt, kHeaderSize))
    {
        maskHeader(m_bytes);
    }

    std::uint32_t number(std::size_t at) const
    {
        BitReader in(bytesOf(std::string_view(m_bytes).substr(at, 4)));
        return in.rawLong();
    }
    void set(std::size_t at, std::uint64_t value, int bytes = 4)
    {
        for (int i = 0; i < bytes; ++i)
            m_bytes[at + static_cast<std::size_t>(i)] = static_cast<char>(value >> (8 * i) & 0xFF);
    }
    /// As it stands in the file, with its check code.
    std::string hidden()
    {
        constexpr std::size_t kCodeAt = 0x68;
        set(kCodeAt, 0);
        set(kCodeAt, headerCode(m_bytes));
        std::string bytes = m_bytes;
        maskHeader(bytes);
        return bytes;
    }

private:
    std::string m_bytes;
};

constexpr std::size_t kMapNumberAt = 0x50, kMapPlaceAt = 0x54, kSectionMapAt = 0x5C;

} // namespace

// The new pages go behind all others; the pages that they stand for become gaps. Nothing else moves, because
// pages are masked by their place and the preview tells places in the file.
Result<std::string> replaceSummarySection(std::string_view file, const Container& container,
                                          const Properties& properties)
{
    constexpr std::size_t kMostCustom = 0x7FFF;
    if (properties.custom.size() > kMostCustom)
        return Error{ErrorCode::Unsupported, "too many custom properties"};
    const auto old = container.section(Section::SummaryInfo);
    if (!old)
        return Error{ErrorCode::Unsupported, "the drawing has no summary section"};
    PageHeader header(file);
    const auto mapBytes = systemPage(file, header.number(kMapPlaceAt) + kPagesAt, kPageMapPage);
    if (!mapBytes)
        return damaged("page map: cannot be read");
    PageList list = PageList::read(*mapBytes);
    const PageList::Page* sectionMapPage = list.find(header.number(kSectionMapAt));
    if (sectionMapPage == nullptr)
        return damaged("section map: its page is not in the page map");
    auto sectionBytes = systemPage(file, sectionMapPage->position, kSectionMapPage);
    if (!sectionBytes)
        return damaged("section map: cannot be read");
    SectionMap sections(std::move(*sectionBytes));
    if (!sections.find("AcDb:SummaryInfo"))
        return damaged("section map: the summary section is not in it");

    const std::uint32_t oldMapNumber = header.number(kMapNumberAt);
    auto number = static_cast<std::uint32_t>(list.highest()) + 1;
    for (const std::uint32_t page : sections.pages())
        list.free(page);
    list.free(header.number(kSectionMapAt));
    list.free(oldMapNumber);

    constexpr std::size_t kLargestPage = 0x100;
    std::string content = SummaryContent(container.version(), container.codePage()).made(*old, properties);
    const std::size_t contentSize = content.size(), pageSize = std::min(kLargestPage, roundedUp(contentSize));
    const auto pages = static_cast<std::uint32_t>((contentSize + pageSize - 1) / pageSize);
    content.resize(pages * pageSize, '\0');
    std::string changed(file);
    const std::uint64_t begin = list.end();
    if (begin > 0x7FFFFFFF)
        return Error{ErrorCode::TooLarge, "the drawing is larger than its page map holds"};
    changed.resize(static_cast<std::size_t>(begin), '\0');
    const std::string sectionMap =
        packedSystemPage(sections.changed(number, pages, contentSize, pageSize), kSectionMapPage);
    for (std::uint32_t i = 0; i < pages; ++i) {
        const std::size_t offset = i * pageSize;
        const std::string page = dataPage(std::string_view(content).substr(offset, pageSize),
                                          sections.number(), offset, changed.size());
        changed += page;
        list.add(number++, page.size());
    }
    const std::uint32_t sectionMapNumber = number++, mapNumber = number;
    changed += sectionMap;
    list.add(sectionMapNumber, sectionMap.size());
    // The map tells its own page's length, which depends on how many entries it has and not on what they say.
    const std::uint64_t mapAt = changed.size();
    const GapTree gaps = list.gaps();
    list.add(mapNumber, 0);
    list.pages.back().size =
        static_cast<std::uint32_t>(packedSystemPage(list.map(gaps), kPageMapPage).size());
    changed += packedSystemPage(list.map(gaps), kPageMapPage);

    header.set(0x18, static_cast<std::uint32_t>(gaps.root()));
    header.set(0x1C, static_cast<std::uint32_t>(gaps.largest()));
    header.set(0x20, static_cast<std::uint32_t>(gaps.smallest()));
    header.set(0x28, mapNumber);
    header.set(0x2C, changed.size() - kPagesAt, 8);
    header.set(0x34, changed.size(), 8);
    header.set(0x3C, static_cast<std::uint32_t>(gaps.count()));
    header.set(0x40, list.realPages());
    header.set(kMapNumberAt, mapNumber);
    header.set(kMapPlaceAt, mapAt - kPagesAt, 8);
    header.set(kSectionMapAt, sectionMapNumber);
    header.set(0x60, mapNumber);
    header.set(0x64, static_cast<std::uint32_t>(-list.lowest()));
    const std::string hidden = header.hidden();
    changed.replace(kHeaderAt, kHeaderSize, hidden);
    changed += hidden;
    std::string place;
    putLong(place, static_cast<std::uint32_t>(begin + kDataPageHeader));
    changed.replace(kSummaryAddressAt, 4, place);
    return changed;
}

} // namespace zv::dwg
