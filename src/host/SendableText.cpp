#include "host/SendableText.h"

#include "platform/Text.h"

#include <algorithm>

namespace zv {

namespace {

bool isControl(char16_t unit)
{
    return unit < 0x20 || (unit >= 0x7F && unit < 0xA0);
}

bool refuses(const char* reason, const std::string& text, Messages& messages)
{
    if (canBeSent(text))
        return false;
    messages.show({reason + text, "Zelvora", MessageIcon::Warning});
    return true;
}

} // namespace

bool canBeSent(std::string_view text)
{
    // In wide form, for beyond ASCII the bytes of a control character depend on the code page.
    const std::u16string units = wide(text);
    return std::none_of(units.begin(), units.end(),
                        [](char16_t unit) { return unit == u'"' || isControl(unit); });
}

bool refusesDrawing(const std::string& path, Messages& messages)
{
    return refuses("The name of this drawing cannot be sent to AutoCAD: ", path, messages);
}

bool refusesText(const std::string& text, Messages& messages)
{
    return refuses("This text cannot be sent to AutoCAD: ", text, messages);
}

} // namespace zv
