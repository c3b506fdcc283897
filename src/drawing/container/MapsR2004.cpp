#include "drawing/container/MapsR2004.h"

#include "drawing/bits/BitReader.h"
#include "drawing/container/PagesR2004.h"

#include <algorithm>

namespace zv::dwg {

namespace {

constexpr HeaderR2004::Field kCheckCode{0x68, 4};

Error damaged(std::string text)
{
    return {ErrorCode::Damaged, std::move(text)};
}

/// Hides the bytes, or shows hidden ones.
void mask(HeaderR2004::Bytes& bytes)
{
    std::uint32_t random = 1;
    for (std::byte& byte : bytes) {
        random = random * 0x343FD + 0x269EC3;
        byte ^= static_cast<std::byte>(random >> 16);
    }
}

/// The check code of the header shown: the cyclic one of 32 bits, as in ISO 3309.
std::uint32_t checkCode(const HeaderR2004::Bytes& bytes)
{
    std::uint32_t code = 0xFFFFFFFF;
    for (const std::byte byte : bytes) {
        code ^= std::to_integer<std::uint32_t>(byte);
        for (int bit = 0; bit < 8; ++bit)
            code = (code & 1) != 0 ? code >> 1 ^ 0xEDB88320 : code >> 1;
    }
    return ~code;
}

std::vector<FilePage> pageMap(std::span<const std::byte> map)
{
    std::vector<FilePage> pages;
    BitReader in(map);
    std::uint64_t at = MapsR2004::kPagesAt;
    while (in.left() >= 64) {
        FilePage page;
        page.number = static_cast<std::int32_t>(in.rawLong());
        page.size = in.rawLong();
        page.position = at;
        if (page.isGap())
            in.skip(std::size_t{4} * 32); // its place in a tree of gaps
        at += page.size;
        pages.push_back(page);
    }
    return pages;
}

SectionR2004 section(BitReader& in)
{
    constexpr unsigned kPageBits = 128;
    SectionR2004 section;
    section.size = in.rawLongLong();
    const std::uint32_t claimed = in.rawLong();
    section.pageSize = in.rawLong();
    section.unknown = in.rawLong();
    section.packing = in.rawLong();
    section.number = in.rawLong();
    section.encryption = in.rawLong();
    section.name = in.bytes(SectionR2004::kNameSize);
    section.name.resize(std::min(section.name.size(), section.name.find('\0')));
    section.pages.resize(in.checkedCount(claimed, kPageBits));
    for (SectionR2004::Page& page : section.pages) {
        page.number = in.rawLong();
        page.size = in.rawLong();
        page.offset = in.rawLongLong();
    }
    return section;
}

} // namespace

HeaderR2004::HeaderR2004(const Bytes& hidden) : m_bytes(hidden)
{
    mask(m_bytes);
}

bool HeaderR2004::isNamed() const
{
    return BitReader(m_bytes).bytes(11) == "AcFssFcAJMB";
}

std::uint64_t HeaderR2004::number(Field field) const
{
    BitReader in(m_bytes);
    in.seek(field.at * 8);
    return field.bytes == 8 ? in.rawLongLong() : in.rawLong();
}

void HeaderR2004::set(Field field, std::uint64_t value)
{
    for (unsigned i = 0; i < field.bytes; ++i)
        m_bytes[field.at + i] = static_cast<std::byte>(value >> (8 * i));
}

HeaderR2004::Bytes HeaderR2004::hidden() const
{
    HeaderR2004 whole(*this);
    whole.set(kCheckCode, 0);
    whole.set(kCheckCode, checkCode(whole.m_bytes));
    mask(whole.m_bytes);
    return whole.m_bytes;
}

Result<MapsR2004> MapsR2004::read(const ByteSource& source)
{
    HeaderR2004::Bytes hidden;
    if (source.size() < HeaderR2004::kAt + hidden.size())
        return damaged("file header: the file ends after " + std::to_string(source.size()) + " bytes");
    if (const auto read = source.read(HeaderR2004::kAt, hidden); !read)
        return read.error();
    MapsR2004 maps;
    maps.header = HeaderR2004(hidden);
    if (!maps.header.isNamed())
        return damaged("file header: its name is not there");
    const auto pages = readSystemPage(source, maps.header.number(HeaderR2004::kPageMapAt) + kPagesAt,
                                      PageType::PageMap, maps.damage);
    if (!pages)
        return pages.error();
    maps.pages = pageMap(*pages);

    const auto number = static_cast<std::int64_t>(maps.header.number(HeaderR2004::kSectionMapPage));
    const auto page = std::find_if(maps.pages.begin(), maps.pages.end(),
                                   [&](const FilePage& each) { return each.number == number; });
    if (page == maps.pages.end())
        return damaged("section map: its page " + std::to_string(number) + " is not in the page map");
    const auto sections = readSystemPage(source, page->position, PageType::SectionMap, maps.damage);
    if (!sections)
        return sections.error();
    BitReader in(*sections);
    for (std::uint32_t& each : maps.sectionMapHead)
        each = in.rawLong();
    for (std::uint32_t i = 0; i < maps.sectionMapHead[0]; ++i) {
        maps.sections.push_back(section(in));
        if (!in.ok())
            return damaged("section map: ends within section " + std::to_string(i));
    }
    return maps;
}

} // namespace zv::dwg
