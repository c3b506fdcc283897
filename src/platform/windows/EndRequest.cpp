#include "platform/EndRequest.h"

namespace zv {

EndRequestHold::EndRequestHold() = default;

EndRequestHold::~EndRequestHold() = default;

bool endIsRequested()
{
    return false;
}

int endRequestDescriptor()
{
    return -1;
}

} // namespace zv
