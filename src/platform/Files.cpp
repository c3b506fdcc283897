#include "platform/Files.h"

namespace zv {

std::string joinPath(std::string_view folder, std::string_view name)
{
    std::string path(folder);
    path += kPathSeparator;
    path += name;
    return path;
}

} // namespace zv
