#include "help/HelpWindow.h"
#include "platform/HelpSystem.h"

#include <QPointer>

namespace zv {
namespace {

/// Shows help files in the one help window, which is made at the first call and after each closing.
class OwnHelpSystem : public HelpSystem {
public:
    ~OwnHelpSystem() override { delete m_window; }

    std::int32_t show(const std::string& path, HelpCommand command, std::uint32_t) override
    {
        // Numbers of topics are a matter of the compiled file, and ours has none.
        if (command == HelpCommand::HelpContext || !openWindow(path))
            return 0;
        // The lists leave the page that is open as it is.
        if (command == HelpCommand::DisplayTopic)
            m_window->showHome();
        else
            m_window->showSide(command == HelpCommand::DisplayToc     ? HelpWindow::Side::Contents
                               : command == HelpCommand::DisplayIndex ? HelpWindow::Side::Index
                                                                      : HelpWindow::Side::Search);
        m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
        m_window->show();
        m_window->raise();
        m_window->activateWindow();
        return m_handle;
    }

    bool isWindow(std::int32_t handle) override
    {
        return handle != 0 && handle == m_handle && m_window != nullptr && m_window->isVisible();
    }

    void close(std::int32_t handle) override
    {
        if (isWindow(handle))
            m_window->close();
    }

private:
    /// Makes sure that the window with this file is there; false when the file cannot be read.
    bool openWindow(const std::string& path)
    {
        if (m_window != nullptr && m_window->isVisible() && path == m_path)
            return true;
        Result<std::unique_ptr<HelpBook>> book = HelpBook::open(path);
        if (!book)
            return false;
        delete m_window;
        m_window = new HelpWindow(std::move(*book));
        m_window->showHome();
        m_path = path;
        ++m_handle;
        return true;
    }

    QPointer<HelpWindow> m_window;
    std::string m_path;
    std::int32_t m_handle = 0;
};

} // namespace

std::unique_ptr<HelpSystem> makeHelpSystem()
{
    return std::make_unique<OwnHelpSystem>();
}

} // namespace zv
