#pragma once

#include "drawing/container/Container.h"

#include <optional>

namespace zv::dwg {

/// The properties of a drawing of R13 to R2000: the record DWGPROPS of its named-object dictionary. Only the
/// header, the object map and the two records are read. No value when there is none. Errors: Damaged.
Result<std::optional<Properties>> readPropertiesRecord(const Container& container);

/// The properties in the data of that record: pairs of group code and value.
std::optional<Properties> parsePropertiesRecord(std::span<const std::byte> data, Version version,
                                                int codePage);

} // namespace zv::dwg
