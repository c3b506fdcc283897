#pragma once

#include "drawing/Document.h"

#include <optional>
#include <vector>

namespace zv::dwg {

/// How a piece of formatted text looks.
struct MTextLook {
    double height = 1; ///< Drawing units.
    double widthFactor = 1;
    double oblique = 0; ///< Radians.
    double tracking = 1;
    double raise = 0; ///< Of the baseline, drawing units.
    bool underline = false, overline = false, strike = false;
    bool bold = false, italic = false;
    int align = 0;              ///< Of the line: 0 bottom, 1 middle, 2 top.
    std::optional<Color> color; ///< None: the entity's own.
    Text font, typeface;        ///< Both empty: the style's.
};

struct MTextPiece {
    enum class Kind { Letters, Break, Tab, Stack };
    Kind kind = Kind::Letters;
    Text text;        ///< Of a stack the upper part.
    Text second;      ///< The lower part.
    char16_t bar = 0; ///< Between the parts: "/", "#" or "^".
    MTextLook look;
};

struct MTextParagraph {
    std::vector<MTextPiece> pieces;
    char16_t justify = 0;        ///< "l", "c", "r", "j", "d"; 0: as the text is attached.
    double indent = 0, left = 0; ///< Of the first line from `left`, and of all lines; drawing units.
};

/// Takes the formatting codes of a multi-line text apart. What is no code is text.
std::vector<MTextParagraph> parseMText(const Text& text, const MTextLook& start);

/// The characters of a text of one line, its %% and \U+ codes resolved, and which of them are underlined,
/// overlined or struck through.
struct MarkedText {
    std::u32string characters;
    std::vector<std::uint8_t> marks; ///< 1 underline, 2 overline, 4 strike.
};
MarkedText parseTextLine(const Text& text);

/// UTF-16 as whole characters; a lone surrogate stays as it is.
std::u32string characters(const Text& text);

} // namespace zv::dwg
