#pragma once

#include "platform/Automation.h"

#include <QDeadlineTimer>
#include <QTimer>

#include <functional>

class QEventLoop;
class QWidget;

namespace zv {

/// Keeps the program's events turning while the host is waited for, with its windows closed to input: what
/// the user does to them meanwhile is dropped, not kept for later. Only a message box that comes up meanwhile
/// can be answered, and closing a window gives the wait up; the window is closed once the action has ended.
class QtEventPump final : public EventPump {
public:
    /// `tell` is told when a wait has become long enough to be seen, and when it is over.
    explicit QtEventPump(std::function<void(bool waiting)> tell = {});
    ~QtEventPump() override;

    void wait(int descriptor, int timeoutMs) override;
    void beginAction(int limitMs) override;
    bool isGivenUp() const override;
    void showWaiting(bool waiting) override;

private:
    class InputFilter;
    void giveUp();
    void closeLater(QWidget* window);
    void show(bool waiting);

    std::function<void(bool)> m_tell;
    QTimer m_untilSeen;
    QDeadlineTimer m_limit{QDeadlineTimer::Forever};
    QEventLoop* m_loop = nullptr; ///< Of the wait that is under way.
    int m_waits = 0;              ///< That are to be shown, within one another.
    bool m_shown = false;
    bool m_givenUp = false;
};

} // namespace zv
