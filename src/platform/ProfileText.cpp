#include "platform/ProfileText.h"

#include "platform/FileText.h"
#include "platform/LocaleCase.h"
#include "platform/Text.h"

#include <unordered_map>

namespace zv {

namespace {

constexpr std::string_view kLineEnd = "\r\n";
/// Some editors set these bytes before a text in UTF-8.
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

bool isBlank(char c)
{
    return (c >= '\t' && c <= '\r') || c == ' ' || c == '\x1A';
}

std::string_view trimmed(std::string_view text)
{
    while (!text.empty() && isBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && isBlank(text.back()))
        text.remove_suffix(1);
    return text;
}

std::string_view withoutQuotes(std::string_view text)
{
    if (text.size() >= 2 && (text.front() == '"' || text.front() == '\'') && text.back() == text.front())
        return text.substr(1, text.size() - 2);
    return text;
}

std::string valueText(std::string_view stored)
{
    return textFromFile(std::string(withoutQuotes(stored)));
}

} // namespace

ProfileText::Line ProfileText::parse(std::string_view line, std::size_t begin, std::size_t end)
{
    Line result;
    result.begin = begin;
    result.end = end;
    if (begin == 0 && line.starts_with(kUtf8Mark))
        line.remove_prefix(kUtf8Mark.size());
    line = trimmed(line);
    if (line.empty() || line.front() == ';')
        return result;
    const std::size_t bracket = line.rfind(']');
    if (line.front() == '[' && bracket != std::string_view::npos) {
        result.kind = Line::Kind::Section;
        result.name = trimmed(line.substr(1, bracket - 1));
        return result;
    }
    result.kind = Line::Kind::Key;
    const std::size_t equals = line.find('=');
    result.name = trimmed(line.substr(0, equals));
    if (equals != std::string_view::npos)
        result.value = trimmed(line.substr(equals + 1, line.find('\0', equals + 1) - equals - 1));
    return result;
}

const std::vector<ProfileText::Line>& ProfileText::lines() const
{
    if (m_lines)
        return *m_lines;
    m_lines.emplace();
    const std::string_view text = m_text;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t feed = text.find('\n', begin);
        const std::size_t end = feed == std::string_view::npos ? text.size() : feed + 1;
        const std::string_view line = text.substr(begin, end - begin);
        if (!trimmed(line).empty())
            m_lines->push_back(parse(line, begin, end));
        begin = end;
    }
    return *m_lines;
}

void ProfileText::change(std::string text)
{
    m_text = std::move(text);
    m_lines.reset();
}

std::optional<ProfileText::Range> ProfileText::find(std::string_view section) const
{
    section = trimmed(section);
    for (std::size_t i = 0; i < lines().size(); ++i) {
        if (lines()[i].kind != Line::Kind::Section || !sameName(lines()[i].name, section))
            continue;
        Range range{i + 1, i + 1};
        while (range.last < lines().size() && lines()[range.last].kind != Line::Kind::Section)
            ++range.last;
        return range;
    }
    return {};
}

const ProfileText::Line* ProfileText::findKey(std::string_view section, std::string_view key) const
{
    const std::optional<Range> range = find(section);
    if (!range)
        return nullptr;
    key = trimmed(key);
    for (std::size_t i = range->first; i < range->last; ++i) {
        if (lines()[i].kind == Line::Kind::Key && sameName(lines()[i].name, key))
            return &lines()[i];
    }
    return nullptr;
}

/// Behind the last line of a section that says something, so that blank lines stay between sections.
std::size_t ProfileText::endOf(Range range) const
{
    return range.last == 0 ? 0 : lines()[range.last - 1].end;
}

std::optional<std::string> ProfileText::value(std::string_view section, std::string_view key) const
{
    const Line* line = findKey(section, key);
    if (!line || !line->value)
        return {};
    return valueText(*line->value);
}

