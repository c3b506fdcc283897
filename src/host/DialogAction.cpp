#include "host/DialogAction.h"

namespace zv {

DialogAction::DialogAction(DialogWindow& window, HostServices& services, const DialogSettings& settings)
    : m_window(window), m_session(HostCaller::Dialog, window, services, settings.allowActivation),
      m_bracket(settings.keepFileDialogs, services.automation)
{
}

void DialogAction::run(const std::function<DialogEnd()>& work)
{
    const HostOutcome found = m_session.find();
    if (found == HostOutcome::NotLaunched)
        return;
    const DialogEnd end = found == HostOutcome::Found ? act(work) : DialogEnd::Again;
    m_window.end(end);
    if (end != DialogEnd::Done)
        m_bracket.restore();
    m_bracket.leave();
}

DialogEnd DialogAction::act(const std::function<DialogEnd()>& work)
{
    Result<AutomationObjectPtr> document = asObject(m_session.application()->get("ActiveDocument"));
    if (!document)
        return DialogEnd::Again;
    m_document = std::move(*document);
    if (!m_bracket.enter(m_document))
        return DialogEnd::Again;
    m_window.hideWindow();
    const DialogEnd end = work();
    restoreSnap();
    return end;
}

void DialogAction::showHost()
{
    activate();
    static_cast<void>(m_session.application()->set("Visible", true));
    activate();
    static_cast<void>(m_document->get("ActiveSpace"));
    if (Result<AutomationValue> snap = m_document->get("ObjectSnapMode"))
        m_snap = std::move(*snap);
}

void DialogAction::restoreSnap()
{
    if (m_snap)
        static_cast<void>(m_document->set("ObjectSnapMode", *m_snap));
    m_snap.reset();
}

} // namespace zv
