#include "platform/HostEvents.h"

#include <windows.h>

namespace zv {

void PlainEventPump::wait(int, int timeoutMs)
{
    // Messages go on, as a thread that uses COM owes to the system.
    ::MsgWaitForMultipleObjects(0, nullptr, FALSE, static_cast<DWORD>(timeoutMs), QS_ALLINPUT);
    for (MSG message; ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE);)
        ::DispatchMessageW(&message);
}

int openEndRequests()
{
    return -1;
}

} // namespace zv
