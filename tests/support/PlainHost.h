#pragma once

#include "host/ActionProcedure.h"
#include "support/OfficeFixture.h"

#include <optional>
#include <string>
#include <vector>

namespace zv {

/// A host inside the test: it answers at once and keeps what was typed and opened.
class PlainHost final : public Automation {
public:
    Result<AutomationObjectPtr> attach(const std::string&) override
    {
        if (!running)
            return Error{ErrorCode::NotFound, "no such program"};
        return AutomationObjectPtr(std::make_shared<Object>(*this));
    }
    Result<AutomationObjectPtr> create(const std::string& progId) override { return attach(progId); }

    bool running = true;
    bool refusesCommands = false;
    double dimscale = 96;
    std::vector<std::string> typed, opened;

private:
    /// Every object of the host in one.
    class Object final : public AutomationObject {
    public:
        explicit Object(PlainHost& host) : m_host(host) {}
        Result<AutomationValue> get(std::string_view name) override
        {
            if (name == "Version" || name == "Caption")
                return AutomationValue(std::string("20.0"));
            if (name == "ActiveSpace" || name == "ObjectSnapMode")
                return AutomationValue(true);
            return AutomationValue(AutomationObjectPtr(std::make_shared<Object>(m_host)));
        }
        Result<void> set(std::string_view, const AutomationValue&) override { return {}; }
        Result<AutomationValue> call(std::string_view name,
                                     const std::vector<AutomationValue>& arguments) override
        {
            if (name == "SendCommand" && m_host.refusesCommands)
                return Error{ErrorCode::Failed, "refused"};
            if (name == "SendCommand")
                m_host.typed.push_back(std::get<std::string>(arguments[0]));
            if (name == "Open")
                m_host.opened.push_back(std::get<std::string>(arguments[0]));
            if (name == "GetVariable")
                return AutomationValue(m_host.dimscale);
            return AutomationValue();
        }
        Result<std::vector<AutomationValue>> items() override { return std::vector<AutomationValue>(); }

    private:
        PlainHost& m_host;
    };
};

/// A window that stands in for Search.
class SearchStandIn final : public Window {
public:
    explicit SearchStandIn(Program& program) : Window(program, "Search", "Search") {}
};

/// The office with such a host, and a main window whose drawing is the first of three.
class HostDialogFixture : public OfficeFixture {
protected:
    HostDialogFixture()
        : services{{host, *outside->splash, [](const std::string&) { return true; }},
                   outside->services->addToQueue,
                   outside->services->writeLog}
    {
        makeDoors(3);
        program->setActionServices(services);
        program->add("Search", [this] { return new SearchStandIn(*program); });
    }

    void startSearch()
    {
        start();
        program->show("Search");
        program->fields().searchDrawing = paths[1];
    }

    PlainHost host;
    ActionServices services;
    const std::vector<std::string> paths = drawings(3);
};

} // namespace zv
