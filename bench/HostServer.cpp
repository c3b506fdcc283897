#include "HostServer.h"

#include <algorithm>

namespace zv::bench {

/// One connection.
class HostServer::Client : public std::enable_shared_from_this<Client> {
public:
    Client(std::unique_ptr<LineChannel> channel, HostServer& server)
        : m_channel(std::move(channel)), m_server(server),
          m_objects(std::make_unique<HostObjects>(server.m_program)),
          m_notifier(m_channel->descriptor(), QSocketNotifier::Read),
          m_room(m_channel->descriptor(), QSocketNotifier::Write)
    {
        m_room.setEnabled(false);
    }
    void start()
    {
        QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_server, [self = weak_from_this()] {
            if (const auto client = self.lock())
                client->readyRead();
        });
        QObject::connect(&m_room, &QSocketNotifier::activated, &m_server, [self = weak_from_this()] {
            if (const auto client = self.lock())
                client->sendWaiting();
        });
    }

private:
    void readyRead()
    {
        m_channel->readAvailable();
        std::string line;
        while (m_channel->nextLine(line)) {
            const std::optional<wire::Request> request = wire::readRequest(line);
            if (!request) {
                m_channel->end();
                break;
            }
            m_objects->handle(*request, [self = weak_from_this()](const wire::Answer& answer) {
                if (const auto client = self.lock())
                    client->respond(answer);
            });
        }
        if (m_channel->ended()) {
            m_notifier.setEnabled(false);
            m_room.setEnabled(false);
            m_server.remove(this);
        }
    }
    /// A client that does not read must not hold the program up: its answers wait until there is room. The
    /// channel of one that never reads ends, which is then seen as something to read.
    void respond(const wire::Answer& answer)
    {
        m_channel->queue(writeLine(answer));
        m_room.setEnabled(m_channel->hasWaiting());
    }
    void sendWaiting()
    {
        m_channel->sendWaiting();
        m_room.setEnabled(m_channel->hasWaiting());
    }

    std::unique_ptr<LineChannel> m_channel;
    HostServer& m_server;
    std::unique_ptr<HostObjects> m_objects;
    QSocketNotifier m_notifier; ///< Of what comes in.
    QSocketNotifier m_room;     ///< For what waits to go out.
};

HostServer::~HostServer() = default;

Result<void> HostServer::listen(const std::string& progId)
{
    Result<std::unique_ptr<HostListener>> listener = HostListener::open(progId);
    if (!listener)
        return listener.error();
    Door door;
    door.listener = std::move(*listener);
    door.notifier = std::make_unique<QSocketNotifier>(door.listener->descriptor(), QSocketNotifier::Read);
    QObject::connect(door.notifier.get(), &QSocketNotifier::activated, this,
                     [this, &opened = *door.listener] { accept(opened); });
    m_doors.push_back(std::move(door));
    return {};
}

void HostServer::accept(HostListener& listener)
{
    while (std::unique_ptr<LineChannel> channel = listener.accept()) {
        const auto client = std::make_shared<Client>(std::move(channel), *this);
        m_clients.push_back(client);
        client->start();
    }
}

void HostServer::remove(Client* client)
{
    const auto found = std::find_if(m_clients.begin(), m_clients.end(),
                                    [client](const auto& held) { return held.get() == client; });
    if (found == m_clients.end())
        return;
    const std::shared_ptr<Client> leaving = std::move(*found);
    m_clients.erase(found);
}

} // namespace zv::bench
