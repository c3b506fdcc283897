#pragma once

#include "drawing/Document.h"

#include <string_view>

namespace zv::dwg {

/// The edges of a body that a modeller has described, as figures in the order of the description: straight
/// ones and round ones. Format: ACIS save files, in text ("SAT") or binary ("SAB"). What is damaged is left
/// out.
StoredPicture readSolidEdges(std::string_view model, bool binary);

} // namespace zv::dwg
