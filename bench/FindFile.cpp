#include "FindFile.h"

#include "BenchDrawing.h"

#include "platform/Files.h"
#include "platform/FolderRoots.h"
#include "platform/Folders.h"
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

std::string folderPart(const std::string& path)
{
    return path.substr(0, path.size() - fileNamePart(path).size());
}

std::string findDrawingFile(const std::string& typed, const std::string& drawing)
{
    for (const std::string& name : {typed, folderPart(drawing) + typed}) {
        for (const std::string& candidate : {name, name + ".dwg", name + ".DWG"}) {
            if (hasEnding(candidate) && fileExists(candidate))
                return candidate;
        }
    }
    return {};
}

std::string besideDrawing(const std::string& typed, const std::string& drawing)
{
    const bool isFull = rootLength(typed) > 0;
    return fullPath(isFull ? typed : folderPart(drawing) + typed);
}

std::string findXrefFile(const std::string& path, const std::string& drawing)
{
    const std::string found = findDrawingFile(path, drawing);
    return found.empty() ? findDrawingFile(std::string(fileNamePart(path)), drawing) : found;
}

} // namespace zv::bench
