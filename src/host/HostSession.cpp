#include "host/HostSession.h"

#include <array>
#include <span>

namespace zv {

namespace {

constexpr const char* kAnyRelease = "AutoCAD.Application";
constexpr std::array<const char*, 6> kReleases = {"20", "19", "18", "17", "16", "15"};

/// The releases to try, newest first.
std::span<const char* const> releasesFor(HostCaller caller)
{
    const std::span<const char* const> all(kReleases);
    return caller == HostCaller::Dialog ? all.last(2) : all;
}

const char* launchFailureText(HostCaller caller)
{
    if (caller == HostCaller::Dialog)
        return "Could not launch AutoCAD! AutoCAD 2000, 2002, or 2004 not found!";
    return "Could not launch AutoCAD! Please try loading AutoCAD first.";
}

constexpr const char* kNotLoadedTitle = "AutoCAD Not Loaded";
constexpr const char* kFirstQuestion = "AutoCAD is Not Loaded\r\nWould You Like to Load AutoCAD Now?\r\n\r\n";

const char* secondQuestion(HostCaller caller)
{
    if (caller == HostCaller::Newlib)
        return "AutoCAD is Not Loaded\r\nWould you like to Load AutoCAD?";
    return "AutoCAD is Not Loaded\r\nWould You Like to Load AutoCAD Now?";
}

} // namespace

HostSession::HostSession(HostCaller caller, HostWindow& window, HostServices& services, bool allowActivation)
    : m_caller(caller), m_window(window), m_services(services), m_allowActivation(allowActivation)
{
    m_services.automation.beginAction();
    m_services.splash.standBy(true);
}

HostOutcome HostSession::find()
{
    if (!attach()) {
        if (!m_window.messages().ask({kFirstQuestion, kNotLoadedTitle, MessageIcon::Question}))
            return HostOutcome::Declined;
        m_startedHost = true;
        m_window.hideWindow();
        m_services.splash.show();
        m_services.splash.unload();
        if (const HostOutcome created = createByRelease(); created != HostOutcome::Found)
            return created;
    }
    if (m_caller == HostCaller::Newlib)
        static_cast<void>(m_application->get("Version"));
    else
        activateAtAttach();
    return attachAgain();
}

HostOutcome HostSession::attachAgain()
{
    if (attach())
        return HostOutcome::Found;
    if (m_services.automation.isGivenUp())
        return HostOutcome::Failed;
    if (m_caller == HostCaller::Dialog) {
        m_window.messages().show({m_attachError, {}, MessageIcon::None});
        return HostOutcome::Failed;
    }
    if (!m_window.messages().ask({secondQuestion(m_caller), kNotLoadedTitle, MessageIcon::Question}))
        return HostOutcome::Declined;
    m_startedHost = true;
    return createAnyRelease();
}

bool HostSession::attach()
{
    Result<AutomationObjectPtr> running = m_services.automation.attach(kAnyRelease);
    if (!running) {
        m_attachError = running.error().text;
        return false;
    }
    m_application = std::move(*running);
    return true;
}

HostOutcome HostSession::createByRelease()
{
    for (const char* release : releasesFor(m_caller)) {
        Result<AutomationObjectPtr> created =
            m_services.automation.create(std::string(kAnyRelease) + "." + release);
        if (created) {
            m_application = std::move(*created);
            return HostOutcome::Found;
        }
    }
    if (m_services.automation.isGivenUp())
        return HostOutcome::Failed;
    m_window.setDefaultPointer();
    m_window.messages().show({launchFailureText(m_caller), {}, MessageIcon::Critical});
    return HostOutcome::NotLaunched;
}

HostOutcome HostSession::createAnyRelease()
{
    m_window.hideWindow();
    m_services.splash.show();
    Result<AutomationObjectPtr> created = m_services.automation.create(kAnyRelease);
    m_services.splash.unload();
    if (!created)
        return HostOutcome::Failed;
    m_application = std::move(*created);
    return HostOutcome::Found;
}

/// Release 16.0 never takes the front at the attach, whatever the administrator allows.
void HostSession::activateAtAttach()
{
    const Result<std::string> version = asText(m_application->get("Version"));
    if (!version || version->starts_with("16.0") || !m_allowActivation)
        return;
    if (!attach() || !activate())
        return;
    static_cast<void>(attach());
}

bool HostSession::activate()
{
    const Result<std::string> caption = asText(m_application->get("Caption"));
    return caption && m_services.activateWindow(*caption);
}

} // namespace zv
