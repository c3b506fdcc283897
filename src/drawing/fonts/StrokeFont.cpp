#include "drawing/fonts/StrokeFont.h"

#include "drawing/fonts/StrokeFontData.h"

#include <map>

namespace zv::dwg {

namespace {

constexpr int kBaselineRow = 3, kCapitalRows = 9, kGap = 3;
constexpr int kFine = 2; ///< Steps to a grid square in the compiled file, for marks over odd middles.

/// A pen movement to a point in half grid squares above the baseline.
struct Step {
    int x = 0, y = 0;
    bool down = false;
    double bulge = 0;
};
struct Figure {
    std::vector<Step> steps;
    int advance = 0;
};

int digit(char c)
{
    return c <= '9' ? c - '0' : c - 'a' + 10;
}

void addStrokes(std::vector<Step>& steps, const char* strokes, int shiftX, int shiftY)
{
    Step step;
    for (const char* p = strokes; *p != '\0';) {
        switch (*p) {
        case ',':
            step.down = false;
            ++p;
            continue;
        case '+':
            step.bulge = std::tan(kPi / 8);
            ++p;
            continue;
        case '-':
            step.bulge = -std::tan(kPi / 8);
            ++p;
            continue;
        case '>':
            step.bulge = 1;
            ++p;
            continue;
        case '<':
            step.bulge = -1;
            ++p;
            continue;
        default:
            step.x = digit(p[0]) * kFine + shiftX;
            step.y = (digit(p[1]) - kBaselineRow) * kFine + shiftY;
            steps.push_back(step);
            step.down = true;
            step.bulge = 0;
            p += 2;
        }
    }
}

std::map<char32_t, Figure> buildFigures()
{
    std::map<char32_t, Figure> figures;
    std::map<char32_t, int> widths;
    for (const StrokeFigure& plain : strokeFigures()) {
        Figure& figure = figures[plain.character];
        addStrokes(figure.steps, plain.strokes, 0, 0);
        figure.advance = (plain.width + kGap) * kFine;
        widths[plain.character] = plain.width;
    }
    constexpr char kDotlessI = '\1';
    for (const StrokeComposite& composite : strokeComposites()) {
        const char32_t letter = composite.letter == kDotlessI ? U'\u0131' : char32_t(composite.letter);
        Figure figure = figures[letter];
        for (const StrokeMark& mark : strokeMarks()) {
            if (mark.key != composite.mark)
                continue;
            constexpr int kMarkMiddle = 4;
            const int shift = widths[letter] * kFine / 2 - kMarkMiddle * kFine;
            const bool capital = composite.letter >= 'A' && composite.letter <= 'Z';
            addStrokes(figure.steps, mark.strokes, shift, capital && !mark.below ? 3 * kFine : 0);
        }
        figures[composite.character] = figure;
    }
    return figures;
}

char signedByte(int value)
{
    return static_cast<char>(static_cast<signed char>(value));
}

/// The figure as pen movements of a shape file.
std::string compiled(const Figure& figure)
{
    constexpr char kDown = 1, kUp = 2, kMove = 8, kBulge = 12;
    std::string code(1, '\0'); // No name.
    int x = 0, y = 0;
    bool down = true;
    const auto pen = [&](bool wanted) {
        if (down != wanted)
            code += wanted ? kDown : kUp;
        down = wanted;
    };
    const auto go = [&](int toX, int toY, double bulge) {
        code += bulge == 0 ? kMove : kBulge;
        code += signedByte(toX - x);
        code += signedByte(toY - y);
        if (bulge != 0)
            code += signedByte(static_cast<int>(std::lround(bulge * 127)));
        x = toX;
        y = toY;
    };
    for (const Step& step : figure.steps) {
        pen(step.down);
        go(step.x, step.y, step.down ? step.bulge : 0);
    }
    pen(false);
    go(figure.advance, 0, 0);
    code += '\0';
    return code;
}

void addWord(std::string& file, std::size_t value)
{
    file += static_cast<char>(value & 0xff);
    file += static_cast<char>(value >> 8 & 0xff);
}

} // namespace

StrokeFont::StrokeFont()
{
    constexpr double kUnit = 1.0 / (kCapitalRows * kFine);
    for (const auto& [character, figure] : buildFigures()) {
        Glyph& glyph = m_glyphs[character];
        Point2 at;
        for (const Step& step : figure.steps) {
            const Point2 to{step.x * kUnit, step.y * kUnit};
            if (step.down)
                glyph.path.bulgeTo(at, to, step.bulge);
            else
                glyph.path.moveTo(to);
            at = to;
        }
        glyph.bounds = glyph.path.bounds();
        glyph.advance = figure.advance * kUnit;
    }
}

const Glyph* StrokeFont::glyph(char32_t character)
{
    const auto found = m_glyphs.find(character);
    return found == m_glyphs.end() ? nullptr : &found->second;
}

std::string strokeFontFile()
{
    const auto figures = buildFigures();
    std::string file = "AutoCAD-86 unifont 1.0\r\n\x1a";
    addWord(file, figures.size() + 1);
    const std::string head = std::string("Zelvora lettering\0", 18) +
                             std::string{char(kCapitalRows * kFine), char(kBaselineRow * kFine), 0, 0, 0, 0};
    addWord(file, 0);
    addWord(file, head.size());
    file += head;
    for (const auto& [character, figure] : figures) {
        const std::string code = compiled(figure);
        addWord(file, character);
        addWord(file, code.size());
        file += code;
    }
    return file;
}

} // namespace zv::dwg
