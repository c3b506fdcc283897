#include "platform/FolderWalk.h"

#include "platform/Text.h"

#include <algorithm>
#include <filesystem>

namespace zv {

Result<std::vector<std::string>> filesBelow(const std::string& folder, std::string_view ending)
{
    namespace fs = std::filesystem;
    std::error_code problem;
    fs::recursive_directory_iterator at(folder, fs::directory_options::skip_permission_denied, problem), end;
    if (problem)
        return Error{ErrorCode::NotFound, "no such folder"};
    std::vector<std::string> files;
    while (at != end && !problem) {
        if (at->is_regular_file(problem) && sameText(at->path().extension().string(), ending))
            files.push_back(at->path().string());
        at.increment(problem);
    }
    std::sort(files.begin(), files.end());
    return files;
}

} // namespace zv
