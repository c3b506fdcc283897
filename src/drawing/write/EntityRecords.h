#pragma once

#include "drawing/write/Plan.h"
#include "drawing/write/Record.h"

#include <unordered_set>

namespace zv::dwg {

/// Adds the BLOCK, the entities and the ENDBLK of one block of the plan; entities that are `kept` are left
/// out. Errors: Unsupported, names the kind of entity that cannot be written.
Result<void> addBlockContent(ObjectStream& objects, Plan& plan, std::size_t block,
                             const std::unordered_set<Handle>& kept = {});

} // namespace zv::dwg
