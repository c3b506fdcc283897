#pragma once

#include "platform/Result.h"

#include <QColor>
#include <QImage>
#include <QSize>

#include <functional>
#include <string>

namespace zv {

/// The picture embedded in a drawing, the one with the most pixels that can be shown; a null picture when
/// it has none. One that goes far beyond `room`, in pixels, is made smaller as it is unpacked; what previews
/// usually measure is kept whole. Errors: the drawing cannot be read.
Result<QImage> readThumbnail(const std::string& path, QSize room);

/// Draws a drawing from its geometry, on black, for drawings that hold no picture. A null picture when that
/// fails too.
using ThumbnailRenderer = std::function<QImage(const std::string& path, QSize pixels)>;

/// Whether the picture lies on a ground of one colour: three of its corners are alike. The fourth may hold a
/// mark of the program that saved it.
bool hasGround(const QImage& picture);
/// The picture with its ground turned into `ground`. What was drawn to be seen on a dark ground is turned
/// light for dark and dark for light, its hue kept. A picture without a
/// ground stays.
QImage onGround(const QImage& picture, QColor ground);

/// How thin lines fare when a picture shrinks, as the system numbers it.
enum class StretchMode {
    BlackOnWhite = 1, ///< Lines are kept; of two that stand out alike, the darker.
    WhiteOnBlack = 2, ///< Lines are kept; of two that stand out alike, the lighter.
    ColorOnColor = 3, ///< Pixels are left out.
    Halftone = 4,     ///< Pixels are averaged.
};

/// The picture on `ground` in another size. Made larger it is smoothed in every mode.
QImage stretched(const QImage& picture, QSize size, StretchMode mode, QColor ground);

} // namespace zv
