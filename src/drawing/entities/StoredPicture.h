#pragma once

#include "drawing/entities/EntityRecord.h"

#include <cstddef>
#include <span>

namespace zv::dwg {

/// Reads the picture that a record carries of its entity. Format: "Proxy Entity Graphics" of the Open Design
/// Specification for .dwg files. Figures refer to the layers, linetypes and text styles of `document` by
/// place or name; `entity` gives the look that they begin with. `complete` becomes false when a part is
/// damaged; what was read before it stays.
StoredPicture readStoredPicture(std::span<const std::byte> bytes, const Document& document,
                                const Entity& entity, bool& complete);

/// Gives a figure the look of its entity.
void takeLook(PictureFigure& figure, const Entity& entity);

} // namespace zv::dwg