std::vector<std::optional<std::string>> ProfileText::valuesIn(std::string_view text, std::string_view section,
                                                              const std::vector<std::string>& keys)
{
    std::unordered_map<std::string, std::optional<std::string_view>> wanted;
    for (const std::string& key : keys)
        wanted.emplace(foldedName(trimmed(key)), std::nullopt);
    section = trimmed(section);
    bool inSection = false;
    for (std::size_t begin = 0; begin < text.size();) {
        const std::size_t feed = text.find('\n', begin);
        const std::size_t end = feed == std::string_view::npos ? text.size() : feed + 1;
        const Line line = parse(text.substr(begin, end - begin), begin, end);
        begin = end;
        if (line.kind == Line::Kind::Section) {
            if (inSection)
                break;
            inSection = sameName(line.name, section);
        } else if (inSection && line.kind == Line::Kind::Key) {
            const auto found = wanted.find(foldedName(line.name));
            if (found != wanted.end() && !found->second)
                found->second = line.value.value_or(std::string_view());
        }
    }
    std::vector<std::optional<std::string>> values;
    values.reserve(keys.size());
    for (const std::string& key : keys) {
        const std::optional<std::string_view> value = wanted.at(foldedName(trimmed(key)));
        values.push_back(value ? std::optional(valueText(*value)) : std::nullopt);
    }
    return values;
}

std::vector<std::string> ProfileText::sections() const
{
    std::vector<std::string> names;
    for (const Line& line : lines()) {
        if (line.kind == Line::Kind::Section)
            names.emplace_back(line.name);
    }
    return names;
}

std::vector<std::string> ProfileText::keys(std::string_view section) const
{
    std::vector<std::string> names;
    const Range range = find(section).value_or(Range{});
    for (std::size_t i = range.first; i < range.last; ++i) {
        if (lines()[i].kind == Line::Kind::Key)
            names.emplace_back(lines()[i].name);
    }
    return names;
}

void ProfileText::setValue(std::string_view section, std::string_view key, std::string_view value)
{
    const std::string name(trimmed(key));
    const std::string stored = textForFile(std::string(value));
    std::string text = m_text;
    if (const Line* line = findKey(section, key)) {
        text.replace(line->begin, line->end - line->begin,
                     std::string(line->name) + "=" + stored + std::string(kLineEnd));
    } else if (const std::optional<Range> range = find(section)) {
        const std::size_t place = endOf(*range);
        const bool open = place > 0 && text[place - 1] != '\n';
        text.insert(place, (open ? std::string(kLineEnd) : std::string()) + name + "=" + stored +
                               std::string(kLineEnd));
    } else {
        if (!text.empty() && text.back() != '\n')
            text += kLineEnd;
        text += "[" + std::string(trimmed(section)) + "]" + std::string(kLineEnd);
        text += name + "=" + stored + std::string(kLineEnd);
    }
    change(std::move(text));
}

void ProfileText::removeKey(std::string_view section, std::string_view key)
{
    if (const Line* line = findKey(section, key)) {
        std::string text = m_text;
        text.erase(line->begin, line->end - line->begin);
        change(std::move(text));
    }
}

void ProfileText::removeSection(std::string_view section)
{
    if (const std::optional<Range> range = find(section)) {
        const std::size_t begin = lines()[range->first - 1].begin;
        const std::size_t end = range->last < lines().size() ? lines()[range->last].begin : m_text.size();
        std::string text = m_text;
        text.erase(begin, end - begin);
        change(std::move(text));
    }
}

void ProfileText::setLines(std::string_view section, const std::vector<std::string_view>& wanted)
{
    std::string body;
    for (std::string_view line : wanted) {
        if (!trimmed(line).empty())
            body += textForFile(std::string(line)) + std::string(kLineEnd);
    }
    std::string text = m_text;
    if (const std::optional<Range> range = find(section)) {
        const std::size_t begin = lines()[range->first - 1].end;
        if (begin > 0 && text[begin - 1] != '\n')
            body.insert(0, kLineEnd);
        const std::size_t end = endOf(*range);
        text.replace(begin, end > begin ? end - begin : 0, body);
    } else if (!body.empty()) {
        if (!text.empty() && text.back() != '\n')
            text += kLineEnd;
        text += "[" + std::string(trimmed(section)) + "]" + std::string(kLineEnd) + body;
    }
    change(std::move(text));
}

} // namespace zv
