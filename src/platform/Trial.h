#pragma once

#include <functional>

namespace zv {

/// Whether a task that may crash or hang ends well: it runs in a process of its own, with what this one
/// knows, and nothing that it does comes back but its answer. A task that takes more than `seconds` does not
/// end well. On Linux only; nothing on Windows reads with a library that needs it.
bool endsWell(const std::function<bool()>& task, unsigned seconds);

} // namespace zv
