#pragma once

#include "host/XattachProcedure.h"
#include "window/Window.h"

#include <cstdint>

namespace zv {

/// What Xattach and cmode have in common: who called them, which their state tells, comes back when they
/// close. The states: 0 normal, 1 shown again after the attempt, 7 called from Search, 8 both.
class HostDialog : public Window, public XrefWindow {
    Q_OBJECT

public:
    HostDialog(Program& program, const QString& name, const QString& title, std::int16_t& state);

    /// Brings the caller back, unless the dialog has closed itself at the end of an action.
    void unloading() override;

    void hideWindow() override;
    void setDefaultPointer() override { unsetCursor(); }
    Messages& messages() override { return Window::messages(); }
    void end(DialogEnd how) override;
    void markField(XrefField) override {}

protected:
    std::int16_t& state() const { return m_state; }
    bool isFromSearch() const { return m_state == 7; }
    /// The drawing that the caller has chosen, at the load.
    const std::string& chosenDrawing() const;
    DialogSettings settings() const;
    void cancel();
    /// Shown again for Search, at the end of an action.
    virtual void showAgainForSearch() = 0;
    void showOnTop();
    /// From here on the unloading brings nobody back.
    void endQuietly() { m_ended = true; }

private:
    void bringCallerBack();
    void showSearch();

    std::int16_t& m_state;
    bool m_ended = false;
};

} // namespace zv
