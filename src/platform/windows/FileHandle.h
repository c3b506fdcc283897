#pragma once

#include "platform/windows/LastError.h"

#include <windows.h>

namespace zv {

/// An open file of the system, closed at the end of its life.
class FileHandle {
public:
    FileHandle(const std::string& path, DWORD access, DWORD share, DWORD disposition)
        : m_handle(::CreateFileW(widePath(path).c_str(), access, share, nullptr, disposition,
                                 FILE_ATTRIBUTE_NORMAL, nullptr))
    {
    }
    FileHandle(const FileHandle&) = delete;
    FileHandle& operator=(const FileHandle&) = delete;
    ~FileHandle()
    {
        if (*this)
            ::CloseHandle(m_handle);
    }

    HANDLE get() const { return m_handle; }
    explicit operator bool() const { return m_handle != INVALID_HANDLE_VALUE; }

private:
    HANDLE m_handle;
};

} // namespace zv
