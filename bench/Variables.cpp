#include "Variables.h"

#include "platform/Text.h"

#include <cmath>

namespace zv::bench {

void Variables::add(std::string name, AutomationValue value, Check check)
{
    m_variables[std::move(name)] = {std::move(value), std::move(check), {}};
}

void Variables::addComputed(std::string name, Reader reader)
{
    m_variables[std::move(name)] = {{}, {}, std::move(reader)};
}

bool Variables::has(std::string_view name) const
{
    return m_variables.count(upper(name)) > 0;
}

Result<AutomationValue> Variables::get(std::string_view name) const
{
    const auto found = m_variables.find(upper(name));
    if (found == m_variables.end())
        return Error{ErrorCode::NotFound, "Unknown system variable: " + std::string(name)};
    return found->second.reader ? found->second.reader() : found->second.value;
}

Result<void> Variables::set(std::string_view name, const AutomationValue& value)
{
    const auto found = m_variables.find(upper(name));
    if (found == m_variables.end())
        return Error{ErrorCode::NotFound, "Unknown system variable: " + std::string(name)};
    Variable& variable = found->second;
    if (variable.reader)
        return Error{ErrorCode::Denied, found->first + " is read-only"};
    AutomationValue taken = value;
    if (const auto* whole = std::get_if<std::int64_t>(&value);
        whole != nullptr && std::holds_alternative<double>(variable.value))
        taken = static_cast<double>(*whole);
    if (taken.index() != variable.value.index())
        return Error{ErrorCode::Failed, "Invalid argument type for " + found->first};
    if (variable.check && !variable.check(taken))
        return Error{ErrorCode::Failed, "Value out of range for " + found->first};
    variable.value = std::move(taken);
    return {};
}

Result<AutomationValue> Variables::valueOf(std::string_view name, const std::string& text) const
{
    const Result<AutomationValue> old = get(name);
    if (!old)
        return old.error();
    if (std::holds_alternative<std::string>(*old))
        return AutomationValue(text);
    double number = 0;
    if (!textNumber(text, number))
        return Error{ErrorCode::Failed, "Requires a number"};
    if (std::holds_alternative<double>(*old))
        return AutomationValue(number);
    if (number != std::trunc(number) || std::abs(number) > 1e9)
        return Error{ErrorCode::Failed, "Requires an integer value"};
    return AutomationValue(static_cast<std::int64_t>(number));
}

std::int64_t Variables::whole(std::string_view name) const
{
    const Result<AutomationValue> value = get(name);
    const auto* held = value ? std::get_if<std::int64_t>(&*value) : nullptr;
    return held != nullptr ? *held : 0;
}

double Variables::real(std::string_view name) const
{
    const Result<AutomationValue> value = get(name);
    const auto* held = value ? std::get_if<double>(&*value) : nullptr;
    return held != nullptr ? *held : 0;
}

std::string Variables::text(std::string_view name) const
{
    const Result<AutomationValue> value = get(name);
    const auto* held = value ? std::get_if<std::string>(&*value) : nullptr;
    return held != nullptr ? *held : std::string();
}

std::string shownValue(const AutomationValue& value)
{
    if (const auto* whole = std::get_if<std::int64_t>(&value))
        return std::to_string(*whole);
    if (const auto* real = std::get_if<double>(&value))
        return numberText(*real);
    if (const auto* text = std::get_if<std::string>(&value))
        return "\"" + *text + "\"";
    return {};
}

Variables::Check between(std::int64_t lowest, std::int64_t highest)
{
    return [lowest, highest](const AutomationValue& value) {
        const auto* whole = std::get_if<std::int64_t>(&value);
        return whole != nullptr && *whole >= lowest && *whole <= highest;
    };
}

} // namespace zv::bench
