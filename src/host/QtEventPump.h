#pragma once

#include "platform/Automation.h"

namespace zv {

/// Keeps the program's events turning while the host is waited for, with its windows closed to input: what
/// the user does to them meanwhile is dropped, not kept for later.
class QtEventPump final : public EventPump {
public:
    void wait(int descriptor, int timeoutMs) override;
};

} // namespace zv
