#pragma once

#include "platform/ByteSource.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace zv::bench {

/// Whether two AC1015 files hold the same records, but for the times in the record of properties.
bool sameRecords(std::string_view a, std::string_view b);

/// What hangs on a drawing beside its entities and tables and is not taken over into a new file, by kind and
/// count. What every file of a later version has by itself is not counted.
std::map<std::string, std::size_t> untakenObjects(const ByteSource& file);

} // namespace zv::bench
