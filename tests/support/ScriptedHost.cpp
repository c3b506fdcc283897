#include "platform/LocalHosts.h"
#include "support/HostModel.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <map>
#include <memory>
#include <poll.h>
#include <sys/socket.h>
#include <thread>
#include <unistd.h>
#include <vector>

// A scripted host on the local carrier, in a process of its own: ScriptedHost SCRIPT.

namespace {

using namespace zv;
using namespace zv::test;

/// A connection with the objects that it has been given.
class Client {
public:
    Client(std::unique_ptr<LineChannel> channel, HostModel& model)
        : m_channel(std::move(channel)), m_model(model)
    {
    }
    int descriptor() const { return m_channel->descriptor(); }
    bool ended() const { return m_channel->ended(); }
    bool dies() const { return m_dies; }

    void serve()
    {
        m_channel->readAvailable();
        for (std::string line; !m_dies && m_channel->nextLine(line);) {
            if (const auto request = wire::readRequest(line))
                answer(*request);
            else
                m_channel->end();
        }
    }

private:
    void answer(const wire::Request& request)
    {
        const HostModel::Reply reply = replyTo(request);
        switch (reply.outcome) {
        case HostModel::Outcome::Die:
            m_dies = true;
            return;
        case HostModel::Outcome::Garbage:
            send("this is no answer");
            return;
        case HostModel::Outcome::Silent:
            return;
        case HostModel::Outcome::TooLong:
            flood();
            return;
        case HostModel::Outcome::Answer:
        case HostModel::Outcome::DieAfter:
            send(writeLine(wire::Answer{request.id, content(reply.value)}));
            m_dies = reply.outcome == HostModel::Outcome::DieAfter;
            return;
        default:
            send(writeLine(wire::Answer{request.id, wire::Failure{codeOf(reply.outcome), reply.text}}));
        }
    }

    HostModel::Reply replyTo(const wire::Request& request)
    {
        const HostModel::Object object =
            request.object == 0 ? HostModel::Object{} : m_objects.at(request.object);
        switch (request.operation) {
        case wire::Operation::Get:
            return m_model.get(object, request.name);
        case wire::Operation::Set:
            return m_model.set(object, request.name, request.value);
        case wire::Operation::Items:
            return m_model.items(object);
        default:
            return m_model.call(object, request.name, request.arguments);
        }
    }

    wire::Value give(const HostModel::Object& object)
    {
        m_objects[++m_last] = object;
        return wire::ObjectNumber{m_last};
    }
    wire::Content content(const HostModel::Value& value)
    {
        if (const auto* object = std::get_if<HostModel::Object>(&value))
            return give(*object);
        if (const auto* objects = std::get_if<std::vector<HostModel::Object>>(&value)) {
            wire::Values members;
            for (const HostModel::Object& object : *objects)
                members.push_back(give(object));
            return members;
        }
        return std::get<wire::Value>(value);
    }
    static wire::FailureCode codeOf(HostModel::Outcome outcome)
    {
        switch (outcome) {
        case HostModel::Outcome::UnknownName:
            return wire::FailureCode::UnknownName;
        case HostModel::Outcome::Busy:
            return wire::FailureCode::Busy;
        case HostModel::Outcome::Cancelled:
            return wire::FailureCode::Cancelled;
        default:
            return wire::FailureCode::Failed;
        }
    }

    void send(const std::string& line)
    {
        PlainEventPump pump;
        static_cast<void>(m_channel->send(line, pump));
    }
    /// More than a line may hold, with no end.
    void flood()
    {
        const std::string piece(65536, ' ');
        for (std::size_t sent = 0; sent <= LineChannel::kLongestLine + piece.size(); sent += piece.size()) {
            pollfd ready{m_channel->descriptor(), POLLOUT, 0};
            ::poll(&ready, 1, -1);
            if (::send(m_channel->descriptor(), piece.data(), piece.size(), MSG_NOSIGNAL) < 0)
                return;
        }
    }

    std::unique_ptr<LineChannel> m_channel;
    HostModel& m_model;
    std::map<std::int64_t, HostModel::Object> m_objects;
    std::int64_t m_last = 0;
    bool m_dies = false;
};

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2)
        return 2;
    HostModel model(argv[1]);
    std::this_thread::sleep_for(std::chrono::milliseconds(model.delayMs));
    const auto start = std::chrono::steady_clock::now();
    std::vector<std::unique_ptr<HostListener>> listeners;
    std::vector<std::unique_ptr<Client>> clients;
    for (;;) {
        const auto passed = std::chrono::steady_clock::now() - start;
        std::erase_if(model.listening, [&](const HostModel::Listening& door) {
            if (passed < std::chrono::milliseconds(door.afterMs))
                return false;
            if (auto listener = HostListener::open(door.name))
                listeners.push_back(std::move(*listener));
            return true;
        });
        std::vector<pollfd> watched;
        for (const auto& listener : listeners)
            watched.push_back({listener->descriptor(), POLLIN, 0});
        for (const auto& client : clients)
            watched.push_back({client->descriptor(), POLLIN, 0});
        ::poll(watched.data(), watched.size(), model.listening.empty() ? 100 : 5);
        // The test that wrote the script takes it away when it has ended.
        if (::access(argv[1], F_OK) != 0)
            return 0;
        for (const auto& listener : listeners) {
            while (auto channel = listener->accept())
                clients.push_back(std::make_unique<Client>(std::move(channel), model));
        }
        for (const auto& client : clients) {
            client->serve();
            if (client->dies()) {
                // Nobody may find a host that is about to end.
                listeners.clear();
                std::_Exit(0);
            }
        }
        std::erase_if(clients, [](const auto& client) { return client->ended(); });
    }
}
