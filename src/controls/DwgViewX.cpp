#include "controls/DwgViewX.h"

#include "controls/DwgViewXState.h"
#include "controls/LayersDialog.h"
#include "platform/WithinMemory.h"
#include "window/TextBytes.h"

#include <QElapsedTimer>
#include <QPainter>
#include <QTimerEvent>

namespace zv {

namespace {

const QColor kGround = Qt::black;
constexpr double kStep = 1.25; ///< Of one zoom in or out.
constexpr double kMargin = 8;  ///< Pixels round a drawing that is shown whole.
constexpr qint64 kSlowMs = 40; ///< Pictures that take longer are not painted anew at each movement.
constexpr int kRestMs = 90;

} // namespace

DwgViewX::DwgViewX(QWidget* parent) : QWidget(parent), m_state(std::make_unique<State>())
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Drawing"));
}

DwgViewX::~DwgViewX() = default;

bool DwgViewX::setDrawing(const std::string& path)
{
    State& s = *m_state;
    s.path = toText(path);
    s.drawing.reset();
    s.error.clear();
    s.stale = true;
    s.whole = true;
    s.unitsPerPixel = 0;
    setMode(Mode::None);
    update();
    if (path.empty())
        return false;
    auto opened = withinMemory([&] { return dwg::openDrawing(path, toBytes(s.fontPath)); });
    if (!opened) {
        refuse(opened.error());
        return false;
    }
    s.drawing = std::make_unique<dwg::Drawing>(std::move(opened).value());
    setAccessibleDescription(s.path);
    zoomExtents();
    return true;
}

void DwgViewX::refuse(const Error& error)
{
    State& s = *m_state;
    s.drawing.reset();
    s.error = tr("%1\ncannot be shown: %2").arg(s.path, toText(error.text));
    setAccessibleDescription(s.error);
}

void DwgViewX::setFontFolder(const std::string& folder)
{
    State& s = *m_state;
    s.fontPath = toText(folder);
    if (!s.drawing)
        return;
    s.drawing->scene = s.sceneOf(false);
    s.stale = true;
    update();
}

QString DwgViewX::dwgFileName() const
{
    return m_state->path;
}
void DwgViewX::setDwgFileName(const QString& path)
{
    setDrawing(toBytes(path));
}
QString DwgViewX::fontPath() const
{
    return m_state->fontPath;
}
void DwgViewX::setFontPath(const QString& folder)
{
    setFontFolder(toBytes(folder));
}
QString DwgViewX::errorText() const
{
    return m_state->error;
}
bool DwgViewX::hasDrawing() const
{
    return m_state->drawing != nullptr;
}
DwgViewX::Mode DwgViewX::mode() const
{
    return m_state->mode;
}
double DwgViewX::unitsPerPixel() const
{
    return hasDrawing() ? m_state->unitsPerPixel : 0;
}
QSize DwgViewX::sizeHint() const
{
    return {480, 360};
}

void DwgViewX::zoomExtents()
{
    State& s = *m_state;
    if (!s.drawing)
        return;
    const dwg::Affine map = dwg::fitted(s.drawing->scene.bounds, rect(), kMargin);
    s.center = s.drawing->scene.bounds.empty() ? dwg::Point2() : s.drawing->scene.bounds.center();
    s.unitsPerPixel = 1 / map.xx;
    s.whole = true;
    s.stale = true;
    update();
}

void DwgViewX::lookAt(double centerX, double centerY, double unitsPerPixel)
{
    State& s = *m_state;
    if (!s.drawing)
        return;
    // So far in or out nothing can be seen any more, and numbers lose their meaning.
    const dwg::Box& box = s.drawing->scene.bounds;
    const double size = std::max({box.width(), box.height(), 1e-6});
    s.unitsPerPixel = std::clamp(unitsPerPixel, size * 1e-9, size * 10);
    s.center = {std::clamp(centerX, box.min.x - size * 100, box.max.x + size * 100),
                std::clamp(centerY, box.min.y - size * 100, box.max.y + size * 100)};
    s.whole = false;
    s.stale = true;
    update();
}

void DwgViewX::zoomAt(QPointF pixel, double factor)
{
    State& s = *m_state;
    if (!s.drawing)
        return;
    const dwg::Point2 fixed = s.toDrawing(pixel, size());
    const double units = s.unitsPerPixel * factor;
    lookAt(fixed.x + (s.center.x - fixed.x) * factor, fixed.y + (s.center.y - fixed.y) * factor, units);
}

