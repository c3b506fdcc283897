#include "platform/Automation.h"

#include "platform/Json.h"
#include "platform/LocalHosts.h"
#include "platform/Text.h"
#include "platform/posix/StartFile.h"

#include <algorithm>
#include <chrono>
#include <optional>

namespace zv {

namespace {

using std::chrono::milliseconds;

class SocketObject;

/// Text for the wire. Errors: Failed, it has no UTF-8 form.
Result<std::string> wireText(const std::string& bytes)
{
    if (isUtf8(bytes))
        return bytes;
    const std::u16string text = wide(bytes);
    // Bytes that are no text in the locale stand in it as these.
    const bool undecoded =
        std::any_of(text.begin(), text.end(), [](char16_t c) { return c >= 0xDC80 && c <= 0xDCFF; });
    std::string utf8 = toUtf8(text);
    if (undecoded || !isUtf8(utf8))
        return Error{ErrorCode::Failed, "the text cannot be sent, for it is not valid UTF-8"};
    return utf8;
}

/// One connection, shared by the objects that came over it. Closing it releases them all, which is why no
/// object is released by itself: a connection lives for one action.
class Connection : public std::enable_shared_from_this<Connection> {
public:
    Connection(std::unique_ptr<LineChannel> channel, std::shared_ptr<Waiting> waiting)
        : m_channel(std::move(channel)), m_waiting(std::move(waiting))
    {
    }

    /// Sends a request until the host is no longer busy, and gives its result.
    Result<Json> ask(const char* operation, std::int64_t object, Json::Object rest);
    Result<AutomationValue> value(const Json& json);
    Result<Json> json(const AutomationValue& value) const;
    Error lost()
    {
        m_channel->end();
        return Error{ErrorCode::Lost, "the program has ended"};
    }

private:
    /// An answer: the result, or the error with the code Busy for a host that is to be asked again.
    Result<Json> askOnce(const char* operation, std::int64_t object, const Json::Object& rest);
    Result<std::string> receive();
    Error errorOf(const Json& error);

    std::unique_ptr<LineChannel> m_channel;
    std::shared_ptr<Waiting> m_waiting;
    std::int64_t m_lastId = 0;
};

class SocketObject final : public AutomationObject {
public:
    SocketObject(std::shared_ptr<Connection> connection, std::int64_t number)
        : m_connection(std::move(connection)), m_number(number)
    {
    }
    Result<AutomationValue> get(std::string_view name) override
    {
        return answer(m_connection->ask("get", m_number, {{"name", std::string(name)}}));
    }
    Result<void> set(std::string_view name, const AutomationValue& value) override
    {
        Result<Json> json = m_connection->json(value);
        if (!json)
            return json.error();
        const Result<Json> done =
            m_connection->ask("set", m_number, {{"name", std::string(name)}, {"value", std::move(*json)}});
        if (!done)
            return done.error();
        return {};
    }
    Result<AutomationValue> call(std::string_view name,
                                 const std::vector<AutomationValue>& arguments) override
    {
        Json::Array sent;
        for (const AutomationValue& argument : arguments) {
            Result<Json> json = m_connection->json(argument);
            if (!json)
                return json.error();
            sent.push_back(std::move(*json));
        }
        return answer(
            m_connection->ask("call", m_number, {{"name", std::string(name)}, {"args", std::move(sent)}}));
    }
    Result<std::vector<AutomationValue>> items() override
    {
        const Result<Json> result = m_connection->ask("items", m_number, {});
        if (!result)
            return result.error();
        const Json::Array* const members = result->array();
        if (members == nullptr)
            return m_connection->lost();
        std::vector<AutomationValue> values;
        for (const Json& member : *members) {
            Result<AutomationValue> value = m_connection->value(member);
            if (!value)
                return value.error();
            values.push_back(std::move(*value));
        }
        return values;
    }

    const std::shared_ptr<Connection>& connection() const { return m_connection; }
    std::int64_t number() const { return m_number; }

private:
    Result<AutomationValue> answer(const Result<Json>& result)
    {
        if (!result)
            return result.error();
        return m_connection->value(*result);
    }

