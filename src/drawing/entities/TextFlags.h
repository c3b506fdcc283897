#pragma once

namespace zv::dwg {

/// From R2000 on a byte of flags tells which fields of a TEXT are left out because they have their usual
/// value.
enum TextFlags : unsigned {
    kNoElevation = 1,
    kNoAlignment = 2,
    kNoOblique = 4,
    kNoRotation = 8,
    kNoWidth = 16,
    kNoGeneration = 32,
    kNoHorizontal = 64,
    kNoVertical = 128
};

} // namespace zv::dwg
