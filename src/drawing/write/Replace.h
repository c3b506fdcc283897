#pragma once

#include "drawing/Writer.h"
#include "drawing/container/Container.h"

namespace zv::dwg {

/// The file with another record of properties; AC1015 only. Errors: Damaged; Unsupported, says why.
Result<std::string> replacePropertiesRecord(std::string_view file, const Container& container,
                                            const Properties& properties);
/// The file with another summary section: AC1018 and later but not AC1021, and AC1021. A file without one
/// gets it. Errors: Damaged; Unsupported; TooLarge, says why.
Result<std::string> replaceSummaryR2004(std::string_view file, const Container& container,
                                        const Properties& properties);
Result<std::string> replaceSummaryR2007(std::string_view file, const Container& container,
                                        const Properties& properties);

} // namespace zv::dwg
