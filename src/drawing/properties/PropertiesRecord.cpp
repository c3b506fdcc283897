#include "drawing/properties/PropertiesRecord.h"

#include "drawing/bits/CodePage.h"
#include "drawing/properties/PropertyTexts.h"
#include "drawing/records/HeaderVariables.h"
#include "drawing/records/ObjectRecords.h"
#include "drawing/records/ObjectType.h"

#include <algorithm>
#include <map>

namespace zv::dwg {

namespace {

std::size_t bigEndian16(std::span<const std::byte> bytes, std::size_t at)
{
    return std::to_integer<std::size_t>(bytes[at]) << 8 | std::to_integer<std::size_t>(bytes[at + 1]);
}

/// Looks an object up in the map without taking the map apart: it comes in parts, each of which starts
/// counting anew, so that its first entry tells whether the object can be in it.
std::optional<std::uint64_t> findObject(std::span<const std::byte> map, Handle wanted)
{
    std::optional<std::uint64_t> found;
    std::size_t at = 0;
    while (map.size() - at >= 4) {
        const std::size_t size = bigEndian16(map, at);
        if (size <= 2 || size + 2 > map.size() - at)
            break;
        BitReader in(map.subspan(at + 2, size - 2));
        Handle handle = 0;
        std::int64_t offset = 0;
        while (in.left() >= 16 && in.ok()) {
            handle += in.modularCharUnsigned();
            offset += in.modularChar();
            if (handle == wanted && offset >= 0 && in.ok())
                found = static_cast<std::uint64_t>(offset);
            if (handle > wanted)
                break;
        }
        at += size + 2;
    }
    return found;
}

/// The bytes of a record, or fewer when the file ends before it does.
Result<std::vector<std::byte>> recordBytes(const Container& container, std::uint64_t offset)
{
    constexpr std::size_t kSizeField = 4;
    auto start = container.objectBytes(offset, kSizeField);
    if (!start)
        return start.error();
    const auto frame = readFrame(*start, container.version());
    return frame ? container.objectBytes(offset, frame->whole()) : start;
}

enum class ValueKind { Text, Point, Double, Short, Long, LongLong, Char, Bytes, Handle, Unknown };

ValueKind kindOf(int code)
{
    struct Range {
        int last;
        ValueKind kind;
    };
    // The kind of value that each group code has, up to and with the code.
    static constexpr Range kRanges[] = {
        {9, ValueKind::Text},       {37, ValueKind::Point},    {59, ValueKind::Double},
        {79, ValueKind::Short},     {89, ValueKind::Unknown},  {99, ValueKind::Long},
        {104, ValueKind::Text},     {105, ValueKind::Handle},  {109, ValueKind::Unknown},
        {139, ValueKind::Point},    {149, ValueKind::Double},  {159, ValueKind::Unknown},
        {169, ValueKind::LongLong}, {179, ValueKind::Short},   {209, ValueKind::Unknown},
        {239, ValueKind::Point},    {269, ValueKind::Unknown}, {279, ValueKind::Short},
        {299, ValueKind::Char},     {309, ValueKind::Text},    {319, ValueKind::Bytes},
        {369, ValueKind::Handle},   {389, ValueKind::Short},   {399, ValueKind::Handle},
        {409, ValueKind::Short},    {419, ValueKind::Text},    {429, ValueKind::Long},
        {439, ValueKind::Text},     {459, ValueKind::Long},    {469, ValueKind::Double},
        {479, ValueKind::Text},     {999, ValueKind::Unknown}, {1003, ValueKind::Text},
        {1004, ValueKind::Bytes},   {1009, ValueKind::Text},   {1039, ValueKind::Point},
        {1042, ValueKind::Double},  {1070, ValueKind::Short},  {1071, ValueKind::Long},
    };
    for (const Range& range : kRanges) {
        if (code <= range.last)
            return code < 0 ? ValueKind::Unknown : range.kind;
    }
    return ValueKind::Unknown;
}

/// Passes over a value that is no text.
void skipValue(BitReader& in, ValueKind kind)
{
    switch (kind) {
    case ValueKind::Char:
        in.skip(8);
        break;
    case ValueKind::Short:
        in.skip(16);
        break;
    case ValueKind::Long:
        in.skip(32);
        break;
    case ValueKind::Double:
    case ValueKind::LongLong:
    case ValueKind::Handle:
        in.skip(64);
        break;
    case ValueKind::Point:
        in.skip(std::size_t{3} * 64);
        break;
    case ValueKind::Bytes:
        in.skip(std::size_t{in.rawChar()} * 8);
        break;
    default:
        in.fail();
        break;
    }
}

Text readRecordText(BitReader& in, Version version, int codePage)
{
    const std::size_t length = in.rawShort();
    if (version >= Version::R2007)
        return decodeUnits(in.units(length));
    const int ownCodePage = in.rawChar();
    return decodeText(in.bytes(length), ownCodePage == 0 ? codePage : ownCodePage);
}

void keep(Properties& properties, int code, Text text, int& ones)
{
    if (code == kMarkCode) {
        if (++ones == 2)
            properties.hyperlinkBase = std::move(text);
        return;
    }
    const auto number = static_cast<std::size_t>(code);
    if (number >= kFirstCustomCode && number < kFirstCustomCode + kMostCustomProperties) {
        // An unused custom property is a lone "=".
        if (text == u"=" || text.empty())
            return;
        const std::size_t equals = std::min(text.find(u'='), text.size());
        properties.custom.emplace_back(text.substr(0, equals),
                                       equals == text.size() ? Text() : text.substr(equals + 1));
        return;
    }
    eachRecordText(properties, [&](int own, Text& held) {
        if (own == code)
            held = std::move(text);
    });
}

} // namespace

std::optional<Properties> parsePropertiesRecord(std::span<const std::byte> data, Version version,
                                                int codePage)
{
    BitReader in(data);
    Properties properties;
    int ones = 0;
    while (in.left() >= 16 && in.ok()) {
        const int code = static_cast<std::int16_t>(in.rawShort());
        const ValueKind kind = kindOf(code);
        if (kind != ValueKind::Text) {
            skipValue(in, kind);
            continue;
        }
        Text text = readRecordText(in, version, codePage);
        if (in.ok())
            keep(properties, code, std::move(text), ones);
    }
    if (!in.ok())
        return std::nullopt;
    return properties;
}

Result<std::optional<Properties>> readPropertiesRecord(const Container& container)
{
    const auto header = readHeaderVariables(container);
    if (!header)
        return header.error();
    const auto map = container.section(Section::ObjectMap);
    if (!map)
        return map.error();
    const auto open = [&](Handle handle, std::vector<std::byte>& bytes) -> Result<std::optional<OpenRecord>> {
        const auto offset = findObject(*map, handle);
        if (!offset)
            return std::optional<OpenRecord>();
        auto read = recordBytes(container, *offset);
        if (!read)
            return read.error();
        bytes = std::move(*read);
        return openRecord(bytes, 0, container.version(), container.codePage());
    };

    std::vector<std::byte> bytes;
    auto dictionary = open(header->handles.namedObjects, bytes);
    if (!dictionary)
        return dictionary.error();
    if (!*dictionary || (**dictionary).type != objectType::kDictionary)
        return Error{ErrorCode::Damaged, "the named-object dictionary is not where the object map says"};
    const Handle wanted = dictionaryEntry((**dictionary).in, u"DWGPROPS");
    if (!(**dictionary).in.ok())
        return Error{ErrorCode::Damaged, "the named-object dictionary is cut short"};
    if (wanted == 0)
        return std::optional<Properties>();
    std::vector<std::byte> recordData;
    auto record = open(wanted, recordData);
    if (!record)
        return record.error();
    // R13 and R14 number the kind of this record in their class table.
    if (!*record || ((**record).type != objectType::kXrecord && (**record).type < objectType::kFirstClass))
        return std::optional<Properties>();
    RecordReader& in = (**record).in;
    readObjectHeader(in);
    const std::uint32_t size = in.checkedCount(in.bitLong(), 8);
    const std::string data = in.bytes(size);
    auto properties =
        parsePropertiesRecord(std::as_bytes(std::span(data)), container.version(), container.codePage());
    if (!in.ok() || !properties)
        return Error{ErrorCode::Damaged, "the record of the drawing's properties is cut short"};
    return properties;
}

} // namespace zv::dwg
