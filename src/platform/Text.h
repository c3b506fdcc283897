#pragma once

#include <string>
#include <string_view>

namespace zv {

/// Narrow strings are the program's own text: UTF-8 on Windows, the locale's code page on Linux. A byte that
/// is no text there becomes the lone surrogate U+DC00 + byte, so that narrow(wide(bytes)) gives it back.
std::u16string wide(std::string_view bytes);
std::string narrow(std::u16string_view text);

/// UTF-8 in and out, for files and wires whose encoding is fixed. A damaged sequence becomes U+FFFD.
std::u16string fromUtf8(std::string_view bytes);
std::string toUtf8(std::u16string_view text);

/// The text in capitals as the locale writes them. A letter whose capital the code page lacks stays.
std::string upper(std::string_view bytes);

/// Whether two texts are the same without regard to case.
bool sameText(std::string_view a, std::string_view b);
/// The same for names of files, sections and keys: the user's language makes no difference.
bool sameName(std::string_view a, std::string_view b);
/// Where `part` first stands in `text` without regard to case, in bytes from 0; npos when it does not. An
/// empty `part` stands at 0.
std::size_t findText(std::string_view text, std::string_view part);

/// A number as text: shortest form of at most 15 digits, "." as decimal point, no exponent.
/// What is no number or endless gives "0".
std::string numberText(double value);
/// The value of a text that is a whole number or a decimal, with an exponent or without, blanks around it
/// allowed; false when it is none, and `value` then keeps what it held.
bool textNumber(std::string_view text, double& value);
/// The nearest whole number, ties to the even neighbour.
double roundHalfEven(double value);

/// The part of a path behind its last "\" or "/"; the whole path when it has none.
std::string_view fileNamePart(std::string_view path);
/// The name of a drawing, as its label in a new list line and its block in the host have it: the file name in
/// capitals, without ".DWG" (the first two of them).
std::string drawingName(std::string_view path);

} // namespace zv
