#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zv {

/// How much of a full path is its root, separator included where the root ends in one; 0 for a path that is
/// not full.
std::size_t rootLength(std::string_view path);
/// Whether two paths, or parts of them, mean the same to the system.
bool samePathText(std::string_view a, std::string_view b);
/// Sorts without regard to case.
void sortNames(std::vector<std::string>& names);

} // namespace zv
