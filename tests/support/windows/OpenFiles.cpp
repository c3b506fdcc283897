#include "support/OpenFiles.h"

#include <windows.h>

namespace zv {

bool holdsOpen(const std::string& path)
{
    // Who shares nothing gets only what nobody has open.
    const HANDLE alone =
        ::CreateFileA(path.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (alone == INVALID_HANDLE_VALUE)
        return ::GetLastError() == ERROR_SHARING_VIOLATION;
    ::CloseHandle(alone);
    return false;
}

} // namespace zv
