#pragma once

#include "platform/Automation.h"
#include "platform/Result.h"

#include <functional>
#include <map>
#include <string>
#include <string_view>

namespace zv::bench {

/// System variables by name, without regard to case. Whole ones take whole numbers, real ones any number.
class Variables {
public:
    using Reader = std::function<AutomationValue()>;
    using Check = std::function<bool(const AutomationValue&)>;

    /// A variable that is kept. `check`, if any, refuses values.
    void add(std::string name, AutomationValue value, Check check = {});
    /// A variable that can only be read.
    void addComputed(std::string name, Reader reader);

    bool has(std::string_view name) const;
    /// Errors: NotFound.
    Result<AutomationValue> get(std::string_view name) const;
    /// Errors: NotFound; Denied, it can only be read; Failed, a value of another kind or out of range.
    Result<void> set(std::string_view name, const AutomationValue& value);
    /// The value that a typed text means for a variable. Errors: NotFound; Failed, it is none of its kind.
    Result<AutomationValue> valueOf(std::string_view name, const std::string& text) const;

    std::int64_t whole(std::string_view name) const;
    double real(std::string_view name) const;
    std::string text(std::string_view name) const;

private:
    struct Variable {
        AutomationValue value;
        Check check;
        Reader reader;
    };
    std::map<std::string, Variable> m_variables; ///< By names in capitals.
};

/// The value as the command line shows it.
std::string shownValue(const AutomationValue& value);

/// A check for whole numbers between two, both allowed.
Variables::Check between(std::int64_t lowest, std::int64_t highest);

} // namespace zv::bench
