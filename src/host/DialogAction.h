#pragma once

#include "host/FilediaBracket.h"
#include "host/HostSession.h"

#include <functional>
#include <optional>
#include <string>

namespace zv {

/// How an action of Xattach or cmode ends for its dialog.
enum class DialogEnd {
    Done,          ///< It has done its work; its state says what is shown then.
    Again,         ///< It comes up again.
    AgainAsCalled, ///< It comes up again, and still belongs to the window that called it.
};

/// Xattach or cmode as its action sees it.
class DialogWindow : public HostWindow {
public:
    /// Stores the folder that a drawing was copied to, for the next time.
    virtual void rememberFolder(const std::string& folder) = 0;
    /// Goes on as the end, together with the dialog's state, says.
    virtual void end(DialogEnd how) = 0;
};

/// What the administrator has set.
struct DialogSettings {
    bool keepFileDialogs = false; ///< fds
    bool allowActivation = false; ///< acadver
};

/// What the actions of the two dialogs have in common: the host is found, its file dialogs are kept away, the
/// dialog is hidden, `work` is done, and the dialog ends.
class DialogAction {
public:
    DialogAction(DialogWindow& window, HostServices& services, const DialogSettings& settings);

    void run(const std::function<DialogEnd()>& work);

    const AutomationObjectPtr& document() const { return m_document; }
    DialogWindow& window() { return m_window; }
    FilediaBracket& bracket() { return m_bracket; }
    void activate() { m_session.activate(); }
    /// Brings the host to the screen and to the front, and keeps its running object snap.
    void showHost();
    /// Gives the object snap back, if it was kept.
    void restoreSnap();

private:
    DialogEnd act(const std::function<DialogEnd()>& work);

    DialogWindow& m_window;
    HostSession m_session;
    FilediaBracket m_bracket;
    AutomationObjectPtr m_document;
    std::optional<AutomationValue> m_snap;
};

} // namespace zv
