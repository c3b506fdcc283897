// Properties of AC1015 files: the record DWGPROPS of the named-object dictionary.
#include "drawing/write/Replace.h"

#include "drawing/records/HeaderVariables.h"
#include "drawing/records/ObjectMap.h"
#include "drawing/write/AmendFile.h"
#include "drawing/write/Bytes.h"
#include "drawing/write/RawRecord.h"
#include "drawing/write/Tables.h"

#include <algorithm>

namespace zv::dwg {

namespace {

constexpr std::string_view kName = "DWGPROPS";

/// The record of a dictionary, and where in it its entries stand.
struct DictionaryRecord {
    RawRecord raw;
    std::size_t countAt = 0, countEnd = 0; ///< Bits of the fields.
    struct Name {
        std::size_t at = 0; ///< A bit of the fields.
        std::string text;
    };
    std::vector<Name> names; ///< In the order of the handles.
    std::size_t namesEnd = 0;
    std::size_t firstHandle = 0; ///< Of the entries.

    Handle entry(std::string_view name) const;
    void add(std::string_view name, Handle to);
};

Result<DictionaryRecord> readDictionary(std::string_view file, std::uint64_t offset)
{
    const Error broken{ErrorCode::Damaged, "the named-object dictionary cannot be read"};
    Result<RawRecord> raw = RawRecord::read(file, offset);
    if (!raw || raw->type != kDictionary)
        return broken;
    DictionaryRecord record{std::move(*raw), 0, 0, {}, 0, 0};
    const ObjectStart start = readStart(record.raw);
    BitReader in = record.raw.reader();
    in.seek(start.at);
    record.countAt = start.at;
    const std::uint32_t count = in.checkedCount(in.bitLong(), 2);
    record.countEnd = in.position();
    in.bitShort(); // Cloning.
    in.rawChar();  // Whether it owns its entries.
    for (std::uint32_t i = 0; i < count && in.ok(); ++i) {
        const std::size_t at = in.position();
        const auto length = static_cast<std::uint16_t>(in.bitShort());
        record.names.push_back({at, in.bytes(length)});
    }
    record.namesEnd = in.position();
    record.firstHandle = start.firstOwn();
    if (!in.ok() || record.firstHandle + count > record.raw.handles.size())
        return broken;
    return record;
}

Handle DictionaryRecord::entry(std::string_view name) const
{
    for (std::size_t i = 0; i < names.size(); ++i)
        if (names[i].text == name)
            return raw.target(firstHandle + i);
    return 0;
}

/// Puts an entry before the first one whose name comes behind it.
void DictionaryRecord::add(std::string_view name, Handle to)
{
    const auto behind =
        std::find_if(names.begin(), names.end(), [name](const Name& entry) { return entry.text > name; });
    const std::size_t at = behind != names.end() ? behind->at : namesEnd;
    const auto place = static_cast<std::ptrdiff_t>(firstHandle) + (behind - names.begin());
    BitWriter text, count;
    text.text(std::string(name));
    count.bitLong(static_cast<std::int32_t>(names.size() + 1));
    raw.splice(at, at, text);
    raw.splice(countAt, countEnd, count);
    raw.handles.insert(raw.handles.begin() + place, {std::uint8_t{kSoftOwner}, to});
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
        dictionary->add(kName, record);
        places[dictionary->raw.handle] = static_cast<std::uint32_t>(changed.size());
        changed += dictionary->raw.framed();
    }
    places[record] = static_cast<std::uint32_t>(changed.size());
    const auto made = propertiesRecord(record, dictionary->raw.handle, properties);
    if (!made)
        return made.error();
    changed += made->framed();

    const std::size_t locator = locatorAt(file, kObjectMapPart);
    if (locator == 0)
        return Error{ErrorCode::Damaged, "section locators: none of the object map"};
    const std::size_t oldMapEnd = std::size_t{longAt(file, locator + 1)} + longAt(file, locator + 5);
    PartPlace place{static_cast<std::uint32_t>(changed.size()), 0};
    const std::string newMap = objectMap(places);
    place.size = static_cast<std::uint32_t>(newMap.size());
    changed += newMap;
    setLocator(changed, locator, place);
    correctSecondHeader(changed, std::min(oldMapEnd, file.size()), place);
    return changed;
}

} // namespace zv::dwg
