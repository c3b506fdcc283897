#include "platform/Text.h"

#include "platform/LocaleCase.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstdlib>

namespace zv {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kSeparators = "\\/";
constexpr std::u16string_view kWideSeparators = u"\\/";
constexpr std::string_view kDrawingEnding = ".DWG";
constexpr int kMostDrawingEndings = 2;

bool isAscii(std::string_view bytes)
{
    return std::all_of(bytes.begin(), bytes.end(),
                       [](char c) { return static_cast<unsigned char>(c) < 0x80; });
}

char upperAscii(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

bool sameAscii(char a, char b)
{
    return upperAscii(a) == upperAscii(b);
}

// A few languages write the capital of "i" with a dot.
bool localeKeepsAscii()
{
    return upperAsLocale(u"i") == u"I";
}

} // namespace

std::string upper(std::string_view bytes)
{
    std::string result(bytes);
    if (isAscii(bytes) && localeKeepsAscii()) {
        std::transform(result.begin(), result.end(), result.begin(), upperAscii);
        return result;
    }
    const std::u16string text = wide(bytes);
    std::u16string capitals = upperAsLocale(text);
    // A capital that the code page does not have leaves the letter as it was.
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (capitals[i] != text[i] && wide(narrow(capitals.substr(i, 1))) != capitals.substr(i, 1))
            capitals[i] = text[i];
    }
    return narrow(capitals);
}

bool sameText(std::string_view a, std::string_view b)
{
    if (isAscii(a) && isAscii(b) && localeKeepsAscii())
        return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameAscii);
    return upperAsLocale(wide(a)) == upperAsLocale(wide(b));
}

std::string foldedName(std::string_view name)
{
    if (!isAscii(name))
        return narrow(upperAsAnywhere(wide(name)));
    std::string folded(name);
    std::transform(folded.begin(), folded.end(), folded.begin(), upperAscii);
    return folded;
}

bool sameName(std::string_view a, std::string_view b)
{
    if (isAscii(a) && isAscii(b))
        return std::equal(a.begin(), a.end(), b.begin(), b.end(), sameAscii);
    return upperAsAnywhere(wide(a)) == upperAsAnywhere(wide(b));
}

std::size_t findText(std::string_view text, std::string_view part)
{
    if (isAscii(text) && isAscii(part) && localeKeepsAscii()) {
        const auto found = std::search(text.begin(), text.end(), part.begin(), part.end(), sameAscii);
        return found == text.end() && !part.empty() ? std::string_view::npos
                                                    : static_cast<std::size_t>(found - text.begin());
    }
    const std::u16string wideText = wide(text);
    const std::size_t found = upperAsLocale(wideText).find(upperAsLocale(wide(part)));
    if (found == std::u16string::npos)
        return std::string_view::npos;
    return narrow(std::u16string_view(wideText).substr(0, found)).size();
}

std::string numberText(double value)
{
    if (value == 0 || !std::isfinite(value))
        return "0";
    char buffer[32];
    const auto end =
        std::to_chars(buffer, buffer + sizeof buffer, std::fabs(value), std::chars_format::scientific, 14);
    const std::string_view written(buffer, static_cast<std::size_t>(end.ptr - buffer));
    const std::size_t mark = written.find('e');
    const int exponent = std::atoi(std::string(written.substr(mark + 1)).c_str());

    std::string digits(1, written[0]);
    digits += written.substr(2, mark - 2);
    digits.erase(digits.find_last_not_of('0') + 1);

    std::string text = value < 0 ? "-" : "";
    const int count = static_cast<int>(digits.size());
    if (exponent < 0)
        return text + "0." + std::string(static_cast<std::size_t>(-exponent - 1), '0') + digits;
    if (exponent >= count - 1)
        return text + digits + std::string(static_cast<std::size_t>(exponent - count + 1), '0');
    const auto whole = static_cast<std::size_t>(exponent) + 1;
    return text + digits.substr(0, whole) + "." + digits.substr(whole);
}

bool textNumber(std::string_view text, double& value)
{
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return false;
    text = text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
    const bool negative = text.front() == '-';
    if (negative || text.front() == '+')
        text.remove_prefix(1);
    if (text.empty() || (text.front() != '.' && (text.front() < '0' || text.front() > '9')))
        return false;
    double parsed = 0;
    const auto end = std::from_chars(text.data(), text.data() + text.size(), parsed);
    if (end.ec != std::errc() || end.ptr != text.data() + text.size())
        return false;
    value = negative ? -parsed : parsed;
    return true;
}

double roundHalfEven(double value)
{
    return std::isfinite(value) ? value - std::remainder(value, 1.0) : value;
}

std::string_view fileNamePart(std::string_view path)
{
    const std::size_t separator = path.find_last_of(kSeparators);
    if (separator == std::string_view::npos)
        return path;
    if (isAscii(path))
        return path.substr(separator + 1);
    // In some code pages the second byte of a character can be that of a separator.
    const std::u16string text = wide(path);
    const std::size_t wideSeparator = text.find_last_of(kWideSeparators);
    if (wideSeparator == std::u16string::npos)
        return path;
    return path.substr(narrow(std::u16string_view(text).substr(0, wideSeparator + 1)).size());
}

std::string drawingName(std::string_view path)
{
    std::string name = upper(fileNamePart(path));
    std::size_t place = 0;
    for (int i = 0; i < kMostDrawingEndings; ++i) {
        place = name.find(kDrawingEnding, place);
        if (place == std::string::npos)
            break;
        name.erase(place, kDrawingEnding.size());
    }
    return upper(name);
}

} // namespace zv
