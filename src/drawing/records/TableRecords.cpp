#include "drawing/records/TableRecords.h"

#include "drawing/bits/CodePage.h"
#include "drawing/records/DimensionStyleLayout.h"
#include "drawing/records/ExtendedData.h"

namespace zv::dwg {

namespace {

constexpr unsigned kFewestHandleBits = 8;

std::vector<Handle> readHandles(RecordReader& in, std::int64_t count)
{
    std::vector<Handle> handles(in.handles().checkedCount(count, kFewestHandleBits));
    for (Handle& handle : handles)
        handle = in.handle();
    return handles;
}

/// The text that starts at a place, counted in letters, of the linetype's area of texts.
Text textAt(const std::string& area, std::size_t place, Version version, int codePage)
{
    if (place >= area.size())
        return {};
    if (version < Version::R2007)
        return decodeText(std::string_view(area).substr(place, area.find('\0', place) - place), codePage);
    Text units;
    for (std::size_t at = 2 * place; at + 1 < area.size(); at += 2) {
        const auto unit = static_cast<char16_t>(static_cast<unsigned char>(area[at]) |
                                                static_cast<unsigned char>(area[at + 1]) << 8);
        if (unit == 0)
            break;
        units += unit;
    }
    return decodeUnits(std::move(units));
}

} // namespace

std::vector<Handle> readTableControl(RecordReader& in, int extraHandles)
{
    readObjectHeader(in);
    const std::int64_t entries = in.bitLong();
    return readHandles(in, entries < 0 ? entries : entries + extraHandles);
}

BlockHeader readBlockHeader(RecordReader& in)
{
    BlockHeader out;
    const Version version = in.version();
    out.header = readObjectHeader(in);
    BlockRecord& block = out.block;
    block.handle = out.header.handle;
    FieldsIn fields(in);
    std::int64_t owned = 0;
    layoutBlockHeader(
        fields, block, block.name, false,
        [&](FieldsIn&) {
            if (!block.xref && !block.xrefOverlay)
                owned = in.bitLong();
        },
        [&](FieldsIn&) {
            while (in.rawChar() != 0) { // One for each insert.
            }
        },
        [&](FieldsIn&) { in.skip(std::size_t{in.count(8)} * 8); });
    const bool ownEntities = !block.xref && !block.xrefOverlay;
    in.handle();
    out.begin = in.handle();
    if (version <= Version::R2000 && ownEntities) {
        out.first = in.handle();
        out.last = in.handle();
    }
    out.owned = readHandles(in, owned);
    // Behind them stand the block's end, its inserts and its layout.
    return out;
}

ObjectHeader readLayer(RecordReader& in, Layer& layer)
{
    const ObjectHeader header = readObjectHeader(in);
    layer.handle = header.handle;
    FieldsIn fields(in);
    layout(fields, layer);
    // Its transparency hangs on it as extended data: one number, whose highest byte tells that it has its
    // own.
    constexpr std::int32_t kOwnTransparency = 0x02;
    for (const ExtendedData& data : readExtendedData(in, header)) {
        if (data.items.size() == 1 && data.items[0].code == 1071 &&
            data.items[0].number >> 24 == kOwnTransparency)
            layer.alpha = static_cast<std::uint8_t>(data.items[0].number);
    }
    return header;
}

ObjectHeader readLinetype(RecordReader& in, Linetype& entry)
{
    constexpr std::size_t kWideTextArea = 2 * kDashTextArea;
    const Version version = in.version();
    const ObjectHeader header = readObjectHeader(in);
    entry.handle = header.handle;
    FieldsIn fields(in);
    layoutLinetypeHead(fields, entry);
    const std::size_t dashes = entry.dashes.size();
    std::vector<unsigned> flags(dashes);
    bool texts = false;
    for (std::size_t i = 0; i < dashes && in.ok(); ++i) {
        LinetypeDash& dash = entry.dashes[i];
        std::uint16_t kinds = 0;
        layoutDash(fields, dash, dash.shape, kinds);
        flags[i] = kinds;
        dash.absoluteRotation = (flags[i] & kDashAbsolute) != 0;
        texts = texts || (flags[i] & kDashText) != 0;
    }
    std::string area;
    if (version <= Version::R2004)
        area = in.bytes(kDashTextArea);
    else if (texts)
        area = in.bytes(kWideTextArea);
    in.handle(); // The external reference.
    for (std::size_t i = 0; i < dashes && in.ok(); ++i) {
        LinetypeDash& dash = entry.dashes[i];
        dash.style = in.handle();
        if ((flags[i] & kDashText) != 0)
            dash.text = textAt(area, dash.shape, version, in.codePage());
        if ((flags[i] & kDashShape) == 0)
            dash.shape = 0;
    }
    return header;
}

ObjectHeader readTextStyle(RecordReader& in, TextStyle& style)
{
    constexpr std::int32_t kBold = 0x2000000, kItalic = 0x1000000;
    const ObjectHeader header = readObjectHeader(in);
    style.handle = header.handle;
    FieldsIn fields(in);
    layout(fields, style);
    // The family of a TrueType font hangs on the style as extended data: its name, then flags.
    for (const ExtendedData& data : readExtendedData(in, header)) {
        if (data.items.size() != 2 || data.items[0].code != 1000 || data.items[1].code != 1071)
            continue;
        style.typeface = data.items[0].text;
        style.bold = (data.items[1].number & kBold) != 0;
        style.italic = (data.items[1].number & kItalic) != 0;
    }
    return header;
}

ObjectHeader readDimensionStyle(RecordReader& in, DimensionStyle& style)
{
    const ObjectHeader header = readObjectHeader(in);
    style.handle = header.handle;
    FieldsIn fields(in);
    layout(fields, style, false);
    return header;
}

} // namespace zv::dwg
