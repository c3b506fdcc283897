#pragma once

#include "drawing/Document.h"
#include "platform/ByteSource.h"
#include "platform/Result.h"

namespace zv::dwg {

/// Reads a whole drawing. A damaged entity is left out and told in Document::damage; an unknown one is kept
/// as Unknown and counted. Errors: as Container::open; Damaged, the object map or a table cannot be read.
Result<Document> readDocument(const ByteSource& source);

} // namespace zv::dwg
