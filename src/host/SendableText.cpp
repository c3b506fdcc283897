#include "host/SendableText.h"

#include "platform/Text.h"
#include "platform/Utf8.h"

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
    // What comes from a machine with another code page may be text all the same.
    const bool isUtf8 = toUtf8(fromUtf8(text)) == text;
    return std::none_of(units.begin(), units.end(), [isUtf8](char16_t unit) {
        return unit == u'"' || isControl(unit) || (isEscapedByte(unit) && !isUtf8);
    });
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
