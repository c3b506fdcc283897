#include "library/LockedCombo.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QMouseEvent>
#include <QSignalBlocker>

namespace zv {
namespace {

bool dropsDown(const QKeyEvent& event)
{
    return event.key() == Qt::Key_F4 ||
           (event.key() == Qt::Key_Down && event.modifiers().testFlag(Qt::AltModifier));
}

} // namespace

LockedCombo::LockedCombo(QWidget* parent) : SortedCombo(parent)
{
    lineEdit()->setReadOnly(true);
    lineEdit()->installEventFilter(this);
    connect(this, &QComboBox::activated, this, &LockedCombo::lock);
}

QStringList LockedCombo::rows() const
{
    QStringList texts;
    for (int row = 0; row < count(); ++row)
        texts << itemText(row);
    return texts;
}

void LockedCombo::removeRow(int row)
{
    const bool shown = row == currentIndex();
    {
        // The row behind it takes its place, which nobody has chosen.
        const QSignalBlocker noHandlers(this);
        removeItem(row);
    }
    if (shown)
        clearText();
}

void LockedCombo::clearText()
{
    setCurrentIndex(-1);
    clearEditText();
}

void LockedCombo::showPopup()
{
    m_locked = false;
    SortedCombo::showPopup();
}

void LockedCombo::focusInEvent(QFocusEvent* event)
{
    SortedCombo::focusInEvent(event);
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        Q_EMIT gotFocus();
}

void LockedCombo::keyPressEvent(QKeyEvent* event)
{
    if (m_locked && !dropsDown(*event))
        event->ignore();
    else
        SortedCombo::keyPressEvent(event);
}

void LockedCombo::wheelEvent(QWheelEvent* event)
{
    if (m_locked)
        event->ignore();
    else
        SortedCombo::wheelEvent(event);
}

// The text is no place to type in, so a click on it drops the list down as well.
bool LockedCombo::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == lineEdit() && event->type() == QEvent::MouseButtonRelease && isEnabled() &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        showPopup();
        return true;
    }
    return SortedCombo::eventFilter(watched, event);
}

} // namespace zv
