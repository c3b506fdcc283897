#include "platform/Automation.h"

namespace zv {

namespace {

template <class T> Result<T> holding(Result<AutomationValue> value, const char* expected)
{
    if (!value)
        return value.error();
    if (T* held = std::get_if<T>(&*value))
        return std::move(*held);
    return Error{ErrorCode::Failed,
                 std::string("the program answered with something that is no ") + expected};
}

} // namespace

Result<AutomationObjectPtr> asObject(Result<AutomationValue> value)
{
    Result<AutomationObjectPtr> object = holding<AutomationObjectPtr>(std::move(value), "object");
    if (object && !*object)
        return Error{ErrorCode::Failed, "the program answered with no object"};
    return object;
}

Result<std::string> asText(Result<AutomationValue> value)
{
    return holding<std::string>(std::move(value), "text");
}

Result<double> asNumber(Result<AutomationValue> value)
{
    if (value) {
        if (const auto* whole = std::get_if<std::int64_t>(&*value))
            return static_cast<double>(*whole);
    }
    return holding<double>(std::move(value), "number");
}

Result<bool> asBool(Result<AutomationValue> value)
{
    if (value) {
        if (const auto* whole = std::get_if<std::int64_t>(&*value))
            return *whole != 0;
    }
    return holding<bool>(std::move(value), "truth value");
}

Result<AutomationPoint> asPoint(Result<AutomationValue> value)
{
    return holding<AutomationPoint>(std::move(value), "point");
}

} // namespace zv
