#include "platform/Automation.h"

#include "platform/LocalHosts.h"
#include "platform/Wire.h"
#include "platform/posix/StartFile.h"

#include <algorithm>
#include <chrono>
#include <optional>

namespace zv {

namespace {

using std::chrono::milliseconds;

/// One connection, shared by the objects that came over it. Closing it releases them all, which is why no
/// object is released by itself: a connection lives for one action.
class Connection : public std::enable_shared_from_this<Connection> {
public:
    Connection(std::unique_ptr<LineChannel> channel, std::shared_ptr<Waiting> waiting)
        : m_channel(std::move(channel)), m_waiting(std::move(waiting))
    {
    }

    /// Sends a request until the host is no longer busy, and gives what the answer holds.
    template <class Answered> Result<Answered> ask(wire::Request request);
    /// The same with the value made what the program takes.
    Result<AutomationValue> askValue(wire::Request request);
    AutomationValue received(const wire::Value& value);
    Result<wire::Value> sent(const AutomationValue& value) const;
    Error lost()
    {
        m_channel->end();
        return Error{ErrorCode::Lost, "the program has ended"};
    }

private:
    /// What the answer holds, or the error with the code Busy for a host that is to be asked again.
    Result<wire::Content> askOnce(wire::Request& request);
    Result<std::string> receive();

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
        return m_connection->askValue(request(wire::Operation::Get, name));
    }
    Result<void> set(std::string_view name, const AutomationValue& value) override
    {
        wire::Request set = request(wire::Operation::Set, name);
        Result<wire::Value> sent = m_connection->sent(value);
        if (!sent)
            return sent.error();
        set.value = std::move(*sent);
        const Result<wire::Value> done = m_connection->ask<wire::Value>(std::move(set));
        if (!done)
            return done.error();
        return {};
    }
    Result<AutomationValue> call(std::string_view name,
                                 const std::vector<AutomationValue>& arguments) override
    {
        wire::Request call = request(wire::Operation::Call, name);
        for (const AutomationValue& argument : arguments) {
            Result<wire::Value> sent = m_connection->sent(argument);
            if (!sent)
                return sent.error();
            call.arguments.push_back(std::move(*sent));
        }
        return m_connection->askValue(std::move(call));
    }
    Result<std::vector<AutomationValue>> items() override
    {
        const auto members = m_connection->ask<wire::Values>(request(wire::Operation::Items, {}));
        if (!members)
            return members.error();
        std::vector<AutomationValue> values;
        for (const wire::Value& member : *members)
            values.push_back(m_connection->received(member));
        return values;
    }

    const std::shared_ptr<Connection>& connection() const { return m_connection; }
    std::int64_t number() const { return m_number; }

private:
    wire::Request request(wire::Operation operation, std::string_view name) const
    {
        wire::Request request;
        request.operation = operation;
        request.object = m_number;
        request.name = name;
        return request;
    }

    std::shared_ptr<Connection> m_connection;
    std::int64_t m_number;
};

ErrorCode codeOf(wire::FailureCode code)
{
    switch (code) {
    case wire::FailureCode::UnknownName:
        return ErrorCode::NotFound;
    case wire::FailureCode::Cancelled:
        return ErrorCode::Cancelled;
    case wire::FailureCode::Busy:
        return ErrorCode::Busy;
    case wire::FailureCode::BadArgument:
    case wire::FailureCode::Failed:
        break;
    }
    return ErrorCode::Failed;
}

template <class Answered> Result<Answered> Connection::ask(wire::Request request)
{
    Result<wire::Content> content = untilFree(*m_waiting, [&] { return askOnce(request); });
    if (!content)
        return content.error();
    if (Answered* const answered = std::get_if<Answered>(&*content))
        return std::move(*answered);
    return lost();
}

Result<AutomationValue> Connection::askValue(wire::Request request)
{
    const Result<wire::Value> value = ask<wire::Value>(std::move(request));
    if (!value)
        return value.error();
    return received(*value);
}

Result<wire::Content> Connection::askOnce(wire::Request& request)
{
    if (m_channel->ended())
        return lost();
    request.id = ++m_lastId;
    if (const Result<void> sent = m_channel->send(writeLine(request), m_waiting->pump); !sent) {
        if (sent.error().code == ErrorCode::TooLarge)
            return Error{ErrorCode::Failed, sent.error().text};
        return sent.error();
    }
    const Result<std::string> line = receive();
    if (!line)
        return line.error();
    std::optional<wire::Answer> answer = wire::readAnswer(*line);
    if (!answer || answer->id != request.id)
        return lost();
    if (const auto* const failure = std::get_if<wire::Failure>(&answer->content))
        return Error{codeOf(failure->code), wire::receivedText(failure->description)};
    return std::move(answer->content);
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

/// A value of the program as it is sent.
struct Sent {
    const Connection& connection;
    Result<wire::Value> operator()(const std::string& text) const
    {
        Result<std::string> utf8 = wire::sentText(text);
        if (!utf8)
            return utf8.error();
        return wire::Value(std::move(*utf8));
    }
    Result<wire::Value> operator()(const AutomationObjectPtr& object) const
    {
        const auto* const own = dynamic_cast<const SocketObject*>(object.get());
        if (own == nullptr || own->connection().get() != &connection)
            return Error{ErrorCode::Failed, "the object belongs to another program"};
        return wire::Value(wire::ObjectNumber{own->number()});
    }
    template <class Plain> Result<wire::Value> operator()(const Plain& plain) const
    {
        return wire::Value(plain);
    }
};

Result<wire::Value> Connection::sent(const AutomationValue& value) const
{
    return std::visit(Sent{*this}, value);
}

/// A value of the host as the program takes it.
struct Received {
    std::shared_ptr<Connection> connection;
    AutomationValue operator()(const std::string& utf8) const { return wire::receivedText(utf8); }
    AutomationValue operator()(wire::ObjectNumber object) const
    {
        return std::make_shared<SocketObject>(connection, object.number);
    }
    template <class Plain> AutomationValue operator()(const Plain& plain) const { return plain; }
};

AutomationValue Connection::received(const wire::Value& value)
{
    return std::visit(Received{shared_from_this()}, value);
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
        const ShownWait shown(m_waiting->pump);
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
