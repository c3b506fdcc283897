#pragma once

#include "platform/Automation.h"

#include <memory>

namespace zv::test {

/// The system's carrier with less patience, and a pump that only waits.
std::unique_ptr<EventPump> testPump();
std::unique_ptr<Automation> testCarrier(EventPump& pump);

} // namespace zv::test
