#include "support/FullDisk.h"

#include <csignal>
#include <sys/resource.h>

namespace zv {
namespace {

/// Sets the largest size of a file; the one before.
rlim_t limitFiles(rlim_t size)
{
    rlimit limit{};
    ::getrlimit(RLIMIT_FSIZE, &limit);
    const rlim_t before = limit.rlim_cur;
    limit.rlim_cur = size;
    ::setrlimit(RLIMIT_FSIZE, &limit);
    return before;
}

} // namespace

FullDisk::FullDisk(unsigned long size) : m_limit(limitFiles(size)), m_handler(std::signal(SIGXFSZ, SIG_IGN))
{
}

FullDisk::~FullDisk()
{
    limitFiles(m_limit);
    std::signal(SIGXFSZ, m_handler);
}

bool FullDisk::canBeMade()
{
    return true;
}

} // namespace zv
