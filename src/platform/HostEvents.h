#pragma once

#include "platform/Automation.h"

namespace zv {

/// An event pump for programs without windows, and before there are any: it waits, and nothing else.
class PlainEventPump final : public EventPump {
public:
    void wait(int descriptor, int timeoutMs) override;
};

/// A descriptor that can be read once the system or the user asks this program to end by a signal, which then
/// no longer ends it at once, so that its sockets go with it. To be asked for before other threads start; -1
/// when there is none, as on Windows, where a program is asked through its windows.
int openEndRequests();

} // namespace zv
