#pragma once

#include "drawing/geometry/Path.h"

#include <memory>

namespace zv::dwg {

/// One figure of a font: its outline where capitals are 1 high and the baseline is at 0.
struct Glyph {
    Path path;
    Box bounds;
    double advance = 0;  ///< From this figure's origin to the next one's.
    bool filled = false; ///< An outline to fill by odd parity, else strokes.
};

/// A font, of whatever kind its file is. Figures live as long as the font.
class Font {
public:
    virtual ~Font() = default;
    /// The figure of a character; null when the font has none for it.
    virtual const Glyph* glyph(char32_t character) = 0;
};

/// What a drawing says about the font that it wants.
struct FontRequest {
    Text file;     ///< "txt", "romans.shx", "arial.ttf"; may have a folder before it.
    Text bigFile;  ///< Second file for the signs of large alphabets; may be empty.
    Text typeface; ///< Family name; empty when only a file is known.
    bool bold = false, italic = false;
    bool vertical = false;
    bool shapes = false; ///< A file of figures that are called by number.

    // The checker takes what the compiler makes here for a comparison with a null pointer.
    // NOLINTNEXTLINE(modernize-use-nullptr)
    auto operator<=>(const FontRequest&) const = default;
};

/// Finds fonts. What is asked for and missing is replaced, so a font is always given.
class FontProvider {
public:
    virtual ~FontProvider() = default;
    virtual std::shared_ptr<Font> find(const FontRequest& request) = 0;
};

} // namespace zv::dwg
