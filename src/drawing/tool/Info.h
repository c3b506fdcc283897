#pragma once

#include "platform/Json.h"
#include "platform/Result.h"

#include <string>

namespace zv::dwg {

/// What a drawing file holds, as one JSON object: version, size, preview, properties, the model space's
/// entities by kind, the number of blocks, layer names and stored extents. Errors: as readDocument; NotFound;
/// Denied.
Result<Json> describeDrawing(const std::string& path);

/// The same for people, a line each; UTF-8.
std::string describedInWords(const Json& description);

} // namespace zv::dwg
