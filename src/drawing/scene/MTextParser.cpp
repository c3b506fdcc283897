#include "drawing/scene/MTextParser.h"

#include "drawing/ColorTable.h"
#include "drawing/geometry/Transform.h"

#include <cmath>
#include <string>

namespace zv::dwg {

namespace {

constexpr std::size_t kDeepestGroup = 64;
constexpr std::size_t kLongest = 1u << 20;

int hexDigit(char16_t c)
{
    if (c >= u'0' && c <= u'9')
        return c - u'0';
    if (c >= u'a' && c <= u'f')
        return c - u'a' + 10;
    return c >= u'A' && c <= u'F' ? c - u'A' + 10 : -1;
}

/// The number in `text` from `at` in `digits` hexadecimal digits; -1 when they are not there.
int hexNumber(const Text& text, std::size_t at, std::size_t digits)
{
    int value = 0;
    for (std::size_t i = 0; i < digits; ++i) {
        const int digit = at + i < text.size() ? hexDigit(text[at + i]) : -1;
        if (digit < 0)
            return -1;
        value = value * 16 + digit;
    }
    return value;
}

double number(const Text& text, double fallback)
{
    double value = 0, place = 1;
    bool any = false, negative = false, fraction = false;
    for (const char16_t c : text) {
        if (c == u'-' && !any) {
            negative = true;
        } else if (c == u'.' && !fraction) {
            fraction = true;
        } else if (c >= u'0' && c <= u'9') {
            any = true;
            value = value * 10 + (c - u'0');
            if (fraction)
                place *= 10;
        } else if (c != u'+' && c != u' ') {
            break;
        }
    }
    if (!any || !std::isfinite(value) || !std::isfinite(place))
        return fallback;
    return (negative ? -value : value) / place;
}

/// The sign behind "%%"; 0 when there is none. `used` is how many characters it took, the "%%" not counted.
char32_t percentSign(const Text& text, std::size_t at, std::size_t& used)
{
    used = 1;
    const char16_t c = at < text.size() ? text[at] : u'\0';
    switch (c) {
    case u'd':
    case u'D':
        return U'\u00b0';
    case u'p':
    case u'P':
        return U'\u00b1';
    case u'c':
    case u'C':
        return U'\u2205';
    case u'%':
        return U'%';
    default:
        break;
    }
    int value = 0;
    used = 0;
    while (used < 3 && at + used < text.size() && text[at + used] >= u'0' && text[at + used] <= u'9')
        value = value * 10 + (text[at + used++] - u'0');
    return used == 3 && value > 0 && value < 256 ? static_cast<char32_t>(value) : 0;
}

class Parser {
public:
    Parser(const Text& text, const MTextLook& start) : m_text(text), m_look(start), m_height(start.height)
    {
        m_paragraphs.emplace_back();
    }
    std::vector<MTextParagraph> parse();

private:
    void code(char16_t c);
    void characterCode(char16_t c);
    Text argument();
    void setFont(const Text& argument, bool file);
    void setHeight(const Text& argument);
    void setParagraph(const Text& argument);
    void stack(const Text& argument);
    void push(char32_t c);
    void flush();
    void newParagraph();

