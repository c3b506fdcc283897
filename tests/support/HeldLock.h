#pragma once

#include <string>

namespace zv {

/// The lock of a file as another program holds it.
class HeldLock {
public:
    explicit HeldLock(const std::string& path);
    HeldLock(const HeldLock&) = delete;
    HeldLock& operator=(const HeldLock&) = delete;
    ~HeldLock();
    /// False when somebody else has it.
    bool isHeld() const { return m_held; }

private:
    /// The system's own name for the open file.
    long long m_file;
    bool m_held = false;
};

} // namespace zv
