#include "controls/DwgThumbnail.h"

#include "platform/Text.h"
#include "platform/WithinMemory.h"
#include "window/TextBytes.h"

#include <QFontMetrics>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QTimer>
#include <QTimerEvent>

#include <chrono>

namespace zv {
namespace {

constexpr std::chrono::milliseconds kAtOnce(20); ///< What a cell waits for its picture while it is painted.
constexpr int kLookMs = 20;                      ///< Between the looks for one that takes longer.
constexpr int kMargin = 3; ///< Between the edge, which carries the focus frame, and the picture, in pixels.

ThumbnailRenderer& renderer()
{
    static ThumbnailRenderer shared;
    return shared;
}

/// What the cells read their pictures with that they need anew.
Workers& readers()
{
    static Workers shared;
    return shared;
}

QColor colorOf(int number)
{
    return QColor(number & 0xFF, (number >> 8) & 0xFF, (number >> 16) & 0xFF);
}

StretchMode modeOf(int number)
{
    return number >= 1 && number <= 3 ? StretchMode(number) : StretchMode::Halftone;
}

} // namespace

DwgThumbnail::DwgThumbnail(QWidget* parent) : QWidget(parent)
{
    setFocusPolicy(Qt::StrongFocus);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setAccessibleName(tr("Empty cell"));
}

void DwgThumbnail::setRenderer(ThumbnailRenderer newRenderer)
{
    renderer() = std::move(newRenderer);
}

Result<void> DwgThumbnail::setDrawing(const std::string& path)
{
    return setDrawing(path, path.empty() ? Result<QImage>(QImage()) : readThumbnail(path, pictureRoom()));
}

Result<void> DwgThumbnail::setDrawing(const std::string& path, Result<QImage> picture)
{
    m_fileName = toText(path);
    m_picture = {};
    m_pictureSize = {};
    m_scaled = {};
    m_reading = {};
    m_look.stop();
    m_slow = false;
    m_readable = false;
    m_renderPending = false;
    m_drawn = false;
    update();
    const QString name = toText(fileNamePart(path));
    setToolTip(m_fileName);
    setAccessibleName(name.isEmpty() ? tr("Empty cell") : name);
    if (path.empty())
        return {};
    if (!picture)
        return picture.error();
    m_readable = true;
    m_picture = std::move(*picture);
    m_pictureSize = m_picture.size();
    m_stale = true;
    m_renderPending = m_picture.isNull() && bool(renderer());
    return {};
}

void DwgThumbnail::setDwgFileName(const QString& path)
{
    // Who sets the property by its name sees a refused drawing as an empty cell.
    static_cast<void>(setDrawing(toBytes(path)));
}

void DwgThumbnail::setBackColor(int color)
{
    m_backColor = color;
    update();
}

void DwgThumbnail::setBitmapBackColor(int color)
{
    if (m_bitmapBackColor == color)
        return;
    m_bitmapBackColor = color;
    m_stale = true;
    update();
}

void DwgThumbnail::setStretchBltMode(int mode)
{
    if (m_stretchBltMode == mode)
        return;
    m_stretchBltMode = mode;
    m_stale = true;
    update();
}

void DwgThumbnail::takeFocusRect()
{
    const QList<DwgThumbnail*> siblings =
        parent() ? parent()->findChildren<DwgThumbnail*>(QString(), Qt::FindDirectChildrenOnly)
                 : QList<DwgThumbnail*>();
    for (DwgThumbnail* other : siblings) {
        if (other != this && other->m_hasFocusRect) {
            other->m_hasFocusRect = false;
            other->update();
        }
    }
    m_hasFocusRect = true;
}

// Drawing from geometry can take a while, so each cell waits for its own turn of the event loop.
void DwgThumbnail::renderLater()
{
    m_renderPending = false;
    QTimer::singleShot(0, this, [this, fileName = m_fileName, pixels = pictureRoom()] {
        if (fileName != m_fileName || !renderer())
            return;
        const auto drawn =
            withinMemory([&]() -> Result<QImage> { return renderer()(toBytes(fileName), pixels); });
        m_picture = drawn.valueOr(QImage());
        m_pictureSize = m_picture.size();
        m_drawn = true;
        m_stale = true;
        update();
    });
}

QSize DwgThumbnail::pictureRoom() const
{
    return rect().marginsRemoved({kMargin, kMargin, kMargin, kMargin}).size() * devicePixelRatioF();
}

void DwgThumbnail::paintPicture(QPainter& painter)
{
    const qreal ratio = devicePixelRatioF();
    const QSize wanted = m_pictureSize.scaled(pictureRoom(), Qt::KeepAspectRatio);
    if (wanted.isEmpty())
        return;
    if (m_stale || m_scaled.size() != wanted)
        scalePicture(wanted);
    QRectF place(QPointF(), QSizeF(wanted) / ratio);
    place.moveCenter(QRectF(rect()).center());
    // Half pixels would blur the picture.
    place.moveTopLeft((place.topLeft() * ratio).toPoint().toPointF() / ratio);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, m_scaled.size() != wanted);
    painter.drawPixmap(place, m_scaled, m_scaled.rect());
}

