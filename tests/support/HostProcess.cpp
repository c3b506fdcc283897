#include "support/HostProcess.h"

#include "platform/Files.h"
#include "platform/LocalHosts.h"
#include "support/TemporaryFolder.h"
#include "support/TestCarrier.h"

#include <cstdlib>
#include <signal.h>
#include <spawn.h>
#include <sys/wait.h>

extern char** environ;

namespace zv::test {

struct HostPlace::State {
    TemporaryFolder folder;
    pid_t host = -1;
    int scripts = 0;

    std::string writeScript(const std::string& script)
    {
        const std::string path = folder.file("script" + std::to_string(++scripts));
        static_cast<void>(writeFile(path, "transcript " + folder.file("transcript") + "\n" + script));
        return path;
    }
};

HostPlace::HostPlace() : m_state(std::make_unique<State>())
{
    ::setenv("XDG_RUNTIME_DIR", m_state->folder.file("run").c_str(), 1);
    ::setenv("XDG_DATA_HOME", m_state->folder.file("data").c_str(), 1);
    std::filesystem::create_directories(m_state->folder.file("run"));
    std::filesystem::create_directories(m_state->folder.file("data/zelvora/hosts"));
}

HostPlace::~HostPlace()
{
    end();
}

void HostPlace::run(const std::string& script)
{
    const std::string path = m_state->writeScript("listen AutoCAD.Application\n" + script);
    const char* const arguments[] = {ZELVORA_SCRIPTED_HOST, path.c_str(), nullptr};
    ::posix_spawn(&m_state->host, ZELVORA_SCRIPTED_HOST, nullptr, nullptr,
                  const_cast<char* const*>(arguments), environ);
    PlainEventPump pump;
    while (!connectToHost("AutoCAD.Application", pump))
        pump.wait(-1, 5);
}

void HostPlace::end()
{
    if (m_state->host < 0)
        return;
    ::kill(m_state->host, SIGKILL);
    ::waitpid(m_state->host, nullptr, 0);
    m_state->host = -1;
}

void HostPlace::install(const std::string& progId, const std::string& script)
{
    const std::string path = m_state->writeScript(script);
    static_cast<void>(writeFile(m_state->folder.file("data/zelvora/hosts/" + progId + ".start"),
                                "\"" ZELVORA_SCRIPTED_HOST "\" \"" + path + "\"\n"));
}

std::string HostPlace::transcript() const
{
    return readFile(m_state->folder.file("transcript")).valueOr("");
}

std::unique_ptr<EventPump> testPump()
{
    return std::make_unique<PlainEventPump>();
}

std::unique_ptr<Automation> testCarrier(EventPump& pump, CarrierPatience patience)
{
    return socketAutomation(pump, std::move(patience));
}

} // namespace zv::test
