#include "drawing/entities/EntityRecord.h"
#include "drawing/entities/TextFlags.h"
#include "drawing/records/ExtendedData.h"

#include <algorithm>

namespace zv::dwg {

namespace {

constexpr std::int32_t kMostColumns = 1000;
constexpr unsigned kBackward = 2, kUpsideDown = 4;

HorizontalAlign horizontalAlign(int value)
{
    return value >= 0 && value <= 5 ? static_cast<HorizontalAlign>(value) : HorizontalAlign::Left;
}

VerticalAlign verticalAlign(int value)
{
    return value >= 0 && value <= 3 ? static_cast<VerticalAlign>(value) : VerticalAlign::Baseline;
}

void setGeneration(TextLine& text, unsigned generation)
{
    text.backward = (generation & kBackward) != 0;
    text.upsideDown = (generation & kUpsideDown) != 0;
}

void readTextLineR14(RecordReader& in, TextLine& text)
{
    const double elevation = in.bitDouble();
    const Point2 insertion = in.rawPoint2();
    const Point2 alignment = in.rawPoint2();
    text.insertion = {insertion.x, insertion.y, elevation};
    text.alignment = {alignment.x, alignment.y, elevation};
    text.normal = in.bitPoint3();
    text.thickness = in.bitDouble();
    text.oblique = in.bitDouble();
    text.rotation = in.bitDouble();
    text.height = in.bitDouble();
    text.widthFactor = in.bitDouble();
    text.text = in.text();
    setGeneration(text, static_cast<std::uint16_t>(in.bitShort()));
    text.horizontal = horizontalAlign(in.bitShort());
    text.vertical = verticalAlign(in.bitShort());
}

void readTextLineR2000(RecordReader& in, TextLine& text)
{
    const unsigned left = in.rawChar();
    const double elevation = (left & kNoElevation) != 0 ? 0 : in.rawDouble();
    const Point2 insertion = in.rawPoint2();
    const Point2 alignment = (left & kNoAlignment) != 0 ? Point2{} : in.defaultPoint2(insertion);
    text.insertion = {insertion.x, insertion.y, elevation};
    text.alignment = {alignment.x, alignment.y, elevation};
    text.normal = in.extrusion();
    text.thickness = in.thickness();
    if ((left & kNoOblique) == 0)
        text.oblique = in.rawDouble();
    if ((left & kNoRotation) == 0)
        text.rotation = in.rawDouble();
    text.height = in.rawDouble();
    if ((left & kNoWidth) == 0)
        text.widthFactor = in.rawDouble();
    text.text = in.text();
    if ((left & kNoGeneration) == 0)
        setGeneration(text, static_cast<std::uint16_t>(in.bitShort()));
    if ((left & kNoHorizontal) == 0)
        text.horizontal = horizontalAlign(in.bitShort());
    if ((left & kNoVertical) == 0)
        text.vertical = verticalAlign(in.bitShort());
}

void readTextLine(RecordReader& in, TextLine& text)
{
    if (in.version() <= Version::R14)
        readTextLineR14(in, text);
    else
        readTextLineR2000(in, text);
    text.style = in.handle();
}

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

void readMTextFields(RecordReader& in, MText& text)
{
    constexpr std::int32_t kFill = 1, kWindowColor = 2, kFrame = 16;
    const Version version = in.version();
    text.insertion = in.bitPoint3();
    text.normal = in.bitPoint3();
    text.xAxis = in.bitPoint3();
    text.width = in.bitDouble();
    if (version >= Version::R2007)
        text.boxHeight = in.bitDouble();
    text.height = in.bitDouble();
    text.attachment = in.bitShort();
    text.direction = in.bitShort();
    in.bitDouble(); // Size of the drawn text.
    in.bitDouble();
    text.text = in.text();
    text.style = in.handle();
    if (version >= Version::R2000) {
        text.lineSpacingStyle = in.bitShort();
        text.lineSpacing = in.bitDouble();
        in.bit();
    }
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

/// R2018: an attribute of several lines holds a whole MTEXT.
void readInnerMText(RecordReader& in, EntityRecord& out, Attribute& attribute)
{
    EntityHeader inner;
    inner.handle = out.header.handle;
    readEntityMode(in, inner);
    MText& text = attribute.lines.emplace_back();
    readMTextFields(in, text);
    const auto size = static_cast<std::uint16_t>(in.bitShort());
    if (size == 0)
        return;
    in.skip(std::size_t{size} * 8);
    in.handle(); // The program.
    in.bitShort();
}

void readAttributeFields(RecordReader& in, EntityRecord& out, Attribute& attribute)
{
    enum : unsigned { kInvisible = 1, kConstant = 2, kVerify = 4, kPreset = 8 };
    readTextLine(in, attribute.text);
    if (in.version() >= Version::R2010)
        in.rawChar(); // Version.
    if (in.version() >= Version::R2018) {
        const unsigned kind = in.rawChar();
        if (kind == 2 || kind == 4)
            readInnerMText(in, out, attribute);
    }
    attribute.tag = in.text();
    in.bitShort(); // Length of the field.
    const unsigned flags = in.rawChar();
    attribute.invisible = (flags & kInvisible) != 0;
    attribute.constant = (flags & kConstant) != 0;
    attribute.verify = (flags & kVerify) != 0;
    attribute.preset = (flags & kPreset) != 0;
    if (in.version() >= Version::R2007)
        in.bit(); // Locked.
}

} // namespace

void readText(RecordReader& in, EntityRecord& out)
{
    readTextLine(in, out.geometry.emplace<TextLine>());
}

void readAttrib(RecordReader& in, EntityRecord& out)
{
    readAttributeFields(in, out, out.geometry.emplace<Attribute>());
}

void readAttribDefinition(RecordReader& in, EntityRecord& out)
{
    auto& attribute = out.geometry.emplace<Attribute>();
    readAttributeFields(in, out, attribute);
    if (in.version() >= Version::R2010)
        in.rawChar(); // Version.
    attribute.prompt = in.text();
}

void readMText(RecordReader& in, EntityRecord& out)
{
    auto& text = out.geometry.emplace<MText>();
    readMTextFields(in, text);
    if (in.version() < Version::R2018)
        readOldColumns(in, out.header, text);
}

void readTolerance(RecordReader& in, EntityRecord& out)
{
    auto& tolerance = out.geometry.emplace<Tolerance>();
    if (in.version() <= Version::R14) {
        in.bitShort();
        tolerance.height = in.bitDouble();
        in.bitDouble();
    }
    tolerance.insertion = in.bitPoint3();
    tolerance.direction = in.bitPoint3();
    tolerance.normal = in.bitPoint3();
    tolerance.text = in.text();
    tolerance.style = in.handle();
}

} // namespace zv::dwg
