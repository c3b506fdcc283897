#include "support/HeldLock.h"

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

namespace zv {

HeldLock::HeldLock(const std::string& path) : m_file(::open(path.c_str(), O_RDWR | O_CREAT, 0600))
{
    m_held = ::flock(static_cast<int>(m_file), LOCK_EX | LOCK_NB) == 0;
}

HeldLock::~HeldLock()
{
    ::close(static_cast<int>(m_file));
}

} // namespace zv
