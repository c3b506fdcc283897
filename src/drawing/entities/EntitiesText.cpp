#include "drawing/entities/TextLayouts.h"
#include "drawing/records/ExtendedData.h"

#include <algorithm>

namespace zv::dwg {

namespace {

constexpr std::int32_t kMostColumns = 1000;

/// R2018: what columns a text has, and its box once more.
void readMTextColumns(RecordReader& in, MText& text)
{
    constexpr int kDynamicColumns = 2;
    constexpr unsigned kFewestDoubleBits = 2;
    in.bitShort(); // Version.
    in.bit();
    in.handle(); // The program.
    in.bitLong();
    in.bitPoint3();
    in.bitPoint3();
    for (int i = 0; i < 4; ++i)
        in.bitDouble();
    const int columns = in.bitShort();
    if (columns == 0)
        return;
    const std::int32_t count = in.bitLong();
    text.columnWidth = in.bitDouble();
    text.columnGap = in.bitDouble();
    const bool ownHeight = in.bit();
    in.bit(); // The other way round.
    text.columns = std::clamp(count, 0, kMostColumns);
    if (ownHeight || columns != kDynamicColumns)
        return;
    text.columnHeights.resize(in.checkedCount(count, kFewestDoubleBits));
    for (double& height : text.columnHeights)
        height = in.bitDouble();
}

/// Before R2018 the columns hang on the text as extended data, between two marks: pairs of a number that
/// names a field and its value; behind the number of heights stand the heights.
void readOldColumns(const RecordReader& in, const EntityHeader& header, MText& text)
{
    enum : std::int32_t { kKind = 75, kCount = 76, kWidth = 48, kGap = 49 };
    for (const ExtendedData& data : readExtendedData(in, header)) {
        auto item = data.items.begin();
        while (item != data.items.end() && item->text != u"ACAD_MTEXT_COLUMN_INFO_BEGIN")
            ++item;
        std::int32_t kind = 0;
        for (; item != data.items.end() && item->text != u"ACAD_MTEXT_COLUMN_INFO_END"; ++item) {
            const auto value = item + 1;
            if (item->code == 1040)
                text.columnHeights.push_back(item->real);
            if (item->code != 1070 || value == data.items.end())
                continue;
            if (item->number == kKind)
                kind = value->number;
            else if (item->number == kCount)
                text.columns = std::clamp(value->number, 0, kMostColumns);
            else if (item->number == kWidth)
                text.columnWidth = value->real;
            else if (item->number == kGap)
                text.columnGap = value->real;
            item = value;
        }
        if (kind == 0)
            text.columns = 0;
    }
}

} // namespace

void readLaterMText(RecordReader& in, MText& text)
{
    constexpr std::int32_t kFill = 1, kWindowColor = 2, kFrame = 16;
    const Version version = in.version();
    if (version >= Version::R2004) {
        const std::int32_t background = in.bitLong();
        text.backgroundFill = (background & (kFill | kWindowColor)) != 0;
        text.backgroundWindowColor = (background & kWindowColor) != 0;
        if ((background & kFill) != 0 || (version >= Version::R2018 && (background & kFrame) != 0)) {
            text.backgroundScale = in.bitDouble();
            text.backgroundColor = in.color();
            in.bitLong(); // Transparency.
        }
    }
    if (version < Version::R2018)
        return;
    const bool columns = in.bit();
    if (columns)
        readMTextColumns(in, text);
}

void readInnerMText(EntityFieldsIn& fields, Attribute& attribute)
{
    RecordReader& in = fields.reader();
    EntityHeader inner;
    inner.handle = fields.record().header.handle;
    readEntityMode(in, inner);
    layout(fields, attribute.lines.emplace_back());
    const auto size = static_cast<std::uint16_t>(in.bitShort());
    if (size == 0)
        return;
    in.skip(std::size_t{size} * 8);
    in.handle(); // The program.
    in.bitShort();
}

void readAttrib(RecordReader& in, EntityRecord& out)
{
    EntityFieldsIn fields(in, out);
    layoutAttribute(fields, out.geometry.emplace<Attribute>(), false);
}

void readAttribDefinition(RecordReader& in, EntityRecord& out)
{
    EntityFieldsIn fields(in, out);
    layoutAttribute(fields, out.geometry.emplace<Attribute>(), true);
}

void readMText(RecordReader& in, EntityRecord& out)
{
    readShape<MText>(in, out);
    if (in.version() < Version::R2018)
        readOldColumns(in, out.header, std::get<MText>(out.geometry));
}

} // namespace zv::dwg
