#include "drawing/records/ObjectHeader.h"

#include "drawing/records/EntityHeadLayout.h"

#include <algorithm>
#include <array>

namespace zv::dwg {

std::optional<RecordFrame> readFrame(std::span<const std::byte> record, Version version)
{
    constexpr std::size_t kLongest = 16;
    BitReader in(record.first(std::min(record.size(), kLongest)));
    RecordFrame frame;
    frame.size = in.modularShort();
    if (version >= Version::R2010)
        frame.handleBits = static_cast<std::size_t>(in.modularCharUnsigned());
    frame.start = in.position() / 8;
    return in.ok() ? std::optional(frame) : std::nullopt;
}

namespace {

void skipExtendedData(RecordReader& in)
{
    while (in.ok()) {
        const auto size = static_cast<std::uint16_t>(in.bitShort());
        if (size == 0)
            return;
        in.handleReference();
        in.skip(std::size_t{size} * 8);
    }
}

/// R2000 to R2007 tell where the handles begin at the start of the record, older ones later on.
void readStart(RecordReader& in, ObjectHeader& header)
{
    if (in.version() >= Version::R2000 && in.version() <= Version::R2007)
        in.setHandlesAt(in.rawLong());
    header.handle = in.handleReference().value;
    in.setBase(header.handle);
    header.extendedDataAt = in.position();
    skipExtendedData(in);
}

void skipPicture(RecordReader& in, EntityHeader& header)
{
    if (!in.bit())
        return;
    const std::uint64_t bytes = in.version() >= Version::R2010 ? in.bitLongLong() : in.rawLong();
    if (bytes > in.left() / 8)
        return in.fail();
    header.pictureAt = in.position();
    header.pictureSize = static_cast<std::size_t>(bytes);
    in.skip(header.pictureSize * 8);
}

} // namespace

void readReactors(RecordReader& in, ObjectHeader& header)
{
    BitReader& handles = in.handles();
    const std::uint32_t reactors = handles.checkedCount(in.bitLong(), 8);
    for (std::uint32_t i = 0; i < reactors; ++i)
        handles.handleReference();
    const bool none = in.version() >= Version::R2004 && in.bit();
    if (!none)
        header.extensionDictionary = in.handle();
    if (in.version() >= Version::R2013)
        in.bit(); // It has data in a section of its own.
}

std::optional<OpenRecord> openRecord(std::span<const std::byte> objects, std::uint64_t offset,
                                     Version version, int codePage)
{
    if (offset >= objects.size())
        return {};
    const auto from = objects.subspan(static_cast<std::size_t>(offset));
    const auto frame = readFrame(from, version);
    if (!frame || frame->size == 0 || frame->size > from.size() - frame->start ||
        frame->handleBits > frame->size * 8)
        return {};
    OpenRecord record{RecordReader(from.subspan(frame->start, frame->size), version, codePage), 0,
                      frame->size};
    if (version >= Version::R2010)
        record.in.setHandlesAt(frame->size * 8 - frame->handleBits);
    record.type = record.in.objectType();
    if (!record.in.ok())
        return {};
    return record;
}

ObjectHeader readObjectHeader(RecordReader& in)
{
    ObjectHeader header;
    readStart(in, header);
    if (in.version() <= Version::R14)
        in.setHandlesAt(in.rawLong());
    header.owner = in.handle();
    readReactors(in, header);
    return header;
}

EntityHeader readEntityHeader(RecordReader& in)
{
    EntityHeader header;
    readStart(in, header);
    skipPicture(in, header);
    if (in.version() <= Version::R14)
        in.setHandlesAt(in.rawLong());
    readEntityMode(in, header);
    return header;
}

void readEntityMode(RecordReader& in, EntityHeader& header)
{
    FieldsIn fields(in);
    layoutEntityHead(fields, header);
}

namespace {

/// The lineweights by their codes.
constexpr std::array kWeights{0,  5,  9,  13, 15, 18,  20,  25,  30,  35,  40,  50,
                              53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
constexpr std::uint8_t kByLayerCode = 29, kByBlockCode = 30, kDefaultCode = 31;

} // namespace

int lineweightFromCode(unsigned code)
{
    if (code < kWeights.size())
        return kWeights[code];
    if (code == kByLayerCode)
        return kLineweightByLayer;
    return code == kByBlockCode ? kLineweightByBlock : kLineweightDefault;
}

std::uint8_t lineweightCode(int lineweight)
{
    switch (lineweight) {
    case kLineweightByLayer:
        return kByLayerCode;
    case kLineweightByBlock:
        return kByBlockCode;
    case kLineweightDefault:
        return kDefaultCode;
    default:
        break;
    }
    const auto found = std::lower_bound(kWeights.begin(), kWeights.end() - 1, lineweight);
    return static_cast<std::uint8_t>(found - kWeights.begin());
}

} // namespace zv::dwg
