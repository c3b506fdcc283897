#pragma once

#include "drawing/geometry/Path.h"

namespace zv::dwg {

/// The area of a hatch in its own plane: those of its loops that its style lets count, to fill by odd parity.
/// `work` is how much may be done for it, and falls.
Path hatchArea(const Hatch& hatch, std::size_t& work);

/// The pattern's lines inside an area, in the plane of the hatch. `complete` becomes false when they are too
/// many to draw; then none are given.
Path hatchLines(const Hatch& hatch, const Path& area, bool& complete, std::size_t& work);

} // namespace zv::dwg