/// Brings the picture to the cell's size. Of a larger one nothing else is kept; it is read again when it is
/// needed in another size or on another ground. Until it is there the cell goes on showing what it shows.
void DwgThumbnail::scalePicture(QSize wanted)
{
    if (m_picture.isNull())
        readAgain();
    if (m_picture.isNull())
        return;
    const QColor ground = colorOf(m_bitmapBackColor);
    const StretchMode mode = hasGround(m_picture) ? modeOf(m_stretchBltMode) : StretchMode::Halftone;
    m_scaled = QPixmap::fromImage(stretched(onGround(m_picture, ground), wanted, mode, ground));
    m_stale = false;
    if (!m_drawn && (m_picture.width() > wanted.width() || m_picture.height() > wanted.height()))
        m_picture = {};
}

/// Most drawings come at once. A share that is slow must hold neither the window nor the edge that is drawn.
void DwgThumbnail::readAgain()
{
    if (!m_reading.valid())
        m_reading = readers().start(
            [path = toBytes(m_fileName), room = pictureRoom()] { return readThumbnail(path, room); });
    if (m_slow || m_reading.wait_for(kAtOnce) != std::future_status::ready) {
        m_slow = true;
        // A cell that is painted over and over would put off each look before it comes.
        if (!m_look.isActive())
            m_look.start(kLookMs, this);
        return;
    }
    m_picture = m_reading.get().valueOr(QImage());
}

void DwgThumbnail::paintName(QPainter& painter)
{
    const QColor ground = colorOf(m_backColor);
    painter.setPen(qGray(ground.rgb()) < 128 ? QColor(200, 200, 200) : QColor(60, 60, 60));
    const QRect room = rect().marginsRemoved({kMargin, kMargin, kMargin, kMargin});
    const QString name = toText(fileNamePart(toBytes(m_fileName)));
    painter.drawText(room, Qt::AlignCenter, fontMetrics().elidedText(name, Qt::ElideMiddle, room.width()));
}

void DwgThumbnail::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    // Cells stand edge to edge; a line of the window's own ground keeps them apart.
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.fillRect(rect().adjusted(1, 1, -1, -1), colorOf(m_backColor));
    if (!m_pictureSize.isEmpty())
        paintPicture(painter);
    else if (m_readable)
        paintName(painter);
    if (m_renderPending)
        renderLater();
    if (m_hasFocusRect) {
        QColor frame = palette().color(QPalette::Highlight);
        painter.setPen(QPen(frame, hasFocus() ? 2 : 1, hasFocus() ? Qt::SolidLine : Qt::DotLine));
        const qreal inset = hasFocus() ? 1 : 0.5;
        painter.drawRect(QRectF(rect()).adjusted(inset, inset, -inset, -inset));
    }
}

// A drawn picture is drawn anew once it would have to be blown up.
void DwgThumbnail::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    const QSize room = pictureRoom();
    if (m_drawn && (room.width() > m_picture.width() || room.height() > m_picture.height()))
        m_renderPending = true;
}

void DwgThumbnail::timerEvent(QTimerEvent* event)
{
    if (event->timerId() != m_look.timerId()) {
        QWidget::timerEvent(event);
        return;
    }
    if (m_reading.wait_for(std::chrono::seconds(0)) != std::future_status::ready)
        return;
    m_look.stop();
    m_picture = m_reading.get().valueOr(QImage());
    if (!m_picture.isNull())
        update();
}

void DwgThumbnail::mousePressEvent(QMouseEvent* event)
{
    m_pressed = event->button() == Qt::LeftButton;
}

void DwgThumbnail::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton || !std::exchange(m_pressed, false))
        return;
    if (rect().contains(event->position().toPoint()))
        Q_EMIT clicked();
}

// The second press of a double-click is no press of its own: the first one has selected already.
void DwgThumbnail::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        Q_EMIT doubleClicked();
}

void DwgThumbnail::keyPressEvent(QKeyEvent* event)
{
    switch (event->key()) {
    case Qt::Key_Space:
        Q_EMIT clicked();
        break;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        Q_EMIT clicked();
        Q_EMIT doubleClicked();
        break;
    default:
        QWidget::keyPressEvent(event);
    }
}

void DwgThumbnail::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    takeFocusRect();
    update();
    Q_EMIT gotFocus();
}

void DwgThumbnail::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    update();
    Q_EMIT lostFocus();
}

} // namespace zv
