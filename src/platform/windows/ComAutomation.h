#pragma once

#include "platform/CarrierPatience.h"

#include <memory>

namespace zv {

/// The carrier over COM. All its calls are made on a thread of their own, so that the calling thread only
/// waits, with its events turning.
std::unique_ptr<Automation> comAutomation(EventPump& pump, CarrierPatience patience);

} // namespace zv
