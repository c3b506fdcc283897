#include "drawing/ContainerR2007.h"

#include "drawing/BitReader.h"
#include "drawing/Decompression.h"
#include "drawing/FileStart.h"
#include "drawing/ReedSolomon.h"

#include <algorithm>
#include <array>

namespace zv::dwg {

namespace {

constexpr std::size_t kHeaderAt = 0x80, kHeaderBlocks = 3, kHeaderSize = 0x110;
constexpr std::uint64_t kPagesAt = 0x480;
constexpr std::uint64_t kMostUnpacked = 65536; ///< Per packed byte, in a map: far more than any map reaches.
constexpr std::uint64_t kLargestMap = 1 << 24;

Error damaged(std::string text)
{
    return {ErrorCode::Damaged, std::move(text)};
}

std::string place(std::uint64_t position)
{
    return " at " + std::to_string(position);
}

std::uint64_t roundedUp(std::uint64_t value, std::uint64_t unit)
{
    return (value + unit - 1) / unit;
}

/// The data of woven blocks; with `corrected`, after wrong bytes are set right where that can be done.
std::vector<std::byte> unwoven(std::vector<std::byte> woven, std::size_t blocks, std::size_t dataBytes,
                               bool corrected)
{
    if (corrected)
        ReedSolomon::correct(woven, blocks, dataBytes);
    return ReedSolomon::data(woven, blocks, dataBytes);
}

} // namespace

Result<std::unique_ptr<Container>> ContainerR2007::open(const ByteSource& source)
{
    const auto start = FileStart::read(source);
    if (!start)
        return start.error();
    // The guard bytes are looked at only when something cannot be read, because that takes its time.
    for (const bool corrected : {false, true}) {
        std::unique_ptr<ContainerR2007> container(new ContainerR2007(source));
        const FileStart fields(*start);
        container->m_version = Version::R2007;
        container->m_versionText = fields.versionText();
        container->m_codePage = fields.codePage();
        container->m_maintenance = fields.maintenance();
        const auto read = container->readMaps(corrected);
        if (read)
            return std::unique_ptr<Container>(std::move(container));
        if (corrected)
            return read.error();
    }
    return damaged("file header");
}

Result<void> ContainerR2007::readMaps(bool corrected)
{
    const auto fields = header(corrected);
    if (!fields)
        return fields.error();
    const auto field = [&](std::size_t at) {
        BitReader in(*fields);
        in.seek(at * 8);
        return in.rawLongLong();
    };
    const auto pageMap =
        systemPage({field(0x38) + kPagesAt, field(0x50), field(0x58), field(0x18)}, corrected, "page map");
    if (!pageMap)
        return pageMap.error();
    if (const auto done = readPageMap(*pageMap); !done)
        return done;
    const auto page = m_pages.find(field(0xC0));
    if (page == m_pages.end())
        return damaged("section map: its page is not in the page map");
    const auto sectionMap =
        systemPage({page->second.position, field(0xB0), field(0xC8), field(0xD8)}, corrected, "section map");
    if (!sectionMap)
        return sectionMap.error();
    return readSectionMap(*sectionMap);
}

Result<std::vector<std::byte>> ContainerR2007::header(bool corrected) const
{
    constexpr std::size_t kLengthAt = 24, kDataAt = 32;
    auto woven = readFile(kHeaderAt, kHeaderBlocks * ReedSolomon::kBlock);
    if (!woven)
        return damaged("file header: the file ends within it");
    const auto data = unwoven(std::move(*woven), kHeaderBlocks, ReedSolomon::kSystemData, corrected);
    BitReader in(data);
    in.seek(kLengthAt * 8);
    const auto length = static_cast<std::int32_t>(in.rawLong());
    const auto rest = std::span(data).subspan(kDataAt);
    std::vector<std::byte> fields(kHeaderSize);
    if (length <= 0) {
        // A negative length tells that it is not packed.
        std::copy_n(rest.begin(), kHeaderSize, fields.begin());
        return fields;
    }
    if (static_cast<std::size_t>(length) > rest.size() ||
        decompressR2007(rest.first(static_cast<std::size_t>(length)), fields) != kHeaderSize)
        return damaged("file header: cannot be unpacked");
    return fields;
}

Result<std::vector<std::byte>> ContainerR2007::systemPage(const MapPlace& map, bool corrected,
                                                          const char* name) const
{
    if (map.packedSize == 0 || map.packedSize > m_source.size() || map.repeats == 0 ||
        map.repeats > m_source.size() / map.packedSize || map.unpackedSize > kLargestMap ||
        map.unpackedSize > kMostUnpacked * map.packedSize)
        return damaged(std::string(name) + ": its sizes cannot be");
    const std::uint64_t blocks =
        roundedUp(roundedUp(map.packedSize, 8) * 8 * map.repeats, ReedSolomon::kSystemData);
    if (map.position > m_source.size())
        return damaged(std::string(name) + ": lies beyond the end of the file");
    auto woven = readFile(map.position, blocks * ReedSolomon::kBlock);
    if (!woven)
        return damaged(std::string(name) + ": " + woven.error().text);
    auto data = unwoven(std::move(*woven), blocks, ReedSolomon::kSystemData, corrected);
    data.resize(map.packedSize);
    if (map.packedSize == map.unpackedSize)
        return data;
    std::vector<std::byte> bytes(map.unpackedSize);
    if (decompressR2007(data, bytes) != map.unpackedSize)
        return damaged(name + place(map.position) + ": cannot be unpacked");
    return bytes;
}

Result<void> ContainerR2007::readPageMap(std::span<const std::byte> map)
{
    BitReader in(map);
    std::uint64_t at = kPagesAt;
    while (in.left() >= 128) {
        const std::uint64_t size = in.rawLongLong();
        const auto number = static_cast<std::int64_t>(in.rawLongLong());
        if (size > m_source.size())
            return damaged("page map: a page of " + std::to_string(size) + " bytes");
        // A negative number stands for a gap.
        if (number > 0)
            m_pages.emplace(static_cast<std::uint64_t>(number), FilePage{at, size, false});
        at += size;
    }
    return {};
}

Result<void> ContainerR2007::readSectionMap(std::span<const std::byte> map)
{
    constexpr unsigned kPageBits = 7 * 64;
    BitReader in(map);
    while (in.left() >= 8 * 64) {
        SectionEntry entry;
        entry.size = in.rawLongLong();
        in.skip(3 * 64); // largest page, encryption, hash of the name
        const std::uint64_t nameBytes = in.rawLongLong();
        in.skip(64);
        entry.encoding = static_cast<int>(in.rawLongLong());
        const std::uint64_t claimed = in.rawLongLong();
        if (nameBytes > in.left() / 8 || claimed > in.left() / kPageBits)
            return damaged("section map: cut short in section " + std::to_string(m_sections.size()));
        for (const char16_t unit : in.units(nameBytes / 2)) {
            if (unit != 0)
                entry.name += static_cast<char>(unit);
        }
        for (std::uint64_t i = 0; i < claimed; ++i) {
            SectionPage page;
            page.offset = in.rawLongLong();
            in.skip(64); // size in the file, which the page map tells as well
            const std::uint64_t number = in.rawLongLong();
            page.unpackedSize = in.rawLongLong();
            page.packedSize = in.rawLongLong();
            in.skip(2 * 64); // sums
            const auto found = m_pages.find(number);
            // A page that is not there, or is another's, costs its own section only.
            if (found != m_pages.end() && !found->second.used) {
                found->second.used = true;
                page.filePosition = found->second.position;
                page.fileSize = found->second.size;
            }
            entry.pages.push_back(page);
        }
        if (!in.ok())
            return damaged("section map: cut short in section " + entry.name);
        m_sections.push_back(std::move(entry));
    }
    return {};
}

Result<void> ContainerR2007::unpackPage(const SectionEntry& section, const SectionPage& page,
                                        std::span<std::byte> into) const
{
    constexpr int kGuarded = 4;
    const std::string where = "section " + section.name + ": page" + place(page.filePosition);
    if (page.packedSize > page.fileSize)
        return damaged(where + " claims more than its place holds");
    auto bytes = readFile(page.filePosition, page.fileSize);
    if (!bytes)
        return damaged(where + " is cut short");
    if (section.encoding == kGuarded) {
        const std::uint64_t blocks = roundedUp(roundedUp(page.packedSize, 8) * 8, ReedSolomon::kPageData);
        if (blocks * ReedSolomon::kBlock > bytes->size())
            return damaged(where + " claims more than its place holds");
        *bytes = unwoven(std::move(*bytes), blocks, ReedSolomon::kPageData, true);
    }
    const auto packed = std::span<const std::byte>(*bytes).first(page.packedSize);
    if (page.packedSize == page.unpackedSize) {
        std::copy_n(packed.begin(), std::min(packed.size(), into.size()), into.begin());
        return {};
    }
    if (!decompressR2007(packed, into))
        return damaged(where + " cannot be unpacked");
    return {};
}

} // namespace zv::dwg
