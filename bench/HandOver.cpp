#include "HandOver.h"

#include "platform/Automation.h"
#include "platform/Desktop.h"
#include "platform/HostEvents.h"

#include <algorithm>

namespace zv::bench {

namespace {

using Clock = std::chrono::steady_clock;

/// Waits until its time is over.
class LimitedPump final : public EventPump {
public:
    void allow(std::chrono::milliseconds time) { m_end = Clock::now() + time; }
    void wait(int descriptor, int timeoutMs) override
    {
        const auto left = std::chrono::ceil<std::chrono::milliseconds>(m_end - Clock::now()).count();
        const int most = static_cast<int>(std::clamp<std::int64_t>(left, 0, 1'000'000));
        PlainEventPump().wait(descriptor, timeoutMs < 0 ? most : std::min(timeoutMs, most));
    }
    bool isGivenUp() const override { return Clock::now() >= m_end; }

private:
    Clock::time_point m_end;
};

/// What the user can do about it.
Error unanswered(const Error& error)
{
    if (error.code == ErrorCode::Cancelled)
        return {ErrorCode::Busy, "The bench that is running does not answer; perhaps it waits for its user"};
    return error;
}

} // namespace

Result<void> handOver(const std::string& progId, const std::string& drawing, HandOverPatience patience)
{
    LimitedPump pump;
    pump.allow(patience.toAnswer);
    const auto automation = systemAutomation(pump);
    const auto running = automation->attach(progId);
    if (!running)
        return unanswered(running.error());
    const Result<std::string> caption = asText((*running)->get("Caption"));
    if (!caption)
        return unanswered(caption.error());
    constexpr std::int64_t kMinimised = 2, kNormal = 1;
    const Result<double> state = asNumber((*running)->get("WindowState"));
    if (state && *state == kMinimised)
        static_cast<void>((*running)->set("WindowState", kNormal));
    static_cast<void>((*running)->set("Visible", true));
    activateWindowByTitle(*caption);
    if (drawing.empty())
        return {};
    pump.allow(patience.toOpen);
    const auto documents = asObject((*running)->get("Documents"));
    if (!documents)
        return unanswered(documents.error());
    const auto opened = (*documents)->call("Open", {drawing});
    return opened ? Result<void>() : unanswered(opened.error());
}

} // namespace zv::bench
