#include "help/HTMLHelpViewer.h"

namespace zv {

HTMLHelpViewer::HTMLHelpViewer(std::unique_ptr<HelpSystem> system) : m_system(std::move(system)) {}

HTMLHelpViewer::~HTMLHelpViewer()
{
    Unload();
}

void HTMLHelpViewer::ShowContents()
{
    run(HelpCommand::DisplayToc);
}

void HTMLHelpViewer::Show()
{
    run(HelpCommand::DisplayTopic);
}

void HTMLHelpViewer::ShowIndex()
{
    run(HelpCommand::DisplayIndex);
}

void HTMLHelpViewer::ShowSearch()
{
    run(HelpCommand::DisplaySearch);
}

void HTMLHelpViewer::ShowContext(std::int32_t contextId)
{
    run(HelpCommand::HelpContext, static_cast<std::uint32_t>(contextId));
}

void HTMLHelpViewer::Unload()
{
    if (m_system->isWindow(m_windowHandle))
        m_system->close(m_windowHandle);
}

void HTMLHelpViewer::run(HelpCommand command, std::uint32_t contextId)
{
    m_windowHandle = m_system->show(m_helpFile, command, contextId);
}

} // namespace zv
