#include "platform/Files.h"

namespace zv {

std::string joinPath(std::string_view folder, std::string_view name)
{
    std::string path(folder);
    path += kPathSeparator;
    path += name;
    return path;
}

std::string namingFile(const std::string& path, const Error& error)
{
    return error.text.starts_with(path) ? error.text : path + ": " + error.text;
}

} // namespace zv
