#pragma once

#include <cstdint>
#include <string>

namespace zv {

/// How long what is left will take at the pace so far, in words: "About 3 minutes left". `done` drawings took
/// `milliseconds`. Empty where nothing can be told yet, or nothing is left.
std::string timeLeftText(std::int64_t milliseconds, int done, int left);

} // namespace zv
