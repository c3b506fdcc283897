#include "support/HeldLock.h"

#include <windows.h>

namespace zv {

// A working copy is held by the one that has it open for writing.
HeldLock::HeldLock(const std::string& path)
    : m_file(reinterpret_cast<long long>(::CreateFileA(path.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr,
                                                       OPEN_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr)))
{
    m_held = reinterpret_cast<HANDLE>(m_file) != INVALID_HANDLE_VALUE;
}

HeldLock::~HeldLock()
{
    if (m_held)
        ::CloseHandle(reinterpret_cast<HANDLE>(m_file));
}

} // namespace zv
