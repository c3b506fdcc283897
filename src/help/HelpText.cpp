#include "help/HelpText.h"

#include "platform/Text.h"

#include <algorithm>
#include <map>

namespace zv {
namespace {

constexpr std::size_t kDepthLimit = 32;   ///< Of lists in lists; deeper ones join the deepest.
constexpr std::size_t kEntityLength = 10; ///< The longest name of a character, "&" and ";" included.

char small(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

bool isSpace(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

/// Bytes of other scripts count as letters: they are parts of UTF-8 letters far more often than not.
bool isWordByte(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return (c >= '0' && c <= '9') || (small(c) >= 'a' && small(c) <= 'z') || c == '_' || byte >= 0x80;
}

std::string smallLetters(std::string_view text)
{
    std::string out(text);
    std::transform(out.begin(), out.end(), out.begin(), small);
    return out;
}

/// A character by the name between "&" and ";"; nothing when it is not known.
std::string characterNamed(std::string_view name)
{
    static const std::map<std::string_view, std::string_view> known{
        {"amp", "&"}, {"lt", "<"}, {"gt", ">"}, {"quot", "\""}, {"apos", "'"}, {"nbsp", " "}};
    if (const auto found = known.find(name); found != known.end())
        return std::string(found->second);
    if (name.size() < 2 || name[0] != '#')
        return {};
    char16_t code = 0;
    for (const char c : name.substr(1)) {
        if (c < '0' || c > '9' || code > 6000)
            return {};
        code = static_cast<char16_t>(code * 10 + (c - '0'));
    }
    return toUtf8(std::u16string(1, code));
}

std::string decoded(std::string_view text)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '&') {
            const std::size_t end = text.substr(i, kEntityLength).find(';');
            const std::string character =
                end == std::string_view::npos ? std::string() : characterNamed(text.substr(i + 1, end - 1));
            if (!character.empty()) {
                out += character;
                i += end;
                continue;
            }
        }
        out += text[i];
    }
    return out;
}

/// One tag of a page, without its angle brackets.
class Tag {
public:
    explicit Tag(std::string_view inside) : m_inside(inside) {}

    /// "ul", "/ul" ...
    std::string name() const
    {
        std::size_t end = 0;
        while (end < m_inside.size() && !isSpace(m_inside[end]) && (end == 0 || m_inside[end] != '/'))
            ++end;
        return smallLetters(m_inside.substr(0, end));
    }

    /// The value of an attribute, decoded; empty when the tag has none of that name.
    std::string attribute(std::string_view wanted) const
    {
        std::size_t at = 0;
        while (at < m_inside.size() && !isSpace(m_inside[at]))
            ++at;
        while (at < m_inside.size()) {
            if (isSpace(m_inside[at])) {
                ++at;
                continue;
            }
            const std::size_t start = at;
            while (at < m_inside.size() && m_inside[at] != '=' && !isSpace(m_inside[at]))
                ++at;
            const std::string attribute = smallLetters(m_inside.substr(start, at - start));
            const std::string_view value = takeValue(at);
            if (attribute == wanted)
                return decoded(value);
        }
        return {};
    }

private:
    std::string_view takeValue(std::size_t& at) const
    {
        if (at >= m_inside.size() || m_inside[at] != '=')
            return {};
        ++at;
        char quote = ' ';
        if (at < m_inside.size() && (m_inside[at] == '"' || m_inside[at] == '\''))
            quote = m_inside[at++];
        const std::size_t start = at;
        at = std::min(m_inside.find(quote, at), m_inside.size());
        const std::string_view value = m_inside.substr(start, at - start);
        if (at < m_inside.size())
            ++at;
        return value;
    }

