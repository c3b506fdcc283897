#pragma once

#include "host/ActionProcedure.h"
#include "host/LoadAcad.h"
#include "host/QtEventPump.h"

#include <memory>

namespace zv {

/// What the action procedure needs of the outside, as the running program has it: the CAD programs of this
/// machine, the user's queue, the office's log.
class OutsideServices {
public:
    /// `program` outlives the services.
    explicit OutsideServices(Program& program);

    ActionServices& services() { return m_services; }

private:
    QtEventPump m_pump;
    std::unique_ptr<Automation> m_automation;
    LoadAcadSplash m_splash;
    ActionServices m_services;
};

} // namespace zv
