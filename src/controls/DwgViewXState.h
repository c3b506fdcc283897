#pragma once

#include "controls/DwgViewX.h"
#include "drawing/paint/ImageFiles.h"
#include "drawing/paint/Picture.h"
#include "window/TextBytes.h"

#include <QBasicTimer>
#include <QPixmap>
#include <QPrinter>

namespace zv {

/// What the viewer shows, and how.
struct DwgViewX::State {
    QString path, fontPath, error;
    std::unique_ptr<dwg::Drawing> drawing;

    // The part of the drawing that is seen.
    dwg::Point2 center;
    double unitsPerPixel = 0;
    bool whole = true; ///< The whole drawing is shown, and goes on being shown when the size changes.

    // The picture as it was painted last. While a drawing that paints slowly is moved, it stands in for the
    // exact one until the hand rests.
    QPixmap picture;
    dwg::Point2 pictureCenter;
    double pictureUnits = 0;
    qint64 paintMs = 0;
    bool stale = true;
    QBasicTimer rest;

    Mode mode = Mode::None;
    bool dragging = false, panning = false, cornerSet = false;
    QPointF pressed, last;
    double pressedUnits = 0;
    dwg::Point2 pressedAt; ///< In drawing units.

    bool printSilently = false;
    std::unique_ptr<QPrinter> printer; ///< As the user left it last.
    bool printerChosen = false;        ///< The user said yes to it.
    std::function<bool(QPrinter&, QWidget*)> chooser;

    /// The scene of the drawing as its layers are now, with the pictures that it shows. `plotted` leaves out
    /// what is not to be on paper.
    dwg::Scene sceneOf(bool plotted) const
    {
        dwg::Scene scene = dwg::drawingScene(drawing->document, toBytes(fontPath), plotted);
        dwg::loadImages(scene, toBytes(path));
        return scene;
    }

    dwg::Point2 toDrawing(QPointF pixel, QSizeF size) const
    {
        return {center.x + (pixel.x() - size.width() / 2) * unitsPerPixel,
                center.y - (pixel.y() - size.height() / 2) * unitsPerPixel};
    }
};

} // namespace zv