void DwgViewX::zoomIn()
{
    zoomAt(QRectF(rect()).center(), 1 / kStep);
}
void DwgViewX::zoomOut()
{
    zoomAt(QRectF(rect()).center(), kStep);
}
void DwgViewX::zoomWindow()
{
    setMode(Mode::ZoomWindow);
}
void DwgViewX::pan()
{
    setMode(Mode::Pan);
}
void DwgViewX::zoomRealtime()
{
    setMode(Mode::ZoomRealtime);
}
void DwgViewX::panRealtime()
{
    setMode(Mode::Pan);
}
void DwgViewX::view3DOrbit()
{
    setMode(Mode::Pan);
}

void DwgViewX::setMode(Mode mode)
{
    State& s = *m_state;
    s.mode = mode;
    s.dragging = s.cornerSet = false;
    switch (mode) {
    case Mode::ZoomWindow:
        setCursor(Qt::CrossCursor);
        break;
    case Mode::Pan:
        setCursor(Qt::OpenHandCursor);
        break;
    case Mode::ZoomRealtime:
        setCursor(Qt::SizeVerCursor);
        break;
    case Mode::None:
        unsetCursor();
        break;
    }
    update();
}

void DwgViewX::layersDialog()
{
    State& s = *m_state;
    if (!s.drawing)
        return;
    LayersDialog dialog(s.drawing->document, this);
    connect(&dialog, &LayersDialog::layersChanged, this, [this, &s] {
        s.drawing->scene = s.sceneOf(false);
        s.stale = true;
        update();
    });
    dialog.exec();
}

void DwgViewX::paintPicture()
{
    State& s = *m_state;
    const qreal ratio = devicePixelRatioF();
    QPixmap picture(size() * ratio);
    if (picture.isNull())
        return;
    picture.setDevicePixelRatio(ratio);
    picture.fill(kGround);
    QElapsedTimer timer;
    timer.start();
    {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::Antialiasing);
        const double scale = 1 / s.unitsPerPixel;
        const dwg::Affine map{
            scale, 0, 0, -scale, width() / 2.0 - s.center.x * scale, height() / 2.0 + s.center.y * scale};
        dwg::PaintOptions options;
        options.background = kGround;
        options.lineweights = s.drawing->document.header.lineweightDisplay;
        dwg::paintScene(painter, s.drawing->scene, map, rect(), options);
    }
    s.picture = picture;
    s.pictureCenter = s.center;
    s.pictureUnits = s.unitsPerPixel;
    s.paintMs = timer.elapsed();
    s.stale = false;
}

void DwgViewX::paintEvent(QPaintEvent*)
{
    State& s = *m_state;
    QPainter painter(this);
    painter.fillRect(rect(), kGround);
    if (!s.drawing) {
        painter.setPen(Qt::white);
        const QRect inner = rect().adjusted(16, 16, -16, -16);
        painter.drawText(inner, Qt::AlignCenter | Qt::TextWordWrap, s.error);
        paintFocus(painter);
        return;
    }
    const bool moving = s.dragging || s.panning || s.rest.isActive();
    const bool sameSize = s.picture.size() == size() * devicePixelRatioF();
    if (s.stale && (!moving || !sameSize || s.paintMs < kSlowMs)) {
        if (const Result<void> painted = withinMemory([this]() -> Result<void> {
                paintPicture();
                return {};
            });
            !painted) {
            refuse(painted.error());
            update();
            return;
        }
    }
    if (s.stale) {
        // The old picture in its new place, until there is time for the exact one.
        const double grow = s.pictureUnits / s.unitsPerPixel;
        const QPointF middle(width() / 2.0 + (s.pictureCenter.x - s.center.x) / s.unitsPerPixel,
                             height() / 2.0 - (s.pictureCenter.y - s.center.y) / s.unitsPerPixel);
        const QSizeF shown = QSizeF(size()) * grow;
        painter.drawPixmap(QRectF(middle.x() - shown.width() / 2, middle.y() - shown.height() / 2,
                                  shown.width(), shown.height()),
                           s.picture, s.picture.rect());
    } else {
        painter.drawPixmap(0, 0, s.picture);
    }
    if (s.mode == Mode::ZoomWindow && (s.dragging || s.cornerSet)) {
        painter.setPen(QPen(Qt::white, 1, Qt::DashLine));
        painter.drawRect(QRectF(s.pressed, s.last).normalized());
    }
    paintFocus(painter);
}

void DwgViewX::paintFocus(QPainter& painter) const
{
    if (!hasFocus())
        return;
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.setPen(QPen(palette().highlight().color(), 2));
    painter.setBrush(Qt::NoBrush);
    painter.drawRect(rect().adjusted(1, 1, -1, -1));
}

void DwgViewX::paintSoon()
{
    m_state->rest.start(kRestMs, this);
    update();
}

void DwgViewX::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_state->rest.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    m_state->rest.stop();
    update();
}

void DwgViewX::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    m_state->stale = true;
    if (m_state->whole)
        zoomExtents();
}

} // namespace zv
