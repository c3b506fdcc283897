#include "search/KeywordMatch.h"

#include "platform/Text.h"

#include <algorithm>

namespace zv {

namespace {

constexpr std::size_t kEnding = 4; ///< Characters of ".dwg".

} // namespace

KeywordMatch::KeywordMatch(const Keywords& keywords) : m_keywords(keywords)
{
    for (std::size_t i = 0; i < kKeywords; ++i)
        m_flags[i] = keywords[i].empty() ? Keyword::Absent : Keyword::Wanted;
}

bool KeywordMatch::findIn(std::string_view source)
{
    for (std::size_t i = 0; i < kKeywords; ++i) {
        if (m_flags[i] == Keyword::Wanted && findText(source, m_keywords[i]) != std::string_view::npos)
            m_flags[i] = Keyword::Found;
    }
    return isHit(m_flags);
}

// A found keyword makes a hit when no other is still wanted. The last one is content with less: the fifth may
// be wanted, it only must not be found. Offices count on it.
bool isHit(const std::array<Keyword, kKeywords>& flags)
{
    const std::size_t last = kKeywords - 1;
    for (std::size_t i = 0; i < last; ++i) {
        if (flags[i] != Keyword::Found)
            continue;
        if (std::find(flags.begin(), flags.end(), Keyword::Wanted) == flags.end())
            return true;
    }
    return flags[last] == Keyword::Found && flags[last - 1] != Keyword::Found &&
           std::find(flags.begin(), flags.begin() + last - 1, Keyword::Wanted) == flags.begin() + last - 1;
}

std::optional<std::string> fileStem(std::string_view path)
{
    const std::u16string name = wide(fileNamePart(path));
    if (name.size() < kEnding)
        return {};
    return upper(narrow(std::u16string_view(name).substr(0, name.size() - kEnding)));
}

} // namespace zv
