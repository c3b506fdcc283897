#pragma once

#include <span>

namespace zv::dwg {

/// A figure drawn on a grid of which the baseline is row 3 and capitals reach row 12. Two hexadecimal digits
/// are a point, column and row; "," lifts the pen; between points "+" is a quarter circle to the left, "-" to
/// the right, ">" a half circle to the left, "<" to the right, and nothing is a straight line.
struct StrokeFigure {
    char32_t character;
    int width; ///< Columns, without the gap to the next figure.
    const char* strokes;
};

/// A letter with a mark above or below it.
struct StrokeComposite {
    char32_t character;
    char letter;
    char mark; ///< One of the keys of strokeMarks().
};

struct StrokeMark {
    char key;
    bool below;
    const char* strokes; ///< Column 4 is the letter's middle; drawn above small letters.
};

std::span<const StrokeFigure> strokeFigures();
std::span<const StrokeComposite> strokeComposites();
std::span<const StrokeMark> strokeMarks();

} // namespace zv::dwg
