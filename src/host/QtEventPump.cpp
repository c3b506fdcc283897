#include "host/QtEventPump.h"

#include <QCoreApplication>
#include <QEvent>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QTimer>

namespace zv {

namespace {

/// Swallows whatever the user could act by, for as long as it lives.
class InputFilter final : public QObject {
public:
    InputFilter() { QCoreApplication::instance()->installEventFilter(this); }

    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        switch (event->type()) {
        case QEvent::MouseButtonPress:
        case QEvent::MouseButtonRelease:
        case QEvent::MouseButtonDblClick:
        case QEvent::MouseMove:
        case QEvent::NonClientAreaMouseButtonPress:
        case QEvent::NonClientAreaMouseButtonDblClick:
        case QEvent::Wheel:
        case QEvent::KeyPress:
        case QEvent::KeyRelease:
        case QEvent::Shortcut:
        case QEvent::ShortcutOverride:
        case QEvent::InputMethod:
        case QEvent::ContextMenu:
        case QEvent::TouchBegin:
        case QEvent::TouchUpdate:
        case QEvent::TouchEnd:
        case QEvent::TabletPress:
        case QEvent::TabletMove:
        case QEvent::TabletRelease:
        case QEvent::DragEnter:
        case QEvent::Drop:
            return true;
        case QEvent::Close:
            event->ignore();
            return true;
        default:
            return QObject::eventFilter(receiver, event);
        }
    }
};

} // namespace

void QtEventPump::wait(int descriptor, int timeoutMs)
{
    const InputFilter closed;
    QEventLoop loop;
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    if (timeoutMs >= 0)
        timer.start(timeoutMs);
    if (descriptor < 0) {
        loop.exec();
        return;
    }
    QSocketNotifier notifier(descriptor, QSocketNotifier::Read);
    QObject::connect(&notifier, &QSocketNotifier::activated, &loop, &QEventLoop::quit);
    loop.exec();
}

} // namespace zv
