#include "host/CommandText.h"

#include "platform/Text.h"

#include <algorithm>

namespace zv {

std::string withForwardSlashes(std::string_view path)
{
    // In some code pages the second byte of a character is that of a backslash, so characters are looked at.
    std::u16string text = wide(path);
    std::replace(text.begin(), text.end(), u'\\', u'/');
    return narrow(text);
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
