#include "host/XrefText.h"

#include "platform/Text.h"

namespace zv {

namespace {

constexpr std::array<NamedScale, 32> kScales = {{
    {"Full", "1"},        {"6\"=1'", "2"},      {"3\"=1'", "4"},      {"1-1/2\"=1'", "8"},
    {"1\"=1'", "12"},     {"3/4\"=1'", "16"},   {"1/2\"=1'", "24"},   {"3/8\"=1'", "32"},
    {"1/4\"=1'", "48"},   {"3/16\"=1'", "64"},  {"1/8\"=1'", "96"},   {"3/32\"=1'", "128"},
    {"1/16\"=1'", "192"}, {"1/32\"=1'", "384"}, {"1/64\"=1'", "768"}, {"1/128\"=1'", "1536"},
    {"100:1", "0.01"},    {"10:1", "0.1"},      {"8:1", "0.125"},     {"4:1", "0.25"},
    {"2:1", "0.5"},       {"1:100", "100"},     {"1:50", "50"},       {"1:40", "40"},
    {"1:30", "30"},       {"1:20", "20"},       {"1:16", "16"},       {"1:10", "10"},
    {"1:8", "8"},         {"1:4", "4"},         {"1:2", "2"},         {"1:1", "1"},
}};

/// What has the same factor as an entry before it is not looked for.
constexpr std::array<int, 27> kProbes = {0,  1,  2,  3,  4,  5,  6,  7,  8,  9,  10, 11, 12, 13,
                                         14, 15, 16, 17, 18, 19, 20, 21, 22, 23, 24, 25, 27};

std::string quoted(const std::string& text)
{
    return "\"" + text + "\"";
}

std::string line(const std::string& text)
{
    return text + "\r";
}

/// The point is left to the user: the command form, in which he answers the prompts that stand open.
std::string openText(const XrefCommand& command)
{
    const auto& [x, y, z] = command.scale;
    std::string text =
        "(command \"._xref\" " + quoted(command.overlay ? "Overlay" : "Attach") + quoted(command.path);
    if (command.askScale && !command.askRotation)
        text += "pause\"X\"pause pause" + quoted(command.rotation);
    else if (!command.askScale)
        text += quoted("X") + quoted(x) + quoted("Y") + quoted(y) + quoted("Z") + quoted(z);
    if (!command.askScale && !command.askRotation)
        text += quoted("R") + quoted(command.rotation);
    return text + ")\r";
}

/// Every answer is known, save perhaps the last.
std::string answeredText(const XrefCommand& command)
{
    const AutomationPoint& point = command.point;
    std::string text = line("._xref") + line(command.overlay ? "Overlay" : "Attach") + line(command.path) +
                       line(numberText(point.x) + "," + numberText(point.y) + "," + numberText(point.z)) +
                       line("XYZ");
    for (const std::string& factor : command.scale)
        text += line(factor);
    return command.askRotation ? text : text + line(command.rotation);
}

} // namespace

std::string xrefText(const XrefCommand& command)
{
    return command.askPoint ? openText(command) : answeredText(command);
}

std::span<const NamedScale> namedScales()
{
    return kScales;
}

std::optional<int> namedScaleOf(const std::string& stored)
{
    std::optional<int> found;
    for (const int index : kProbes) {
        if (!stored.empty() &&
            findText(stored, kScales[static_cast<std::size_t>(index)].factor) != std::string::npos)
            found = index;
    }
    return found;
}

} // namespace zv
