#include "HostServer.h"

#include "platform/LocalHosts.h"

#include <QObject>
#include <QSocketNotifier>
#include <QTimer>

#include <algorithm>
#include <vector>

namespace zv::bench {

/// The sockets on which this program is found, and who came in by them.
class HostServer::Doors final : public QObject {
public:
    explicit Doors(HostProgram program) : m_program(program) {}
    Result<void> open(const std::string& progId);

private:
    class Client;
    void accept(HostListener& listener);
    void remove(Client* client);

    struct Door {
        std::unique_ptr<HostListener> listener;
        std::unique_ptr<QSocketNotifier> notifier;
    };
    HostProgram m_program;
    std::vector<Door> m_doors;
    std::vector<std::shared_ptr<Client>> m_clients;
};

/// One connection.
class HostServer::Doors::Client : public std::enable_shared_from_this<Client> {
public:
    static constexpr std::size_t kMostAhead = std::size_t{1024} * 1024;
    static constexpr int kMostAtOnce = 100;

    Client(std::unique_ptr<LineChannel> channel, Doors& doors)
        : m_channel(std::move(channel)), m_doors(doors),
          m_objects(std::make_unique<HostObjects>(doors.m_program)),
          m_notifier(m_channel->descriptor(), QSocketNotifier::Read),
          m_room(m_channel->descriptor(), QSocketNotifier::Write)
    {
        m_room.setEnabled(false);
    }
    void start()
    {
        QObject::connect(&m_notifier, &QSocketNotifier::activated, &m_doors, [self = weak_from_this()] {
            if (const auto client = self.lock())
                client->readyRead();
        });
        QObject::connect(&m_room, &QSocketNotifier::activated, &m_doors, [self = weak_from_this()] {
            if (const auto client = self.lock())
                client->sendWaiting();
        });
    }

private:
    void readyRead()
    {
        m_channel->readAvailable();
        // One that asks on and on and waits for no answer is no client.
        if (m_answering && m_channel->unread() > kMostAhead)
            m_channel->end();
        takeRequests();
    }
    /// One after the other: what is asked while an answer still waits for the user has its turn after that.
    void takeRequests()
    {
        std::string line;
        int taken = 0;
        while (taken < kMostAtOnce && !m_answering && m_channel->nextLine(line)) {
            const std::optional<wire::Request> request = wire::readRequest(line);
            if (!request) {
                m_channel->end();
                break;
            }
            ++taken;
            m_answering = m_handling = true;
            m_objects->handle(*request, [self = weak_from_this()](const wire::Answer& answer) {
                if (const auto client = self.lock())
                    client->respond(answer);
            });
            m_handling = false;
        }
        const bool hasMore = taken == kMostAtOnce && !m_answering;
        if (hasMore)
            takeMore();
        const bool ended = m_channel->ended() && !hasMore;
        m_notifier.setEnabled(!ended && !hasMore);
        if (!ended)
            return;
        m_room.setEnabled(false);
        m_doors.remove(this);
    }
    /// When the window has had its turn.
    void takeMore()
    {
        QTimer::singleShot(0, &m_doors, [self = weak_from_this()] {
            if (const auto client = self.lock())
                client->takeRequests();
        });
    }
    /// A client that does not read must not hold the program up: its answers wait until there is room. The
    /// channel of one that never reads ends, which is then seen as something to read.
    void respond(const wire::Answer& answer)
    {
        m_channel->queue(writeLine(answer));
        m_room.setEnabled(m_channel->hasWaiting());
        m_answering = false;
        // Not from within the command that has given the answer.
        if (!m_handling)
            takeMore();
    }
    void sendWaiting()
    {
        m_channel->sendWaiting();
        m_room.setEnabled(m_channel->hasWaiting());
    }

    std::unique_ptr<LineChannel> m_channel;
    Doors& m_doors;
    std::unique_ptr<HostObjects> m_objects;
    QSocketNotifier m_notifier; ///< Of what comes in.
    QSocketNotifier m_room;     ///< For what waits to go out.
    bool m_answering = false;   ///< An answer is owed,
    bool m_handling = false;    ///< and just now worked out.
};

Result<void> HostServer::Doors::open(const std::string& progId)
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

void HostServer::Doors::accept(HostListener& listener)
{
    while (std::unique_ptr<LineChannel> channel = listener.accept()) {
        const auto client = std::make_shared<Client>(std::move(channel), *this);
        m_clients.push_back(client);
        client->start();
    }
}

void HostServer::Doors::remove(Client* client)
{
    const auto found = std::find_if(m_clients.begin(), m_clients.end(),
                                    [client](const auto& held) { return held.get() == client; });
    if (found == m_clients.end())
        return;
    const std::shared_ptr<Client> leaving = std::move(*found);
    m_clients.erase(found);
}

HostServer::HostServer(HostProgram program) : m_doors(std::make_unique<Doors>(program)) {}

HostServer::~HostServer() = default;

Result<void> HostServer::listen(const std::string& progId)
{
    return m_doors->open(progId);
}

std::vector<std::string> HostServer::names()
{
    return {"AutoCAD.Application", "AutoCAD.Application.20"};
}

} // namespace zv::bench
