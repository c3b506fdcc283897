#pragma once

#include <QColor>
#include <QRectF>
#include <QSet>
#include <QSizeF>
#include <QString>

namespace zv {

/// What a PDF file as Qt writes it holds, told from its own words.
struct PdfFacts {
    bool whole = false; ///< It begins and ends as such a file does.
    int pages = 0;
    QSizeF millimetres; ///< Of the last page.
    QString title;
    int paths = 0;       ///< Lines and areas that are drawn as such.
    int images = 0;      ///< Bitmaps.
    double thinnest = 0; ///< Width in millimetres of the thinnest line; 0 when there is none.
    QSet<QRgb> colors;   ///< Of lines and areas.
    QRectF ink;          ///< Round all points of them, in millimetres from the page's lower left corner.
};

/// The facts of a file; those of an empty one when it cannot be read.
PdfFacts readPdf(const QString& file);

/// How much of the pages' ground is covered, 0 to 1, as poppler paints it; negative when it cannot.
double inkOnPage(const QString& file);

} // namespace zv
