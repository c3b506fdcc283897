#include "platform/EndRequest.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace zv {

namespace {

constexpr std::array kRequests = {SIGTERM, SIGINT, SIGHUP};

bool g_held = false;
std::array<int, 2> g_pipe = {-1, -1};
volatile std::sig_atomic_t g_request = 0;
std::array<struct sigaction, kRequests.size()> g_before;

void note(int request)
{
    const int error = errno;
    g_request = request;
    const char byte = 0;
    static_cast<void>(!::write(g_pipe[1], &byte, 1));
    errno = error;
}

} // namespace

EndRequestHold::EndRequestHold() : m_isOuter(!g_held)
{
    if (!m_isOuter)
        return;
    g_held = true;
    g_request = 0;
    if (::pipe2(g_pipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        g_pipe = {-1, -1};
    struct sigaction noting {};
    noting.sa_handler = note;
    noting.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < kRequests.size(); ++i) {
        ::sigaction(kRequests[i], nullptr, &g_before[i]);
        // A request that this program was started to ignore stays ignored.
        if (g_before[i].sa_handler != SIG_IGN)
            ::sigaction(kRequests[i], &noting, nullptr);
    }
}

EndRequestHold::~EndRequestHold()
{
    if (!m_isOuter)
        return;
    for (std::size_t i = 0; i < kRequests.size(); ++i)
        ::sigaction(kRequests[i], &g_before[i], nullptr);
    for (int& end : g_pipe) {
        if (end >= 0)
            ::close(end);
        end = -1;
    }
    g_held = false;
    if (g_request != 0)
        ::raise(g_request);
}

int endRequestDescriptor()
{
    return g_pipe[0];
}

} // namespace zv
