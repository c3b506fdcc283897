#pragma once

#include "platform/Result.h"

#include <string>

namespace zv::samples {

/// All drawings of the office as one picture, library by library. Errors: Failed, the file cannot be written.
Result<void> makeContactSheet(const std::string& path);

} // namespace zv::samples
