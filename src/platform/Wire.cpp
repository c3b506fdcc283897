#include "platform/Wire.h"

#include "platform/Text.h"
#include "platform/Utf8.h"

#include <algorithm>
#include <array>
#include <utility>

namespace zv::wire {
namespace {

template <class Code> struct Word {
    Code code;
    const char* text;
};

constexpr std::array<Word<Operation>, 5> kOperations{{{Operation::Get, "get"},
                                                      {Operation::Set, "set"},
                                                      {Operation::Call, "call"},
                                                      {Operation::Items, "items"},
                                                      {Operation::Release, "release"}}};

constexpr std::array<Word<FailureCode>, 5> kFailures{{{FailureCode::UnknownName, "unknown-name"},
                                                      {FailureCode::BadArgument, "bad-argument"},
                                                      {FailureCode::Cancelled, "cancelled"},
                                                      {FailureCode::Busy, "busy"},
                                                      {FailureCode::Failed, "failed"}}};

template <class Words, class Code> const char* wordOf(const Words& words, Code code)
{
    return std::find_if(words.begin(), words.end(), [code](const auto& word) { return word.code == code; })
        ->text;
}

template <class Code, std::size_t N>
std::optional<Code> codeOf(const std::array<Word<Code>, N>& words, std::string_view text)
{
    const auto found =
        std::find_if(words.begin(), words.end(), [text](const auto& word) { return word.text == text; });
    return found != words.end() ? std::optional(found->code) : std::nullopt;
}

struct ToJson {
    Json operator()(std::monostate) const { return {}; }
    Json operator()(MissingArgument) const { return Json::Object{{"missing", true}}; }
    Json operator()(const AutomationPoint& point) const
    {
        return Json::Object{{"point", Json::Array{point.x, point.y, point.z}}};
    }
    Json operator()(ObjectNumber object) const { return Json::Object{{"object", object.number}}; }
    template <class Plain> Json operator()(const Plain& plain) const { return plain; }
};

std::optional<AutomationPoint> pointOf(const Json& json)
{
    AutomationPoint point;
    const Json::Array* const numbers = json.array();
    const bool isPoint = numbers != nullptr && numbers->size() == 3 && (*numbers)[0].asDouble(point.x) &&
                         (*numbers)[1].asDouble(point.y) && (*numbers)[2].asDouble(point.z);
    return isPoint ? std::optional(point) : std::nullopt;
}

/// None when it is no array, or holds something that is no value.
std::optional<Values> toValues(const Json& json)
{
    if (json.array() == nullptr)
        return std::nullopt;
    Values values;
    values.reserve(json.array()->size());
    for (const Json& item : *json.array()) {
        std::optional<Value> value = toValue(item);
        if (!value)
            return std::nullopt;
        values.push_back(std::move(*value));
    }
    return values;
}

std::string textMember(const Json& json, const char* name)
{
    const Json* const member = json.member(name);
    return member != nullptr && member->text() != nullptr ? *member->text() : std::string();
}

/// The whole number of that name; null when it is none.
const std::int64_t* wholeMember(const Json& json, const char* name)
{
    const Json* const member = json.member(name);
    return member != nullptr ? member->whole() : nullptr;
}

/// What the operation needs besides its object. False when it is not there.
bool readParts(const Json& json, Request& request)
{
    if (request.operation == Operation::Set) {
        const Json* const member = json.member("value");
        std::optional<Value> value = member != nullptr ? toValue(*member) : std::nullopt;
        if (!value)
            return false;
        request.value = std::move(*value);
    }
    if (request.operation == Operation::Call) {
        const Json none(Json::Array{});
        const Json* const member = json.member("args");
        std::optional<Values> arguments = toValues(member != nullptr ? *member : none);
        if (!arguments)
            return false;
        request.arguments = std::move(*arguments);
    }
    return true;
}

std::optional<Content> resultOf(const Json& json)
{
    if (json.array() != nullptr) {
        std::optional<Values> values = toValues(json);
        return values ? std::optional<Content>(std::move(*values)) : std::nullopt;
    }
    std::optional<Value> value = toValue(json);
    return value ? std::optional<Content>(std::move(*value)) : std::nullopt;
}

std::optional<Content> failureOf(const Json& json)
{
    const Json* const code = json.member("code");
    if (code == nullptr || code->text() == nullptr)
        return std::nullopt;
    const Json* const told = json.member("description");
    return Failure{codeOf(kFailures, *code->text()).value_or(FailureCode::Failed),
                   told != nullptr && told->text() != nullptr ? *told->text() : *code->text()};
}

} // namespace

Json toJson(const Value& value)
{
    return std::visit(ToJson{}, value);
}

Json toJson(const Values& values)
{
    Json::Array items;
    items.reserve(values.size());
    for (const Value& value : values)
        items.push_back(toJson(value));
    return items;
}

std::optional<Value> toValue(const Json& json)
{
    if (json.isNull())
        return Value();
    if (const bool* const truth = json.boolean())
        return *truth;
    if (const std::int64_t* const whole = json.whole())
        return *whole;
    if (const double* const number = json.number())
        return *number;
    if (const std::string* const text = json.text())
        return *text;
    if (const Json* const numbers = json.member("point")) {
        if (const auto point = pointOf(*numbers))
            return *point;
    }
    if (const std::int64_t* const number = wholeMember(json, "object"))
        return ObjectNumber{*number};
    if (json.member("missing") != nullptr)
        return MissingArgument{};
    return std::nullopt;
}

Result<std::string> sentText(const std::string& bytes)
{
    if (isUtf8(bytes))
        return bytes;
    const std::u16string text = wide(bytes);
    std::string utf8 = toUtf8(text);
    if (std::any_of(text.begin(), text.end(), isEscapedByte) || !isUtf8(utf8))
        return Error{ErrorCode::Failed, "the text cannot be sent, for it is not valid UTF-8"};
    return utf8;
}

std::string receivedText(std::string_view utf8)
{
    return narrow(fromUtf8(utf8));
}

std::string writeLine(const Request& request)
{
    Json::Object members = {
        {"id", request.id}, {"op", wordOf(kOperations, request.operation)}, {"object", request.object}};
    if (!request.name.empty())
        members.emplace_back("name", request.name);
    if (request.operation == Operation::Set)
        members.emplace_back("value", toJson(request.value));
    if (request.operation == Operation::Call)
        members.emplace_back("args", toJson(request.arguments));
    return writeJson(members);
}

std::optional<Request> readRequest(std::string_view line)
{
    const Result<Json> json = readJson(line);
    const std::int64_t* const id = json ? wholeMember(*json, "id") : nullptr;
    if (id == nullptr)
        return std::nullopt;
    Request request;
    request.id = *id;
    request.name = textMember(*json, "name");
    const std::int64_t* const object = wholeMember(*json, "object");
    if (object == nullptr) {
        request.fault = "The request names no object";
        return request;
    }
    request.object = *object;
    const std::string word = textMember(*json, "op");
    const std::optional<Operation> operation = codeOf(kOperations, word);
    if (!operation) {
        request.fault = "There is no operation \"" + word + "\"";
        return request;
    }
    request.operation = *operation;
    if (!readParts(*json, request))
        request.fault = "The operation \"" + word + "\" came without its values";
    return request;
}

std::string writeLine(const Answer& answer)
{
    Json::Object members = {{"id", answer.id}};
    if (const Failure* const failure = std::get_if<Failure>(&answer.content))
        members.emplace_back("error", Json::Object{{"code", wordOf(kFailures, failure->code)},
                                                   {"description", failure->description}});
    else if (const Values* const values = std::get_if<Values>(&answer.content))
        members.emplace_back("result", toJson(*values));
    else
        members.emplace_back("result", toJson(std::get<Value>(answer.content)));
    return writeJson(members);
}

std::optional<Answer> readAnswer(std::string_view line)
{
    const Result<Json> json = readJson(line);
    const std::int64_t* const id = json ? wholeMember(*json, "id") : nullptr;
    if (id == nullptr)
        return std::nullopt;
    const Json* const result = json->member("result");
    const Json* const error = json->member("error");
    if ((result == nullptr) == (error == nullptr))
        return std::nullopt;
    std::optional<Content> content = error != nullptr ? failureOf(*error) : resultOf(*result);
    return content ? std::optional(Answer{*id, std::move(*content)}) : std::nullopt;
}

} // namespace zv::wire
