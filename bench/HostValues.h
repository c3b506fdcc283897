#pragma once

#include "HostObjects.h"

namespace zv::bench {

/// The bit of OSMODE that turns all snaps off.
inline constexpr std::int64_t kSnapsSuppressed = 16384;

Failure unknownName(const std::string& name);
Json failureAnswer(const Failure& failure);

/// Between texts of the wire and bytes in the system's 8-bit code page.
Json wireText(const std::string& bytes);
std::string textOf(const Json& json);
/// The text member of this name; empty when there is none.
std::string textMember(const Json& json, const char* name);

/// The argument at `index`; null when it is missing, left out or empty.
const Json* argument(const Json::Array& arguments, std::size_t index);
bool pointOf(const Json& json, dwg::Point3& point);
Json pointValue(const dwg::Point3& point);

AutomationValue variableValue(const Json& json);
Json variableJson(const AutomationValue& value);

/// The folder of a path, without the separator at its end.
std::string folderOf(const std::string& path);

} // namespace zv::bench
