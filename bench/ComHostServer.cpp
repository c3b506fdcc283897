#include "HostServer.h"

#include "platform/windows/ComServer.h"

#include <QAbstractEventDispatcher>
#include <QEventLoop>

namespace zv::bench {

/// All programs share one set of objects, each of which lives as long as one of them holds it.
class HostServer::Doors {
public:
    explicit Doors(HostProgram program)
        : m_program(program), m_objects(m_program),
          m_server([this](const wire::Request& request,
                          const ComServer::Respond& respond) { m_objects.handle(request, respond); },
                   [](const std::function<bool()>& isDone) { return turnUntil(isDone); })
    {
    }
    Result<void> open(const std::string& progId) { return m_server.open(progId); }

private:
    /// False when the program ends first.
    static bool turnUntil(const std::function<bool()>& isDone)
    {
        QEventLoop loop;
        QObject::connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, &loop,
                         [&] {
                             if (isDone())
                                 loop.quit();
                         });
        // It ends with the program's own loop as well.
        loop.exec();
        return isDone();
    }

    HostProgram m_program;
    HostObjects m_objects;
    ComServer m_server;
};

HostServer::HostServer(HostProgram program) : m_doors(std::make_unique<Doors>(program)) {}

HostServer::~HostServer() = default;

Result<void> HostServer::listen(const std::string& progId)
{
    return m_doors->open(progId);
}

std::vector<std::string> HostServer::names()
{
    return {"ZelvoraBench.Application", "AutoCAD.Application", "AutoCAD.Application.20"};
}

} // namespace zv::bench
