#pragma once

#include <csignal>
#include <sys/resource.h>

namespace zv {

/// Files of this process cannot grow past a size while this lives, as on a full disk.
class FullDisk {
public:
    explicit FullDisk(rlim_t size)
    {
        m_handler = std::signal(SIGXFSZ, SIG_IGN);
        ::getrlimit(RLIMIT_FSIZE, &m_limit);
        const rlimit low{size, m_limit.rlim_max};
        ::setrlimit(RLIMIT_FSIZE, &low);
    }
    FullDisk(const FullDisk&) = delete;
    FullDisk& operator=(const FullDisk&) = delete;
    ~FullDisk()
    {
        ::setrlimit(RLIMIT_FSIZE, &m_limit);
        std::signal(SIGXFSZ, m_handler);
    }

private:
    rlimit m_limit{};
    void (*m_handler)(int) = SIG_DFL;
};

} // namespace zv
