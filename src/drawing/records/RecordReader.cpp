#include "drawing/records/RecordReader.h"

#include "drawing/bits/CodePage.h"

namespace zv::dwg {

namespace {

constexpr unsigned kComplexColor = 0x8000, kNamedColor = 0x4000, kTransparency = 0x2000;

Color indexedColor(int index)
{
    Color color;
    if (index == 0) {
        color.kind = Color::Kind::ByBlock;
    } else if (index > 0 && index < 256) {
        color.kind = Color::Kind::Index;
        color.index = static_cast<std::uint8_t>(index);
    }
    return color;
}

} // namespace

Color packedColor(std::uint32_t packed)
{
    Color color;
    switch (packed >> 24) {
    case 0xC0:
        break;
    case 0xC1:
        color.kind = Color::Kind::ByBlock;
        break;
    case 0xC3:
        color = indexedColor(static_cast<int>(packed & 0xFF));
        break;
    default:
        color.kind = Color::Kind::True;
        color.rgb = packed & 0xFFFFFF;
        break;
    }
    return color;
}

void RecordReader::setHandlesAt(std::size_t bit)
{
    m_handles.seek(bit);
    if (!m_handles.ok())
        return;
    endAt(bit);
    if (m_version < Version::R2007 || bit == 0)
        return;
    m_texts = BitReader(m_whole);
    m_texts.seek(bit - 1);
    if (!m_texts.bit()) {
        m_texts.endAt(bit);
        return;
    }
    // The size stands behind the texts: 16 bits, and 16 more before them when the highest bit is set.
    std::size_t sizeAt = bit - 1;
    if (sizeAt < 16)
        return m_texts.fail();
    sizeAt -= 16;
    m_texts.seek(sizeAt);
    std::size_t size = m_texts.rawShort();
    if ((size & 0x8000) != 0) {
        if (sizeAt < 16)
            return m_texts.fail();
        sizeAt -= 16;
        m_texts.seek(sizeAt);
        size = (size & 0x7FFF) | std::size_t{m_texts.rawShort()} << 15;
    }
    if (size > sizeAt)
        return m_texts.fail();
    m_texts.seek(sizeAt - size);
    m_texts.endAt(sizeAt);
    endAt(sizeAt - size);
}

int RecordReader::objectType()
{
    if (m_version < Version::R2010)
        return bitShort();
    switch (bitPair()) {
    case 0:
        return rawChar();
    case 1:
        return 0x1F0 + rawChar();
    default:
        return rawShort();
    }
}

Text RecordReader::text()
{
    if (m_version < Version::R2007) {
        const auto length = static_cast<std::uint16_t>(bitShort());
        return decodeText(bytes(length), m_codePage);
    }
    const auto length = static_cast<std::uint16_t>(m_texts.bitShort());
    return decodeUnits(m_texts.units(length));
}

Color RecordReader::color()
{
    const int index = bitShort();
    if (m_version < Version::R2004)
        return indexedColor(index);
    const Color color = packedColor(static_cast<std::uint32_t>(bitLong()));
    const unsigned names = rawChar();
    if ((names & 1) != 0)
        text();
    if ((names & 2) != 0)
        text();
    return color;
}

Color RecordReader::entityColor(std::uint8_t& alpha, bool& ownAlpha, bool& named)
{
    named = false;
    const auto number = static_cast<std::uint16_t>(bitShort());
    if (m_version < Version::R2004)
        return indexedColor(static_cast<std::int16_t>(number));
    // Of a named colour the number is the index that comes nearest.
    named = (number & kNamedColor) != 0;
    Color color = indexedColor(number & 0xFFF);
    if (!named && (number & kComplexColor) != 0)
        color = packedColor(static_cast<std::uint32_t>(bitLong()));
    if ((number & kTransparency) != 0) {
        const auto transparency = static_cast<std::uint32_t>(bitLong());
        ownAlpha = transparency >> 24 != 0;
        if (transparency >> 24 >= 2)
            alpha = static_cast<std::uint8_t>(transparency);
    }
    return color;
}

double RecordReader::thickness()
{
    if (m_version >= Version::R2000 && bit())
        return 0;
    return bitDouble();
}

Point3 RecordReader::extrusion()
{
    if (m_version >= Version::R2000 && bit())
        return kZAxis;
    return bitPoint3();
}

} // namespace zv::dwg
