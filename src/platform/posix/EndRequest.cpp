#include "platform/EndRequest.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <unistd.h>

namespace zv {

namespace {

constexpr std::array kRequests = {SIGTERM, SIGINT, SIGHUP};

int g_holds = 0;
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

EndRequestHold::EndRequestHold()
{
    if (g_holds++ > 0)
        return;
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
    if (--g_holds > 0)
        return;
    for (std::size_t i = 0; i < kRequests.size(); ++i)
        ::sigaction(kRequests[i], &g_before[i], nullptr);
    for (int& end : g_pipe) {
        if (end >= 0)
            ::close(end);
        end = -1;
    }
    if (g_request != 0)
        ::raise(g_request);
}

bool endIsRequested()
{
    return g_holds > 0 && g_request != 0;
}

int endRequestDescriptor()
{
    return g_pipe[0];
}

} // namespace zv
