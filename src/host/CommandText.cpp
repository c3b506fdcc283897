#include "host/CommandText.h"

#include "platform/Text.h"

#include <algorithm>

namespace zv {

std::string withForwardSlashes(std::string_view path)
{
    std::string text(path);
    std::replace(text.begin(), text.end(), '\\', '/');
    return text;
}

std::string withExplodeMark(const std::string& path, bool explode)
{
    const std::size_t first = path.find('*');
    const std::size_t last = path.rfind('*');
    const std::string bare = last == std::string::npos ? path : path.substr(last + 1);
    return explode && first != 0 ? "*" + bare : bare;
}

std::string insertBlockText(const std::string& path, const std::string& scale)
{
    return "(command \"_.-insert\" \"" + path + "\"\"X\"\"" + scale + "\"\"Y\"\"" + scale + "\"\"Z\"\"" +
           scale + "\")\r";
}

std::string insertExplodedText(const std::string& path, const AutomationPoint& point,
                               const std::string& scale)
{
    return "_.-insert\r" + path + "\r" + numberText(point.x) + "," + numberText(point.y) + "," +
           numberText(point.z) + "\r" + scale + "\r";
}

std::string blockNameOf(std::string_view path)
{
    std::string name = upper(fileNamePart(path));
    constexpr std::string_view kEnding = ".DWG";
    // What the removal of one brings together is not searched again.
    std::size_t found = name.find(kEnding);
    for (int removed = 0; removed < 2 && found != std::string::npos; ++removed) {
        name.erase(found, kEnding.size());
        found = name.find(kEnding, found);
    }
    return upper(name);
}

std::string storedScale(const std::string& property)
{
    return property.substr(property.rfind('=') + 1);
}

} // namespace zv
