#pragma once

#include "platform/Automation.h"

#include <algorithm>
#include <chrono>

namespace zv {

/// How patient a carrier is. Tests are less patient than users.
struct CarrierPatience {
    int createMs = 60'000; ///< How long a started host may take until it answers.
    int busyMs = 60'000;   ///< How long a host may stay busy.
};

/// Turns the caller's events for the whole pause.
inline void pauseFor(EventPump& pump, std::chrono::milliseconds length)
{
    using Clock = std::chrono::steady_clock;
    const auto end = Clock::now() + length;
    for (auto now = Clock::now(); now < end; now = Clock::now())
        pump.wait(-1, static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(end - now).count()));
}

/// What `once` comes to as soon as it is not the error Busy. It is done again with growing pauses, 50 ms to
/// 2 s, for at most `busyMs`; a host that is busy even then has Failed.
template <class Once> auto untilFree(EventPump& pump, int busyMs, Once once) -> decltype(once())
{
    using std::chrono::milliseconds;
    using Clock = std::chrono::steady_clock;
    constexpr milliseconds kLongestPause{2000};
    const auto deadline = Clock::now() + milliseconds(busyMs);
    for (milliseconds length{50};; length = std::min(length * 2, kLongestPause)) {
        auto result = once();
        if (result || result.error().code != ErrorCode::Busy)
            return result;
        const auto left = std::chrono::ceil<milliseconds>(deadline - Clock::now());
        if (left <= milliseconds(0))
            return Error{ErrorCode::Failed, result.error().text};
        pauseFor(pump, std::min(length, left));
    }
}

} // namespace zv
