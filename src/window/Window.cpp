#include "window/Window.h"

#include "config/PublicValues.h"

#include <QApplication>
#include <QCloseEvent>
#include <QWindow>

#include <utility>

namespace zv {

/// Message boxes of a window that may stand on top.
class Window::OffTheTop final : public Messages {
public:
    explicit OffTheTop(Window& window) : m_window(window) {}

    void show(const Message& message) override
    {
        below([&](Messages& messages) { messages.show(message); });
    }
    bool ask(const Message& message) override
    {
        bool yes = false;
        below([&](Messages& messages) { yes = messages.ask(message); });
        return yes;
    }
    std::optional<bool> askOrClose(const Message& message) override
    {
        std::optional<bool> answer;
        below([&](Messages& messages) { answer = messages.askOrClose(message); });
        return answer;
    }
    bool confirm(const Message& message) override
    {
        bool agreed = false;
        below([&](Messages& messages) { agreed = messages.confirm(message); });
        return agreed;
    }

private:
    /// Lets a message box stand above the window.
    template <class Shows> void below(const Shows& shows)
    {
        m_window.setTopmost(false);
        shows(m_window.program().messages());
        if (m_window.values().AlwaysOnTop == 1 || m_window.m_staysOnTop)
            m_window.setTopmost(true);
    }

    Window& m_window;
};

Window::Window(Program& program, const QString& name, const QString& title)
    : m_program(program), m_messages(std::make_unique<OffTheTop>(*this))
{
    setObjectName(name);
    setWindowTitle(title);
}

Window::~Window() = default;

Profiles Window::profiles() const
{
    return Profiles(program().folders().installation, values());
}

Messages& Window::messages()
{
    return *m_messages;
}

void Window::appear()
{
    show();
    // An activation that the window system tells of late finds the window hidden, and the focus goes on to
    // the control behind the one that had it.
    if (std::exchange(m_activatedHidden, false) && m_focusAtHiding)
        m_focusAtHiding->setFocus();
    raise();
    activateWindow();
    // A window that was hidden a moment ago lost its activation, but the window system may not have told of
    // it yet. Then it has nothing to tell of the return either, and the keys would reach no control.
    if (windowHandle() == QGuiApplication::focusWindow() && !QApplication::activeWindow())
        QApplication::setActiveWindow(this);
}

void Window::hideEvent(QHideEvent* event)
{
    QWidget::hideEvent(event);
    m_focusAtHiding = focusWidget();
    m_activatedHidden = false;
}

bool Window::event(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate && !isVisible())
        m_activatedHidden = true;
    return QWidget::event(event);
}

void Window::setTopmost(bool topmost)
{
    if (m_topmost == topmost)
        return;
    m_topmost = topmost;
    // Changing the flag on the native window spares the hiding and showing that QWidget would go through.
    if (QWindow* native = windowHandle()) {
        overrideWindowFlags(windowFlags().setFlag(Qt::WindowStaysOnTopHint, topmost));
        native->setFlag(Qt::WindowStaysOnTopHint, topmost);
    } else {
        setWindowFlag(Qt::WindowStaysOnTopHint, topmost);
    }
}

void Window::stayOnTop()
{
    m_staysOnTop = true;
    setTopmost(true);
}

void Window::closeEvent(QCloseEvent* event)
{
    // A window that another one has disabled is out of the user's reach, its close box as well.
    event->setAccepted(isEnabled());
    if (isEnabled())
        m_program.unload(objectName());
}

} // namespace zv
