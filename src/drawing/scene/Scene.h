#pragma once

#include "drawing/fonts/Font.h"
#include "drawing/geometry/Path.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace zv::dwg {

/// A colour as a scene keeps it. `foreground` is the colour that contrasts with whatever it is drawn on.
struct SceneColor {
    std::uint32_t rgb = 0xffffff; ///< 0xRRGGBB.
    bool foreground = false;
    std::uint8_t alpha = 255;
    bool operator==(const SceneColor&) const = default;
};

/// A figure of a font, placed.
struct GlyphPlace {
    const Glyph* glyph = nullptr;
    Affine map;
};

/// How a gradient goes from its first colour to its second: across, across and back, or from a middle
/// outwards (full, half, or lying aside).
enum class GradientForm : std::uint8_t { Linear, Cylinder, Sphere, Hemisphere, Curved };

/// What the painter made of a picture's file; only it knows what that is.
struct LoadedImage;

/// A picture from a file of its own.
struct SceneImage {
    Text file;    ///< As the drawing names it.
    Affine place; ///< From the unit square, y downwards from the picture's upper edge, to the scene.
    std::shared_ptr<const LoadedImage> loaded; ///< Null: only its frame is seen.
};

/// One thing to draw. Things are drawn in the order in which they stand.
struct SceneItem {
    enum class Kind : std::uint8_t {
        Stroke,   ///< The elements as lines.
        Fill,     ///< The area of the elements by odd parity.
        Mask,     ///< The same in the colour of the ground.
        Gradient, ///< The same, blended from color to color2 along `angle`.
        Glyphs,   ///< Figures of fonts.
        Image,    ///< The area of the elements, showing a picture.
    };
    Kind kind = Kind::Stroke;
    SceneColor color, color2;
    float angle = 0; ///< Radians.
    GradientForm gradient = GradientForm::Linear;
    bool winding = false;               ///< The area is the union of the runs instead.
    std::int16_t clip = -1;             ///< Index into Scene::clips; -1: none.
    std::uint32_t image = 0;            ///< Index into Scene::images.
    std::int16_t lineweight = 0;        ///< Hundredths of a millimetre; 0 is the thinnest line.
    std::uint32_t first = 0, count = 0; ///< Range in Scene::path.elements, or in Scene::glyphs.
    Box bounds;
};

/// A drawing as a picture of no particular size: y upwards, lengths in drawing units.
struct Scene {
    std::vector<SceneItem> items;
    Path path; ///< The elements of all items.
    std::vector<GlyphPlace> glyphs;
    std::vector<Box> clips;
    std::vector<SceneImage> images;
    std::vector<std::shared_ptr<Font>> fonts; ///< Keeps the figures alive.
    Box bounds;
    bool complete = true; ///< False when the drawing went beyond the limits and the rest was left out.

    std::span<const PathElement> elements(const SceneItem& item) const
    {
        return std::span(path.elements).subspan(item.first, item.count);
    }
    std::span<const GlyphPlace> places(const SceneItem& item) const
    {
        return std::span(glyphs).subspan(item.first, item.count);
    }
};

} // namespace zv::dwg
