#pragma once

#include "platform/Result.h"

#include <string>
#include <vector>

namespace zv {

/// Runs a program with the present input and output, waits for its end and gives its exit status. The first
/// text is its path, on Windows without ".exe". Errors: NotFound, it cannot be started; Failed, it was ended
/// by force.
Result<int> runProgram(const std::vector<std::string>& command);

} // namespace zv
