#include "controls/LockedCombo.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QSignalBlocker>
#include <QWheelEvent>

#include <limits>

namespace zv {

LockedCombo::LockedCombo(QWidget* parent) : QComboBox(parent)
{
    setEditable(true);
    setInsertPolicy(QComboBox::NoInsert);
    setMaxCount(std::numeric_limits<int>::max());
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
    // A text that is only left standing picks no row: nobody has chosen it.
    disconnect(lineEdit(), &QLineEdit::editingFinished, this, nullptr);
    connect(this, &QComboBox::activated, this, [this] { setLocked(true); });
}

void LockedCombo::setLocked(bool locked)
{
    m_locked = locked;
    lineEdit()->setReadOnly(locked);
}

void LockedCombo::setShownText(const QString& text)
{
    const QSignalBlocker noHandlers(this);
    setCurrentIndex(findText(text, Qt::MatchFixedString));
    setEditText(text);
    lineEdit()->setCursorPosition(0);
}

void LockedCombo::showPopup()
{
    setLocked(false);
    QComboBox::showPopup();
}

void LockedCombo::keyPressEvent(QKeyEvent* event)
{
    const bool drops =
        event->key() == Qt::Key_F4 || (event->key() == Qt::Key_Down && event->modifiers() & Qt::AltModifier);
    const bool moves = event->key() == Qt::Key_Up || event->key() == Qt::Key_Down ||
                       event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown;
    if (m_locked && moves && !drops)
        event->accept();
    else
        QComboBox::keyPressEvent(event);
}

void LockedCombo::wheelEvent(QWheelEvent* event)
{
    if (m_locked)
        event->ignore();
    else
        QComboBox::wheelEvent(event);
}

} // namespace zv
