#include "drawing/scene/MTextLayout.h"

namespace zv::dwg {

namespace {

constexpr std::size_t kMostFigures = 200000;
constexpr double kLineFeed = 5.0 / 3; ///< From baseline to baseline, in text heights.
constexpr double kStackScale = 0.7;
constexpr double kTabStop = 4; ///< Text heights.

/// A word, a blank, a stack or a tab: what a line is broken between.
struct Cell {
    enum class Kind { Word, Blank, Tab, Break };
    Kind kind = Kind::Word;
    double width = 0, height = 0;
    std::vector<GlyphPlace> places;
    std::vector<std::pair<Point2, Point2>> lines;
    const MTextLook* look = nullptr;
};

class TextLayout {
public:
    TextLayout(const MText& text, StyleFonts& fonts, const TextStyle* style)
        : m_text(text), m_fonts(fonts), m_style(style)
    {
    }
    LaidText lay();

private:
    struct LineOfText {
        std::vector<Cell> boxes;
        double width = 0, height = 0, left = 0;
        char16_t justify = 0;
    };

    Font& fontOf(const MTextLook& look);
    void addText(const MTextPiece& piece);
    void addStack(const MTextPiece& piece);
    double addFigures(Cell& box, const Text& text, const MTextLook& look, double height, Point2 at);
    void mark(Cell& box, const MTextLook& look) const;
    void place(Cell box);
    void newLine(bool firstOfParagraph);
    void arrange(LaidText& out);
    std::vector<Point2> lineStarts(double frame, Point2& reach) const;
    double lineWidth() const
    {
        return m_text.columns > 1 && m_text.columnWidth > 0 ? m_text.columnWidth : m_text.width;
    }
    void put(LaidText& out, const Cell& box, Point2 at) const;

