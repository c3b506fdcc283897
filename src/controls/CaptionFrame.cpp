#include "controls/CaptionFrame.h"

#include <QHelpEvent>
#include <QPainter>
#include <QToolTip>

#include <algorithm>

namespace zv {
namespace {

constexpr int kIndent = 8; ///< From the frame's edge to its caption.
constexpr int kGap = 4;    ///< Between the line and the caption in it.
constexpr double kCorner = 3;
/// How small the letters of a caption become in a narrow frame before it loses some of them.
constexpr int kLeastPercent = 80;

/// What letters take: capitals and what hangs below the line. Accents may touch the edge.
int letterHeight(const QFontMetrics& metrics)
{
    return metrics.capHeight() + metrics.descent() + 1;
}

} // namespace

CaptionFrame::CaptionFrame(QWidget* parent) : QGroupBox(parent) {}

void CaptionFrame::setCaptionHeight(int height)
{
    m_captionHeight = height;
    update();
}

int CaptionFrame::naturalCaptionHeight() const
{
    return fontMetrics().height();
}

QFont CaptionFrame::captionFont() const
{
    QFont smaller = font();
    const int wanted = letterHeight(fontMetrics());
    if (m_captionHeight > 0 && m_captionHeight < wanted)
        smaller.setPixelSize(std::max(6, fontInfo().pixelSize() * m_captionHeight / wanted));
    const int size = QFontInfo(smaller).pixelSize(), least = size * kLeastPercent / 100;
    const int room = width() - 2 * (kIndent + kGap);
    for (int pixels = size - 1; pixels >= least && QFontMetrics(smaller).horizontalAdvance(title()) > room;
         --pixels)
        smaller.setPixelSize(pixels);
    return smaller;
}

QString CaptionFrame::shownCaption(const QFontMetrics& metrics) const
{
    return metrics.elidedText(title(), Qt::ElideMiddle, width() - 2 * (kIndent + kGap));
}

void CaptionFrame::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QFont captions = captionFont();
    const QFontMetrics metrics(captions);
    const int strip = m_captionHeight > 0 ? std::min(m_captionHeight, metrics.height()) : metrics.height();
    const QString caption = shownCaption(metrics);
    const int textWidth = metrics.size(0, caption).width();
    const int baseline = strip - metrics.descent();

    painter.setRenderHint(QPainter::Antialiasing);
    QColor line = palette().color(QPalette::WindowText);
    line.setAlphaF(0.25F);
    painter.setPen(line);
    painter.setClipRegion(QRegion(rect()).subtracted(
        caption.isEmpty() ? QRegion() : QRegion(kIndent, 0, textWidth + 2 * kGap, strip)));
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, strip / 2 + 0.5, -0.5, -0.5), kCorner, kCorner);
    painter.setClipping(false);

    painter.setFont(captions);
    const QRect place(kIndent + kGap, baseline - metrics.ascent(), textWidth, metrics.height());
    style()->drawItemText(&painter, place, Qt::AlignLeft | Qt::AlignTop, palette(), isEnabled(), caption,
                          QPalette::WindowText);
}

bool CaptionFrame::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty()) {
        const auto* help = static_cast<QHelpEvent*>(event);
        const bool cut = shownCaption(QFontMetrics(captionFont())) != title();
        QToolTip::showText(help->globalPos(), cut ? title() : QString(), this);
        return true;
    }
    return QGroupBox::event(event);
}

} // namespace zv
