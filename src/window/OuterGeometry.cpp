#include "window/OuterGeometry.h"

#include <QEvent>
#include <QGuiApplication>
#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace zv {
namespace {

/// In pixels; what is painted for a window costs memory, whatever of it can be seen.
constexpr QSize kLargest(8192, 8192);

QSize bounded(QSize outer)
{
    const QScreen* screen = QGuiApplication::primaryScreen();
    return outer.boundedTo(screen ? screen->virtualSize().expandedTo(kLargest) : kLargest);
}

} // namespace

OuterGeometry::OuterGeometry(QWidget* window) : m_window(window)
{
    window->installEventFilter(this);
}

void OuterGeometry::set(const QRect& wanted)
{
    const QRect outer(wanted.topLeft(), bounded(wanted.size()));
    const QList<QScreen*> screens = QGuiApplication::screens();
    const bool onScreen = std::any_of(screens.begin(), screens.end(), [&outer](const QScreen* screen) {
        return screen->availableGeometry().intersects(outer);
    });
    m_window->move(onScreen || screens.isEmpty() ? outer.topLeft()
                                                 : screens.first()->availableGeometry().topLeft());
    const QSize frame = m_window->frameGeometry().size() - m_window->size();
    m_window->resize(outer.size() - frame);
    m_given = m_window->size();
    m_wanted = m_given == outer.size() - frame && frame.isNull() ? outer.size() : QSize();
}

QRect OuterGeometry::get() const
{
    return m_window->frameGeometry();
}

void OuterGeometry::settle()
{
    if (!m_wanted.isEmpty() && m_window->isVisible())
        subtractFrame();
}

void OuterGeometry::subtractFrame()
{
    const QSize frame = m_window->frameGeometry().size() - m_window->size();
    if (frame.isNull())
        return;
    // A user who was quicker keeps the size that he gave.
    if (m_window->size() == m_given)
        m_window->resize(m_wanted - frame);
    m_wanted = {};
}

bool OuterGeometry::eventFilter(QObject* watched, QEvent* event)
{
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Paint:
    case QEvent::WindowActivate:
        settle();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace zv
