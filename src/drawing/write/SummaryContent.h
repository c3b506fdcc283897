#pragma once

#include "drawing/container/Container.h"

#include <string>

namespace zv::dwg {

/// The bytes of a summary section with these properties. `old` is the section that is replaced, whose times
/// stay; empty when there is none. Errors: Unsupported, more custom properties than the section can count, or
/// a text that is too long (65534 characters, before R2007 bytes).
Result<std::string> summaryContent(const Container& container, std::span<const std::byte> old,
                                   const Properties& properties);

} // namespace zv::dwg
