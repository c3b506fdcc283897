#include "drawing/records/ClassTable.h"
#include "drawing/records/TableRecords.h"
#include "support/TestRecord.h"

#include <gtest/gtest.h>

namespace zv::dwg {
namespace {

class TableRecordTest : public ::testing::TestWithParam<Version> {
protected:
    /// The entry of a record; also tries all that is left of it when it is cut short.
    template <class Entry>
    Entry read(const TestRecord& record, ObjectHeader (*readEntry)(RecordReader&, Entry&))
    {
        const std::string payload = record.payload();
        for (std::size_t size = 1; size <= payload.size(); ++size) {
            const std::string bytes = record.framed(payload.substr(0, size));
            auto opened = openRecord(std::as_bytes(std::span(bytes)), 0, record.version(), 30);
            Entry entry;
            if (opened)
                readEntry(opened->in, entry);
            const bool found = opened && opened->in.ok();
            if (size == payload.size() || record.before(Version::R2010)) {
                EXPECT_EQ(found, size == payload.size()) << "cut after byte " << size;
            }
            if (size == payload.size())
                return entry;
        }
        return {};
    }
    TestRecord record(int type, std::string_view name) const
    {
        TestRecord out(GetParam(), type, 0x30);
        out.beginObject(2);
        out.text(name);
        if (out.before(Version::R2007)) {
            out.fields.bit(false);
            out.fields.bitShort(0);
            out.fields.bit(true);
        } else {
            out.fields.bitShort(0x100);
        }
        return out;
    }
};

INSTANTIATE_TEST_SUITE_P(Versions, TableRecordTest, ::testing::ValuesIn(kVersions));

TEST_P(TableRecordTest, Layer)
{
    TestRecord layer = record(0x33, "X|WALL");
    const bool old = layer.before(Version::R2000);
    if (old)
        layer.fields.bits(0b0101, 4);
    else
        layer.fields.bitShort(2 | 8 | 16 | 7 << 5);
    if (layer.before(Version::R2004)) {
        layer.fields.bitShort(3);
    } else {
        layer.fields.bitShort(0);
        layer.fields.bitLong(static_cast<std::int32_t>(0xC2102030));
        layer.fields.rawChar(0);
    }
    layer.pointer(0);
    if (!old)
        layer.pointer(0x0F);
    if (!layer.before(Version::R2007))
        layer.pointer(0x44);
    layer.pointer(0x16);
    const Layer entry = read<Layer>(layer, readLayer);
    EXPECT_EQ(entry.handle, 0x30u);
    EXPECT_EQ(entry.name, u"X|WALL");
    EXPECT_TRUE(entry.xref);
    EXPECT_TRUE(entry.off);
    EXPECT_FALSE(entry.frozen);
    EXPECT_TRUE(entry.locked);
    EXPECT_TRUE(entry.plotted);
    EXPECT_EQ(entry.lineweight, old ? kLineweightDefault : 25);
    EXPECT_EQ(entry.linetype, 0x16u);
    if (layer.before(Version::R2004)) {
        EXPECT_EQ(entry.color.index, 3);
    } else {
        EXPECT_EQ(entry.color.rgb, 0x102030u);
    }
}

TEST_P(TableRecordTest, LinetypeWithTextsAndShapes)
{
    TestRecord linetype = record(0x39, "GAS");
    linetype.text("Gas line ---- GAS ----");
    linetype.fields.bitDouble(1.5);
    linetype.fields.rawChar('A');
    linetype.fields.rawChar(3);
    const int shapes[] = {0, 4, 132}, flags[] = {0, 2, 4};
    for (std::size_t i = 0; i < 3; ++i) {
        linetype.fields.bitDouble(i == 0 ? 1 : -0.25);
        linetype.fields.bitShort(static_cast<std::int16_t>(shapes[i]));
        linetype.fields.rawPoint2({0.1, -0.05});
        linetype.fields.bitDouble(0.5);
        linetype.fields.bitDouble(0.25);
        linetype.fields.bitShort(static_cast<std::int16_t>(flags[i]));
    }
    std::string area("HOT\0GAS\0", 8);
    area.resize(256);
    for (const char letter : area) {
        linetype.fields.rawChar(static_cast<std::uint8_t>(letter));
        if (!linetype.before(Version::R2007))
            linetype.fields.rawChar(0);
    }
    linetype.pointer(0);
    for (const Handle style : {0x00, 0x51, 0x52})
        linetype.pointer(style);
    const Linetype entry = read<Linetype>(linetype, readLinetype);
    EXPECT_EQ(entry.description, u"Gas line ---- GAS ----");
    EXPECT_EQ(entry.patternLength, 1.5);
    ASSERT_EQ(entry.dashes.size(), 3u);
    EXPECT_TRUE(entry.dashes[0].text.empty());
    EXPECT_EQ(entry.dashes[1].text, u"GAS");
    EXPECT_EQ(entry.dashes[1].shape, 0);
    EXPECT_EQ(entry.dashes[1].style, 0x51u);
    EXPECT_EQ(entry.dashes[2].shape, 132);
    EXPECT_EQ(entry.dashes[2].length, -0.25);
}

TEST_P(TableRecordTest, TextStyle)
{
    TestRecord style = record(0x35, "NOTES");
    style.fields.bits(0b01, 2);
    for (const double value : {2.5, 0.8, 0.1})
        style.fields.bitDouble(value);
    style.fields.rawChar(2);
    style.fields.bitDouble(3);
    style.text("romans.shx");
    style.text("bigfont.shx");
    const TextStyle entry = read<TextStyle>(style, readTextStyle);
    EXPECT_EQ(entry.name, u"NOTES");
    EXPECT_TRUE(entry.vertical);
    EXPECT_TRUE(entry.backward);
    EXPECT_EQ(entry.height, 2.5);
    EXPECT_EQ(entry.font, u"romans.shx");
    EXPECT_EQ(entry.bigFont, u"bigfont.shx");
}

/// A class table with two classes, as the section holds it.
std::string classSection(Version version)
{
    const bool wide = version >= Version::R2007;
    BitWriter body, texts;
    const auto text = [&](std::string_view letters) {
        if (!wide)
            return body.text(letters);
        texts.bitShort(static_cast<std::int16_t>(letters.size()));
        for (const char letter : letters)
            texts.rawShort(static_cast<std::uint8_t>(letter));
    };
    if (wide) {
        body.bitLong(501);
        body.bit(true);
    } else if (version == Version::R2004) {
        body.bitShort(501);
        body.rawShort(0);
        body.bit(true);
    }
    const std::pair<std::string_view, int> classes[] = {{"WIPEOUT", 0x1F2}, {"SCALE", 0x1F3}};
    for (int i = 0; i < 2; ++i) {
        body.bitShort(static_cast<std::int16_t>(500 + i));
        body.bitShort(0);
        for (const std::string_view name :
             {std::string_view("App"), std::string_view("Cpp"), classes[i].first})
            text(name);
        body.bit(false);
        body.bitShort(static_cast<std::int16_t>(classes[i].second));
        for (int extra = 0; version >= Version::R2004 && extra < 5; ++extra)
            body.bitLong(0);
    }
    std::string start;
    if (wide) {
        body.append(texts);
        body.rawShort(static_cast<std::uint16_t>(texts.size()));
        body.bit(true);
        putLong(start, static_cast<std::uint32_t>(body.size() + 32));
    }
    const std::string data = start + body.bytes();
    std::string section(16, 'S');
    putLong(section, static_cast<std::uint32_t>(data.size()));
    if (version >= Version::R2018)
        putLong(section, 0);
    return section + data + std::string(18, 'E');
}

TEST_P(TableRecordTest, ClassesByTheirNumbers)
{
    const std::string section = classSection(GetParam());
    const auto table = ClassTable::read(std::as_bytes(std::span(section)), GetParam(), 0, 30);
    ASSERT_TRUE(table);
    ASSERT_EQ(table.value().classes().size(), 2u);
    EXPECT_EQ(table.value().find(500)->name, "WIPEOUT");
    EXPECT_TRUE(table.value().find(500)->entity);
    EXPECT_EQ(table.value().find(501)->name, "SCALE");
    EXPECT_FALSE(table.value().find(501)->entity);
    EXPECT_EQ(table.value().find(502), nullptr);
}

TEST_P(TableRecordTest, ClassSectionCutShortIsRefused)
{
    const std::string section = classSection(GetParam());
    for (std::size_t size = 0; size < section.size() - 18; ++size)
        EXPECT_FALSE(ClassTable::read(std::as_bytes(std::span(section)).first(size), GetParam(), 0, 30))
            << size;
}

} // namespace
} // namespace zv::dwg
