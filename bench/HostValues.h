#pragma once

#include "HostObjects.h"

namespace zv::bench {

/// The bit of OSMODE that turns all snaps off.
inline constexpr std::int64_t kSnapsSuppressed = 16384;

wire::Failure unknownName(const std::string& name);
wire::Failure failed(const std::string& text);
wire::Failure badArgument(const std::string& text);

/// A text of the program's own, as it is shown to others. What is no text there is replaced.
std::string shownText(const std::string& bytes);
wire::Value textValue(const std::string& bytes);
/// The text in the program's own form; empty when the value is none.
std::string textOf(const wire::Value& value);
std::string textOf(const wire::Value* value);

/// The argument at `index`; null when it is missing, left out or empty.
const wire::Value* argument(const wire::Values& arguments, std::size_t index);
/// The same where only one kind of value will do; null for any other.
template <class T> const T* argument(const wire::Values& arguments, std::size_t index)
{
    return index < arguments.size() ? std::get_if<T>(&arguments[index]) : nullptr;
}
dwg::Point3 pointOf(const AutomationPoint& point);
AutomationPoint pointOf(const dwg::Point3& point);

/// A variable takes whole numbers, doubles and texts; anything else is empty.
AutomationValue variableValue(const wire::Value& value);
wire::Value variableValue(const AutomationValue& value);

/// The folder of a path, without the separator at its end.
std::string folderOf(const std::string& path);

} // namespace zv::bench
