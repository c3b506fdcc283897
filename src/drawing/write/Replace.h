#pragma once

#include "drawing/Container.h"
#include "drawing/Writer.h"

namespace zv::dwg {

/// The file with another record of properties; AC1015 only. Errors: Damaged; Unsupported, says why.
Result<std::string> replacePropertiesRecord(std::string_view file, const Container& container,
                                            const Properties& properties);
/// The file with another summary section; AC1018 and later but not AC1021. Same errors.
Result<std::string> replaceSummarySection(std::string_view file, const Container& container,
                                          const Properties& properties);

} // namespace zv::dwg
