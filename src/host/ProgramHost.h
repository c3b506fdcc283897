#pragma once

#include "host/ActionProcedure.h"
#include "host/LoadAcad.h"
#include "host/QtEventPump.h"
#include "window/Program.h"

#include <memory>

namespace zv {

/// The running program's way to the CAD host, to its queue and to its log, for the windows that act on
/// drawings. It makes the window LoadAcad known to the program.
class ProgramHost {
public:
    explicit ProgramHost(Program& program);
    ActionServices& services() { return m_services; }

private:
    QtEventPump m_pump;
    std::unique_ptr<Automation> m_automation;
    LoadAcadSplash m_splash;
    ActionServices m_services;
};

} // namespace zv
