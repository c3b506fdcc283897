#pragma once

#include "platform/CarrierPatience.h"

#include <functional>
#include <limits>
#include <memory>

namespace zv::test {

/// The system's carrier, and a pump that only waits.
std::unique_ptr<EventPump> testPump();
std::unique_ptr<Automation> testCarrier(EventPump& pump, CarrierPatience patience = {});

/// A pump with a clock of its own: pauses that are long enough pass without being waited for.
class TestTime final : public EventPump {
public:
    void wait(int descriptor, int timeoutMs) override
    {
        ++turns;
        givenUp = givenUp || givesUp();
        if (givenUp)
            return;
        if (descriptor < 0 && timeoutMs >= skipsFromMs)
            skipped += std::chrono::milliseconds(timeoutMs);
        else
            m_inner->wait(descriptor, timeoutMs);
    }
    void beginAction(int) override { givenUp = false; }
    bool isGivenUp() const override { return givenUp; }
    /// The patience that users get, by this clock.
    CarrierPatience patience()
    {
        CarrierPatience patience;
        patience.now = [this] { return std::chrono::steady_clock::now() + skipped; };
        return patience;
    }

    /// The pauses before a busy host is asked again, and not the turns while it is waited for.
    static constexpr int kBusyPauses = 50;
    /// Every turn while a host is started.
    static constexpr int kStartTurns = 1;
    int skipsFromMs = std::numeric_limits<int>::max();
    std::chrono::milliseconds skipped{0};
    int turns = 0;
    /// Whether the wait is given up now that something is waited for.
    std::function<bool()> givesUp = [] { return false; };
    bool givenUp = false;

private:
    std::unique_ptr<EventPump> m_inner = testPump();
};

} // namespace zv::test
