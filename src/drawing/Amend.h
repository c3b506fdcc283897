#pragma once

#include "drawing/Writer.h"

#include <string>
#include <string_view>

namespace zv::dwg {

/// An AC1015 file made to hold `document`, with every record that the document does not change kept as it
/// stands, known here or not. What the document has under a handle of the file must be as reading the file
/// gave it; entities, blocks and entries of tables may be missing or new, and a block's content and head and
/// the header's scales, units, current layer and extents may be others. Options that are not set leave that
/// part of the file alone. Errors: as Container::open; Damaged; Unsupported, says why.
Result<std::string> amendDocument(std::string_view file, const Document& document,
                                  const WriteOptions& options);

} // namespace zv::dwg
