#pragma once

#include "drawing/Document.h"

#include <string>

namespace zv::dwg::test {

/// All values of a shape as words, for comparing what was written with what is read.
std::string describe(const Geometry& geometry);

} // namespace zv::dwg::test
