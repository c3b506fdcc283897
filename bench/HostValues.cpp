#include "HostValues.h"

#include "platform/Text.h"
#include "platform/Utf8.h"

namespace zv::bench {

wire::Failure unknownName(const std::string& name)
{
    return {wire::FailureCode::UnknownName, shownText("The object has no member " + name)};
}

wire::Failure failed(const std::string& text)
{
    return {wire::FailureCode::Failed, shownText(text)};
}

wire::Failure badArgument(const std::string& text)
{
    return {wire::FailureCode::BadArgument, shownText(text)};
}

std::string shownText(const std::string& bytes)
{
    return isUtf8(bytes) ? bytes : toUtf8(wide(bytes));
}

wire::Value textValue(const std::string& bytes)
{
    return shownText(bytes);
}

std::string textOf(const wire::Value& value)
{
    const auto* const text = std::get_if<std::string>(&value);
    return text != nullptr ? wire::receivedText(*text) : std::string();
}

std::string textOf(const wire::Value* value)
{
    return value != nullptr ? textOf(*value) : std::string();
}

const wire::Value* argument(const wire::Values& arguments, std::size_t index)
{
    if (index >= arguments.size() || std::holds_alternative<std::monostate>(arguments[index]) ||
        std::holds_alternative<MissingArgument>(arguments[index]))
        return nullptr;
    return &arguments[index];
}

dwg::Point3 pointOf(const AutomationPoint& point)
{
    return {point.x, point.y, point.z};
}

AutomationPoint pointOf(const dwg::Point3& point)
{
    return {point.x, point.y, point.z};
}

AutomationValue variableValue(const wire::Value& value)
{
    if (const auto* whole = std::get_if<std::int64_t>(&value))
        return *whole;
    if (const auto* real = std::get_if<double>(&value))
        return *real;
    if (std::holds_alternative<std::string>(value))
        return textOf(value);
    return {};
}

wire::Value variableValue(const AutomationValue& value)
{
    if (const auto* whole = std::get_if<std::int64_t>(&value))
        return *whole;
    if (const auto* real = std::get_if<double>(&value))
        return *real;
    if (const auto* text = std::get_if<std::string>(&value))
        return textValue(*text);
    return {};
}

std::string folderOf(const std::string& path)
{
    const std::size_t length = path.size() - fileNamePart(path).size();
    return path.substr(0, length > 1 ? length - 1 : length);
}

} // namespace zv::bench
