#pragma once

#include "platform/Result.h"

#include <string>
#include <string_view>

namespace zv {

/// The system's last failure as an error that names the path.
Error lastError(std::string_view path);

/// The system's words for one of its codes, without a full stop; empty where it has none.
std::string systemText(unsigned long code);

} // namespace zv
