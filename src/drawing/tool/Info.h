#pragma once

#include "platform/Json.h"
#include "platform/Result.h"

#include <string>

namespace zv::dwg {

/// The path in UTF-8, whatever the locale's code page is when its bytes are UTF-8 already.
std::string shownPath(const std::string& path);

/// What a drawing file holds, as one JSON object: version, size, preview, properties, the model space's
/// entities by kind, the number of blocks, layer names and stored extents. Errors: as readDocument; NotFound;
/// Denied; TooLarge, the memory does not hold it.
Result<Json> describeDrawing(const std::string& path);

/// The same for people, a line each; UTF-8.
std::string describedInWords(const Json& description);

} // namespace zv::dwg