    std::shared_ptr<Connection> m_connection;
    std::int64_t m_number;
};

Result<Json> Connection::ask(const char* operation, std::int64_t object, Json::Object rest)
{
    return untilFree(*m_waiting, [&] { return askOnce(operation, object, rest); });
}

Result<Json> Connection::askOnce(const char* operation, std::int64_t object, const Json::Object& rest)
{
    if (m_channel->ended())
        return lost();
    Json::Object request = {{"id", ++m_lastId}, {"op", operation}, {"object", object}};
    request.insert(request.end(), rest.begin(), rest.end());
    if (const Result<void> sent = m_channel->send(writeJson(Json(std::move(request))), m_waiting->pump);
        !sent) {
        if (sent.error().code == ErrorCode::TooLarge)
            return Error{ErrorCode::Failed, sent.error().text};
        return sent.error();
    }
    const Result<std::string> line = receive();
    if (!line)
        return line.error();
    const Result<Json> answer = readJson(*line);
    const Json* const id = answer ? answer->member("id") : nullptr;
    if (id == nullptr || id->whole() == nullptr || *id->whole() != m_lastId)
        return lost();
    const Json* const result = answer->member("result");
    const Json* const error = answer->member("error");
    if ((result == nullptr) == (error == nullptr))
        return lost();
    if (error != nullptr)
        return errorOf(*error);
    return *result;
}

Result<std::string> Connection::receive()
{
    std::string line;
    m_channel->waitQuietly(kQuietMs);
    m_channel->readAvailable();
    std::optional<ShownWait> shown;
    while (!m_channel->nextLine(line)) {
        if (m_channel->ended())
            return lost();
        // The answer may still come, and would be taken for that of the next request.
        if (m_waiting->isGivenUp()) {
            m_channel->end();
            return Waiting::givenUp();
        }
        if (!shown)
            shown.emplace(m_waiting->pump);
        m_waiting->pump.wait(m_channel->descriptor(), -1);
        m_channel->readAvailable();
    }
    return line;
}

Error Connection::errorOf(const Json& error)
{
    const Json* const code = error.member("code");
    const Json* const description = error.member("description");
    if (code == nullptr || code->text() == nullptr)
        return lost();
    const std::string text =
        description != nullptr && description->text() != nullptr ? *description->text() : *code->text();
    const std::string& word = *code->text();
    if (word == "unknown-name")
        return Error{ErrorCode::NotFound, text};
    if (word == "cancelled")
        return Error{ErrorCode::Cancelled, text};
    if (word == "busy")
        return Error{ErrorCode::Busy, text};
    return Error{ErrorCode::Failed, text};
}

struct ToJson {
    const Connection& connection;
    Result<Json> operator()(std::monostate) const { return Json(); }
    Result<Json> operator()(MissingArgument) const { return Json(Json::Object{{"missing", true}}); }
    Result<Json> operator()(bool truth) const { return Json(truth); }
    Result<Json> operator()(std::int64_t whole) const { return Json(whole); }
    Result<Json> operator()(double number) const { return Json(number); }
    Result<Json> operator()(const std::string& text) const
    {
        Result<std::string> utf8 = wireText(text);
        if (!utf8)
            return utf8.error();
        return Json(std::move(*utf8));
    }
    Result<Json> operator()(const AutomationPoint& point) const
    {
        return Json(Json::Object{{"point", Json::Array{point.x, point.y, point.z}}});
    }
    Result<Json> operator()(const AutomationObjectPtr& object) const
    {
        const auto* const own = dynamic_cast<const SocketObject*>(object.get());
        if (own == nullptr || own->connection().get() != &connection)
            return Error{ErrorCode::Failed, "the object belongs to another program"};
        return Json(Json::Object{{"object", own->number()}});
    }
};

Result<Json> Connection::json(const AutomationValue& value) const
{
    return std::visit(ToJson{*this}, value);
}

bool readPoint(const Json& json, AutomationPoint& point)
{
    const Json::Array* const numbers = json.array();
    return numbers != nullptr && numbers->size() == 3 && (*numbers)[0].asDouble(point.x) &&
           (*numbers)[1].asDouble(point.y) && (*numbers)[2].asDouble(point.z);
}

Result<AutomationValue> Connection::value(const Json& json)
{
    if (json.isNull())
        return AutomationValue();
    if (const bool* const truth = json.boolean())
        return AutomationValue(*truth);
    if (const std::int64_t* const whole = json.whole())
        return AutomationValue(*whole);
    if (const double* const number = json.number())
        return AutomationValue(*number);
    if (const std::string* const text = json.text())
        return AutomationValue(narrow(fromUtf8(*text)));
    AutomationPoint point;
    if (const Json* const numbers = json.member("point"); numbers != nullptr && readPoint(*numbers, point))
        return AutomationValue(point);
    if (const Json* const object = json.member("object"); object != nullptr && object->whole() != nullptr)
        return AutomationValue(
            AutomationObjectPtr(std::make_shared<SocketObject>(shared_from_this(), *object->whole())));
    if (json.member("missing") != nullptr)
        return AutomationValue(MissingArgument{});
    return lost();
}

class SocketCarrier final : public Automation {
public:
    SocketCarrier(EventPump& pump, CarrierPatience patience)
        : m_waiting(std::make_shared<Waiting>(pump, std::move(patience)))
    {
    }

    void beginAction(int limitMs) override { m_waiting->beginAction(limitMs); }
    bool isGivenUp() const override { return m_waiting->isGivenUp(); }

    Result<AutomationObjectPtr> attach(const std::string& progId) override
    {
        Result<std::unique_ptr<LineChannel>> channel = connectToHost(progId, m_waiting->pump);
        if (!channel)
            return channel.error();
        auto connection = std::make_shared<Connection>(std::move(*channel), m_waiting);
        return AutomationObjectPtr(std::make_shared<SocketObject>(std::move(connection), 0));
    }

    Result<AutomationObjectPtr> create(const std::string& progId) override
    {
        if (isGivenUp())
            return Waiting::givenUp();
        const Result<StartedProcess> process = runStartFile(progId);
        if (!process)
            return process.error();
        const CarrierPatience& patience = m_waiting->patience;
        const auto deadline = patience.now() + milliseconds(patience.createMs);
        for (milliseconds length{5};; length = std::min(length * 2, milliseconds(100))) {
            // Asked before the attach, so that a host that answers and ends at once is still found.
            const bool ended = process->hasEnded();
            Result<AutomationObjectPtr> application = attach(progId);
            if (application)
                return application;
            if (isGivenUp())
                return Waiting::givenUp();
            if (ended)
                return Error{ErrorCode::Lost, progId + " ended before it answered"};
            if (patience.now() >= deadline)
                return Error{ErrorCode::Failed, progId + " did not answer in time"};
            pauseFor(*m_waiting, length);
        }
    }

private:
    std::shared_ptr<Waiting> m_waiting;
};

} // namespace

std::unique_ptr<Automation> socketAutomation(EventPump& pump, CarrierPatience patience)
{
    return std::make_unique<SocketCarrier>(pump, std::move(patience));
}

std::unique_ptr<Automation> systemAutomation(EventPump& pump)
{
    return socketAutomation(pump, CarrierPatience{});
}

} // namespace zv
