#include "drawing/records/ExtendedData.h"

#include "drawing/bits/CodePage.h"

namespace zv::dwg {

namespace {

Text readString(BitReader& in, Version version, int codePage)
{
    if (version >= Version::R2007)
        return decodeUnits(in.units(in.rawShort()));
    const std::size_t length = in.rawChar();
    in.rawShort(); // Its code page, the drawing's.
    return decodeText(in.bytes(length), codePage);
}

/// False when the item cannot be read, and so the rest cannot.
bool readItem(BitReader& in, Version version, int codePage, ExtendedItem& item)
{
    item.code = 1000 + in.rawChar();
    switch (item.code) {
    case 1000:
    case 1001:
        item.text = readString(in, version, codePage);
        break;
    case 1002:
        item.number = in.rawChar();
        break;
    case 1003:
    case 1005:
        in.rawLongLong();
        break;
    case 1004:
        in.skip(std::size_t{in.rawChar()} * 8);
        break;
    case 1010:
    case 1011:
    case 1012:
    case 1013:
        item.point = in.rawPoint3();
        break;
    case 1040:
    case 1041:
    case 1042:
        item.real = in.rawDouble();
        break;
    case 1070:
        item.number = static_cast<std::int16_t>(in.rawShort());
        break;
    case 1071:
        item.number = static_cast<std::int32_t>(in.rawLong());
        break;
    default:
        return false;
    }
    return in.ok();
}

} // namespace

std::vector<ExtendedData> readExtendedData(const RecordReader& record, const ObjectHeader& header)
{
    std::vector<ExtendedData> all;
    BitReader in = record.restarted(header.extendedDataAt);
    for (;;) {
        const std::size_t size = static_cast<std::uint16_t>(in.bitShort());
        if (size == 0 || !in.ok())
            return all;
        ExtendedData data;
        data.application = in.handleReference().value;
        const std::size_t end = in.position() + size * 8;
        BitReader part = in;
        part.endAt(end);
        ExtendedItem item;
        while (part.ok() && part.left() >= 8 && readItem(part, record.version(), record.codePage(), item))
            data.items.push_back(std::exchange(item, {}));
        all.push_back(std::move(data));
        in.seek(end);
    }
}

} // namespace zv::dwg
