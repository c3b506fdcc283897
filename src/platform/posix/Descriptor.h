#pragma once

#include "platform/Result.h"

#include <string>
#include <string_view>
#include <utility>

namespace zv {

/// An open file of the system, closed at the end of its life.
class Descriptor {
public:
    Descriptor() = default;
    explicit Descriptor(int number) : m_number(number) {}
    Descriptor(Descriptor&& other) noexcept : m_number(std::exchange(other.m_number, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept
    {
        std::swap(m_number, other.m_number);
        return *this;
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    ~Descriptor();

    int number() const { return m_number; }
    explicit operator bool() const { return m_number >= 0; }

private:
    int m_number = -1;
};

/// The system's last failure as an error that names the path.
Error systemError(std::string_view path);

/// Opens a regular file for reading. Errors: NotFound, Denied, Failed (anything but a regular file).
Result<Descriptor> openForReading(const std::string& path);
/// Opens a file with `flags` (O_APPEND, O_TRUNC), creating it if it is missing. A file without any right to
/// write is denied to everybody, the administrator too. Errors: Denied, Failed.
Result<Descriptor> openForWriting(const std::string& path, int flags);

/// All bytes from the present place on. Errors: Failed.
Result<std::string> readAll(const Descriptor& file, const std::string& path);
/// Writes all bytes. Errors: Failed.
Result<void> writeAll(const Descriptor& file, const std::string& path, std::string_view bytes);

} // namespace zv
