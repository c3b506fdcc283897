#include "platform/EndRequest.h"

namespace zv {

EndRequestHold::EndRequestHold() : m_isOuter(false) {}

EndRequestHold::~EndRequestHold() = default;

int endRequestDescriptor()
{
    return -1;
}

} // namespace zv
