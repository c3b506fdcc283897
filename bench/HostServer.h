#pragma once

#include "HostObjects.h"

#include "platform/LocalHosts.h"

#include <QObject>
#include <QSocketNotifier>

#include <memory>
#include <string>
#include <vector>

namespace zv::bench {

/// Listens under the names that this program answers to, and serves every connection.
class HostServer final : public QObject {
    Q_OBJECT

public:
    explicit HostServer(HostProgram program) : m_program(program) {}
    ~HostServer() override;

    /// Errors: as HostListener::open.
    Result<void> listen(const std::string& progId);

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

} // namespace zv::bench
