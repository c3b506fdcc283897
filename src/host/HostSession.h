#pragma once

#include "platform/Automation.h"
#include "platform/Messages.h"

#include <functional>
#include <string>

namespace zv {

/// The small window that tells that the CAD program is being loaded.
class LoadSplash {
public:
    virtual ~LoadSplash() = default;
    /// Loads and shows the window, its clip playing from the start.
    virtual void show() = 0;
    virtual void unload() = 0;
    /// While it stands by, a long wait for the host shows it where no other window of the program is there to
    /// give the wait up by.
    virtual void standBy(bool /*standsBy*/) {}
    /// While the host asks its user, who answers there and takes his time, it keeps out of his sight.
    virtual void userIsAsked(bool /*isAsked*/) {}
};

/// The host asks its user for as long as this lives.
class UserIsAsked {
public:
    explicit UserIsAsked(LoadSplash& splash) : m_splash(splash) { m_splash.userIsAsked(true); }
    UserIsAsked(const UserIsAsked&) = delete;
    UserIsAsked& operator=(const UserIsAsked&) = delete;
    ~UserIsAsked() { m_splash.userIsAsked(false); }

private:
    LoadSplash& m_splash;
};

/// What a session needs of the window that calls. Its message boxes are its own affair: a window that stands
/// on top leaves it for as long as one is up.
class HostWindow {
public:
    virtual ~HostWindow() = default;
    virtual void hideWindow() = 0;
    /// Gives the mouse pointer its ordinary shape.
    virtual void setDefaultPointer() = 0;
    virtual Messages& messages() = 0;
};

/// The outside of a session, the same for all windows.
struct HostServices {
    Automation& automation;
    LoadSplash& splash;
    /// Brings the desktop window with this title to the front; false when it cannot.
    std::function<bool(const std::string& title)> activateWindow;
};

/// Who asks for the host. They differ in the releases that they try to start, in the words of the questions
/// and in what follows when the host has gone meanwhile.
enum class HostCaller {
    Action, ///< The main window and Search.
    Newlib, ///< The library editor. It never activates the host.
    Dialog, ///< Xattach and cmode. They tell an error in its own words and do not ask twice.
};

enum class HostOutcome {
    Found,
    Declined,    ///< The user does not want the host loaded.
    NotLaunched, ///< No release could be started; the user has been told. The calling window is hidden.
    Failed,      ///< The host has gone, cannot be started without a release's number, or was given up.
};

/// The CAD host for the length of one action: found or started at its beginning, dropped at its end. As long
/// the splash stands by.
class HostSession {
public:
    /// `allowActivation` is the administrator's flag that lets the host come to the front at the attach.
    HostSession(HostCaller caller, HostWindow& window, HostServices& services, bool allowActivation);
    HostSession(const HostSession&) = delete;
    HostSession& operator=(const HostSession&) = delete;
    ~HostSession() { m_services.splash.standBy(false); }

    /// Attaches to the running host, or asks the user and starts one.
    HostOutcome find();
    /// Attaches afresh; when the host has gone, asks once more and starts it without a release's number.
    HostOutcome attachAgain();
    /// The application object of the last attach. Valid after Found.
    const AutomationObjectPtr& application() const { return m_application; }
    /// Whether the user agreed to load the host in this session.
    bool startedHost() const { return m_startedHost; }
    /// Brings the host's window to the front; false when that fails, which no caller has to mind.
    bool activate();

private:
    HostOutcome createByRelease();
    HostOutcome createAnyRelease();
    void activateAtAttach();
    bool attach();

    HostCaller m_caller;
    HostWindow& m_window;
    HostServices& m_services;
    bool m_allowActivation;
    bool m_startedHost = false;
    AutomationObjectPtr m_application;
    std::string m_attachError;
};

} // namespace zv
