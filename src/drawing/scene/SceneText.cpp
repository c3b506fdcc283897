#include "drawing/scene/MTextLayout.h"
#include "drawing/scene/SceneParts.h"

namespace zv::dwg {

namespace {

constexpr double kDescent = 1.0 / 3; ///< Below the baseline, in text heights.
constexpr std::size_t kLongestLine = 20000;

Affine affineOf(const Matrix& map)
{
    return Affine::placed(flat(map.origin), flat(map.x), flat(map.y));
}

/// A line of text with its start at 0,0, capitals 1 high.
struct LaidLine {
    std::vector<GlyphPlace> places;
    Path lines;
    double width = 0;
};

LaidLine layLine(const Text& text, Font& font, bool vertical)
{
    LaidLine out;
    const MarkedText marked = parseTextLine(text);
    Point2 at;
    for (std::size_t i = 0; i < marked.characters.size() && i < kLongestLine; ++i) {
        const Glyph* glyph = font.glyph(marked.characters[i]);
        if (!glyph)
            glyph = font.glyph(U'?');
        if (!glyph)
            continue;
        const Point2 shift = vertical ? Point2{-glyph->advance / 2, -1} : Point2{};
        out.places.push_back({glyph, Affine{1, 0, 0, 1, at.x + shift.x, at.y + shift.y}});
        const double before = at.x;
        if (vertical)
            at.y -= 1.5;
        else
            at.x += glyph->advance;
        // The gap behind the last figure does not count for the width.
        out.width = glyph->bounds.empty() ? at.x : std::max(before + glyph->bounds.max.x, before);
        static constexpr double kLevels[3] = {-0.2, 1.2, 0.5};
        for (int k = 0; k < 3; ++k)
            if (marked.marks[i] >> k & 1) {
                out.lines.moveTo({before, kLevels[k]});
                out.lines.lineTo({at.x, kLevels[k]});
            }
    }
    return out;
}

} // namespace

void SceneParts::draw(const TextLine& text, const Look& look)
{
    if (!(text.height > 0) || !std::isfinite(text.height) || text.text.empty())
        return;
    const TextStyle* style = m_fonts.style(text.style);
    const LaidLine line = layLine(text.text, m_fonts.font(style), style && style->vertical);
    double height = text.height;
    double wide = text.widthFactor > 0 ? text.widthFactor : 1;
    double angle = text.rotation;
    Point3 at = text.insertion;
    Point2 shift; // In text heights, before width factor and slant.
    const Point2 span = flat(text.alignment) - flat(text.insertion);
    const bool spanned =
        text.horizontal == HorizontalAlign::Aligned || text.horizontal == HorizontalAlign::Fit;
    if (spanned && length(span) > 0 && line.width > 0) {
        angle = std::atan2(span.y, span.x);
        if (text.horizontal == HorizontalAlign::Aligned)
            height = length(span) / (line.width * wide);
        else
            wide = length(span) / (line.width * height);
    } else if (text.horizontal != HorizontalAlign::Left || text.vertical != VerticalAlign::Baseline) {
        at = text.alignment;
        switch (text.horizontal) {
        case HorizontalAlign::Center:
        case HorizontalAlign::Middle:
            shift.x = -line.width / 2;
            break;
        case HorizontalAlign::Right:
            shift.x = -line.width;
            break;
        default:
            break;
        }
        if (text.horizontal == HorizontalAlign::Middle || text.vertical == VerticalAlign::Middle)
            shift.y = -0.5;
        else if (text.vertical == VerticalAlign::Top)
            shift.y = -1;
        else if (text.vertical == VerticalAlign::Bottom)
            shift.y = kDescent;
    }
    const double slant = std::tan(std::clamp(text.oblique, -1.48, 1.48));
    const double mirrorX = text.backward ? -1 : 1, mirrorY = text.upsideDown ? -1 : 1;
    // Letters first, then their place: slant, size, mirror, turn.
    const Affine letters{wide * height * mirrorX, 0, slant * height * mirrorX, height * mirrorY, 0, 0};
    const Matrix plane = look.frame.map.of(ocsMatrix(text.normal))
                             .of(Matrix::translation(at))
                             .of(Matrix::rotationZ(std::isfinite(angle) ? angle : 0));
    const Affine map = affineOf(plane).of(letters).of({1, 0, 0, 1, shift.x, shift.y});
    std::vector<GlyphPlace> places = line.places;
    for (GlyphPlace& place : places)
        place.map = map.of(place.map);
    m_ink.glyphs(places, look.color, look.pen.lineweight);
    if (line.lines.elements.empty())
        return;
    Path marks = line.lines;
    for (PathElement& e : marks.elements)
        e.to = map.map(e.to);
    m_ink.stroke(marks, {look.color, look.pen.lineweight, nullptr, 1, false});
}

void SceneParts::draw(const Attribute& attribute, const Look& look)
{
    const bool definition = look.entity.kind == "ATTDEF";
    // A definition stands for its inserts' values: inside a block only constant ones are seen, and by itself
    // it shows its tag.
    if (attribute.invisible || (definition && look.frame.depth > 0 && !attribute.constant))
        return;
    if (!definition || look.frame.depth > 0) {
        if (attribute.lines.empty())
            draw(attribute.text, look);
        for (const MText& text : attribute.lines)
            drawMText(text, look.frame.map, look);
        return;
    }
    TextLine tag = attribute.text;
    tag.text = attribute.tag;
    draw(tag, look);
}

void SceneParts::draw(const MText& text, const Look& look)
{
    drawMText(text, look.frame.map, look);
}

void SceneParts::drawMText(const MText& text, const Matrix& map, const Look& look)
{
    if (!(text.height > 0) || !std::isfinite(text.height) || !std::isfinite(text.width) ||
        text.attachment < 1 || text.attachment > 9)
        return;
    const TextStyle* style = m_fonts.style(text.style);
    const LaidText laid = layOut(text, m_fonts, style);
    Matrix plane;
    plane.z = unit(text.normal);
    plane.x = unit(text.xAxis, ocsMatrix(text.normal).x);
    plane.y = cross(plane.z, plane.x);
    plane.origin = text.insertion;
    const Affine place = affineOf(map.of(plane));
    if (text.backgroundFill && !laid.extents.empty()) {
        const double margin = (std::clamp(text.backgroundScale, 1.0, 5.0) - 1) * text.height;
        const Point2 low = laid.extents.min - Point2{margin, margin};
        const Point2 high = laid.extents.max + Point2{margin, margin};
        Path ground;
        ground.moveTo(place.map(low));
        for (const Point2 corner : {Point2{high.x, low.y}, high, Point2{low.x, high.y}})
            ground.lineTo(place.map(corner));
        ground.close(place.map(low));
        if (!text.backgroundWindowColor && (text.backgroundColor.kind == Color::Kind::Index ||
                                            text.backgroundColor.kind == Color::Kind::True))
            m_ink.fill(ground, resolve(text.backgroundColor, look.layer, look.frame, 255));
        else
            m_ink.mask(ground);
    }
    for (const LaidRun& run : laid.runs) {
        const SceneColor color =
            run.color ? resolve(*run.color, look.layer, look.frame, look.entity.alpha) : look.color;
        std::vector<GlyphPlace> places = run.places;
        for (GlyphPlace& glyph : places)
            glyph.map = place.of(glyph.map);
        m_ink.glyphs(places, color, look.pen.lineweight);
        Path lines = run.lines;
        for (PathElement& e : lines.elements)
            e.to = place.map(e.to);
        if (!lines.elements.empty())
            m_ink.stroke(lines, {color, look.pen.lineweight, nullptr, 1, false});
    }
}

void SceneParts::draw(const Shape& shape, const Look& look)
{
    const TextStyle* style = m_fonts.style(shape.style);
    if (!style)
        return;
    FontRequest request = StyleFonts::request(*style);
    request.shapes = true;
    const Glyph* glyph = m_fonts.font(request).glyph(shape.number);
    if (!glyph)
        return;
    const Matrix plane = look.frame.map.of(ocsMatrix(shape.normal))
                             .of(Matrix::translation(shape.position))
                             .of(Matrix::rotationZ(shape.rotation));
    const double slant = std::tan(std::clamp(shape.oblique, -1.48, 1.48));
    const double wide = shape.widthFactor != 0 ? shape.widthFactor : 1;
    const Affine map = affineOf(plane).of({shape.size * wide, 0, slant * shape.size, shape.size, 0, 0});
    m_ink.glyphs({{glyph, map}}, look.color, look.pen.lineweight);
}

void SceneParts::draw(const Tolerance& tolerance, const Look& look)
{
    // Cells in rows: "%%v" ends a cell, "^J" or a line feed a row.
    const double height = tolerance.height > 0 ? tolerance.height : 0.18;
    const double cellHeight = height * 2;
    const TextStyle* style = nullptr;
    Matrix plane;
    plane.z = unit(tolerance.normal);
    plane.x = unit(tolerance.direction, {1, 0, 0});
    plane.y = cross(plane.z, plane.x);
    plane.origin = tolerance.insertion;
    const Matrix map = look.frame.map.of(plane);
    Path frame;
    double x = 0, y = 0;
    Text cell;
    const auto endCell = [&] {
        if (cell.empty())
            return;
        MText text;
        text.text = cell;
        text.height = height;
        text.attachment = 4;
        text.insertion = {x + height * 0.5, y, 0};
        const LaidText laid = layOut(text, m_fonts, style);
        const double width = std::max(laid.extents.width() + height, cellHeight);
        drawMText(text, map, look);
        const double low = y - cellHeight / 2, high = y + cellHeight / 2;
        frame.moveTo({x, low});
        for (const Point2 corner : {Point2{x + width, low}, Point2{x + width, high}, Point2{x, high}})
            frame.lineTo(corner);
        frame.close({x, low});
        x += width;
        cell.clear();
    };
    const Text& text = tolerance.text;
    for (std::size_t i = 0; i < text.size() && i < kLongestLine; ++i) {
        if (text.compare(i, 3, u"%%v") == 0) {
            endCell();
            i += 2;
        } else if (text[i] == u'\n' || text.compare(i, 2, u"^J") == 0) {
            endCell();
            i += text[i] == u'^';
            x = 0;
            y -= cellHeight;
        } else {
            cell += text[i];
        }
    }
    endCell();
    if (!frame.elements.empty())
        m_ink.stroke(mapped(frame, map), {look.color, look.pen.lineweight, nullptr, 1, false});
}

} // namespace zv::dwg
