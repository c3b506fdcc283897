#include "drawing/paint/Picture.h"

#include "drawing/Reader.h"
#include "drawing/paint/ImageFiles.h"
#include "drawing/paint/SvgDevice.h"
#include "drawing/paint/SystemFonts.h"
#include "drawing/scene/SceneBuilder.h"
#include "platform/Text.h"

#include <QPageSize>
#include <QPainter>
#include <QPdfWriter>

namespace zv::dwg {

namespace {

constexpr double kMarginPart = 0.02; ///< Of the shorter side.

double marginOf(QSizeF size)
{
    return std::min(size.width(), size.height()) * kMarginPart;
}

QString qtext(const Text& text)
{
    return QString::fromUtf16(text.data(), qsizetype(text.size()));
}
QString qpath(const std::string& path)
{
    return qtext(wide(path));
}

void paintWhole(QPaintDevice& device, const Scene& scene, const QRectF& area, const PaintOptions& options,
                bool ground)
{
    QPainter painter(&device);
    painter.setRenderHint(QPainter::Antialiasing);
    if (ground)
        painter.fillRect(area, options.background);
    paintScene(painter, scene, fitted(scene.bounds, area, marginOf(area.size())), area, options);
}

/// The ending of a file's name in small letters, without the point.
QString endingOf(const std::string& path)
{
    return qpath(path).section(QLatin1Char('.'), -1).toLower();
}

Error notWritten(const std::string& path)
{
    return {ErrorCode::Failed, "cannot write " + path};
}

} // namespace

Scene drawingScene(const Document& document, const std::string& fontFolder, bool plotted)
{
    const auto fonts = SystemFonts::shared(fontFolder);
    SceneOptions options;
    options.plotted = plotted;
    // The sheet that was shown last has this block; the others have numbers behind the name.
    const auto sheet = std::find_if(document.blocks.begin(), document.blocks.end(), [](const BlockRecord& b) {
        return qtext(b.name).compare(QLatin1String("*Paper_Space"), Qt::CaseInsensitive) == 0;
    });
    if (!document.header.modelTab && sheet != document.blocks.end() && !sheet->entities.empty()) {
        options.block = sheet->handle;
        Scene paper = buildScene(document, *fonts, options);
        if (!paper.bounds.empty())
            return paper;
    }
    options.block = 0;
    Scene model = buildScene(document, *fonts, options);
    for (const Layout& layout : document.layouts) {
        if (!model.bounds.empty())
            break;
        options.block = layout.block;
        if (!layout.model && document.block(layout.block))
            model = buildScene(document, *fonts, options);
    }
    return model;
}

namespace {

Result<Drawing> open(const std::string& path, const std::string& fontFolder, std::int64_t mostStoredPixels)
{
    auto source = openByteSource(path);
    if (!source)
        return source.error();
    auto document = readDocument(*source.value());
    if (!document)
        return document.error();
    Drawing drawing{std::move(document).value(), {}};
    drawing.scene = drawingScene(drawing.document, fontFolder);
    loadImages(drawing.scene, path, mostStoredPixels);
    return drawing;
}

} // namespace

Result<Drawing> openDrawing(const std::string& path, const std::string& fontFolder)
{
    return open(path, fontFolder, kMostStoredPixels);
}

QImage paintPicture(const Scene& scene, QSize size, const QColor& background, bool lineweights)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    if (image.isNull())
        return image;
    PaintOptions options;
    options.background = background;
    options.lineweights = lineweights;
    paintWhole(image, scene, QRectF(QPointF(), size), options, true);
    return image;
}

QImage drawThumbnail(const std::string& path, QSize size, const QColor& background,
                     const std::string& fontFolder)
{
    const auto drawing = open(path, fontFolder, kMostStoredForThumbnail);
    if (!drawing || drawing->scene.bounds.empty())
        return {};
    return paintPicture(drawing->scene, size, background);
}

Pixels renderPreview(const Document& document, int width, int height)
{
    const QImage image = paintPicture(drawingScene(document, {}), {width, height}, Qt::black)
                             .convertToFormat(QImage::Format_ARGB32);
    Pixels pixels{image.width(), image.height(), {}};
    for (int y = 0; y < image.height(); ++y) {
        const uchar* row = image.constScanLine(y);
        pixels.bgra.insert(pixels.bgra.end(), row, row + std::size_t(image.width()) * 4);
    }
    return pixels;
}

Result<void> savePicture(const Scene& scene, const std::string& path, QSize size, const QColor& background)
{
    const QString file = qpath(path);
    const QString ending = endingOf(path);
    const QRectF area(QPointF(), size);
    PaintOptions options;
    options.background = background;
    options.exact = true;
    if (ending == QLatin1String("svg")) {
        {
            const std::unique_ptr<QPaintDevice> svg = svgDevice(file, size);
            if (!svg)
                return Error{ErrorCode::Unsupported, "this program was built without svg pictures"};
            paintWhole(*svg, scene, area, options, true);
        }
        return QFile(file).size() > 0 ? Result<void>() : notWritten(path);
    }
    if (ending == QLatin1String("pdf")) {
        QPdfWriter pdf(file);
        constexpr int kDotsPerInch = 600;
        pdf.setResolution(kDotsPerInch);
        // The page is as large as the picture would be on a screen.
        pdf.setPageSize(QPageSize(QSizeF(size) * 72 / 96, QPageSize::Point));
        pdf.setPageMargins({});
        options.pixelsPerMillimetre = kDotsPerInch / 25.4;
        options.thinnest = options.pixelsPerMillimetre * 0.1;
        paintWhole(pdf, scene, QRectF(0, 0, pdf.width(), pdf.height()), options, true);
        return QFile(file).size() > 0 ? Result<void>() : notWritten(path);
    }
    if (ending != QLatin1String("png") && ending != QLatin1String("jpg") && ending != QLatin1String("bmp"))
        return Error{ErrorCode::Unsupported, "pictures are written as png, jpg, bmp, svg or pdf"};
    const QImage image = paintPicture(scene, size, background).convertToFormat(QImage::Format_RGB32);
    return image.save(file) ? Result<void>() : notWritten(path);
}

bool isPaper(const std::string& path)
{
    const QString ending = endingOf(path);
    return ending == QLatin1String("svg") || ending == QLatin1String("pdf");
}

} // namespace zv::dwg
