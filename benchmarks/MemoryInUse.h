#pragma once

#include <fstream>
#include <unistd.h>

namespace zv {

/// Memory of the process, in MiB.
inline double memoryInUse()
{
    double pages = 0, resident = 0;
    std::ifstream("/proc/self/statm") >> pages >> resident;
    return resident * double(::sysconf(_SC_PAGESIZE)) / (1 << 20);
}

} // namespace zv
