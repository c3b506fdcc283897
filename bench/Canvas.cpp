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
constexpr double kPickBox = 4; ///< Half its side, in pixels.
constexpr std::size_t kMostEarlierViews = 20;

bool holds(const dwg::Box& outer, const dwg::Box& inner)
{
    return inner.min.x >= outer.min.x && inner.min.y >= outer.min.y && inner.max.x <= outer.max.x &&
           inner.max.y <= outer.max.y;
}

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
    const bool wasEmpty = m_scene.bounds.empty();
    m_drawing = drawing;
    if (isOther || (drawing && drawing->revision() != m_revision))
        buildScene();
    if (isOther) {
        m_earlier.clear();
        m_view = wholeView();
    } else if (wasEmpty && !m_scene.bounds.empty() && !holds(viewBox(), m_scene.bounds)) {
        // What comes into an empty drawing first is seen, whatever its size.
        setView(wholeView());
    }
    update();
}

void Canvas::buildScene()
{
    m_scene = m_drawing ? dwg::buildScene(m_drawing->seen(), fonts()) : dwg::Scene();
    m_revision = m_drawing ? m_drawing->revision() : -1;
}

void Canvas::setPrompt(const Prompt& prompt)
{
    m_prompt = prompt;
    buildDragged();
    update();
}

/// In an empty drawing the block to be placed decides how much is seen.
void Canvas::buildDragged()
{
    const dwg::Handle block = m_prompt.dragged && m_drawing ? m_prompt.dragged->block : 0;
    const bool isNew = block != 0 && block != m_draggedBlock;
    m_draggedBlock = block;
    if (block == 0)
        m_draggedScene = {};
    if (!isNew)
        return;
    m_draggedScene = dwg::buildScene(m_drawing->seen(), fonts(), {block, false});
    if (!m_scene.bounds.empty() || m_draggedScene.bounds.empty())
        return;
    // How far from the pointer it reaches; its base may be far from what is drawn.
    const dwg::BlockRecord* const record = m_drawing->seen().block(block);
    const dwg::Point2 base = record != nullptr ? dwg::flat(record->base) : dwg::Point2{};
    const dwg::Point2 low = m_draggedScene.bounds.min - base, high = m_draggedScene.bounds.max - base;
    const dwg::Point3& scale = m_prompt.dragged->scale;
    const double across = std::max(std::abs(low.x), std::abs(high.x)) * std::abs(scale.x);
    const double up = std::max(std::abs(low.y), std::abs(high.y)) * std::abs(scale.y);
    const dwg::Box view = viewBox();
    if (across <= view.width() / 2 && up <= view.height() / 2)
        return;
    dwg::Box room;
    room.add(view.center() - dwg::Point2{across, up});
    room.add(view.center() + dwg::Point2{across, up});
    setView(viewOf(room));
}

Canvas::View Canvas::viewOf(const dwg::Box& box) const
{
    const double perPixel =
        std::max(box.width() / std::max(1, width()), box.height() / std::max(1, height()));
    return {box.center(), perPixel > 0 ? perPixel : View().unitsPerPixel};
}

/// All that is drawn with a margin, or the limits of a drawing without content.
Canvas::View Canvas::wholeView() const
{
    constexpr double kMargin = 1.1;
    dwg::Box box = m_scene.bounds;
    if (box.empty() && m_drawing) {
        box.add(m_drawing->document().header.limitsMin);
        box.add(m_drawing->document().header.limitsMax);
    }
    if (box.empty())
        return {};
    View view = viewOf(box);
    view.unitsPerPixel *= kMargin;
    return view;
}

dwg::Box Canvas::viewBox() const
{
    dwg::Box box;
    box.add(dwg::flat(toDrawing({0, 0})));
    box.add(dwg::flat(toDrawing(QPointF(width(), height()))));
    return box;
}

double Canvas::pickRadius() const
{
    return kPickBox * m_view.unitsPerPixel;
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
    drawScene(painter, m_scene, viewMap());
    if (const auto map = draggedMap())
        drawScene(painter, m_draggedScene, *map);
    drawCursor(painter);
}

void Canvas::drawScene(QPainter& painter, const dwg::Scene& scene, const dwg::Affine& map)
{
    dwg::PaintOptions options;
    options.background = kGround;
    options.lineweights = false;
    dwg::paintScene(painter, scene, map, QRectF(rect()), options);
}

dwg::Affine Canvas::viewMap() const
{
    const double scale = 1 / m_view.unitsPerPixel;
    return {scale,
            0,
            0,
            -scale,
            width() / 2.0 - m_view.center.x * scale,
            height() / 2.0 + m_view.center.y * scale};
}

/// From the dragged block's own units to pixels; nothing while it has no place.
std::optional<dwg::Affine> Canvas::draggedMap() const
{
    if (!m_drawing || m_draggedBlock == 0 || (!m_pointer && !m_prompt.dragged->at))
        return std::nullopt;
    const DraggedBlock& dragged = *m_prompt.dragged;
    const dwg::Point2 pointer = dwg::flat(toDrawing(m_pointer.value_or(QPointF())));
    const dwg::Point2 at = dragged.at ? dwg::flat(*dragged.at) : pointer;
    const double angle =
        dragged.turns && m_pointer ? std::atan2(pointer.y - at.y, pointer.x - at.x) : dragged.rotation;
    const double c = std::cos(angle), s = std::sin(angle);
    const dwg::BlockRecord* const block = m_drawing->seen().block(m_draggedBlock);
    const dwg::Point2 base = block != nullptr ? dwg::flat(block->base) : dwg::Point2{};
    // A point p of the block goes to at + turned(scaled(p - base)).
    const dwg::Affine view = viewMap();
    const auto pixels = [&](dwg::Point2 p) {
        const dwg::Point2 scaled{(p.x - base.x) * dragged.scale.x, (p.y - base.y) * dragged.scale.y};
        return view.map(at + dwg::Point2{scaled.x * c - scaled.y * s, scaled.x * s + scaled.y * c});
    };
    const dwg::Point2 origin = pixels({0, 0});
    const dwg::Point2 x = pixels({1, 0}) - origin, y = pixels({0, 1}) - origin;
    return dwg::Affine{x.x, x.y, y.x, y.y, origin.x, origin.y};
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
    if (m_prompt.boxFrom) {
        painter.setPen(QPen(kRubber, 0, Qt::DashLine));
        painter.drawRect(QRectF(toPixels(*m_prompt.boxFrom), *m_pointer).normalized());
    }
    painter.setPen(QPen(Qt::white, 0));
    const double arm = m_prompt.takesPoint ? std::max(width(), height()) : 40;
    painter.drawLine(*m_pointer - QPointF(arm, 0), *m_pointer + QPointF(arm, 0));
    painter.drawLine(*m_pointer - QPointF(0, arm), *m_pointer + QPointF(0, arm));
    if (!m_prompt.takesPoint)
        painter.drawRect(
            QRectF(m_pointer->x() - kPickBox, m_pointer->y() - kPickBox, 2 * kPickBox, 2 * kPickBox));
}

void Canvas::mousePressEvent(QMouseEvent* event)
{
    Q_EMIT pressed();
    if (event->button() == Qt::MiddleButton)
        m_dragFrom = event->position();
    if (event->button() == Qt::RightButton)
        Q_EMIT entered();
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
