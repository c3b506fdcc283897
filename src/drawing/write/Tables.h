#pragma once

#include "drawing/Writer.h"
#include "drawing/write/HeaderSection.h"
#include "drawing/write/Plan.h"
#include "drawing/write/Record.h"

namespace zv::dwg {

/// Adds the control objects and the entries of all tables.
void addTables(ObjectStream& objects, const Plan& plan);
/// The linetypes in the order of their table; ByBlock and ByLayer stand apart.
std::vector<Handle> linetypeOrder(const Plan& plan);
/// Adds the named-object dictionary and what hangs on it; the properties' record when there are any. Errors:
/// as propertiesRecord.
Result<void> addDictionaries(ObjectStream& objects, const Plan& plan,
                             const std::optional<Properties>& properties);
/// The record of properties, which belongs to the named-object dictionary. Errors: Unsupported, more than ten
/// custom properties, or a text that is too long.
Result<Record> propertiesRecord(Handle handle, Handle dictionary, const Properties& properties);
/// What is said of such a text.
inline constexpr const char* kPropertyTooLong = "a property is longer than the format holds";

} // namespace zv::dwg
