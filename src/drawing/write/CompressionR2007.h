#pragma once

#include <string>
#include <string_view>

namespace zv::dwg {

/// Packs bytes as R2007 does. What would not become shorter is given back as it is: equal sizes of packed and
/// unpacked bytes tell a reader that they are not packed.
std::string compressR2007(std::string_view bytes);

} // namespace zv::dwg
