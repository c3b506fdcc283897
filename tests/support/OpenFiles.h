#pragma once

#include <string>

namespace zv {

/// Whether this process has the file open.
bool holdsOpen(const std::string& path);

} // namespace zv
