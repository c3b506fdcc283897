#include "host/QtEventPump.h"

#include "platform/EndRequest.h"

#include <QApplication>
#include <QEvent>
#include <QEventLoop>
#include <QSocketNotifier>
#include <QWidget>
#include <QWindow>

#include <algorithm>
#include <optional>
#include <utility>

namespace zv {

namespace {

constexpr int kUnseenMs = 300; ///< So long a wait is not shown, for a flicker tells nothing.

/// The window of the program that the receiver of an event is; null for tool tips and menus.
QWidget* windowOf(QObject* receiver)
{
    auto* window = qobject_cast<QWidget*>(receiver);
    if (auto* native = qobject_cast<QWindow*>(receiver)) {
        const QWidgetList all = QApplication::topLevelWidgets();
        const auto found = std::find_if(all.begin(), all.end(), [native](const QWidget* candidate) {
            return candidate->windowHandle() == native;
        });
        window = found == all.end() ? nullptr : *found;
    }
    const bool isWindow = window && window->isWindow() &&
                          (window->windowType() == Qt::Window || window->windowType() == Qt::Dialog);
    return isWindow ? window : nullptr;
}

bool belongsTo(const QObject* receiver, const QWidget* dialog)
{
    for (const QObject* object = receiver; object; object = object->parent()) {
        if (object == dialog || object == dialog->windowHandle())
            return true;
    }
    return false;
}

} // namespace

/// Swallows whatever the user could act by, for as long as it lives.
class QtEventPump::InputFilter final : public QObject {
public:
    explicit InputFilter(QtEventPump& pump) : m_pump(pump), m_modalBefore(QApplication::activeModalWidget())
    {
        QCoreApplication::instance()->installEventFilter(this);
    }

    bool eventFilter(QObject* receiver, QEvent* event) override
    {
        const QWidget* modal = QApplication::activeModalWidget();
        if (modal && modal != m_modalBefore && belongsTo(receiver, modal))
            return false;
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
            return swallowClose(receiver, event);
        default:
            return QObject::eventFilter(receiver, event);
        }
    }

private:
    bool swallowClose(QObject* receiver, QEvent* event)
    {
        QWidget* window = windowOf(receiver);
        if (!window)
            return false;
        event->ignore();
        if (window->isEnabled()) {
            m_pump.closeLater(window);
            m_pump.giveUp();
        }
        return true;
    }

    QtEventPump& m_pump;
    const QWidget* m_modalBefore; ///< The one whose action waits.
};

QtEventPump::QtEventPump(std::function<void(bool)> tell) : m_tell(std::move(tell))
{
    m_untilSeen.setSingleShot(true);
    m_untilSeen.setInterval(kUnseenMs);
    QObject::connect(&m_untilSeen, &QTimer::timeout, &m_untilSeen, [this] { show(true); });
}

QtEventPump::~QtEventPump() = default;

void QtEventPump::wait(int descriptor, int timeoutMs)
{
    if (isGivenUp())
        return;
    const InputFilter closed(*this);
    QEventLoop loop;
    QEventLoop* const outer = std::exchange(m_loop, &loop);
    QTimer timer;
    timer.setSingleShot(true);
    QObject::connect(&timer, &QTimer::timeout, &loop, &QEventLoop::quit);
    const auto left = m_limit.isForever() ? -1 : m_limit.remainingTime();
    if (timeoutMs >= 0 || left >= 0)
        timer.start(int(timeoutMs < 0 ? left : left < 0 ? timeoutMs : std::min<qint64>(timeoutMs, left)));
    std::optional<QSocketNotifier> answer;
    if (descriptor >= 0) {
        answer.emplace(descriptor, QSocketNotifier::Read);
        QObject::connect(&*answer, &QSocketNotifier::activated, &loop, &QEventLoop::quit);
    }
    std::optional<QSocketNotifier> end;
    // The last word, which has a limit, is said although the program is to end.
    if (endRequestDescriptor() >= 0 && m_limit.isForever()) {
        end.emplace(endRequestDescriptor(), QSocketNotifier::Read);
        QObject::connect(&*end, &QSocketNotifier::activated, &loop, [this] { giveUp(); });
    }
    loop.exec();
    m_loop = outer;
}

void QtEventPump::beginAction(int limitMs)
{
    m_givenUp = false;
    m_limit = limitMs < 0 ? QDeadlineTimer(QDeadlineTimer::Forever) : QDeadlineTimer(limitMs);
}

bool QtEventPump::isGivenUp() const
{
    return m_givenUp || m_limit.hasExpired();
}

void QtEventPump::giveUp()
{
    m_givenUp = true;
    if (m_loop)
        m_loop->quit();
}

/// By then the handler that waits has returned.
void QtEventPump::closeLater(QWidget* window)
{
    QTimer::singleShot(0, window, [window] { window->close(); });
}

void QtEventPump::showWaiting(bool waiting)
{
    m_waits += waiting ? 1 : -1;
    if (m_waits == 1 && waiting) {
        m_untilSeen.start();
    } else if (m_waits == 0) {
        m_untilSeen.stop();
        show(false);
    }
}

void QtEventPump::show(bool waiting)
{
    if (m_shown == waiting)
        return;
    m_shown = waiting;
    if (waiting)
        QApplication::setOverrideCursor(Qt::WaitCursor);
    else
        QApplication::restoreOverrideCursor();
    if (m_tell)
        m_tell(waiting);
}

} // namespace zv
