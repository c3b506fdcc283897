#pragma once

#include "platform/Automation.h"

#include <algorithm>
#include <chrono>
#include <functional>
#include <optional>
#include <utility>

namespace zv {

/// Short answers are waited for with nothing else turning: the program's events have their turn only when a
/// call takes as long as a user would notice.
inline constexpr int kQuietMs = 20;

/// How patient a carrier is. Tests are less patient than users.
struct CarrierPatience {
    int createMs = 60'000; ///< How long a started host may take until it answers.
    int busyMs = 60'000;   ///< How long a host may be busy in one action.
    /// The time that the limits are measured by. It passes while the caller's events turn.
    std::function<std::chrono::steady_clock::time_point()> now = std::chrono::steady_clock::now;
};

/// How a carrier and all objects that it gave out wait.
class Waiting {
public:
    Waiting(EventPump& events, CarrierPatience howPatient) : pump(events), patience(std::move(howPatient))
    {
        beginAction(-1);
    }
    void beginAction(int limitMs)
    {
        busyLeft = std::chrono::milliseconds(patience.busyMs);
        pump.beginAction(limitMs);
    }
    bool isGivenUp() const { return pump.isGivenUp(); }
    static Error givenUp() { return {ErrorCode::Cancelled, "the wait for the program was given up"}; }

    EventPump& pump;
    const CarrierPatience patience;
    std::chrono::milliseconds busyLeft; ///< Of the action.
};

/// Tells the pump of a wait for as long as it lives.
class ShownWait {
public:
    explicit ShownWait(EventPump& pump) : m_pump(pump) { m_pump.showWaiting(true); }
    ~ShownWait() { m_pump.showWaiting(false); }
    ShownWait(const ShownWait&) = delete;
    ShownWait& operator=(const ShownWait&) = delete;

private:
    EventPump& m_pump;
};

/// Turns the caller's events for the whole pause, or until the wait is given up.
inline void pauseFor(Waiting& waiting, std::chrono::milliseconds length)
{
    const auto end = waiting.patience.now() + length;
    for (auto now = waiting.patience.now(); now < end && !waiting.isGivenUp(); now = waiting.patience.now())
        waiting.pump.wait(-1,
                          static_cast<int>(std::chrono::ceil<std::chrono::milliseconds>(end - now).count()));
}

/// What `once` comes to as soon as it is not the error Busy. It is done again with growing pauses, 50 ms to
/// 2 s, for as long as the action's patience lasts; a host that is busy even then has Failed.
template <class Once> auto untilFree(Waiting& waiting, Once once) -> decltype(once())
{
    using std::chrono::milliseconds;
    constexpr milliseconds kLongestPause{2000};
    std::optional<ShownWait> shown;
    for (milliseconds length{50};; length = std::min(length * 2, kLongestPause)) {
        if (waiting.isGivenUp())
            return Waiting::givenUp();
        auto result = once();
        if (result || result.error().code != ErrorCode::Busy)
            return result;
        if (waiting.busyLeft <= milliseconds(0))
            return Error{ErrorCode::Failed, result.error().text};
        if (!shown)
            shown.emplace(waiting.pump);
        const auto before = waiting.patience.now();
        pauseFor(waiting, std::min(length, waiting.busyLeft));
        waiting.busyLeft -= std::chrono::ceil<milliseconds>(waiting.patience.now() - before);
    }
}

} // namespace zv
