#include "controls/PictureButton.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QStyleOptionFocusRect>
#include <QStylePainter>

#include <algorithm>

namespace zv {
namespace {

constexpr int kGap = 4;    ///< Between picture and caption.
constexpr int kMargin = 4; ///< Between the button's edge and what it shows.
constexpr int kFocusInset = 2;

QString pictureName(const ImageList& list, int index)
{
    return QLatin1Char(list.letter()) + QString::number(index);
}

void paintFocus(QPainter& painter, const QWidget* widget)
{
    painter.setPen(QPen(widget->palette().color(QPalette::Highlight), 2));
    painter.setBrush(Qt::NoBrush);
    painter.setRenderHint(QPainter::Antialiasing);
    const int in = kFocusInset;
    painter.drawRoundedRect(QRectF(widget->rect()).adjusted(in, in, -in, -in), 3, 3);
}

} // namespace

PictureButton::PictureButton(Caption place, bool flat, QWidget* parent)
    : QPushButton(parent), m_place(place), m_flat(flat)
{
    setMouseTracking(true);
    // Return presses the button that has the focus, as Space does.
    setAutoDefault(true);
    setIconSize(place == Caption::Below ? QSize(24, 24) : QSize(16, 16));
    // The parent's ground also listens for the mouse; what moves here is none of its business.
    setAttribute(Qt::WA_NoMousePropagation);
}

void PictureButton::setPicture(const ImageList& list, int index)
{
    const QString name = pictureName(list, index);
    if (name == m_picture)
        return;
    m_picture = name;
    setIcon(list.picture(index));
}

void PictureButton::setBorderColor(const QColor& color)
{
    m_borderColor = color;
    update();
}

void PictureButton::setCaptionShown(bool shown)
{
    m_captionShown = shown;
    update();
}

QSize PictureButton::captionSize() const
{
    if (text().isEmpty())
        return {0, 0};
    QFont bold = font();
    bold.setBold(true);
    return QFontMetrics(bold).size(Qt::TextShowMnemonic | Qt::TextSingleLine, text());
}

QSize PictureButton::sizeHint() const
{
    const QSize caption = captionSize();
    const QSize picture = icon().isNull() ? QSize(0, 0) : iconSize();
    const int gap = caption.isEmpty() || picture.isEmpty() ? 0 : kGap;
    const QSize inside =
        m_place == Caption::Below
            ? QSize(std::max(caption.width(), picture.width()), picture.height() + gap / 2 + caption.height())
            : QSize(picture.width() + gap + caption.width(), std::max(picture.height(), caption.height()));
    return inside + QSize(2 * kMargin, 2 * kMargin);
}

QSize PictureButton::minimumSizeHint() const
{
    const bool caption = icon().isNull() || (m_place == Caption::Beside && !text().isEmpty());
    return (caption ? captionSize() : iconSize()) + QSize(2 * kMargin, 2 * kMargin);
}

void PictureButton::paintEvent(QPaintEvent*)
{
    QStylePainter painter(this);
    QStyleOptionButton option;
    initStyleOption(&option);
    option.features.setFlag(QStyleOptionButton::Flat, m_flat);
    const bool pressed = isDown() || isChecked();
    if (!m_flat || pressed || (underMouse() && isEnabled()))
        painter.drawControl(QStyle::CE_PushButtonBevel, option);
    if (m_borderColor.isValid() && isEnabled()) {
        painter.setPen(m_borderColor);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), 2, 2);
    }

    const QRect inside = rect().adjusted(kMargin, kMargin, -kMargin, -kMargin);
    const QSize caption = captionSize();
    const QSize whole = sizeHint();
    const bool room = width() >= whole.width() && height() >= whole.height();
    // Beside a caption the picture is an ornament; above one it tells more than a cut word.
    const bool captionAlone = m_place == Caption::Beside && !caption.isEmpty() && !room;
    QSize picture = icon().isNull() || captionAlone ? QSize(0, 0) : iconSize().boundedTo(inside.size());
    const bool showsCaption = !caption.isEmpty() && ((room && m_captionShown) || picture.isEmpty());
    const int gap = showsCaption && !picture.isEmpty() ? kGap : 0;

    QRect pictureAt(QPoint(0, 0), picture);
    QRect captionAt = inside;
    if (!showsCaption) {
        pictureAt.moveCenter(inside.center());
    } else if (m_place == Caption::Below) {
        const int used = picture.height() + gap / 2 + caption.height();
        const int top = inside.top() + (inside.height() - used) / 2;
        pictureAt.moveTopLeft({inside.center().x() - picture.width() / 2, top});
        captionAt.setTop(top + picture.height() + gap / 2);
        captionAt.setHeight(caption.height());
    } else if (!picture.isEmpty()) {
        const int used = picture.width() + gap + caption.width();
        const int left = inside.left() + std::max(0, (inside.width() - used) / 2);
        pictureAt.moveTopLeft({left, inside.center().y() - picture.height() / 2});
        captionAt.setLeft(left + picture.width() + gap);
    }
    if (!picture.isEmpty())
        icon().paint(&painter, pictureAt, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    if (showsCaption) {
        const int across = m_place == Caption::Below || picture.isEmpty() ? Qt::AlignHCenter : Qt::AlignLeft;
        style()->drawItemText(&painter, captionAt, across | Qt::AlignVCenter | Qt::TextShowMnemonic,
                              palette(), isEnabled(), text(), QPalette::ButtonText);
    }
    if (hasFocus())
        paintFocus(painter, this);
}

