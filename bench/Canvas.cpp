#include "Canvas.h"

#include "drawing/paint/ScenePainter.h"
#include "drawing/paint/SystemFonts.h"
#include "drawing/scene/SceneBuilder.h"
#include "platform/Files.h"
#include "platform/System.h"

#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace zv::bench {

namespace {

const QColor kGround(33, 40, 48);
const QColor kRubber(120, 190, 255);
constexpr std::size_t kMostEarlierViews = 20;

dwg::FontProvider& fonts()
{
    static const std::shared_ptr<dwg::FontProvider> provider =
        dwg::SystemFonts::shared(joinPath(installationFolder(), "fonts"));
    return *provider;
}

} // namespace

Canvas::Canvas(QWidget* parent) : QWidget(parent)
{
    setMouseTracking(true);
    setCursor(Qt::BlankCursor);
    setMinimumSize(160, 120);
    setAccessibleName(tr("Drawing area"));
}

void Canvas::show(const std::shared_ptr<BenchDrawing>& drawing)
{
    const bool isOther = drawing != m_drawing;
    m_drawing = drawing;
    if (isOther || (drawing && drawing->revision() != m_revision))
        buildScene();
    if (isOther) {
        m_earlier.clear();
        m_view = wholeView();
    }
    update();
}

void Canvas::buildScene()
{
    m_scene = m_drawing ? dwg::buildScene(m_drawing->document(), fonts()) : dwg::Scene();
    m_revision = m_drawing ? m_drawing->revision() : -1;
}

void Canvas::setPrompt(const Prompt& prompt)
{
    m_prompt = prompt;
    update();
}

Canvas::View Canvas::wholeView() const
{
    if (m_scene.bounds.empty())
        return {};
    constexpr double kMargin = 1.1;
    const double perPixelAcross = m_scene.bounds.width() / std::max(1, width());
    const double perPixelUp = m_scene.bounds.height() / std::max(1, height());
    const double perPixel = std::max(perPixelAcross, perPixelUp) * kMargin;
    return {m_scene.bounds.center(), perPixel > 0 ? perPixel : View().unitsPerPixel};
}

void Canvas::setView(const View& view)
{
    if (!std::isfinite(view.unitsPerPixel) || view.unitsPerPixel < 1e-12 || view.unitsPerPixel > 1e12)
        return;
    if (m_earlier.size() == kMostEarlierViews)
        m_earlier.erase(m_earlier.begin());
    m_earlier.push_back(m_view);
    m_view = view;
    update();
}

void Canvas::zoom(const ZoomRequest& request)
{
    View view = m_view;
    switch (request.kind) {
    case ZoomRequest::Kind::Extents:
        view = wholeView();
        break;
    case ZoomRequest::Kind::Factor:
        view.unitsPerPixel /= request.factor;
        break;
    case ZoomRequest::Kind::Window:
        view.center = {(request.corner1.x + request.corner2.x) / 2,
                       (request.corner1.y + request.corner2.y) / 2};
        view.unitsPerPixel =
            std::max(std::abs(request.corner1.x - request.corner2.x) / std::max(1, width()),
                     std::abs(request.corner1.y - request.corner2.y) / std::max(1, height()));
        break;
    case ZoomRequest::Kind::Previous:
        if (m_earlier.empty())
            return;
        m_view = m_earlier.back();
        m_earlier.pop_back();
        update();
        return;
    }
    setView(view);
}

QPointF Canvas::toPixels(const dwg::Point3& point) const
{
    return {(point.x - m_view.center.x) / m_view.unitsPerPixel + width() / 2.0,
            (m_view.center.y - point.y) / m_view.unitsPerPixel + height() / 2.0};
}

dwg::Point3 Canvas::toDrawing(const QPointF& pixels) const
{
    return {m_view.center.x + (pixels.x() - width() / 2.0) * m_view.unitsPerPixel,
            m_view.center.y - (pixels.y() - height() / 2.0) * m_view.unitsPerPixel, 0};
}

void Canvas::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), kGround);
    painter.setRenderHint(QPainter::Antialiasing);
    const double scale = 1 / m_view.unitsPerPixel;
    const dwg::Affine map{scale,
                          0,
                          0,
                          -scale,
                          width() / 2.0 - m_view.center.x * scale,
                          height() / 2.0 + m_view.center.y * scale};
    dwg::PaintOptions options;
    options.background = kGround;
    options.lineweights = false;
    dwg::paintScene(painter, m_scene, map, QRectF(rect()), options);
    drawCursor(painter);
}

/// Cross hairs, with the line from the last point while another one is asked for.
void Canvas::drawCursor(QPainter& painter)
{
    if (!m_pointer)
        return;
    painter.setRenderHint(QPainter::Antialiasing, false);
    if (m_prompt.rubberFrom) {
        painter.setPen(QPen(kRubber, 0, Qt::DashLine));
        painter.drawLine(toPixels(*m_prompt.rubberFrom), *m_pointer);
    }
    painter.setPen(QPen(Qt::white, 0));
    constexpr double kPickBox = 4;
    const double arm = m_prompt.takesPoint ? std::max(width(), height()) : 40;
    painter.drawLine(*m_pointer - QPointF(arm, 0), *m_pointer + QPointF(arm, 0));
    painter.drawLine(*m_pointer - QPointF(0, arm), *m_pointer + QPointF(0, arm));
    if (!m_prompt.takesPoint)
        painter.drawRect(
            QRectF(m_pointer->x() - kPickBox, m_pointer->y() - kPickBox, 2 * kPickBox, 2 * kPickBox));
}

void Canvas::mousePressEvent(QMouseEvent* event)
{
    if (event->button() == Qt::MiddleButton)
        m_dragFrom = event->position();
    if (event->button() != Qt::LeftButton)
        return;
    const dwg::Point3 point = toDrawing(event->position());
    Q_EMIT picked(point.x, point.y);
}

void Canvas::mouseMoveEvent(QMouseEvent* event)
{
    m_pointer = event->position();
    if (m_dragFrom) {
        const QPointF moved = event->position() - *m_dragFrom;
        m_view.center.x -= moved.x() * m_view.unitsPerPixel;
        m_view.center.y += moved.y() * m_view.unitsPerPixel;
        m_dragFrom = event->position();
    }
    const dwg::Point3 point = toDrawing(event->position());
    Q_EMIT pointed(point.x, point.y);
    update();
}

void Canvas::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::MiddleButton)
        m_dragFrom.reset();
}

void Canvas::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::MiddleButton)
        zoom({});
    else
        mousePressEvent(event);
}

void Canvas::wheelEvent(QWheelEvent* event)
{
    const dwg::Point3 fixed = toDrawing(event->position());
    View view = m_view;
    view.unitsPerPixel *= std::pow(1.2, -event->angleDelta().y() / 120.0);
    view.center = {fixed.x - (event->position().x() - width() / 2.0) * view.unitsPerPixel,
                   fixed.y + (event->position().y() - height() / 2.0) * view.unitsPerPixel};
    setView(view);
}

void Canvas::leaveEvent(QEvent*)
{
    m_pointer.reset();
    update();
}

void Canvas::resizeEvent(QResizeEvent*)
{
    if (m_earlier.empty())
        m_view = wholeView();
}

} // namespace zv::bench
