// The program's calls on files are met here, in its own executable, before they reach the system's library.

#include "SlowShare.h"

#include <atomic>
#include <cstdarg>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

namespace {

std::atomic<std::chrono::milliseconds> g_each{};
std::atomic<int> g_count = 0;
const std::thread::id g_first = std::this_thread::get_id();

void wait()
{
    const auto each = g_each.load();
    if (each.count() == 0 || std::this_thread::get_id() == g_first)
        return;
    ++g_count;
    std::this_thread::sleep_for(each);
}

} // namespace

namespace zv {

void setRoundTrip(std::chrono::milliseconds each)
{
    g_count = 0;
    g_each = each;
}

int roundTrips()
{
    return g_count;
}

} // namespace zv

extern "C" {

int open(const char* path, int flags, ...)
{
    std::va_list more;
    va_start(more, flags);
    const int rights = va_arg(more, int);
    va_end(more);
    wait();
    return static_cast<int>(::syscall(SYS_openat, AT_FDCWD, path, flags, rights));
}

ssize_t pread(int file, void* into, std::size_t size, off_t place)
{
    wait();
    return ::syscall(SYS_pread64, file, into, size, place);
}

int fstat(int file, struct stat* status) noexcept
{
    wait();
    return static_cast<int>(::syscall(SYS_fstat, file, status));
}

int stat(const char* path, struct stat* status) noexcept
{
    wait();
    return static_cast<int>(::syscall(SYS_newfstatat, AT_FDCWD, path, status, 0));
}
}
