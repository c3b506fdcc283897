#pragma once

#include "host/ActionFixture.h"
#include "host/XattachProcedure.h"
#include "support/TemporaryFolder.h"

namespace zv::test {

// Finding a running host whose activation is not allowed, and keeping its file dialogs away.
extern const Events kDialogFound;
// The host comes to the screen and to the front.
inline const Events kActivated = {"App.Caption", "activate Scripted Host"};
extern const Events kHostShown;
// Setting the user's own value back, which is 1 in a scripted host.
inline const char* const kFiledia = "ActiveDocument.SetVariable('Filedia', 1)";
inline const char* const kSnap = "ActiveDocument.ObjectSnapMode = True";

/// Xattach or cmode as plain values: what happens to it is written down.
class DialogFixture : public ActionFixture {
protected:
    class Dialog final : public XrefWindow {
    public:
        Dialog(RecordingWindow& window, Events& events) : m_window(window), m_events(events) {}
        void hideWindow() override { m_window.hideWindow(); }
        void setDefaultPointer() override { m_window.setDefaultPointer(); }
        Messages& messages() override { return m_window; }
        void rememberFolder(const std::string& path) override { m_events.push_back("remember " + path); }
        void end(DialogEnd how) override;
        void markField(XrefField field) override;

    private:
        RecordingWindow& m_window;
        Events& m_events;
    };

    Dialog dialog{window, events};
    DialogSettings dialogSettings;
    TemporaryFolder folder;
};

} // namespace zv::test
