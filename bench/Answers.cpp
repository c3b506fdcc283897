#include "Command.h"

#include "platform/Text.h"

#include <cctype>
#include <cmath>
#include <vector>

namespace zv::bench {

namespace {

std::vector<std::string> splitAtCommas(const std::string& text)
{
    std::vector<std::string> parts(1);
    for (const char c : text) {
        if (c == ',')
            parts.emplace_back();
        else
            parts.back() += c;
    }
    return parts;
}

} // namespace

std::optional<dwg::Point3> pointOf(const Answer& answer, const dwg::Point3& last)
{
    if (answer.point)
        return answer.point;
    const bool isRelative = answer.text.starts_with("@");
    const std::vector<std::string> parts = splitAtCommas(answer.text.substr(isRelative ? 1 : 0));
    if (parts.size() < 2 || parts.size() > 3)
        return std::nullopt;
    double numbers[3] = {0, 0, 0};
    for (std::size_t index = 0; index < parts.size(); ++index) {
        if (!textNumber(parts[index], numbers[index]))
            return std::nullopt;
    }
    dwg::Point3 point{numbers[0], numbers[1], numbers[2]};
    if (isRelative)
        point = {last.x + point.x, last.y + point.y, last.z + point.z};
    if (!std::isfinite(point.x) || !std::isfinite(point.y) || !std::isfinite(point.z))
        return std::nullopt;
    return point;
}

std::optional<double> numberOf(const Answer& answer)
{
    double number = 0;
    if (answer.point || !textNumber(answer.text, number))
        return std::nullopt;
    return number;
}

bool isOption(const Answer& answer, const char* option)
{
    const std::string full = upper(option);
    std::size_t shortest = 0;
    for (const char c : std::string_view(option))
        shortest += std::isupper(static_cast<unsigned char>(c)) != 0 ? 1 : 0;
    std::string typed = upper(answer.text);
    typed.erase(0, std::min(typed.find_first_not_of('_'), typed.size()));
    return !answer.point && typed.size() >= shortest && full.starts_with(typed);
}

} // namespace zv::bench