    std::string_view m_inside;
};

/// Where the tag that starts at `at` ends; a ">" inside a quoted value ends nothing.
std::size_t tagEnd(std::string_view html, std::size_t at)
{
    char quote = 0;
    for (; at < html.size(); ++at) {
        if (quote != 0)
            quote = html[at] == quote ? char(0) : quote;
        else if (html[at] == '"' || html[at] == '\'')
            quote = html[at];
        else if (html[at] == '>')
            return at;
    }
    return std::string_view::npos;
}

/// Walks the tags and the texts between them; comments are passed over.
template <class OnTag, class OnText> void walk(std::string_view html, OnTag onTag, OnText onText)
{
    std::size_t at = 0;
    while (at < html.size()) {
        const std::size_t open = std::min(html.find('<', at), html.size());
        if (open > at)
            onText(html.substr(at, open - at));
        if (open == html.size())
            return;
        const bool comment = html.substr(open, 4) == "<!--";
        const std::size_t close = comment ? html.find("-->", open) : tagEnd(html, open);
        if (close == std::string_view::npos)
            return;
        if (!comment)
            onTag(Tag(html.substr(open + 1, close - open - 1)));
        at = close + (comment ? 3 : 1);
    }
}

/// Builds the tree of a site map while its tags go by.
class SiteMapBuilder {
public:
    void tag(const Tag& tag)
    {
        const std::string name = tag.name();
        if (name == "ul") {
            ++m_depth;
        } else if (name == "/ul") {
            m_depth -= m_depth > 0 ? 1 : 0;
        } else if (name == "object") {
            m_inObject = smallLetters(tag.attribute("type")) == "text/sitemap";
            m_entry = {};
        } else if (name == "param" && m_inObject) {
            take(smallLetters(tag.attribute("name")), tag.attribute("value"));
        } else if (name == "/object" && m_inObject) {
            m_inObject = false;
            if (!m_entry.title.empty())
                listAt(m_depth).push_back(std::move(m_entry));
        }
    }

    std::vector<HelpEntry> m_entries;

private:
    void take(const std::string& name, std::string value)
    {
        // An index entry names its keyword first and then each topic; the keyword is what is shown.
        if (name == "name" && m_entry.title.empty())
            m_entry.title = std::move(value);
        else if (name == "local" && m_entry.page.empty())
            m_entry.page = std::move(value);
    }

    std::vector<HelpEntry>& listAt(std::size_t depth)
    {
        std::vector<HelpEntry>* list = &m_entries;
        for (std::size_t level = 1; level < std::min(depth, kDepthLimit) && !list->empty(); ++level)
            list = &list->back().children;
        return *list;
    }

    std::size_t m_depth = 0;
    bool m_inObject = false;
    HelpEntry m_entry;
};

} // namespace

std::vector<HelpEntry> readSiteMap(std::string_view html)
{
    SiteMapBuilder builder;
    walk(
        html, [&](const Tag& tag) { builder.tag(tag); }, [](std::string_view) {});
    return std::move(builder.m_entries);
}

std::vector<std::string> wordsOfPage(std::string_view html)
{
    std::string text;
    bool shown = true;
    walk(
        html,
        [&](const Tag& tag) {
            const std::string name = tag.name();
            if (name == "script" || name == "style" || name == "title")
                shown = false;
            else if (name == "/script" || name == "/style" || name == "/title")
                shown = true;
            text += ' ';
        },
        [&](std::string_view between) {
            if (shown)
                text += decoded(between);
        });
    std::vector<std::string> words;
    for (std::size_t at = 0; at < text.size();) {
        const std::size_t start = at;
        while (at < text.size() && isWordByte(text[at]))
            ++at;
        if (at > start)
            words.push_back(smallLetters(std::string_view(text).substr(start, at - start)));
        else
            ++at;
    }
    return words;
}

std::string titleOfPage(std::string_view html)
{
    std::string title;
    bool inTitle = false;
    walk(
        html, [&](const Tag& tag) { inTitle = tag.name() == "title"; },
        [&](std::string_view between) {
            if (inTitle)
                title += decoded(between);
        });
    return title;
}

} // namespace zv
