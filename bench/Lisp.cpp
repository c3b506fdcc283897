#include "Lisp.h"

#include "platform/Text.h"

namespace zv::bench {

namespace {

constexpr int kMostDepth = 64;

bool isBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool endsWord(char c)
{
    return isBlank(c) || c == '(' || c == ')' || c == '"' || c == '\'';
}

class Reader {
public:
    explicit Reader(std::string_view typed) : m_typed(typed) {}

    LispOutcome read(LispItem& item, int depth)
    {
        skipBlanks();
        if (atEnd())
            return LispOutcome::Incomplete;
        if (depth > kMostDepth || here() == ')')
            return LispOutcome::Malformed;
        if (here() == '(')
            return list(item, depth);
        if (here() == '"')
            return text(item);
        if (here() == '\'') {
            ++m_at;
            item.kind = LispItem::Kind::List;
            item.items.resize(2);
            item.items[0] = {LispItem::Kind::Symbol, "QUOTE", 0, {}};
            return read(item.items[1], depth + 1);
        }
        word(item);
        return LispOutcome::Whole;
    }

    std::size_t used() const { return m_at; }

private:
    bool atEnd() const { return m_at >= m_typed.size(); }
    char here() const { return m_typed[m_at]; }
    void skipBlanks()
    {
        while (!atEnd() && isBlank(here()))
            ++m_at;
    }

    LispOutcome list(LispItem& item, int depth)
    {
        item.kind = LispItem::Kind::List;
        ++m_at;
        for (;;) {
            skipBlanks();
            if (atEnd())
                return LispOutcome::Incomplete;
            if (here() == ')') {
                ++m_at;
                return LispOutcome::Whole;
            }
            const LispOutcome outcome = read(item.items.emplace_back(), depth + 1);
            if (outcome != LispOutcome::Whole)
                return outcome;
        }
    }

    LispOutcome text(LispItem& item)
    {
        item.kind = LispItem::Kind::Text;
        for (++m_at; !atEnd(); ++m_at) {
            if (here() == '"') {
                ++m_at;
                return LispOutcome::Whole;
            }
            if (here() != '\\') {
                item.text += here();
                continue;
            }
            ++m_at;
            if (atEnd())
                return LispOutcome::Incomplete;
            escape(item.text);
        }
        return LispOutcome::Incomplete;
    }

    /// An unknown escape leaves its character, as a path with single backslashes loses them.
    void escape(std::string& into)
    {
        const char c = here();
        if (c >= '0' && c <= '7') {
            int code = 0;
            for (int digits = 0; digits < 3 && !atEnd() && here() >= '0' && here() <= '7'; ++digits, ++m_at)
                code = code * 8 + (here() - '0');
            --m_at;
            into += static_cast<char>(code);
            return;
        }
        constexpr std::string_view kKinds = "nrte";
        constexpr std::string_view kMeanings = "\n\r\t\x1b";
        const std::size_t found = kKinds.find(c);
        into += found == std::string_view::npos ? c : kMeanings[found];
    }

    void word(LispItem& item)
    {
        const std::size_t start = m_at;
        while (!atEnd() && !endsWord(here()))
            ++m_at;
        const std::string_view written = m_typed.substr(start, m_at - start);
        const bool isNumber = textNumber(written, item.number);
        item.kind = isNumber ? LispItem::Kind::Number : LispItem::Kind::Symbol;
        item.text = isNumber ? std::string(written) : upper(written);
    }

    std::string_view m_typed;
    std::size_t m_at = 0;
};

} // namespace

LispOutcome readLisp(std::string_view typed, LispItem& item, std::size_t& used)
{
    Reader reader(typed);
    const LispOutcome outcome = reader.read(item, 0);
    used = reader.used();
    return outcome;
}

} // namespace zv::bench
