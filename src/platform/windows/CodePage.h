#pragma once

#include <string>
#include <string_view>

namespace zv {

/// The system's 8-bit code page, in which programs write that know no other encoding. It is the one of the
/// language that the computer has for such programs, and not of this process, whose manifest may say
/// something else. Where the system has none, or UTF-8 in its place, it is the one of the user's language.
unsigned systemCodePage();

/// Text in a code page as wide text, and back. A byte that is no text there is escaped as wide() does it; a
/// character that the page does not have becomes "?".
std::u16string fromCodePage(std::string_view bytes, unsigned page);
std::string toCodePage(std::u16string_view text, unsigned page);

/// As textFromFile() and textForFile(), with this code page for the lines that are not UTF-8.
std::string textFromFile(std::string bytes, unsigned page);
std::string textForFile(std::string line, unsigned page);

} // namespace zv
