#pragma once

#include <string>
#include <string_view>

namespace zv {

/// Capitals as the user's language writes them, unit for unit: the length never changes.
std::u16string upperAsLocale(std::u16string_view text);
/// Capitals without regard to the user's language, unit for unit.
std::u16string upperAsAnywhere(std::u16string_view text);

/// The same text for all names that sameName() takes for one.
std::string foldedName(std::string_view name);

} // namespace zv
