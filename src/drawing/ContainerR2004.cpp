#include "drawing/ContainerR2004.h"

#include "drawing/BitReader.h"
#include "drawing/Decompression.h"
#include "drawing/FileStart.h"

#include <algorithm>
#include <array>

namespace zv::dwg {

namespace {

constexpr std::size_t kHeaderAt = 0x80, kHeaderSize = 0x6C;
constexpr std::uint64_t kPagesAt = 0x100;
constexpr std::uint32_t kPageMapType = 0x41630E3B, kSectionMapType = 0x4163003B, kDataPageType = 0x4163043B;
constexpr std::uint32_t kDataPageMask = 0x4164536B;
constexpr std::size_t kSystemHeader = 20, kDataHeader = 32;
/// The most bytes that a packed byte can stand for.
constexpr std::uint64_t kMostUnpacked = 256;

using Header = std::array<std::byte, kHeaderSize>;

/// The header is hidden under the numbers of a fixed random sequence; the same step shows it and hides it.
void unmask(Header& header)
{
    std::uint32_t random = 1;
    for (std::byte& byte : header) {
        random = random * 0x343FD + 0x269EC3;
        byte ^= static_cast<std::byte>(random >> 16);
    }
}

/// The sum that pages carry: two running sums, as in Adler-32, of the bytes on top of `seed`.
std::uint32_t pageChecksum(std::uint32_t seed, std::span<const std::byte> bytes)
{
    constexpr std::uint32_t kModulus = 0xFFF1;
    constexpr std::size_t kRun = 0x15B0; // as many as fit before the sums must be reduced
    std::uint32_t low = seed & 0xFFFF, high = seed >> 16;
    while (!bytes.empty()) {
        for (const std::byte byte : bytes.first(std::min(kRun, bytes.size()))) {
            low += std::to_integer<std::uint32_t>(byte);
            high += low;
        }
        low %= kModulus;
        high %= kModulus;
        bytes = bytes.subspan(std::min(kRun, bytes.size()));
    }
    return high << 16 | low;
}

Error damaged(std::string text)
{
    return {ErrorCode::Damaged, std::move(text)};
}

std::string place(std::uint64_t position)
{
    return " at " + std::to_string(position);
}

/// A data page's header without its mask.
struct DataPageHeader {
    std::uint32_t type, section, packedSize, pageSize, offset, headerChecksum, dataChecksum, unknown;
};

DataPageHeader readDataPageHeader(std::span<const std::byte> bytes, std::uint64_t position)
{
    const std::uint32_t mask = kDataPageMask ^ static_cast<std::uint32_t>(position);
    BitReader in(bytes);
    const auto next = [&] { return in.rawLong() ^ mask; };
    return {next(), next(), next(), next(), next(), next(), next(), next()};
}

} // namespace

Result<std::unique_ptr<Container>> ContainerR2004::open(const ByteSource& source, Version version)
{
    std::array<std::byte, kHeaderAt + kHeaderSize> start{};
    if (source.size() < start.size())
        return damaged("file header: the file ends after " + std::to_string(source.size()) + " bytes");
    if (const auto read = source.read(0, start); !read)
        return read.error();
    std::unique_ptr<ContainerR2004> container(new ContainerR2004(source));
    const FileStart fields(start);
    container->m_version = version;
    container->m_versionText = fields.versionText();
    container->m_codePage = fields.codePage();
    container->m_maintenance = fields.maintenance();
    container->m_encrypted = (fields.security() & 1) != 0;

    Header header;
    std::copy_n(start.begin() + kHeaderAt, kHeaderSize, header.begin());
    unmask(header);
    BitReader in(header);
    if (in.bytes(11) != "AcFssFcAJMB")
        return damaged("file header: its name is not there");
    in.seek(0x50 * 8);
    in.rawLong(); // number of the page map's page
    const std::uint64_t pageMapAt = in.rawLongLong() + kPagesAt;
    const std::uint32_t sectionMapPage = in.rawLong();
    if (const auto done = container->readPageMap(pageMapAt); !done)
        return done.error();
    if (const auto done = container->readSectionMap(sectionMapPage); !done)
        return done.error();
    return std::unique_ptr<Container>(std::move(container));
}

Result<std::vector<std::byte>> ContainerR2004::systemPage(std::uint64_t position, std::uint32_t type,
                                                          const char* name) const
{
    std::array<std::byte, kSystemHeader> header;
    const std::uint64_t fileSize = m_source.size();
    if (position > fileSize || fileSize - position < header.size())
        return damaged(name + place(position) + ": beyond the end of the file");
    if (const auto read = m_source.read(position, header); !read)
        return read.error();
    BitReader in(header);
    const std::uint32_t foundType = in.rawLong(), unpackedSize = in.rawLong(), packedSize = in.rawLong();
    const std::uint32_t packing = in.rawLong(), checksum = in.rawLong();
    if (foundType != type)
        return damaged(name + place(position) + ": another kind of page stands there");
    const auto packed = readFile(position + kSystemHeader, packedSize);
    if (!packed)
        return packed.error();
    if (unpackedSize > kMostUnpacked * packedSize)
        return damaged(name + place(position) + ": claims " + std::to_string(unpackedSize) + " bytes");
    std::fill(header.end() - 4, header.end(), std::byte{0});
    // Other writers have got this sum wrong in files that are whole, so it is told and not refused.
    if (pageChecksum(pageChecksum(0, header), *packed) != checksum)
        m_damage.push_back(name + place(position) + ": its checksum differs");
    if (packing != 2)
        return *packed;
    std::vector<std::byte> bytes(unpackedSize);
    if (decompressR2004(*packed, bytes) != unpackedSize)
        return damaged(name + place(position) + ": cannot be unpacked");
    return bytes;
}

Result<void> ContainerR2004::readPageMap(std::uint64_t position)
{
    const auto map = systemPage(position, kPageMapType, "page map");
    if (!map)
        return map.error();
    BitReader in(*map);
    std::uint64_t at = kPagesAt;
    while (in.left() >= 64) {
        const auto number = static_cast<std::int32_t>(in.rawLong());
        const std::uint32_t size = in.rawLong();
        // A gap has a negative number and four more fields, its place in a tree of gaps.
        if (number < 0)
            in.skip(4 * 32);
        else
            m_pages.emplace(static_cast<std::uint32_t>(number), FilePage{at, size, false});
        at += size;
    }
    return {};
}

Result<void> ContainerR2004::readSectionMap(std::uint32_t pageNumber)
{
    const auto page = m_pages.find(pageNumber);
    if (page == m_pages.end())
        return damaged("section map: its page " + std::to_string(pageNumber) + " is not in the page map");
    const auto map = systemPage(page->second.position, kSectionMapType, "section map");
    if (!map)
        return map.error();
    BitReader in(*map);
    const std::uint32_t count = in.rawLong();
    in.skip(4 * 32);
    for (std::uint32_t i = 0; i < count; ++i) {
        if (const auto done = readSectionEntry(in); !done)
            return done;
    }
    return {};
}

Result<void> ContainerR2004::readSectionEntry(BitReader& in)
{
    constexpr unsigned kPageBits = 128, kNameLength = 64;
    SectionEntry entry;
    entry.size = in.rawLongLong();
    const std::uint32_t claimed = in.rawLong();
    const std::uint32_t pageSize = in.rawLong();
    in.skip(32);
    entry.packed = in.rawLong() == 2;
    in.skip(2 * 32); // section number, encrypted or not
    entry.name = in.bytes(kNameLength);
    entry.name.resize(std::min(entry.name.size(), entry.name.find('\0')));
    const std::uint32_t pages = in.checkedCount(claimed, kPageBits);
    if (!in.ok())
        return damaged("section map: ends within section " + std::to_string(m_sections.size()));
    for (std::uint32_t i = 0; i < pages; ++i) {
        const std::uint32_t number = in.rawLong();
        SectionPage page;
        page.packedSize = in.rawLong();
        page.offset = in.rawLongLong();
        page.unpackedSize = pageSize;
        const auto found = m_pages.find(number);
        // A page that is not there, or is another's, costs its own section only.
        if (found != m_pages.end() && !found->second.used) {
            found->second.used = true;
            page.filePosition = found->second.position;
            page.fileSize = found->second.size;
        }
        entry.pages.push_back(page);
    }
    std::sort(entry.pages.begin(), entry.pages.end(),
              [](const SectionPage& a, const SectionPage& b) { return a.offset < b.offset; });
    m_sections.push_back(std::move(entry));
    return {};
}

Result<void> ContainerR2004::unpackPage(const SectionEntry& section, const SectionPage& page,
                                        std::span<std::byte> into) const
{
    const std::string where = "section " + section.name + ": page" + place(page.filePosition);
    const std::uint64_t size =
        std::min(page.fileSize, m_source.size() - std::min(m_source.size(), page.filePosition));
    if (size < kDataHeader)
        return damaged(where + " lies beyond the end of the file");
    const auto bytes = readFile(page.filePosition, size);
    if (!bytes)
        return bytes.error();
    const std::span<const std::byte> whole(*bytes);
    const DataPageHeader header = readDataPageHeader(whole, page.filePosition);
    if (header.type != kDataPageType)
        return damaged(where + (m_encrypted ? " is encrypted with a password" : " is no data page"));
    if (header.packedSize > size - kDataHeader)
        return damaged(where + " is cut short");
    const auto packed = whole.subspan(kDataHeader, header.packedSize);
    if (!section.packed) {
        std::copy_n(packed.begin(), std::min(packed.size(), into.size()), into.begin());
        return {};
    }
    const auto written = decompressR2004(packed, into);
    if (!written)
        return damaged(where + (m_encrypted ? " is encrypted with a password" : " cannot be unpacked"));
    return {};
}

} // namespace zv::dwg
