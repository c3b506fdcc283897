#include "controls/Window.h"

#include <QCloseEvent>
#include <QWindow>

namespace zv {

Window::Window(Program& program, const QString& name, const QString& title) : m_program(program)
{
    setObjectName(name);
    setWindowTitle(title);
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

void Window::closeEvent(QCloseEvent* event)
{
    event->accept();
    m_program.unload(objectName());
}

} // namespace zv
