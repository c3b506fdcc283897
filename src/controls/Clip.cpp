#include "controls/Clip.h"

#include "platform/Files.h"

#include <QPainter>

namespace zv {

ClipPlayer::ClipPlayer(QWidget* parent) : QWidget(parent)
{
    setAttribute(Qt::WA_OpaquePaintEvent);
    connect(&m_timer, &QTimer::timeout, this, &ClipPlayer::step);
}

bool ClipPlayer::open(const std::string& path)
{
    close();
    Result<Clip> clip = readClip(readFile(path, kMaxClipBytes).valueOr({}));
    if (!clip)
        return false;
    m_clip = std::move(*clip);
    m_timer.setInterval(m_clip.frameMs);
    updateGeometry();
    if (m_autoPlay)
        play();
    return true;
}

void ClipPlayer::close()
{
    stop();
    m_clip = {};
    m_frame = 0;
    update();
}

void ClipPlayer::play()
{
    if (!m_clip.frames.empty())
        m_timer.start();
}

void ClipPlayer::stop()
{
    m_timer.stop();
}

void ClipPlayer::step()
{
    m_frame = (m_frame + 1) % static_cast<int>(m_clip.frames.size());
    update();
}

QSize ClipPlayer::sizeHint() const
{
    return m_clip.frames.empty() ? QSize(160, 60) : QSize(m_clip.width, m_clip.height);
}

void ClipPlayer::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    if (m_clip.frames.empty())
        return;
    const std::vector<std::uint32_t>& pixels = m_clip.frames[static_cast<std::size_t>(m_frame)];
    const QImage picture(reinterpret_cast<const uchar*>(pixels.data()), m_clip.width, m_clip.height,
                         m_clip.width * 4, QImage::Format_RGB32);
    QRect place(QPoint(0, 0), picture.size().boundedTo(picture.size().scaled(size(), Qt::KeepAspectRatio)));
    place.moveCenter(rect().center());
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.drawImage(place, picture);
}

} // namespace zv
