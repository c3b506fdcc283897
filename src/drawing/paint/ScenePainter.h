#pragma once

#include "drawing/scene/Scene.h"

#include <QColor>
#include <QRectF>

class QPainter;

namespace zv::dwg {

struct PaintOptions {
    QColor background = Qt::black; ///< Decides the colour of what contrasts; it is not painted.
    bool lineweights = true;       ///< Else every line is as thin as can be.
    double pixelsPerMillimetre = 96 / 25.4;
    double thinnest = 1; ///< Width in pixels that no line goes below.
    /// For printers and files that are looked at closely: nothing is left out as too small, and a filled line
    /// is no thinner than `thinnest` either.
    bool exact = false;
    bool blackOnly = false; ///< Every colour but the background's is black.
};

/// Paints the part of a scene that falls into `area`. `map` takes drawing units to the painter's, whose y
/// runs downwards.
void paintScene(QPainter& painter, const Scene& scene, const Affine& map, const QRectF& area,
                const PaintOptions& options);

/// The map that shows `box` whole in the middle of `area`, with a margin in the painter's units.
Affine fitted(const Box& box, const QRectF& area, double margin);

/// The colour that a scene's colour has on a ground.
QColor paintedColor(SceneColor color, const QColor& background);

} // namespace zv::dwg
