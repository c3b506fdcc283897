#include "print/TimeLeft.h"

namespace zv {

namespace {

constexpr std::int64_t kSecond = 1000, kMinute = 60 * kSecond, kHour = 60 * kMinute;

std::string about(std::int64_t count, const char* unit)
{
    return "About " + std::to_string(count) + " " + unit + (count == 1 ? "" : "s") + " left";
}

} // namespace

std::string timeLeftText(std::int64_t milliseconds, int done, int left)
{
    if (done <= 0 || left <= 0)
        return {};
    const std::int64_t wait = milliseconds / done * left;
    if (wait < 5 * kSecond)
        return "A few seconds left";
    // Told no finer than can be foreseen.
    if (wait < kMinute)
        return about((wait + 5 * kSecond - 1) / (5 * kSecond) * 5, "second");
    if (wait < kHour)
        return about((wait + kMinute / 2) / kMinute, "minute");
    return about((wait + kHour / 2) / kHour, "hour");
}

} // namespace zv
