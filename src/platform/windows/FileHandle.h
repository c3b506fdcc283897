#pragma once

#include "platform/windows/Calls.h"

#include <utility>

namespace zv {

/// Whatever another program does with the file meanwhile.
inline constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// An open file of the system, closed at the end of its life.
class FileHandle {
public:
    FileHandle(const std::string& path, DWORD access, DWORD share, DWORD disposition,
               DWORD flags = FILE_ATTRIBUTE_NORMAL)
        : m_handle(calls::open(path, access, share, disposition, flags))
    {
    }
    FileHandle(FileHandle&& other) noexcept : m_handle(std::exchange(other.m_handle, INVALID_HANDLE_VALUE)) {}
    FileHandle& operator=(FileHandle&&) = delete;
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
