#pragma once

#include "platform/Result.h"

#include <string>
#include <string_view>
#include <vector>

namespace zv {

/// The paths of all files with an ending (".dwg", in any case) in a folder and the folders below it, in
/// order. What cannot be opened below is passed over, and links to folders are not followed. Errors:
/// NotFound, the folder itself cannot be read.
Result<std::vector<std::string>> filesBelow(const std::string& folder, std::string_view ending);

} // namespace zv