    const Text& m_text;
    std::size_t m_at = 0;
    MTextLook m_look;
    double m_height;
    std::vector<MTextLook> m_groups;
    std::vector<MTextParagraph> m_paragraphs;
    Text m_run;
};

std::vector<MTextParagraph> Parser::parse()
{
    const std::size_t size = std::min(m_text.size(), kLongest);
    while (m_at < size) {
        const char16_t c = m_text[m_at++];
        if (c == u'\\' && m_at < size) {
            code(m_text[m_at++]);
        } else if (c == u'{') {
            if (m_groups.size() < kDeepestGroup)
                m_groups.push_back(m_look);
        } else if (c == u'}') {
            flush();
            if (!m_groups.empty()) {
                m_look = m_groups.back();
                m_groups.pop_back();
            }
        } else if (c == u'%' && m_at < size && m_text[m_at] == u'%') {
            std::size_t used = 0;
            if (const char32_t sign = percentSign(m_text, m_at + 1, used)) {
                m_at += 1 + used;
                push(sign);
            } else {
                push(c);
            }
        } else if (c == u'^' && m_at < size &&
                   (m_text[m_at] == u'I' || m_text[m_at] == u'J' || m_text[m_at] == u'M' ||
                    m_text[m_at] == u' ')) {
            const char16_t control = m_text[m_at++];
            if (control == u'I')
                code(u't');
            else if (control == u'J')
                newParagraph();
            else if (control == u' ')
                push(U'^');
        } else if (c == u'\n') {
            newParagraph();
        } else if (c == u'\t') {
            code(u't');
        } else if (c != u'\r') {
            push(c);
        }
    }
    flush();
    return std::move(m_paragraphs);
}

Text Parser::argument()
{
    const std::size_t end = m_text.find(u';', m_at);
    if (end == Text::npos) {
        Text rest = m_text.substr(m_at);
        m_at = m_text.size();
        return rest;
    }
    Text found = m_text.substr(m_at, end - m_at);
    m_at = end + 1;
    return found;
}

void Parser::code(char16_t c)
{
    if (c != u'\\' && c != u'{' && c != u'}' && c != u'~' && c != u'U' && c != u'M')
        flush();
    switch (c) {
    case u'P':
    case u'X':
        newParagraph();
        break;
    case u'N':
        m_paragraphs.back().pieces.push_back({MTextPiece::Kind::Break, {}, {}, 0, m_look});
        break;
    case u't':
        m_paragraphs.back().pieces.push_back({MTextPiece::Kind::Tab, {}, {}, 0, m_look});
        break;
    case u'L':
    case u'l':
        m_look.underline = c == u'L';
        break;
    case u'O':
    case u'o':
        m_look.overline = c == u'O';
        break;
    case u'K':
    case u'k':
        m_look.strike = c == u'K';
        break;
    case u'~':
        push(U'\u00a0');
        break;
    case u'H':
        setHeight(argument());
        break;
    case u'W':
        m_look.widthFactor = std::clamp(number(argument(), 1), 0.01, 100.0);
        break;
    case u'Q':
        m_look.oblique = std::clamp(number(argument(), 0), -85.0, 85.0) * kPi / 180;
        break;
    case u'T':
        m_look.tracking = std::clamp(number(argument(), 1), 0.1, 10.0);
        break;
    case u'A':
        m_look.align = static_cast<int>(std::clamp(number(argument(), 0), 0.0, 2.0));
        break;
    case u'C': {
        const auto index = static_cast<int>(std::clamp(number(argument(), 256), 0.0, 256.0));
        Color color{index == 256 ? Color::Kind::ByLayer : Color::Kind::Index,
                    static_cast<std::uint8_t>(index), 0};
        if (index == 0)
            color.kind = Color::Kind::ByBlock;
        m_look.color = color;
        break;
    }
    case u'c': {
        // Written as blue, green, red.
        const auto bgr = static_cast<std::uint32_t>(std::clamp(number(argument(), 0), 0.0, 16777215.0));
        m_look.color = Color{Color::Kind::True, 7, (bgr & 0xff) << 16 | (bgr & 0xff00) | bgr >> 16};
        break;
    }
    case u'f':
    case u'F':
        setFont(argument(), c == u'F');
        break;
    case u'p':
        setParagraph(argument());
        break;
    case u'S':
        stack(argument());
        break;
    default:
        characterCode(c);
    }
}

void Parser::characterCode(char16_t c)
{
    if (m_at < m_text.size() && m_text[m_at] == u'+') {
        // \U+XXXX is a character, \M+nXXXX one of a double-byte code page n.
        const std::size_t skip = c == u'M' ? 2 : 1;
        const int value = c == u'U' || c == u'M' ? hexNumber(m_text, m_at + skip, 4) : -1;
        if (value >= 0) {
            m_at += skip + 4;
            push(static_cast<char32_t>(value));
            return;
        }
    }
    push(c);
}

void Parser::setHeight(const Text& argument)
{
    double value = number(argument, 0);
    if (!argument.empty() && (argument.back() == u'x' || argument.back() == u'X'))
        value *= m_look.height;
    if (value > 0 && std::isfinite(value))
        m_look.height = std::clamp(value, m_height * 1e-4, m_height * 1e4);
}

void Parser::setFont(const Text& argument, bool file)
{
    // "Arial|b0|i0|c0|p34", or "txt,bigfont".
    const std::size_t bar = argument.find(u'|');
    Text name = argument.substr(0, bar);
    if (file || name.find(u".shx") != Text::npos) {
        m_look.font = name.substr(0, name.find(u','));
        m_look.typeface.clear();
        return;
    }
    m_look.typeface = name;
    m_look.font.clear();
    m_look.bold = argument.find(u"|b1") != Text::npos;
    m_look.italic = argument.find(u"|i1") != Text::npos;
}

void Parser::setParagraph(const Text& argument)
{
    MTextParagraph& paragraph = m_paragraphs.back();
    std::size_t at = 0;
    while (at < argument.size()) {
        const std::size_t end = std::min(argument.find(u',', at), argument.size());
        std::size_t from = at;
        while (from < end && argument[from] == u'x')
            ++from;
        const char16_t key = from < end ? argument[from] : u'\0';
        const Text value = from < end ? argument.substr(from + 1, end - from - 1) : Text();
        if (key == u'q' && !value.empty())
            paragraph.justify = value[0] == u'*' ? u'\0' : value[0];
        else if (key == u'i')
            paragraph.indent = number(value, 0);
        else if (key == u'l')
            paragraph.left = number(value, 0);
        else if (key == u't')
            break; // Tab stops take the rest.
        at = end + 1;
    }
}

void Parser::stack(const Text& argument)
{
    MTextPiece piece;
    piece.kind = MTextPiece::Kind::Stack;
    piece.look = m_look;
    for (std::size_t i = 0; i < argument.size(); ++i) {
        char16_t c = argument[i];
        const bool escaped = c == u'\\' && i + 1 < argument.size();
        if (escaped)
            c = argument[++i];
        if (!escaped && piece.bar == 0 && (c == u'/' || c == u'#' || c == u'^')) {
            piece.bar = c;
            continue;
        }
        (piece.bar == 0 ? piece.text : piece.second) += c;
    }
    m_paragraphs.back().pieces.push_back(std::move(piece));
}

void Parser::push(char32_t c)
{
    if (c > 0xffff) {
        m_run += static_cast<char16_t>(0xd800 + ((c - 0x10000) >> 10));
        m_run += static_cast<char16_t>(0xdc00 + ((c - 0x10000) & 0x3ff));
    } else {
        m_run += static_cast<char16_t>(c);
    }
    if (m_text.size() > m_at && m_text[m_at] == u'{')
        flush();
}

void Parser::flush()
{
    if (m_run.empty())
        return;
    m_paragraphs.back().pieces.push_back({MTextPiece::Kind::Letters, std::move(m_run), {}, 0, m_look});
    m_run.clear();
}

void Parser::newParagraph()
{
    flush();
    // A paragraph goes on with the settings of the one before.
    MTextParagraph next;
    next.justify = m_paragraphs.back().justify;
    next.indent = m_paragraphs.back().indent;
    next.left = m_paragraphs.back().left;
    m_paragraphs.push_back(next);
}

} // namespace

std::vector<MTextParagraph> parseMText(const Text& text, const MTextLook& start)
{
    return Parser(text, start).parse();
}

MarkedText parseTextLine(const Text& text)
{
    MarkedText out;
    std::uint8_t mark = 0;
    const auto push = [&](char32_t c) {
        out.characters += c;
        out.marks.push_back(mark);
    };
    for (std::size_t i = 0; i < text.size() && out.characters.size() < kLongest; ++i) {
        const char16_t c = text[i];
        if (c == u'%' && i + 2 < text.size() && text[i + 1] == u'%') {
            const char16_t key = text[i + 2];
            const std::u16string_view switches = u"uUoOkK";
            const std::size_t which = switches.find(key);
            if (which != std::u16string_view::npos) {
                mark ^= static_cast<std::uint8_t>(1 << which / 2);
                i += 2;
                continue;
            }
            std::size_t used = 0;
            if (const char32_t sign = percentSign(text, i + 2, used)) {
                push(sign);
                i += 1 + used;
                continue;
            }
        }
        if (c == u'\\' && i + 6 < text.size() && text[i + 1] == u'U' && text[i + 2] == u'+') {
            const int value = hexNumber(text, i + 3, 4);
            if (value >= 0) {
                push(static_cast<char32_t>(value));
                i += 6;
                continue;
            }
        }
        if (c >= 0xd800 && c < 0xdc00 && i + 1 < text.size() && text[i + 1] >= 0xdc00 &&
            text[i + 1] < 0xe000) {
            push(0x10000 + (static_cast<char32_t>(c - 0xd800) << 10) + (text[++i] - 0xdc00u));
            continue;
        }
        push(c);
    }
    return out;
}

std::u32string characters(const Text& text)
{
    std::u32string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char16_t c = text[i];
        if (c >= 0xd800 && c < 0xdc00 && i + 1 < text.size() && text[i + 1] >= 0xdc00 && text[i + 1] < 0xe000)
            out += static_cast<char32_t>(0x10000 + (static_cast<char32_t>(c - 0xd800) << 10) +
                                         (text[++i] - 0xdc00u));
        else
            out += c;
    }
    return out;
}

} // namespace zv::dwg
