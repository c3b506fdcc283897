// Properties of AC1015 files: the record DWGPROPS of the named-object dictionary.
#include "drawing/write/Replace.h"

#include "drawing/records/HeaderVariables.h"
#include "drawing/records/ObjectMap.h"
#include "drawing/records/RecordReader.h"
#include "drawing/write/AmendFile.h"
#include "drawing/write/Bytes.h"
#include "drawing/write/Tables.h"

#include <algorithm>

namespace zv::dwg {

namespace {

constexpr std::string_view kName = "DWGPROPS";

/// A record of a dictionary taken apart, so that an entry can be added.
struct DictionaryRecord {
    Handle handle = 0;
    struct Extended {
        Handle application;
        std::string bytes;
    };
    std::vector<Extended> extended;
    std::int16_t cloning = 0;
    std::uint8_t hardOwner = 0;
    Handle owner = 0, extensionDictionary = 0;
    std::vector<Handle> reactors;
    struct Entry {
        std::string name;
        HandleReference reference;
    };
    std::vector<Entry> entries;

    Handle entry(std::string_view name) const
    {
        for (const Entry& each : entries)
            if (each.name == name)
                return each.reference.from(handle);
        return 0;
    }
    std::string framed() const;
};

Result<DictionaryRecord> readDictionary(std::string_view file, std::uint64_t offset)
{
    const Error broken{ErrorCode::Damaged, "the named-object dictionary cannot be read"};
    if (offset >= file.size())
        return broken;
    BitReader frame(bytesOf(file.substr(static_cast<std::size_t>(offset))));
    const std::size_t size = frame.modularShort(),
                      start = static_cast<std::size_t>(offset) + frame.position() / 8;
    if (!frame.ok() || size > file.size() - start)
        return broken;
    BitReader in(bytesOf(file.substr(start, size))), handles = in;
    if (in.bitShort() != kDictionary)
        return broken;
    handles.seek(in.rawLong());
    DictionaryRecord record;
    record.handle = in.handleReference().value;
    while (const auto length = static_cast<std::uint16_t>(in.bitShort())) {
        const Handle application = in.handleReference().value;
        record.extended.push_back({application, in.bytes(length)});
        if (!in.ok())
            return broken;
    }
    const std::uint32_t reactors = in.checkedCount(in.bitLong(), 1);
    const std::uint32_t count = in.checkedCount(in.bitLong(), 2);
    record.cloning = in.bitShort();
    record.hardOwner = in.rawChar();
    record.owner = handles.handleReference().from(record.handle);
    for (std::uint32_t i = 0; i < reactors && handles.ok(); ++i)
        record.reactors.push_back(handles.handleReference().from(record.handle));
    record.extensionDictionary = handles.handleReference().from(record.handle);
    for (std::uint32_t i = 0; i < count && in.ok(); ++i) {
        const auto length = static_cast<std::uint16_t>(in.bitShort());
        std::string name = in.bytes(length);
        record.entries.push_back({std::move(name), handles.handleReference()});
    }
    if (!in.ok() || !handles.ok())
        return broken;
    return record;
}

std::string DictionaryRecord::framed() const
{
    Record record(kDictionary, handle);
    for (const Extended& each : extended)
        record.extendedData(each.application, each.bytes);
    record.fields.bitLong(static_cast<std::int32_t>(reactors.size()));
    record.fields.bitLong(static_cast<std::int32_t>(entries.size()));
    record.fields.bitShort(cloning);
    record.fields.rawChar(hardOwner);
    record.handles.handle(kSoftPointer, owner);
    for (const Handle reactor : reactors)
        record.handles.handle(kSoftPointer, reactor);
    record.handles.handle(kHardOwner, extensionDictionary);
    for (const Entry& each : entries) {
        record.fields.text(each.name);
        record.handles.handle(each.reference.code == kHardOwner ? kHardOwner : kSoftOwner,
                              each.reference.from(handle));
    }
    return record.framed();
}

/// The highest handle below the seed that no object has; 0 when there is none.
Handle freeHandle(const ObjectMap& map, Handle seed)
{
    for (Handle handle = seed; handle-- > 1;)
        if (map.find(handle) == ObjectMap::kNone)
            return handle;
    return 0;
}

/// Writes bits over others, the first one highest.
void overwrite(std::string& bytes, std::size_t bit, const BitWriter& with)
{
    BitReader in(bytesOf(with.bytes()));
    for (std::size_t i = 0; i < with.size(); ++i, ++bit) {
        const auto mask = static_cast<unsigned char>(0x80u >> (bit & 7));
        auto byte = static_cast<unsigned char>(bytes[bit / 8]);
        byte = static_cast<unsigned char>(in.bit() ? byte | mask : byte & ~mask);
        bytes[bit / 8] = static_cast<char>(byte);
    }
}

/// Tells the copy of the file's head the object map's new place. The copy is an aid for recovery; one that
/// cannot be read is left as it is.
void correctSecondHeader(std::string& file, std::size_t from, PartPlace map)
{
    static const std::string kSentinel("\xD4\x7B\x21\xCE\x28\x93\x9F\xBF\x53\x24\x40\x09\x12\x3C\xAA\x01",
                                       16);
    constexpr std::size_t kFixed = 11 + 1 + 1, kFrame = 4 + 2 + 8;
    const std::size_t sentinel = file.find(kSentinel, from);
    if (sentinel == std::string::npos || file.size() - sentinel < kSentinel.size() + 4)
        return;
    const std::size_t begin = sentinel + kSentinel.size();
    const std::size_t size = longAt(file, begin);
    if (size < kFrame || size > file.size() - begin)
        return;
    std::string body = file.substr(begin + 4, size - kFrame);
    BitReader in(bytesOf(body));
    in.bitLong();
    in.skip(kFixed * 8);
    in.bitShort();
    in.rawShort();
    const int sections = in.bitShort();
    BitWriter place, length;
    place.bitLong(static_cast<std::int32_t>(map.offset));
    length.bitLong(static_cast<std::int32_t>(map.size));
    for (int i = 0; i < sections && in.ok(); ++i) {
        const int number = in.rawChar();
        const std::size_t placeAt = in.position();
        in.bitLong();
        const std::size_t lengthAt = in.position();
        in.bitLong();
        if (number != kObjectMapPart)
            continue;
        // Numbers of another length would move all that follows.
        if (lengthAt - placeAt != place.size() || in.position() - lengthAt != length.size() || !in.ok())
            return;
        overwrite(body, placeAt, place);
        overwrite(body, lengthAt, length);
        file.replace(begin + 4, body.size(), body);
        setShort(file, begin + 4 + body.size(),
                 checkCode(std::string_view(file).substr(begin, 4 + body.size())));
        return;
    }
}

} // namespace

// The new records and a new object map go to the file's end, so that every other byte keeps its place; the
// old ones stay behind as bytes that nothing points to.
Result<std::string> replacePropertiesRecord(std::string_view file, const Container& container,
                                            const Properties& properties)
{
    const auto header = readHeaderVariables(container);
    if (!header)
        return header.error();
    const auto mapBytes = container.section(Section::ObjectMap);
    if (!mapBytes)
        return mapBytes.error();
    const auto map = ObjectMap::read(*mapBytes);
    if (!map)
        return map.error();
    const std::size_t at = map->find(header->handles.namedObjects);
    if (at == ObjectMap::kNone)
        return Error{ErrorCode::Damaged, "the drawing has no named-object dictionary"};
    auto dictionary = readDictionary(file, map->places()[at].offset);
    if (!dictionary)
        return dictionary.error();

    std::map<Handle, std::uint32_t> places;
    for (const ObjectPlace& place : map->places())
        places[place.handle] = static_cast<std::uint32_t>(place.offset);
    std::string changed(file);
    Handle record = dictionary->entry(kName);
    if (record == 0) {
        record = freeHandle(*map, header->variables.handleSeed);
        if (record == 0)
            return Error{ErrorCode::Unsupported, "the drawing has no handle left for its properties"};
        const auto behind = std::find_if(dictionary->entries.begin(), dictionary->entries.end(),
                                         [](const auto& entry) { return entry.name > kName; });
        dictionary->entries.insert(behind, {std::string(kName), {kSoftOwner, record}});
        places[dictionary->handle] = static_cast<std::uint32_t>(changed.size());
        changed += dictionary->framed();
    }
    places[record] = static_cast<std::uint32_t>(changed.size());
    const auto made = propertiesRecord(record, dictionary->handle, properties);
    if (!made)
        return made.error();
    changed += made->framed();

    const std::size_t locator = locatorAt(file, kObjectMapPart);
    if (locator == 0)
        return Error{ErrorCode::Damaged, "section locators: none of the object map"};
    const std::size_t oldMapEnd = std::size_t{longAt(file, locator + 1)} + longAt(file, locator + 5);
    PartPlace place{static_cast<std::uint32_t>(changed.size()), 0};
    const std::string newMap = objectMap(places, 0);
    place.size = static_cast<std::uint32_t>(newMap.size());
    changed += newMap;
    setLocator(changed, locator, place);
    correctSecondHeader(changed, std::min(oldMapEnd, file.size()), place);
    return changed;
}

} // namespace zv::dwg
