#include "controls/DwgViewXState.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QWheelEvent>

namespace zv {

namespace {

constexpr double kNotch = 120; ///< Wheel units of one notch.
constexpr double kWheelStep = 1.25;
constexpr double kArrowPart = 1.0 / 8;  ///< Of the view that an arrow key moves.
constexpr double kDoublingPixels = 100; ///< Upward drag that doubles the size.
constexpr double kClickPixels = 4;      ///< Less is a click, more a drag.

} // namespace

void DwgViewX::wheelEvent(QWheelEvent* event)
{
    const double notches = event->angleDelta().y() / kNotch;
    if (!hasDrawing() || notches == 0)
        return;
    zoomAt(event->position(), std::pow(kWheelStep, -notches));
    paintSoon();
    event->accept();
}

void DwgViewX::mousePressEvent(QMouseEvent* event)
{
    State& s = *m_state;
    s.last = event->position();
    if (event->button() == Qt::MiddleButton) {
        s.panning = true;
        setCursor(Qt::ClosedHandCursor);
        return;
    }
    if (event->button() != Qt::LeftButton || s.mode == Mode::None || !s.drawing)
        return;
    if (s.mode == Mode::ZoomWindow && s.cornerSet) {
        finishWindow(event->position());
        return;
    }
    s.dragging = true;
    s.pressed = event->position();
    s.pressedUnits = s.unitsPerPixel;
    if (s.mode == Mode::Pan)
        setCursor(Qt::ClosedHandCursor);
}

void DwgViewX::mouseMoveEvent(QMouseEvent* event)
{
    State& s = *m_state;
    const QPointF moved = event->position() - s.last;
    if (s.panning || (s.dragging && s.mode == Mode::Pan)) {
        lookAt(s.center.x - moved.x() * s.unitsPerPixel, s.center.y + moved.y() * s.unitsPerPixel,
               s.unitsPerPixel);
    } else if (s.dragging && s.mode == Mode::ZoomRealtime) {
        zoomAt(s.pressed, std::pow(2, moved.y() / kDoublingPixels));
    } else if (s.dragging || s.cornerSet) {
        update();
    }
    s.last = event->position();
}

void DwgViewX::mouseReleaseEvent(QMouseEvent* event)
{
    State& s = *m_state;
    if (event->button() == Qt::MiddleButton && s.panning) {
        s.panning = false;
        setMode(s.mode);
        return;
    }
    if (event->button() != Qt::LeftButton || !s.dragging)
        return;
    s.dragging = false;
    if (s.mode == Mode::Pan)
        setCursor(Qt::OpenHandCursor);
    if (s.mode == Mode::ZoomWindow) {
        const QPointF size = event->position() - s.pressed;
        if (std::abs(size.x()) + std::abs(size.y()) < kClickPixels)
            s.cornerSet = true; // A click sets the first corner, the next one the other.
        else
            finishWindow(event->position());
    }
    update();
}

void DwgViewX::finishWindow(QPointF corner)
{
    State& s = *m_state;
    const QRectF window = QRectF(s.pressed, corner).normalized();
    setMode(Mode::None);
    if (window.width() < 1 || window.height() < 1)
        return;
    const dwg::Point2 middle = s.toDrawing(window.center(), size());
    const double part = std::max(window.width() / width(), window.height() / height());
    lookAt(middle.x, middle.y, s.unitsPerPixel * part);
}

void DwgViewX::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::MiddleButton)
        zoomExtents();
    else
        mousePressEvent(event);
}

void DwgViewX::keyPressEvent(QKeyEvent* event)
{
    State& s = *m_state;
    const double stepX = width() * kArrowPart * s.unitsPerPixel;
    const double stepY = height() * kArrowPart * s.unitsPerPixel;
    switch (event->key()) {
    case Qt::Key_Plus:
    case Qt::Key_Equal:
        zoomIn();
        break;
    case Qt::Key_Minus:
        zoomOut();
        break;
    case Qt::Key_Home:
        zoomExtents();
        break;
    case Qt::Key_Left:
        lookAt(s.center.x - stepX, s.center.y, s.unitsPerPixel);
        break;
    case Qt::Key_Right:
        lookAt(s.center.x + stepX, s.center.y, s.unitsPerPixel);
        break;
    case Qt::Key_Up:
        lookAt(s.center.x, s.center.y + stepY, s.unitsPerPixel);
        break;
    case Qt::Key_Down:
        lookAt(s.center.x, s.center.y - stepY, s.unitsPerPixel);
        break;
    case Qt::Key_Escape:
        // Without a mode to leave, Esc is the window's.
        if (s.mode == Mode::None)
            QWidget::keyPressEvent(event);
        else
            setMode(Mode::None);
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void DwgViewX::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update();
}

void DwgViewX::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
}

} // namespace zv
