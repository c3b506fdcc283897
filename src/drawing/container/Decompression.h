#pragma once

#include <cstddef>
#include <optional>
#include <span>

namespace zv::dwg {

/// Unpacks a page of R2004 and later (all but R2007) into `into` and gives the number of bytes written. What
/// would go beyond `into` is left out. Nothing when the packed bytes are damaged or cut short.
std::optional<std::size_t> decompressR2004(std::span<const std::byte> packed, std::span<std::byte> into);

/// The same for a page of R2007, whose packing is another one.
std::optional<std::size_t> decompressR2007(std::span<const std::byte> packed, std::span<std::byte> into);

} // namespace zv::dwg
