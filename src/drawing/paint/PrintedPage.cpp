#include "drawing/paint/PrintedPage.h"

#include "drawing/paint/ScenePainter.h"

#include <QPainter>
#include <QPrinter>
#include <QPrinterInfo>

namespace zv::dwg {

namespace {

constexpr double kMillimetresPerInch = 25.4;
constexpr double kMarginPart = 0.02; ///< Of the printable area's shorter side.

double marginOf(QSizeF size)
{
    return std::min(size.width(), size.height()) * kMarginPart;
}

/// Size on paper of one drawing unit, in the units of the layout.
double scaleOn(const Box& bounds, QPageLayout layout, QPageLayout::Orientation orientation)
{
    layout.setOrientation(orientation);
    const QRectF area(QPointF(), layout.paintRect().size());
    return fitted(bounds, area, marginOf(area.size())).xx;
}

bool printsColor(const QPrinter& printer)
{
    if (printer.colorMode() == QPrinter::GrayScale)
        return false;
    const QPrinterInfo device(printer);
    return device.isNull() || device.supportedColorModes().isEmpty() ||
           device.supportedColorModes().contains(QPrinter::Color);
}

} // namespace

QPageLayout::Orientation betterOrientation(const Box& bounds, const QPageLayout& layout)
{
    if (bounds.empty())
        return layout.orientation();
    const double upright = scaleOn(bounds, layout, QPageLayout::Portrait);
    const double across = scaleOn(bounds, layout, QPageLayout::Landscape);
    if (upright == across)
        return layout.orientation();
    return upright > across ? QPageLayout::Portrait : QPageLayout::Landscape;
}

bool printPicture(const Scene& scene, QPrinter& printer)
{
    printer.setPageOrientation(betterOrientation(scene.bounds, printer.pageLayout()));
    QPainter painter;
    if (!painter.begin(&printer))
        return false;
    PaintOptions options;
    options.background = Qt::white;
    options.exact = true;
    options.blackOnly = !printsColor(printer);
    options.pixelsPerMillimetre = printer.resolution() / kMillimetresPerInch;
    options.thinnest = options.pixelsPerMillimetre * kThinnestMillimetres;
    const QRectF area(QPointF(), printer.pageLayout().paintRectPixels(printer.resolution()).size());
    paintScene(painter, scene, fitted(scene.bounds, area, marginOf(area.size())), area, options);
    return painter.end();
}

} // namespace zv::dwg
