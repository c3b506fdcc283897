#pragma once

#include "drawing/write/Plan.h"
#include "drawing/write/Record.h"

namespace zv::dwg {

/// Adds the BLOCK, the entities and the ENDBLK of one block of the plan. Errors: Unsupported, names the kind
/// of entity that cannot be written.
Result<void> addBlockContent(ObjectStream& objects, Plan& plan, std::size_t block);

} // namespace zv::dwg
