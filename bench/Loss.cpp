#include "DocumentEdit.h"

#include "drawing/Writer.h"
#include "drawing/container/Container.h"
#include "drawing/records/ObjectMap.h"

#include <algorithm>
#include <span>

namespace zv::bench {

using namespace zv::dwg;

namespace {

Result<ObjectMap> objectMapOf(const Container& container)
{
    const Result<std::vector<std::byte>> section = container.section(Section::ObjectMap);
    if (!section)
        return section.error();
    return ObjectMap::read(*section);
}

/// A record's bytes. It starts with its length in words of 15 bits, low ones first, each but the last with
/// its high bit set. Empty when it does not fit the stream.
std::span<const std::byte> recordAt(std::span<const std::byte> stream, std::uint64_t offset)
{
    constexpr int kMostWords = 2;
    std::uint64_t size = 0;
    for (int word = 0; word < kMostWords; ++word) {
        if (offset > stream.size() || stream.size() - offset < 2)
            return {};
        const auto low = std::to_integer<std::uint64_t>(stream[offset]);
        const auto high = std::to_integer<std::uint64_t>(stream[offset + 1]);
        offset += 2;
        size |= (low | (high & 0x7F) << 8) << (15 * word);
        if (high < 0x80)
            return size <= stream.size() - offset ? stream.subspan(offset, size)
                                                  : std::span<const std::byte>();
    }
    return {};
}

/// Whether both files hold the same objects, record by record.
bool sameObjects(const ByteSource& a, const ByteSource& b)
{
    const auto first = Container::open(a);
    const auto second = Container::open(b);
    if (!first || !second)
        return false;
    const Result<ObjectMap> firstMap = objectMapOf(**first);
    const Result<ObjectMap> secondMap = objectMapOf(**second);
    if (!firstMap || !secondMap || firstMap->places().size() != secondMap->places().size())
        return false;
    const auto firstObjects = (*first)->section(Section::Objects);
    const auto secondObjects = (*second)->section(Section::Objects);
    if (!firstObjects || !secondObjects)
        return false;
    for (std::size_t index = 0; index < firstMap->places().size(); ++index) {
        const ObjectPlace& here = firstMap->places()[index];
        const ObjectPlace& there = secondMap->places()[index];
        if (here.handle != there.handle)
            return false;
        const auto record = recordAt(*firstObjects, here.offset);
        const auto other = recordAt(*secondObjects, there.offset);
        if (record.empty() || !std::equal(record.begin(), record.end(), other.begin(), other.end()))
            return false;
    }
    return true;
}

} // namespace

std::string lossOfRewriting(const ByteSource& source, const Document& document)
{
    if (!document.skipped.empty())
        return "it holds objects of the kind " + document.skipped.begin()->first;
    if (!document.damage.empty())
        return "it is damaged: " + document.damage.front();
    const Result<std::string> written = writeDocument(document, {});
    if (!written)
        return written.error().text;
    if (document.version != Version::R2000)
        return "its file is of a version that this program does not write";
    const MemorySource rewritten(std::as_bytes(std::span(*written)));
    if (!sameObjects(source, rewritten))
        return "its file holds more than this program keeps";
    return {};
}

} // namespace zv::bench
