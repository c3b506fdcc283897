#pragma once

#include "platform/CarrierPatience.h"

#include <memory>

namespace zv {

/// The carrier over COM, in a single-threaded apartment of the calling thread. How long a started program may
/// take is the system's own affair, so of the patience only the one with a busy program counts.
std::unique_ptr<Automation> comAutomation(EventPump& pump, CarrierPatience patience);

} // namespace zv
