#include "window/TextBytes.h"

#include "platform/Text.h"

namespace zv {

QString toText(std::string_view bytes)
{
    const std::u16string text = wide(bytes);
    return QString(reinterpret_cast<const QChar*>(text.data()), qsizetype(text.size()));
}

std::string toBytes(const QString& text)
{
    return narrow({reinterpret_cast<const char16_t*>(text.utf16()), std::size_t(text.size())});
}

} // namespace zv
