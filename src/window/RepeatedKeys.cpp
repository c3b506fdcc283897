#include "window/RepeatedKeys.h"

#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QTextEdit>

namespace zv {
namespace {

bool writesLines(const QObject* watched)
{
    const auto* plain = qobject_cast<const QPlainTextEdit*>(watched);
    const auto* rich = qobject_cast<const QTextEdit*>(watched);
    return (plain && !plain->isReadOnly()) || (rich && !rich->isReadOnly());
}

bool takesText(const QObject* watched)
{
    const auto* widget = qobject_cast<const QWidget*>(watched);
    return widget && widget->testAttribute(Qt::WA_InputMethodEnabled);
}

bool acts(const QObject* watched, const QKeyEvent& key)
{
    switch (key.key()) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return !writesLines(watched);
    case Qt::Key_Escape:
        return true;
    case Qt::Key_Space:
        return !takesText(watched);
    default:
        // With Control as well it is the key for the third character on a key.
        return (key.modifiers() & (Qt::AltModifier | Qt::ControlModifier)) == Qt::AltModifier;
    }
}

} // namespace

bool RepeatedKeys::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride)
        return QObject::eventFilter(watched, event);
    const auto& key = static_cast<const QKeyEvent&>(*event);
    // A window only hands the key on to its control.
    const bool toControl = watched->isWidgetType() || event->type() == QEvent::ShortcutOverride;
    if (!toControl || !key.isAutoRepeat() || !acts(watched, key))
        return QObject::eventFilter(watched, event);
    // An access key that is taken here sets off nothing.
    event->accept();
    return true;
}

} // namespace zv
