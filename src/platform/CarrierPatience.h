#pragma once

#include "platform/Automation.h"

#include <algorithm>
#include <chrono>
#include <functional>

namespace zv {

/// Short answers are waited for with nothing else turning: the program's events have their turn only when a
/// call takes as long as a user would notice.
inline constexpr int kQuietMs = 20;

/// How patient a carrier is. Tests are less patient than users.
struct CarrierPatience {
    int createMs = 60'000; ///< How long a started host may take until it answers.
    int busyMs = 60'000;   ///< How long a host may stay busy.
    /// The time that the limits are measured by. It passes while the caller's events turn.
    std::function<std::chrono::steady_clock::time_point()> now = std::chrono::steady_clock::now;
};

/// Turns the caller's events for the whole pause.
inline void pauseFor(EventPump& pump, const CarrierPatience& patience, std::chrono::milliseconds length)
{
    const auto end = patience.now() + length;
    for (auto now = patience.now(); now < end; now = patience.now())
        pump.wait(-1, static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(end - now).count()));
}

/// What `once` comes to as soon as it is not the error Busy. It is done again with growing pauses, 50 ms to
/// 2 s, for as long as the patience lasts; a host that is busy even then has Failed.
template <class Once>
auto untilFree(EventPump& pump, const CarrierPatience& patience, Once once) -> decltype(once())
{
    using std::chrono::milliseconds;
    constexpr milliseconds kLongestPause{2000};
    const auto deadline = patience.now() + milliseconds(patience.busyMs);
    for (milliseconds length{50};; length = std::min(length * 2, kLongestPause)) {
        auto result = once();
        if (result || result.error().code != ErrorCode::Busy)
            return result;
        const auto left = std::chrono::ceil<milliseconds>(deadline - patience.now());
        if (left <= milliseconds(0))
            return Error{ErrorCode::Failed, result.error().text};
        pauseFor(pump, patience, std::min(length, left));
    }
}

} // namespace zv
