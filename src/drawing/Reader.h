#pragma once

#include "drawing/Document.h"
#include "platform/ByteSource.h"
#include "platform/Result.h"

namespace zv::dwg {

/// Reads a whole drawing. An entity of a kind that is not drawn is kept as Unknown and counted; so is one
/// whose fields are damaged, which Document::damage tells too. What has no readable header is left out and
/// told there. Errors: as Container::open; Damaged, the object map or a table cannot be read.
Result<Document> readDocument(const ByteSource& source);

} // namespace zv::dwg
