#include "host/PropertiesProcedure.h"

#include "host/SendableText.h"

namespace zv {

namespace {

/// One run of the procedure, with its host objects.
class PropertiesRun {
public:
    PropertiesRun(const std::string& drawing, PropertiesWindow& window, HostServices& services)
        : m_drawing(drawing), m_window(window), m_services(services),
          m_session(HostCaller::Newlib, window, services, false)
    {
    }

    HostOutcome find() { return m_session.find(); }
    Result<void> edit();

private:
    Result<void> open();
    Result<void> showHost();
    Result<void> type(const char* command);
    Result<void> close();
    Result<AutomationObjectPtr> documents();

    const std::string& m_drawing;
    PropertiesWindow& m_window;
    HostServices& m_services;
    HostSession m_session;
    AutomationObjectPtr m_document;
};

Result<void> PropertiesRun::edit()
{
    m_window.hideWindow();
    if (Result<void> opened = open(); !opened)
        return opened;
    if (Result<void> shown = showHost(); !shown)
        return shown;
    for (const char* command : {".DWGPROPS\r", ".qsave\r"}) {
        if (Result<void> typed = type(command); !typed)
            return typed;
    }
    return close();
}

/// Opens the drawing beside what is open, and takes it as the document from then on.
Result<void> PropertiesRun::open()
{
    Result<AutomationObjectPtr> document = asObject(m_session.application()->get("ActiveDocument"));
    if (!document)
        return document.error();
    m_document = *document;
    const Result<AutomationObjectPtr> collection = documents();
    if (!collection)
        return collection.error();
    if (const auto opened = (*collection)->call("Open", {m_drawing}); !opened)
        return opened.error();
    document = asObject(m_session.application()->get("ActiveDocument"));
    if (!document)
        return document.error();
    m_document = *document;
    return {};
}

Result<AutomationObjectPtr> PropertiesRun::documents()
{
    Result<AutomationObjectPtr> application = asObject(m_document->get("Application"));
    if (!application)
        return application;
    return asObject((*application)->get("Documents"));
}

/// A host that runs for its user comes to the front; one that was started for this is still invisible.
Result<void> PropertiesRun::showHost()
{
    if (!m_session.startedHost()) {
        m_session.activate();
        return {};
    }
    if (m_session.attachAgain() != HostOutcome::Found)
        return Error{ErrorCode::Lost, "the host has gone"};
    const Result<AutomationObjectPtr> application = asObject(m_document->get("Application"));
    if (!application)
        return application.error();
    return (*application)->set("Visible", true);
}

Result<void> PropertiesRun::type(const char* command)
{
    const UserIsAsked asked(m_services.splash);
    if (const auto typed = m_document->call("SendCommand", {std::string(command)}); !typed)
        return typed.error();
    return {};
}

Result<void> PropertiesRun::close()
{
    const Result<double> stored =
        asNumber(m_document->call("GetVariable", {AutomationValue(std::string("SDI"))}));
    if (!stored)
        return stored.error();
    // 2 and 3 are 0 and 1 as a third-party program of the host has set them.
    if (static_cast<long>(*stored) % 2 != 0)
        return {};
    if (m_session.startedHost()) {
        // So that the host is not left without a drawing.
        const Result<AutomationObjectPtr> collection = documents();
        if (!collection)
            return collection.error();
        if (const auto added = (*collection)->call("Add", {}); !added)
            return added.error();
    }
    if (const auto closed = m_document->call("Close", {false, m_drawing}); !closed)
        return closed.error();
    return {};
}

} // namespace

void editProperties(const std::string& drawing, PropertiesWindow& window, HostServices& services)
{
    if (drawing.empty()) {
        window.messages().show(
            {"Please Select a Drawing File", "No File Selected", MessageIcon::Information});
    } else if (refusesDrawing(drawing, window.messages())) {
        return;
    } else {
        PropertiesRun run(drawing, window, services);
        const HostOutcome found = run.find();
        if (found == HostOutcome::NotLaunched) {
            window.showWindow();
            return;
        }
        // What fails in the host is its user's to see there; the drawing is left as the host has it.
        if (found == HostOutcome::Found)
            static_cast<void>(run.edit());
    }
    window.reread();
    window.showWindow();
}

} // namespace zv
