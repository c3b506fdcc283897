#pragma once

#include "platform/Messages.h"

#include <string>
#include <string_view>

namespace zv {

/// Whether a text stays one text when it is typed at the host's command line. A double quote would end it
/// there and have the rest taken as commands, and a control character is a key: neither can stand in the name
/// of a file on Windows. Bytes that are no text have no form in which they could be typed.
bool canBeSent(std::string_view text);

/// Whether the drawing at `path` has to be kept from the host, which the user is told then. To be asked
/// before the host is touched; nothing is logged of what is refused.
bool refusesDrawing(const std::string& path, Messages& messages);

/// The same for the text of a field that would be typed: a scale, a point, an angle, a folder.
bool refusesText(const std::string& text, Messages& messages);

} // namespace zv
