#pragma once

#include "drawing/scene/MTextParser.h"
#include "drawing/scene/SceneParts.h"

namespace zv::dwg {

/// Figures that share a colour.
struct LaidRun {
    std::optional<Color> color;
    std::vector<GlyphPlace> places;
    Path lines; ///< Underlines, overlines and fraction bars.
};

/// A multi-line text set in lines, in its own plane: its insertion at 0,0, x along the lines.
struct LaidText {
    std::vector<LaidRun> runs;
    Box extents; ///< Round the lines; as wide as the text's frame where it has one.
};

LaidText layOut(const MText& text, StyleFonts& fonts, const TextStyle* style);

} // namespace zv::dwg
