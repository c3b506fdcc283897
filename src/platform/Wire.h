#pragma once

#include "platform/Automation.h"
#include "platform/Json.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
#include <vector>

/// What goes over the local carrier: one JSON object a line, from the client a request, from the host its
/// answer. Client and hosts write and read it here alone.
namespace zv::wire {

/// An object of the host. It lives as long as the connection that it was given over.
struct ObjectNumber {
    std::int64_t number = 0; ///< 0 is the application.
    friend bool operator==(ObjectNumber, ObjectNumber) = default;
};

/// As AutomationValue, with texts in UTF-8.
using Value = std::variant<std::monostate, MissingArgument, bool, std::int64_t, double, std::string,
                           AutomationPoint, ObjectNumber>;
using Values = std::vector<Value>;

Json toJson(const Value& value);
Json toJson(const Values& values);
/// None when it is no value.
std::optional<Value> toValue(const Json& json);

/// A text of the program's own as it is sent. Errors: Failed, it has no UTF-8 form.
Result<std::string> sentText(const std::string& bytes);
/// A text that has come, in the program's own form.
std::string receivedText(std::string_view utf8);

enum class Operation { Get, Set, Call, Items, Release };

struct Request {
    std::int64_t id = 0;
    Operation operation = Operation::Get;
    std::int64_t object = 0;
    std::string name;  ///< Of Get, Set and Call; meets the host's without regard to case.
    Value value;       ///< Of Set.
    Values arguments;  ///< Of Call.
    std::string fault; ///< Why it cannot be met, when it came without what it needs.

    friend bool operator==(const Request&, const Request&) = default;
};

enum class FailureCode { UnknownName, BadArgument, Cancelled, Busy, Failed };
struct Failure {
    FailureCode code = FailureCode::Failed;
    std::string description; ///< For the user's eyes, in UTF-8.

    friend bool operator==(const Failure&, const Failure&) = default;
};

/// A value, the members of a collection, or a failure.
using Content = std::variant<Value, Values, Failure>;
struct Answer {
    std::int64_t id = 0; ///< Of its request.
    Content content;

    friend bool operator==(const Answer&, const Answer&) = default;
};

std::string writeLine(const Request& request);
std::string writeLine(const Answer& answer);
/// None when the line is no request that could be answered.
std::optional<Request> readRequest(std::string_view line);
/// None when the line is no answer.
std::optional<Answer> readAnswer(std::string_view line);

} // namespace zv::wire
