#pragma once

#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <unistd.h>

namespace zv {

/// The lock of a file as another program holds it.
class HeldLock {
public:
    explicit HeldLock(const std::string& path) : m_file(::open(path.c_str(), O_RDWR | O_CREAT, 0600))
    {
        m_held = ::flock(m_file, LOCK_EX | LOCK_NB) == 0;
    }
    HeldLock(const HeldLock&) = delete;
    HeldLock& operator=(const HeldLock&) = delete;
    ~HeldLock() { ::close(m_file); }
    /// False when somebody else has it.
    bool isHeld() const { return m_held; }

private:
    int m_file;
    bool m_held = false;
};

} // namespace zv
