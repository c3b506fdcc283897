#pragma once

#include <functional>
#include <string>

namespace zv {

/// Runs `write` for a file in two processes at once, with the numbers 0 and 1; false when the second one
/// failed. The test calls it once, and before it has done anything that the second process must not do too.
bool runTwoWriters(const std::string& file,
                   const std::function<void(const std::string& file, int writer)>& write);

} // namespace zv
