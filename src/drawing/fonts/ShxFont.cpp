#include "drawing/fonts/ShxFont.h"

#include "drawing/fonts/ShxPen.h"

namespace zv::dwg {

namespace {

constexpr std::size_t kLargestFile = 16u << 20;

std::uint16_t word(const std::string& bytes, std::size_t at)
{
    return static_cast<std::uint16_t>(static_cast<unsigned char>(bytes[at]) |
                                      static_cast<unsigned char>(bytes[at + 1]) << 8);
}

Error cutShort()
{
    return {ErrorCode::Damaged, "the shape file is cut short"};
}

} // namespace

Result<std::shared_ptr<ShxFont>> ShxFont::read(std::string_view file, bool vertical)
{
    if (file.size() > kLargestFile)
        return Error{ErrorCode::TooLarge, "the shape file is larger than 16 MiB"};
    constexpr std::string_view kMaker = "AutoCAD-86 ";
    const std::size_t headEnd = file.substr(0, 64).find('\x1a');
    if (!file.starts_with(kMaker) || headEnd == std::string_view::npos)
        return Error{ErrorCode::Damaged, "this is no compiled shape file"};
    auto font = std::make_shared<ShxFont>();
    font->m_bytes = file;
    font->m_vertical = vertical;
    const std::string_view form = file.substr(kMaker.size(), headEnd - kMaker.size());
    Result<void> done;
    if (form.starts_with("shapes")) {
        done = font->readShapes(headEnd + 1);
    } else if (form.starts_with("bigfont")) {
        font->m_kind = Kind::BigFont;
        done = font->readBigFont(headEnd + 1);
    } else if (form.starts_with("unifont")) {
        font->m_kind = Kind::UniFont;
        done = font->readUniFont(headEnd + 1);
    } else {
        return Error{ErrorCode::Damaged, "the shape file is of no known form"};
    }
    if (!done)
        return done.error();
    font->readFontFigure();
    return font;
}

Result<void> ShxFont::addFigure(std::uint32_t number, std::size_t offset, std::size_t size)
{
    if (offset > m_bytes.size() || size > m_bytes.size() - offset)
        return Error{ErrorCode::Damaged, "shape " + std::to_string(number) + " lies outside the file"};
    const std::size_t end = offset + size;
    // The figure's name comes first and ends with a zero byte.
    const std::size_t zero = m_bytes.find('\0', offset);
    if (zero == std::string::npos || zero >= end)
        return {};
    if (number == 0) {
        m_figures[0] = {zero + 1, end - zero - 1};
        m_name = m_bytes.substr(offset, zero - offset);
        return {};
    }
    if (zero > offset && m_kind == Kind::Shapes)
        m_names.emplace(m_bytes.substr(offset, zero - offset), number);
    m_figures[number] = {zero + 1, end - zero - 1};
    return {};
}

Result<void> ShxFont::readShapes(std::size_t at)
{
    if (m_bytes.size() < at + 6)
        return cutShort();
    const std::size_t count = word(m_bytes, at + 4);
    const std::size_t index = at + 6;
    if ((m_bytes.size() - index) / 4 < count)
        return cutShort();
    std::size_t data = index + count * 4;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t size = word(m_bytes, index + i * 4 + 2);
        if (auto added = addFigure(word(m_bytes, index + i * 4), data, size); !added)
            return added;
        data += size;
    }
    return {};
}

Result<void> ShxFont::readBigFont(std::size_t at)
{
    if (m_bytes.size() < at + 6)
        return cutShort();
    const std::size_t count = word(m_bytes, at + 2);
    const std::size_t index = at + 6 + std::size_t{word(m_bytes, at + 4)} * 4;
    constexpr std::size_t kEntry = 8;
    if (index > m_bytes.size() || (m_bytes.size() - index) / kEntry < count)
        return cutShort();
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t entry = index + i * kEntry;
        const std::size_t size = word(m_bytes, entry + 2);
        const std::size_t offset = word(m_bytes, entry + 4) | std::size_t{word(m_bytes, entry + 6)} << 16;
        if (size == 0)
            continue; // Unused places of the index are zero throughout.
        if (auto added = addFigure(word(m_bytes, entry), offset, size); !added)
            return added;
    }
    return {};
}

Result<void> ShxFont::readUniFont(std::size_t at)
{
    if (m_bytes.size() < at + 2)
        return cutShort();
    const std::size_t count = word(m_bytes, at);
    at += 2;
    for (std::size_t i = 0; i < count; ++i) {
        if (m_bytes.size() - at < 4)
            return cutShort();
        const std::size_t size = word(m_bytes, at + 2);
        if (auto added = addFigure(word(m_bytes, at), at + 4, size); !added)
            return added;
        at += 4 + size;
    }
    return {};
}

void ShxFont::readFontFigure()
{
    const auto found = m_figures.find(0);
    if (found == m_figures.end())
        return;
    const Place place = found->second;
    if (place.size < 3)
        return;
    const auto above = static_cast<unsigned char>(m_bytes[place.offset]);
    m_isFont = true;
    m_unit = above > 0 ? 1.0 / above : 1;
}

const Glyph* ShxFont::glyph(char32_t character)
{
    return character == 0 ? nullptr : figure(static_cast<std::uint32_t>(character));
}

const Glyph* ShxFont::figure(std::uint32_t number)
{
    if (const auto known = m_glyphs.find(number); known != m_glyphs.end())
        return &known->second;
    if (!m_figures.contains(number) || (number == 0 && m_isFont))
        return nullptr;
    ShxPen pen(*this);
    pen.draw(number);
    Glyph& glyph = m_glyphs[number];
    glyph = pen.take();
    return &glyph;
}

std::uint32_t ShxFont::numberOf(std::string_view figureName) const
{
    const auto found = m_names.find(figureName);
    return found == m_names.end() ? 0 : found->second;
}

} // namespace zv::dwg
