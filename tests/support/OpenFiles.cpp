#include "support/OpenFiles.h"

#include <filesystem>

namespace zv {

bool holdsOpen(const std::string& path)
{
    for (const auto& open : std::filesystem::directory_iterator("/proc/self/fd")) {
        std::error_code gone;
        if (std::filesystem::read_symlink(open, gone) == path)
            return true;
    }
    return false;
}

} // namespace zv