PictureBox::PictureBox(Acts acts, QWidget* parent) : QAbstractButton(parent), m_acts(acts)
{
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    setAttribute(Qt::WA_NoMousePropagation);
    setIconSize({20, 20});
    if (acts == Acts::OnClick)
        connect(this, &QAbstractButton::clicked, this, &PictureBox::activated);
}

void PictureBox::setPicture(const ImageList& list, int index)
{
    const QString name = pictureName(list, index);
    if (name == m_picture)
        return;
    m_picture = name;
    setIcon(list.picture(index));
}

void PictureBox::setPicture(const QString& name)
{
    m_picture = name;
    setIcon(namedPicture(name));
}

void PictureBox::setChosen(bool chosen)
{
    m_chosen = chosen;
    update();
}

QSize PictureBox::sizeHint() const
{
    QSize size = iconSize() + QSize(2 * kMargin, kMargin);
    if (!text().isEmpty()) {
        QFont bold = font();
        bold.setBold(true);
        const QSize caption = QFontMetrics(bold).size(Qt::TextShowMnemonic | Qt::TextSingleLine, text());
        size.rwidth() += kGap + caption.width() + kMargin;
        size.setHeight(std::max(size.height(), caption.height() + kMargin));
    }
    return size;
}

void PictureBox::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    if (m_chosen) {
        painter.fillRect(rect(), palette().color(QPalette::Base));
        painter.fillRect(QRect(0, 0, width(), 2), accentColor());
    }
    const QRect inside = rect().adjusted(kMargin, kMargin / 2, -kMargin, -kMargin / 2);
    QRect pictureAt(QPoint(0, 0), iconSize().boundedTo(inside.size()));
    pictureAt.moveCenter(inside.center());
    if (!text().isEmpty()) {
        const int caption =
            painter.fontMetrics().size(Qt::TextShowMnemonic | Qt::TextSingleLine, text()).width();
        const int used = pictureAt.width() + kGap + caption;
        pictureAt.moveLeft(inside.left() + std::max(0, (inside.width() - used) / 2));
        const QRect captionAt(pictureAt.right() + 1 + kGap, inside.top(),
                              inside.right() - pictureAt.right() - kGap, inside.height());
        style()->drawItemText(&painter, captionAt, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic,
                              palette(), isEnabled(), text(), QPalette::WindowText);
    }
    icon().paint(&painter, pictureAt, Qt::AlignCenter, isEnabled() ? QIcon::Normal : QIcon::Disabled);
    if (hasFocus())
        paintFocus(painter, this);
}

void PictureBox::mouseDoubleClickEvent(QMouseEvent* event)
{
    if (m_acts == Acts::OnDoubleClick && event->button() == Qt::LeftButton)
        Q_EMIT activated();
    else
        QAbstractButton::mouseDoubleClickEvent(event);
}

void PictureBox::keyPressEvent(QKeyEvent* event)
{
    const bool enter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    const bool space = event->key() == Qt::Key_Space;
    if (event->isAutoRepeat() || (!enter && !space)) {
        QAbstractButton::keyPressEvent(event);
        return;
    }
    if (m_acts == Acts::OnDoubleClick)
        Q_EMIT activated();
    else if (enter)
        click();
    else
        QAbstractButton::keyPressEvent(event);
}

} // namespace zv
