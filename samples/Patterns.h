#pragma once

#include "Draft.h"

namespace zv::samples {

/// The hatch of a material, without its loops; `unit` is the length of one inch of the sheet.
dwg::Hatch hatchOf(Fill fill, double unit);

/// The linetype of that name: DASHED, HIDDEN, CENTER, PHANTOM. Its lengths are sheet inches at a
/// linetype scale of the drawing's scale.
dwg::Linetype linetypeOf(const std::string& name);

} // namespace zv::samples
