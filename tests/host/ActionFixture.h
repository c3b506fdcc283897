#pragma once

#include "host/ActionProcedure.h"
#include "support/HostProcess.h"
#include "support/TestCarrier.h"

#include <gtest/gtest.h>

#include <deque>
#include <memory>
#include <string>
#include <vector>

namespace zv::test {

/// What happened, in order, one line each.
using Events = std::vector<std::string>;

// What finding the host looks like, and the log line of the fixture's own drawing.
inline const char* const kAttach = "attach AutoCAD.Application";
inline const char* const kNotRunning = "attach AutoCAD.Application: none";
inline const char* const kFirstQuestion =
    "question [AutoCAD Not Loaded] AutoCAD is Not Loaded|Would You Like to Load AutoCAD Now?||";
inline const char* const kLogLine = "log C:\\Lib\\Bolt.dwg, Insert as Block";
/// The block branch of an insertion that goes well, from the hiding of the caller to the log.
extern const Events kInsertion;

/// Lists put behind each other.
Events operator+(Events first, const Events& second);

/// An automation that writes down every call that goes through it.
class RecordingAutomation final : public Automation {
public:
    RecordingAutomation(Automation& inner, Events& events) : m_inner(inner), m_events(events) {}
    Result<AutomationObjectPtr> attach(const std::string& progId) override;
    Result<AutomationObjectPtr> create(const std::string& progId) override;
    void beginAction(int limitMs) override { m_inner.beginAction(limitMs); }
    bool isGivenUp() const override { return m_inner.isGivenUp(); }

private:
    Result<AutomationObjectPtr> noted(const std::string& what, Result<AutomationObjectPtr> application);

    Automation& m_inner;
    Events& m_events;
};

/// A calling window whose controls are plain values, and whose messages are answered from a list.
class RecordingWindow final : public ActionWindow, public Messages {
public:
    explicit RecordingWindow(Events& events) : m_events(events) {}

    void hideWindow() override
    {
        m_events.push_back("hide");
        whenHidden();
    }
    void showWindow() override { m_events.push_back("show"); }
    void setDefaultPointer() override { m_events.push_back("default pointer"); }
    Messages& messages() override { return *this; }
    void show(const Message& message) override;
    bool ask(const Message& message) override;
    std::optional<bool> askOrClose(const Message& message) override { return ask(message); }
    bool confirm(const Message& message) override { return ask(message); }

    ActionMode mode() const override { return currentMode; }
    bool autoScale() const override { return check1; }
    bool explode() const override { return check4; }
    std::string scaleText() const override { return x; }
    void setScaleText(const std::string& text) override;
    Result<std::string> firstCustomProperty(const std::string& drawing) override;
    bool openXattach(const std::string& drawing, const std::string& storedScale) override;
    bool openCmode(const std::string& drawing) override;
    void clearCartMark() override { m_events.push_back("clear cart mark"); }
    void enableMainWindow() override { m_events.push_back("enable main window"); }

    ActionMode currentMode = ActionMode::Block;
    bool check1 = false, check4 = false;
    std::string x = "1.00";
    Result<std::string> property = std::string();
    bool hasDialogs = true;
    std::deque<bool> answers; ///< To the questions, in order.
    std::function<void()> whenHidden = [] {};

private:
    Events& m_events;
};

/// An action with everything around it: a host in a process of its own, or none, and the list of what
/// happens.
class ActionFixture : public testing::Test, protected LoadSplash {
protected:
    ActionFixture();
    void act(const std::string& drawing = "C:\\Lib\\Bolt.dwg", ActionCaller caller = ActionCaller::Command11);

    void show() override { events.push_back("splash"); }
    void unload() override { events.push_back("splash off"); }
    void standBy(bool standsBy) override { splashStandsBy = standsBy; }
    void userIsAsked(bool isAsked) override { userAsked = isAsked; }

    HostPlace place;
    TestTime time;
    Events events;
    bool splashStandsBy = false, userAsked = false;
    RecordingWindow window{events};
    ActionSettings settings;
    std::string selectedDrawing = "C:\\Lib\\Bolt.dwg";
    bool activationWorks = true;
    std::function<void()> whenActivated = [] {};
    Result<void> queued; ///< What adding to the queue comes to.
    Result<void> ended;  ///< What the action came to.

private:
    std::unique_ptr<Automation> m_carrier = testCarrier(time, time.patience());
    RecordingAutomation m_recording{*m_carrier, events};

protected:
    ActionServices services{{m_recording, *this, {}}, {}, {}};
};

} // namespace zv::test
