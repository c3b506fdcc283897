#include "drawing/write/RawRecord.h"

#include "drawing/records/ObjectHeader.h"
#include "drawing/write/Bytes.h"

namespace zv::dwg {

namespace {

/// Behind the object's handle and its extended data.
void passExtendedData(BitReader& in)
{
    in.handleReference();
    while (in.ok()) {
        const auto length = static_cast<std::uint16_t>(in.bitShort());
        if (length == 0)
            return;
        in.handleReference();
        in.skip(std::size_t{length} * 8);
    }
}

void copyBits(BitWriter& out, BitReader in, std::size_t count)
{
    constexpr unsigned kWord = 64;
    for (; count >= kWord; count -= kWord)
        out.bits(in.bits(kWord), kWord);
    out.bits(in.bits(static_cast<unsigned>(count)), static_cast<unsigned>(count));
}

} // namespace

BitWriter part(const BitWriter& bits, std::size_t from, std::size_t to)
{
    BitWriter out;
    BitReader in(bytesOf(bits.bytes()));
    in.seek(from);
    copyBits(out, in, to - from);
    return out;
}

BitWriter spliced(const BitWriter& bits, std::size_t from, std::size_t to, const BitWriter& with)
{
    BitWriter out;
    BitReader in(bytesOf(bits.bytes()));
    copyBits(out, in, from);
    out.append(with);
    in.seek(to);
    copyBits(out, in, bits.size() - to);
    return out;
}

Result<RawRecord> RawRecord::read(std::string_view file, std::uint64_t offset)
{
    constexpr unsigned kFewestHandleBits = 8;
    const Error broken{ErrorCode::Damaged, "a record at " + std::to_string(offset) + " cannot be read"};
    if (offset >= file.size())
        return broken;
    const std::string_view rest = file.substr(static_cast<std::size_t>(offset));
    const auto frame = readFrame(bytesOf(rest), Version::R2000);
    if (!frame || frame->size > rest.size() - frame->start)
        return broken;
    BitReader in(bytesOf(rest.substr(frame->start, frame->size)));
    RawRecord record;
    record.type = in.bitShort();
    const std::size_t handlesAt = in.rawLong();
    const std::size_t fieldsAt = in.position();
    if (!in.ok() || handlesAt < fieldsAt || handlesAt > frame->size * 8)
        return broken;
    copyBits(record.fields, in, handlesAt - fieldsAt);
    record.handle = record.reader().handleReference().value;
    in.seek(handlesAt);
    while (in.left() >= kFewestHandleBits && in.ok())
        record.handles.push_back(in.handleReference());
    if (!in.ok())
        return broken;
    return record;
}

BitReader RawRecord::reader() const
{
    BitReader in(bytesOf(fields.bytes()));
    in.endAt(fields.size());
    return in;
}

void RawRecord::point(std::size_t index, Handle to)
{
    constexpr std::uint8_t kFirstCounted = 6; // Codes from here on count from the record's own handle.
    HandleReference& reference = handles[index];
    reference.code = reference.code >= kFirstCounted ? std::uint8_t{kSoftPointer} : reference.code;
    reference.value = to;
}

void RawRecord::splice(std::size_t from, std::size_t to, const BitWriter& with)
{
    fields = spliced(fields, from, to, with);
}

std::string RawRecord::framed() const
{
    BitWriter all;
    all.bitShort(static_cast<std::int16_t>(type));
    all.rawLong(static_cast<std::uint32_t>(all.size() + 32 + fields.size()));
    all.append(fields);
    for (const HandleReference& reference : handles)
        all.handle(reference.code, reference.value);
    std::string framed;
    putModularShort(framed, static_cast<std::uint32_t>(all.bytes().size()));
    framed += all.bytes();
    putShort(framed, checkCode(framed));
    return framed;
}

EntityLinks readLinks(const RawRecord& record)
{
    EntityLinks links;
    BitReader in = record.reader();
    passExtendedData(in);
    if (in.bit()) { // A picture of a proxy.
        const std::size_t length = in.rawLong();
        in.skip(length * 8);
    }
    links.mode = in.bitPair();
    const std::int32_t reactors = in.bitLong();
    links.linksAt = in.position();
    links.neighbours = in.bit();
    links.first = (links.mode == 0 ? 1 : 0) + static_cast<std::size_t>(reactors) + 1;
    const std::size_t handles = links.first + (links.neighbours ? 0 : 2);
    links.ok = in.ok() && reactors >= 0 && handles <= record.handles.size();
    return links;
}

void setLinks(RawRecord& record, Handle previous, Handle next)
{
    const EntityLinks links = readLinks(record);
    if (!links.ok)
        return;
    const auto at = record.handles.begin() + static_cast<std::ptrdiff_t>(links.first);
    if (links.neighbours) {
        BitWriter told;
        told.bit(false);
        record.splice(links.linksAt, links.linksAt + 1, told);
        record.handles.insert(at, 2, {std::uint8_t{kSoftPointer}, 0});
    }
    record.handles[links.first] = {std::uint8_t{kSoftPointer}, previous};
    record.handles[links.first + 1] = {std::uint8_t{kSoftPointer}, next};
}

ObjectStart readStart(const RawRecord& record)
{
    ObjectStart start;
    BitReader in = record.reader();
    passExtendedData(in);
    const std::int32_t reactors = in.bitLong();
    start.reactors = in.ok() && reactors >= 0 ? static_cast<std::size_t>(reactors) : record.handles.size();
    start.at = in.position();
    return start;
}

} // namespace zv::dwg
