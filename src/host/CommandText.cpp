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

std::string storedScale(const std::string& property)
{
    return property.substr(property.rfind('=') + 1);
}

} // namespace zv
