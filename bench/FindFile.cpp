#include "FindFile.h"

#include "platform/Files.h"
#include "platform/Text.h"

namespace zv::bench {

namespace {

constexpr std::string_view kEnding = ".dwg";

bool hasEnding(std::string_view name)
{
    return name.size() >= kEnding.size() && sameText(name.substr(name.size() - kEnding.size()), kEnding);
}

} // namespace

std::string fileStem(const std::string& typed)
{
    std::string_view name = fileNamePart(typed);
    if (hasEnding(name))
        name.remove_suffix(kEnding.size());
    return std::string(name);
}

std::string findDrawingFile(const std::string& typed, const BenchDrawing& drawing)
{
    const std::string folder =
        drawing.path().substr(0, drawing.path().size() - fileNamePart(drawing.path()).size());
    for (const std::string& name : {typed, folder + typed}) {
        for (const std::string& candidate : {name, name + ".dwg", name + ".DWG"}) {
            if (hasEnding(candidate) && fileExists(candidate))
                return candidate;
        }
    }
    return {};
}

} // namespace zv::bench
