#pragma once

#include "drawing/Document.h"
#include "platform/ByteSource.h"
#include "platform/Result.h"

#include <optional>

namespace zv::dwg {

/// The properties of a drawing, read from the pages that hold them and nothing else: the summary section of
/// AC1018 and later, the DWGPROPS record of the named-object dictionary before. No value when the file has
/// neither. Errors: as Container::open; Damaged.
Result<std::optional<Properties>> readProperties(const ByteSource& source);

} // namespace zv::dwg
