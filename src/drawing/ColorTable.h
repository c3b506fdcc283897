#pragma once

#include <cstdint>

namespace zv::dwg {

/// The colour 0xRRGGBB of an AutoCAD colour index, 1 to 255; 7 is white. Index 0 gives black.
std::uint32_t indexedColor(std::uint8_t index);

} // namespace zv::dwg