    const MText& m_text;
    StyleFonts& m_fonts;
    const TextStyle* m_style;
    const MTextParagraph* m_paragraph = nullptr;
    std::vector<MTextParagraph> m_paragraphs;
    std::vector<LineOfText> m_lines;
    std::size_t m_figures = 0;
};

Font& TextLayout::fontOf(const MTextLook& look)
{
    if (look.font.empty() && look.typeface.empty())
        return m_fonts.font(m_style);
    FontRequest request;
    request.file = look.font;
    request.typeface = look.typeface;
    request.bold = look.bold;
    request.italic = look.italic;
    if (m_style && !look.font.empty())
        request.bigFile = m_style->bigFont;
    return m_fonts.font(request);
}

double TextLayout::addFigures(Cell& box, const Text& text, const MTextLook& look, double height, Point2 at)
{
    Font& font = fontOf(look);
    const double slant = std::tan(look.oblique);
    for (const char32_t c : characters(text)) {
        if (m_figures >= kMostFigures)
            break;
        const Glyph* glyph = font.glyph(c);
        if (!glyph)
            glyph = font.glyph(U'?');
        if (!glyph)
            continue;
        ++m_figures;
        const double wide = height * look.widthFactor;
        box.places.push_back({glyph, {wide, 0, slant * height, height, at.x, at.y}});
        at.x += glyph->advance * wide * look.tracking;
    }
    return at.x;
}

void TextLayout::mark(Cell& box, const MTextLook& look) const
{
    const auto line = [&](double y) {
        box.lines.push_back({{0, look.raise + y * look.height}, {box.width, look.raise + y * look.height}});
    };
    if (look.underline)
        line(-0.2);
    if (look.overline)
        line(1.2);
    if (look.strike)
        line(0.5);
}

void TextLayout::addText(const MTextPiece& piece)
{
    std::size_t from = 0;
    while (from < piece.text.size()) {
        const bool blank = piece.text[from] == u' ';
        std::size_t to = from + 1;
        // Signs of large alphabets may each stand on a line of their own.
        const auto breaks = [&](std::size_t i) { return piece.text[i] >= 0x2e80 && piece.text[i] < 0xd800; };
        if (!breaks(from))
            while (to < piece.text.size() && (piece.text[to] == u' ') == blank && !breaks(to))
                ++to;
        Cell box;
        box.kind = blank ? Cell::Kind::Blank : Cell::Kind::Word;
        box.look = &piece.look;
        box.height = piece.look.height;
        box.width = addFigures(box, piece.text.substr(from, to - from), piece.look, piece.look.height,
                               {0, piece.look.raise});
        mark(box, piece.look);
        place(std::move(box));
        from = to;
    }
}

void TextLayout::addStack(const MTextPiece& piece)
{
    Cell box;
    box.look = &piece.look;
    const double height = piece.look.height * kStackScale;
    if (piece.bar == 0) {
        box.width = addFigures(box, piece.text, piece.look, piece.look.height, {});
    } else if (piece.bar == u'#') {
        const double middle = addFigures(box, piece.text, piece.look, height, {0, height * 0.6});
        const double slash = height * 0.6;
        box.lines.push_back({{middle, 0}, {middle + slash, height * 1.6}});
        box.width = addFigures(box, piece.second, piece.look, height, {middle + slash, 0});
    } else {
        const double gap = height * 0.3;
        const double middle = piece.look.height / 2;
        const double top = addFigures(box, piece.text, piece.look, height, {0, middle + gap});
        const std::size_t upper = box.places.size();
        const double bottom = addFigures(box, piece.second, piece.look, height, {0, middle - gap - height});
        box.width = std::max(top, bottom);
        if (piece.bar == u'/') {
            for (std::size_t i = 0; i < box.places.size(); ++i)
                box.places[i].map.dx += (box.width - (i < upper ? top : bottom)) / 2;
            box.lines.push_back({{0, middle}, {box.width, middle}});
        }
    }
    box.height = piece.look.height;
    box.width += piece.look.height * 0.1;
    place(std::move(box));
}

void TextLayout::newLine(bool firstOfParagraph)
{
    LineOfText line;
    line.left = m_paragraph->left + (firstOfParagraph ? m_paragraph->indent : 0);
    line.justify = m_paragraph->justify;
    m_lines.push_back(line);
}

void TextLayout::place(Cell box)
{
    LineOfText* line = &m_lines.back();
    if (box.kind == Cell::Kind::Tab) {
        const double stop = kTabStop * m_text.height;
        box.width =
            (std::floor((line->width + line->left) / stop + 1e-9) + 1) * stop - line->width - line->left;
    }
    const double limit = lineWidth() - line->left;
    const bool tooWide = lineWidth() > 0 && line->width + box.width > limit * (1 + 1e-9);
    if (tooWide && box.kind == Cell::Kind::Word && !line->boxes.empty()) {
        newLine(false);
        line = &m_lines.back();
    }
    line->width += box.width;
    line->height = std::max(line->height, box.height);
    line->boxes.push_back(std::move(box));
}

LaidText TextLayout::lay()
{
    MTextLook start;
    start.height = m_text.height > 0 && std::isfinite(m_text.height) ? m_text.height : 1;
    if (m_style) {
        start.widthFactor = m_style->widthFactor > 0 ? m_style->widthFactor : 1;
        start.oblique = std::clamp(m_style->oblique, -1.48, 1.48);
    }
    m_paragraphs = parseMText(m_text.text, start);
    for (const MTextParagraph& paragraph : m_paragraphs) {
        m_paragraph = &paragraph;
        newLine(true);
        for (const MTextPiece& piece : paragraph.pieces) {
            switch (piece.kind) {
            case MTextPiece::Kind::Letters:
                addText(piece);
                break;
            case MTextPiece::Kind::Stack:
                addStack(piece);
                break;
            case MTextPiece::Kind::Break:
                newLine(false);
                break;
            case MTextPiece::Kind::Tab: {
                Cell tab;
                tab.kind = Cell::Kind::Tab;
                tab.look = &piece.look;
                place(std::move(tab));
                break;
            }
            }
        }
    }
    LaidText out;
    arrange(out);
    return out;
}

/// Where each line starts: its column to the right, its baseline below the top. `reach` is the size of all.
std::vector<Point2> TextLayout::lineStarts(double frame, Point2& reach) const
{
    std::vector<Point2> starts;
    const double spacing = m_text.lineSpacing > 0 ? m_text.lineSpacing : 1;
    const int columns = m_text.columnWidth > 0 ? std::min(m_text.columns, 100) : 0;
    int column = 0;
    double down = 0;
    bool first = true;
    for (const LineOfText& line : m_lines) {
        const double own = line.height > 0 ? line.height : m_text.height;
        const double feed = kLineFeed * spacing * (m_text.lineSpacingStyle == 2 ? m_text.height : own);
        down += first ? own : feed;
        const auto place = static_cast<std::size_t>(column);
        const double room =
            place < m_text.columnHeights.size() ? m_text.columnHeights[place] : m_text.boxHeight;
        if (!first && column + 1 < columns && room > 0 && down > room * (1 + 1e-6)) {
            ++column;
            down = own;
        }
        first = false;
        starts.push_back({column * (m_text.columnWidth + m_text.columnGap), down});
        reach = {std::max(reach.x, starts.back().x + frame), std::max(reach.y, down)};
    }
    return starts;
}

void TextLayout::arrange(LaidText& out)
{
    double width = 0;
    for (LineOfText& line : m_lines) {
        while (!line.boxes.empty() && line.boxes.back().kind == Cell::Kind::Blank) {
            line.width -= line.boxes.back().width;
            line.boxes.pop_back();
        }
        width = std::max(width, line.left + line.width);
    }
    const double frame = lineWidth() > 0 ? lineWidth() : width;
    const int column = (m_text.attachment - 1) % 3, row = (m_text.attachment - 1) / 3;
    Point2 reach;
    const std::vector<Point2> starts = lineStarts(frame, reach);
    const double top = row == 0 ? 0 : row == 1 ? reach.y / 2 : reach.y;
    const double left = column == 0 ? 0 : column == 1 ? -reach.x / 2 : -reach.x;
    for (std::size_t i = 0; i < m_lines.size(); ++i) {
        const LineOfText& line = m_lines[i];
        const char16_t justify = line.justify != 0 ? line.justify
                                 : column == 1     ? u'c'
                                 : column == 2     ? u'r'
                                                   : u'l';
        const double spare = frame - line.left - line.width;
        double x = left + starts[i].x + line.left +
                   (justify == u'c'   ? spare / 2
                    : justify == u'r' ? spare
                                      : 0);
        const double begin = x;
        for (const Cell& box : line.boxes) {
            // Smaller text on a line stands on its baseline, in its middle or at its top.
            const double rise = box.look->align * (line.height - box.height) / 2;
            put(out, box, {x, top - starts[i].y + rise});
            x += box.width;
        }
        out.extents.add(Point2{begin, top - starts[i].y});
        out.extents.add(Point2{x, top - starts[i].y + line.height});
    }
    if (lineWidth() > 0 && !out.extents.empty()) {
        out.extents.add(Point2{left, out.extents.min.y});
        out.extents.add(Point2{left + reach.x, out.extents.min.y});
    }
}

void TextLayout::put(LaidText& out, const Cell& box, Point2 at) const
{
    const auto sameColor = [](const std::optional<Color>& a, const std::optional<Color>& b) {
        return a.has_value() == b.has_value() &&
               (!a || (a->kind == b->kind && a->index == b->index && a->rgb == b->rgb));
    };
    if (out.runs.empty() || !sameColor(out.runs.back().color, box.look->color))
        out.runs.push_back({box.look->color, {}, {}});
    LaidRun& run = out.runs.back();
    for (GlyphPlace place : box.places) {
        place.map.dx += at.x;
        place.map.dy += at.y;
        run.places.push_back(place);
    }
    for (const auto& [from, to] : box.lines) {
        run.lines.moveTo(from + at);
        run.lines.lineTo(to + at);
    }
}

} // namespace

LaidText layOut(const MText& text, StyleFonts& fonts, const TextStyle* style)
{
    return TextLayout(text, fonts, style).lay();
}

} // namespace zv::dwg
