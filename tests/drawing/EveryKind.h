#pragma once

#include "drawing/Document.h"

namespace zv::dwg::test {

inline constexpr Handle kBlockHandle = 0x100, kDimensionBlock = 0x101, kXrefBlock = 0x102, kWallLayer = 0x103,
                        kDashed = 0x104, kNotes = 0x105, kWallStyle = 0x106, kOfficeDimensions = 0x107;

/// A drawing with one entity at least of every kind that can be written, in layers, linetypes, text styles
/// and blocks of its own.
Document everyKind();
/// The same, of the one shape only.
Document documentOf(Geometry geometry);

} // namespace zv::dwg::test
