#pragma once

#include <filesystem>
#include <string>

namespace zv {

/// A path as it is typed into an expression, where a backslash is a mark.
inline std::string typedPath(const std::string& path)
{
    return std::filesystem::path(path).generic_string();
}

} // namespace zv
