#pragma once

#include <functional>

namespace zv {

/// Ends this process at once, as a power cut would.
[[noreturn]] void killThisProcess();

/// Runs `work`, which ends in killThisProcess(), in a process of its own with what this one knows. False on
/// systems that have no such processes, and when it has not ended that way.
bool runUntilKilled(const std::function<bool()>& work);

} // namespace zv
