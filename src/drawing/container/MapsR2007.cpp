#include "drawing/container/MapsR2007.h"

#include "drawing/bits/BitReader.h"
#include "drawing/container/Decompression.h"
#include "drawing/container/ReedSolomon.h"

#include <algorithm>

namespace zv::dwg {

namespace {

constexpr std::uint64_t kMostUnpacked = 65536; ///< Per packed byte: far more than any map reaches.
constexpr std::uint64_t kLargestMap = 1 << 24;

Error damaged(std::string text)
{
    return {ErrorCode::Damaged, std::move(text)};
}

/// Where a map stands, and how it is stored.
struct MapPlace {
    const char* name;
    std::uint64_t position, packedSize, size, repeats;
};

/// Reads the parts of a file that lead to all others. The guard bytes are looked at only when something
/// cannot be read without, because that takes its time.
class MapReader {
public:
    MapReader(const ByteSource& source, bool corrected) : m_source(source), m_corrected(corrected) {}

    Result<MapsR2007> read() const
    {
        MapsR2007 maps;
        if (const auto done = readHeader(maps.header); !done)
            return done.error();
        const auto field = [&](HeaderR2007::Field which) { return maps.header.number(which); };
        const auto pages =
            systemPage({"page map", field(HeaderR2007::kPageMapAt) + MapsR2007::kPagesAt,
                        field(HeaderR2007::kPageMapPackedSize), field(HeaderR2007::kPageMapSize),
                        field(HeaderR2007::kPageMapRepeats)});
        if (!pages)
            return pages.error();
        if (const auto done = readPages(*pages, maps.pages); !done)
            return done.error();
        const std::uint64_t number = field(HeaderR2007::kSectionMapPage);
        const auto page = std::find_if(maps.pages.begin(), maps.pages.end(), [&](const FilePage& each) {
            return each.number > 0 && static_cast<std::uint64_t>(each.number) == number;
        });
        if (page == maps.pages.end())
            return damaged("section map: its page is not in the page map");
        const auto sections =
            systemPage({"section map", page->position, field(HeaderR2007::kSectionMapPackedSize),
                        field(HeaderR2007::kSectionMapSize), field(HeaderR2007::kSectionMapRepeats)});
        if (!sections)
            return sections.error();
        if (const auto done = readSections(*sections, maps.sections); !done)
            return done.error();
        return maps;
    }

private:
    /// The data of blocks of the system.
    Result<std::vector<std::byte>> unwoven(std::uint64_t position, std::uint64_t blocks) const
    {
        auto woven = readBytes(m_source, position, blocks * ReedSolomon::kBlock);
        if (!woven)
            return woven;
        if (m_corrected)
            ReedSolomon::correct(*woven, blocks, ReedSolomon::kSystemData);
        return ReedSolomon::data(*woven, blocks, ReedSolomon::kSystemData);
    }

    Result<void> readHeader(HeaderR2007& header) const
    {
        const auto data = unwoven(HeaderR2007::kAt, HeaderR2007::kBlocks);
        if (!data)
            return damaged("file header: the file ends within it");
        std::copy_n(data->begin(), header.sequence.size(), header.sequence.begin());
        BitReader in(*data);
        in.seek(HeaderR2007::kLengthAt * 8);
        const auto length = static_cast<std::int32_t>(in.rawLong());
        const auto rest = std::span(*data).subspan(HeaderR2007::kPrologue);
        if (length <= 0) {
            // A negative length tells that it is not packed.
            std::copy_n(rest.begin(), header.bytes.size(), header.bytes.begin());
            return {};
        }
        if (static_cast<std::size_t>(length) > rest.size() ||
            decompressR2007(rest.first(static_cast<std::size_t>(length)), header.bytes) !=
                header.bytes.size())
            return damaged("file header: cannot be unpacked");
        return {};
    }

    Result<std::vector<std::byte>> systemPage(const MapPlace& map) const
    {
        const std::string name = map.name;
        if (map.packedSize == 0 || map.packedSize > m_source.size() || map.repeats == 0 ||
            map.repeats > m_source.size() / map.packedSize || map.size > kLargestMap ||
            map.size > kMostUnpacked * map.packedSize)
            return damaged(name + ": its sizes cannot be");
        if (map.position > m_source.size())
            return damaged(name + ": lies beyond the end of the file");
        auto data =
            unwoven(map.position, ReedSolomon::blocks(ReedSolomon::padded(map.packedSize) * map.repeats,
                                                      ReedSolomon::kSystemData));
        if (!data)
            return damaged(name + ": " + data.error().text);
        data->resize(map.packedSize);
        if (map.packedSize == map.size)
            return data;
        std::vector<std::byte> bytes(map.size);
        if (decompressR2007(*data, bytes) != map.size)
            return damaged(name + " at " + std::to_string(map.position) + ": cannot be unpacked");
        return bytes;
    }

    Result<void> readPages(std::span<const std::byte> map, std::vector<FilePage>& pages) const
    {
        BitReader in(map);
        std::uint64_t at = MapsR2007::kPagesAt;
        while (in.left() >= 128) {
            FilePage page;
            page.size = in.rawLongLong();
            page.number = static_cast<std::int64_t>(in.rawLongLong());
            page.position = at;
            if (page.size > m_source.size())
                return damaged("page map: a page of " + std::to_string(page.size) + " bytes");
            at += page.size;
            pages.push_back(page);
        }
        return {};
    }

    static Result<void> readSections(std::span<const std::byte> map, std::vector<SectionR2007>& sections)
    {
        constexpr unsigned kPageBits = 7 * 64;
        BitReader in(map);
        while (in.left() >= std::size_t{8} * 64) {
            SectionR2007 section;
            section.size = in.rawLongLong();
            section.pageSize = in.rawLongLong();
            section.encryption = in.rawLongLong();
            section.nameHash = in.rawLongLong();
            const std::uint64_t nameBytes = in.rawLongLong();
            section.unknown = in.rawLongLong();
            section.encoding = in.rawLongLong();
            const std::uint64_t claimed = in.rawLongLong();
            if (nameBytes > in.left() / 8 || claimed > in.left() / kPageBits)
                return damaged("section map: cut short in section " + std::to_string(sections.size()));
            section.name = in.units(nameBytes / 2);
            section.pages.resize(claimed);
            for (SectionR2007::Page& page : section.pages)
                for (std::uint64_t* field : {&page.offset, &page.size, &page.number, &page.unpackedSize,
                                             &page.packedSize, &page.checksum, &page.code})
                    *field = in.rawLongLong();
            if (!in.ok())
                return damaged("section map: cut short in section " + section.plainName());
            sections.push_back(std::move(section));
        }
        return {};
    }

    const ByteSource& m_source;
    bool m_corrected;
};

} // namespace

std::uint64_t HeaderR2007::number(Field field) const
{
    BitReader in(bytes);
    in.seek(field * 8);
    return in.rawLongLong();
}

void HeaderR2007::set(Field field, std::uint64_t value)
{
    for (std::size_t i = 0; i < sizeof value; ++i)
        bytes[field + i] = static_cast<std::byte>(value >> (8 * i));
}

std::string SectionR2007::plainName() const
{
    std::string plain;
    for (const char16_t unit : name)
        if (unit != 0)
            plain += static_cast<char>(unit);
    return plain;
}

Result<MapsR2007> MapsR2007::read(const ByteSource& source)
{
    auto maps = MapReader(source, false).read();
    return maps ? std::move(maps) : MapReader(source, true).read();
}

} // namespace zv::dwg
