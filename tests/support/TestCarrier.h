#pragma once

#include "platform/CarrierPatience.h"

#include <memory>

namespace zv::test {

/// The system's carrier, and a pump that only waits.
std::unique_ptr<EventPump> testPump();
std::unique_ptr<Automation> testCarrier(EventPump& pump, CarrierPatience patience = {});

/// A pump with a clock of its own: where it is told to, pauses pass without being waited for.
class TestTime final : public EventPump {
public:
    void wait(int descriptor, int timeoutMs) override
    {
        ++turns;
        if (skipsPauses && descriptor < 0 && timeoutMs >= 0)
            skipped += std::chrono::milliseconds(timeoutMs);
        else
            m_inner->wait(descriptor, timeoutMs);
    }
    /// The patience that users get, by this clock.
    CarrierPatience patience()
    {
        CarrierPatience patience;
        patience.now = [this] { return std::chrono::steady_clock::now() + skipped; };
        return patience;
    }

    bool skipsPauses = false;
    std::chrono::milliseconds skipped{0};
    int turns = 0;

private:
    std::unique_ptr<EventPump> m_inner = testPump();
};

} // namespace zv::test
