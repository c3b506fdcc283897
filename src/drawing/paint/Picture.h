#pragma once

#include "drawing/paint/ScenePainter.h"
#include "drawing/preview/Preview.h"
#include "platform/Result.h"

#include <QImage>

#include <string>

namespace zv::dwg {

/// A drawing read from its file, ready to be painted.
struct Drawing {
    Document document;
    Scene scene;
};

/// Reads a drawing and makes its scene: of the tab that was shown last, or of the first one that shows
/// something when that is empty, the model before the layouts. `path` is in the program's own text, as
/// is the folder that fonts are looked for in first. Errors: as readDocument, and those of opening the file.
Result<Drawing> openDrawing(const std::string& path, const std::string& fontFolder);
/// The scene of a drawing in memory, chosen in the same way.
Scene drawingScene(const Document& document, const std::string& fontFolder, bool plotted = false);

/// The scene whole, with a small margin. `lineweights` as the drawing shows them.
QImage paintPicture(const Scene& scene, QSize size, const QColor& background, bool lineweights = false);

/// A picture of a drawing's geometry on `background`; a null image when it cannot be read or shows nothing.
QImage drawThumbnail(const std::string& path, QSize size, const QColor& background = Qt::black,
                     const std::string& fontFolder = {});

/// The picture that a written drawing carries, on black.
Pixels renderPreview(const Document& document, int width, int height);

/// Writes a picture of the scene by the ending of `path`: png, jpg or bmp of `size` pixels, svg, or pdf with
/// one page of that shape. Errors: Unsupported, another ending; Failed, the file cannot be written.
Result<void> savePicture(const Scene& scene, const std::string& path, QSize size, const QColor& background);

/// Whether that picture is a sheet of paper: an svg or pdf.
bool isPaper(const std::string& path);

} // namespace zv::dwg
