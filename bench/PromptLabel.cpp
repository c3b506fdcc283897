#include "PromptLabel.h"

#include <QPainter>
#include <QStyle>

namespace zv::bench {

namespace {

constexpr int kFewestLetters = 12;

} // namespace

QSize PromptLabel::minimumSizeHint() const
{
    const QSize whole = QLabel::minimumSizeHint();
    return {qMin(whole.width(), kFewestLetters * fontMetrics().averageCharWidth()), whole.height()};
}

void PromptLabel::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    const QString shown = fontMetrics().elidedText(text(), Qt::ElideMiddle, contentsRect().width());
    style()->drawItemText(&painter, contentsRect(), int(Qt::AlignLeft | Qt::AlignVCenter), palette(),
                          isEnabled(), shown, foregroundRole());
}

} // namespace zv::bench
