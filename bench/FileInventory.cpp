#include "FileInventory.h"

#include "drawing/container/Container.h"
#include "drawing/records/ClassTable.h"
#include "drawing/records/ObjectHeader.h"
#include "drawing/records/ObjectMap.h"
#include "drawing/records/ObjectType.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <span>

namespace zv::bench {

using namespace zv::dwg;

namespace {

/// A drawing's records, without what they say.
struct RecordList {
    std::unique_ptr<Container> container;
    ObjectMap map;
    std::vector<std::byte> objects;
    ClassTable classes;
};

std::optional<RecordList> recordsOf(const ByteSource& file)
{
    auto container = Container::open(file);
    if (!container)
        return std::nullopt;
    const auto mapBytes = (*container)->section(Section::ObjectMap);
    auto objects = (*container)->section(Section::Objects);
    if (!mapBytes || !objects)
        return std::nullopt;
    auto map = ObjectMap::read(*mapBytes);
    if (!map)
        return std::nullopt;
    RecordList list{std::move(*container), std::move(*map), std::move(*objects), {}};
    if (const auto bytes = list.container->section(Section::Classes)) {
        auto classes = ClassTable::read(*bytes, list.container->version(),
                                        list.container->maintenanceVersion(), list.container->codePage());
        if (classes)
            list.classes = std::move(*classes);
    }
    return list;
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

std::string kindOf(const RecordList& list, int type)
{
    constexpr int kGroup = 0x48, kView = 0x3D, kUcs = 0x3F;
    switch (type) {
    case kGroup:
        return "group";
    case kView:
        return "named view";
    case kUcs:
        return "named coordinate system";
    case objectType::kProxyObject:
        return "object of another program";
    default:
        break;
    }
    const ObjectClass* const known = type >= objectType::kFirstClass ? list.classes.find(type) : nullptr;
    if (known == nullptr || known->entity)
        return {};
    // What the releases after 2000 put into each new drawing, and what only orders or tells how to draw what
    // is taken over.
    constexpr std::string_view kFurniture[] = {"ACDBDICTIONARYWDFLT",
                                               "ACDBPLACEHOLDER",
                                               "LAYOUT",
                                               "PLOTSETTINGS",
                                               "MATERIAL",
                                               "VISUALSTYLE",
                                               "SCALE",
                                               "MLEADERSTYLE",
                                               "TABLESTYLE",
                                               "DICTIONARYVAR",
                                               "ACDBDETAILVIEWSTYLE",
                                               "ACDBSECTIONVIEWSTYLE",
                                               "CELLSTYLEMAP",
                                               "SORTENTSTABLE",
                                               "DBCOLOR",
                                               "RASTERVARIABLES",
                                               "WIPEOUTVARIABLES",
                                               "ACDBRENDERSETTINGS"};
    return std::find(std::begin(kFurniture), std::end(kFurniture), known->name) == std::end(kFurniture)
               ? known->name
               : std::string();
}

bool hasExtendedData(OpenRecord record)
{
    const Handle own = record.in.handleReference().value;
    static_cast<void>(own);
    return record.in.ok() && record.in.bitShort() != 0;
}

} // namespace

bool sameRecords(std::string_view a, std::string_view b)
{
    const MemorySource first(std::as_bytes(std::span(a))), second(std::as_bytes(std::span(b)));
    const auto here = recordsOf(first), there = recordsOf(second);
    if (!here || !there || here->map.places().size() != there->map.places().size())
        return false;
    for (std::size_t index = 0; index < here->map.places().size(); ++index) {
        const ObjectPlace &place = here->map.places()[index], &other = there->map.places()[index];
        if (place.handle != other.handle)
            return false;
        const auto bytes = recordAt(here->objects, place.offset);
        const auto otherBytes = recordAt(there->objects, other.offset);
        if (std::equal(bytes.begin(), bytes.end(), otherBytes.begin(), otherBytes.end()) && !bytes.empty())
            continue;
        // The one record of this type that is written here holds the properties, and when they were saved.
        const auto left = openRecord(here->objects, place.offset, Version::R2000, 30);
        const auto right = openRecord(there->objects, other.offset, Version::R2000, 30);
        if (!left || !right || left->type != objectType::kXrecord || right->type != objectType::kXrecord)
            return false;
    }
    return true;
}

std::map<std::string, std::size_t> untakenObjects(const ByteSource& file)
{
    std::map<std::string, std::size_t> counts;
    const auto list = recordsOf(file);
    if (!list)
        return counts;
    const Version version = list->container->version();
    for (const ObjectPlace& place : list->map.places()) {
        const auto record = openRecord(list->objects, place.offset, version, list->container->codePage());
        if (!record)
            continue;
        const std::string kind = kindOf(*list, record->type);
        if (!kind.empty())
            ++counts[kind];
        const bool isEntity = record->type < objectType::kDictionary;
        RecordReader in = record->in;
        if (version >= Version::R2000 && version <= Version::R2007)
            in.rawLong();
        if (isEntity && hasExtendedData({in, record->type, record->size}))
            ++counts["entity with data of other programs"];
    }
    return counts;
}

} // namespace zv::bench
