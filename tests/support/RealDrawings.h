#pragma once

#include "platform/Json.h"

#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>

namespace zv {

/// A folder of real drawings beside the repository, with what they hold. Tests of it are skipped where it is
/// missing.
struct RealDrawings {
    std::filesystem::path folder = ZELVORA_REAL_DRAWINGS;
    Json expected; ///< By the drawing's path in the folder.

    RealDrawings() : expected(readJson(bytesOf("expected.json")).valueOr({})) {}

    bool missing() const { return expected.object() == nullptr; }
    std::string bytesOf(const std::string& name) const
    {
        std::ifstream file(folder / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }
};

} // namespace zv
