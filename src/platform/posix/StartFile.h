#pragma once

#include "platform/Result.h"

#include <string>
#include <sys/types.h>

namespace zv {

/// Runs the command of a host's start file, without waiting for its end. Errors: NotFound, there is no such
/// file; Failed, the command cannot be run.
Result<pid_t> runStartFile(const std::string& progId);

/// Whether a process that was started here has ended.
bool hasEnded(pid_t process);

} // namespace zv
