#pragma once

#include <QString>

#include <string>
#include <string_view>

namespace zv {

/// The one way between the bytes that files and plain code hold and the texts of controls; every byte comes
/// back as it was.
QString toText(std::string_view bytes);
std::string toBytes(const QString& text);

} // namespace zv
