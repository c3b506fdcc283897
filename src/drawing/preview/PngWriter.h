#pragma once

#include "drawing/preview/Preview.h"

#include <string>

namespace zv::dwg {

/// The picture as the bytes of a PNG file, without its alpha. Format: PNG, as W3C publishes it.
std::string encodePng(const Pixels& pixels);

} // namespace zv::dwg
