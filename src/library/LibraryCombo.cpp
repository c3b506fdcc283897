#include "library/LibraryCombo.h"

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

LibraryCombo::LibraryCombo(QWidget* parent) : SortedCombo(parent)
{
    lineEdit()->setReadOnly(true);
    lineEdit()->installEventFilter(this);
    connect(this, &QComboBox::activated, this, &LibraryCombo::lock);
    // A name that is longer than the box begins where names are told apart.
    connect(this, &QComboBox::activated, this, [this] { lineEdit()->setCursorPosition(0); });
}

QStringList LibraryCombo::rows() const
{
    QStringList texts;
    for (int row = 0; row < count(); ++row)
        texts << itemText(row);
    return texts;
}

void LibraryCombo::removeRow(int row)
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

void LibraryCombo::clearText()
{
    setCurrentIndex(-1);
    clearEditText();
}

void LibraryCombo::showPopup()
{
    m_locked = false;
    SortedCombo::showPopup();
}

void LibraryCombo::focusInEvent(QFocusEvent* event)
{
    SortedCombo::focusInEvent(event);
    if (event->reason() != Qt::ActiveWindowFocusReason && event->reason() != Qt::PopupFocusReason)
        Q_EMIT gotFocus();
}

void LibraryCombo::keyPressEvent(QKeyEvent* event)
{
    if (m_locked && !dropsDown(*event))
        event->ignore();
    else
        SortedCombo::keyPressEvent(event);
}

void LibraryCombo::wheelEvent(QWheelEvent* event)
{
    if (m_locked)
        event->ignore();
    else
        SortedCombo::wheelEvent(event);
}

// The text is no place to type in, so a click on it drops the list down as well.
bool LibraryCombo::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == lineEdit() && event->type() == QEvent::MouseButtonRelease && isEnabled() &&
        static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        showPopup();
        return true;
    }
    return SortedCombo::eventFilter(watched, event);
}

} // namespace zv
