#pragma once

#include "drawing/records/RecordReader.h"
#include "platform/Result.h"

#include <span>

namespace zv::dwg {

/// Opens the header variables or the class table: passes the sentinel and the size before the fields, and
/// finds from R2007 on the texts and handles behind them. Errors: Damaged.
Result<RecordReader> openSection(std::span<const std::byte> section, Version version, int maintenance,
                                 int codePage);

} // namespace zv::dwg
