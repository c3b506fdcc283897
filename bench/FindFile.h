#pragma once

#include "BenchDrawing.h"

#include <string>

namespace zv::bench {

/// The drawing file that a typed name means: as it stands, or beside the drawing, with ".dwg" added where it
/// is missing. Empty when there is none.
std::string findDrawingFile(const std::string& typed, const BenchDrawing& drawing);

/// The block name that a typed path means: the file's name without ".dwg".
std::string fileStem(const std::string& typed);

} // namespace zv::bench
