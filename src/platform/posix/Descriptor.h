#pragma once

#include "platform/Result.h"

#include <chrono>
#include <cstdint>
#include <string>
#include <string_view>
#include <sys/stat.h>
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
/// The same for what is to be written: a folder that is not there is a failure too.
Error writingError(std::string_view path);

/// Whether a file has no right to write for anybody.
bool isReadOnly(const struct stat& status);
/// Opens a regular file for reading. Errors: NotFound, Denied, Failed (anything but a regular file).
Result<Descriptor> openForReading(const std::string& path);
/// Opens a file with `flags` (O_WRONLY or O_RDWR, O_APPEND, O_TRUNC), creating it if it is missing. A file
/// without any right to write is denied to everybody, the administrator too. Errors: Denied, Failed (anything
/// but a regular file).
Result<Descriptor> openForWriting(const std::string& path, int flags);
/// Opens what is there for its lock alone, to write if that is allowed: a network gives no lock to others.
/// None, with the system's reason, where it cannot be opened. `flags` are further ones, O_NOFOLLOW.
Descriptor openToLock(const std::string& path, int flags = 0);
/// A new file without a name in the folder of `path`: wherever the program is ended, it leaves nothing
/// behind. None where the file system has no such files.
Descriptor openUnnamed(const std::string& path, mode_t rights);

/// All bytes from the present place on. Errors: TooLarge, there are more than `most`; Failed.
Result<std::string> readAll(const Descriptor& file, const std::string& path, std::uint64_t most);
/// Writes all bytes. Errors: Failed.
Result<void> writeAll(const Descriptor& file, const std::string& path, std::string_view bytes);
/// The same, and flushes them to disk.
Result<void> writeFlushed(const Descriptor& file, const std::string& path, std::string_view bytes);

/// Waits, at most `patience`, until no other open file has the file's lock, and takes it until the
/// descriptor is closed. A file system without locks gives it at once. Errors: Busy, another one keeps it;
/// Failed.
Result<void> lockFile(const Descriptor& file, const std::string& path, std::chrono::milliseconds patience);
/// The time until a lock that another one has is tried again.
void pauseForLock();
/// Whether the open file is the one that has the name now. Errors: Denied, Failed.
Result<bool> standsAt(const Descriptor& file, const std::string& path);

} // namespace zv
