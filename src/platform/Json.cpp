#include "platform/Json.h"

#include <charconv>
#include <cmath>

namespace zv {

namespace {

constexpr int kMostDepth = 32;
constexpr int kMostValues = 1'000'000;

/// The length of the UTF-8 sequence at the start, 1 to 4; 0 when it is not valid.
std::size_t sequenceLength(std::string_view bytes)
{
    const auto at = [&](std::size_t index) { return static_cast<unsigned char>(bytes[index]); };
    const unsigned first = at(0);
    if (first < 0x80)
        return 1;
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || bytes.size() < length)
        return 0;
    for (std::size_t index = 1; index < length; ++index) {
        if ((at(index) & 0xC0) != 0x80)
            return 0;
    }
    const unsigned second = at(1);
    const bool overlong = (first == 0xE0 && second < 0xA0) || (first == 0xF0 && second < 0x90);
    const bool surrogate = first == 0xED && second >= 0xA0;
    const bool beyond = first == 0xF4 && second >= 0x90;
    return overlong || surrogate || beyond ? 0 : length;
}

void appendUtf8(std::string& text, std::uint32_t code)
{
    if (code < 0x80) {
        text += static_cast<char>(code);
    } else if (code < 0x800) {
        text += static_cast<char>(0xC0 | (code >> 6));
        text += static_cast<char>(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        text += static_cast<char>(0xE0 | (code >> 12));
        text += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (code & 0x3F));
    } else {
        text += static_cast<char>(0xF0 | (code >> 18));
        text += static_cast<char>(0x80 | ((code >> 12) & 0x3F));
        text += static_cast<char>(0x80 | ((code >> 6) & 0x3F));
        text += static_cast<char>(0x80 | (code & 0x3F));
    }
}

bool isDigit(char c)
{
    return c >= '0' && c <= '9';
}

class Reader {
public:
    explicit Reader(std::string_view text) : m_rest(text) {}

    Result<Json> document()
    {
        Json json;
        if (!value(json, 0))
            return m_tooLarge ? Error{ErrorCode::TooLarge, "the JSON text has too many values"}
                              : Error{ErrorCode::Damaged, "the text is not valid JSON"};
        blanks();
        if (!m_rest.empty())
            return Error{ErrorCode::Damaged, "something stands behind the JSON value"};
        return json;
    }

private:
    void blanks()
    {
        while (!m_rest.empty() &&
               (m_rest[0] == ' ' || m_rest[0] == '\t' || m_rest[0] == '\r' || m_rest[0] == '\n'))
            m_rest.remove_prefix(1);
    }
    bool take(char c)
    {
        blanks();
        return takeHere(c);
    }
    bool takeHere(char c)
    {
        if (m_rest.empty() || m_rest[0] != c)
            return false;
        m_rest.remove_prefix(1);
        return true;
    }
    bool word(std::string_view expected)
    {
        if (!m_rest.starts_with(expected))
            return false;
        m_rest.remove_prefix(expected.size());
        return true;
    }

    bool value(Json& into, int depth)
    {
        if (depth > kMostDepth || ++m_values > kMostValues) {
            m_tooLarge = true;
            return false;
        }
        blanks();
        if (m_rest.empty())
            return false;
        switch (m_rest[0]) {
        case '{':
            return object(into, depth);
        case '[':
            return array(into, depth);
        case '"':
            return text(into.value.emplace<std::string>());
        case 't':
            into = true;
            return word("true");
        case 'f':
            into = false;
            return word("false");
        case 'n':
            into = nullptr;
            return word("null");
        default:
            return number(into);
        }
    }

    bool object(Json& into, int depth)
    {
        auto& members = into.value.emplace<Json::Object>();
        take('{');
        if (take('}'))
            return true;
        do {
            std::string name;
            Json member;
            blanks();
            if (!text(name) || !take(':') || !value(member, depth + 1))
                return false;
            members.emplace_back(std::move(name), std::move(member));
        } while (take(','));
        return take('}');
    }

    bool array(Json& into, int depth)
    {
        auto& items = into.value.emplace<Json::Array>();
        take('[');
        if (take(']'))
            return true;
        do {
            if (!value(items.emplace_back(), depth + 1))
                return false;
        } while (take(','));
        return take(']');
    }

    bool number(Json& into)
    {
        std::size_t length = 0;
        const auto here = [&] { return length < m_rest.size() ? m_rest[length] : '\0'; };
        const auto digits = [&] {
            const std::size_t before = length;
            while (isDigit(here()))
                ++length;
            return length > before;
        };
        if (here() == '-')
            ++length;
        if (here() == '0')
            ++length;
        else if (!digits())
            return false;
        bool isWhole = true;
        if (here() == '.') {
            isWhole = false;
            ++length;
            if (!digits())
                return false;
        }
        if (here() == 'e' || here() == 'E') {
            isWhole = false;
            ++length;
            if (here() == '+' || here() == '-')
                ++length;
            if (!digits())
                return false;
        }
        return keepNumber(into, length, isWhole);
    }

    bool keepNumber(Json& into, std::size_t length, bool isWhole)
    {
        const char* const begin = m_rest.data();
        const char* const end = begin + length;
        m_rest.remove_prefix(length);
        std::int64_t whole = 0;
        if (isWhole && std::from_chars(begin, end, whole).ec == std::errc()) {
            into = whole;
            return true;
        }
        double decimal = 0;
        if (std::from_chars(begin, end, decimal).ec != std::errc())
            return false;
        into = decimal;
        return true;
    }

    bool text(std::string& into)
    {
        if (!takeHere('"'))
            return false;
        while (!m_rest.empty()) {
            const char c = m_rest[0];
            if (c == '"') {
                m_rest.remove_prefix(1);
                return true;
            }
            if (c == '\\') {
                if (!escape(into))
                    return false;
                continue;
            }
            const std::size_t length = sequenceLength(m_rest);
            if (length == 0 || static_cast<unsigned char>(c) < 0x20)
                return false;
            into.append(m_rest.substr(0, length));
            m_rest.remove_prefix(length);
        }
        return false;
    }

    bool escape(std::string& into)
    {
        if (m_rest.size() < 2)
            return false;
        const char kind = m_rest[1];
        m_rest.remove_prefix(2);
        constexpr std::string_view kKinds = "\"\\/bfnrt";
        constexpr std::string_view kMeanings = "\"\\/\b\f\n\r\t";
        if (const std::size_t found = kKinds.find(kind); found != std::string_view::npos) {
            into += kMeanings[found];
            return true;
        }
        std::uint32_t code = 0;
        if (kind != 'u' || !fourHexDigits(code))
            return false;
        if (code >= 0xD800 && code < 0xDC00 && m_rest.starts_with("\\u")) {
            m_rest.remove_prefix(2);
            std::uint32_t low = 0;
            if (!fourHexDigits(low) || low < 0xDC00 || low > 0xDFFF)
                return false;
            code = 0x10000 + ((code - 0xD800) << 10) + (low - 0xDC00);
        }
        if (code >= 0xD800 && code <= 0xDFFF)
            return false;
        appendUtf8(into, code);
        return true;
    }

    bool fourHexDigits(std::uint32_t& code)
    {
        if (m_rest.size() < 4)
            return false;
        const char* const end = m_rest.data() + 4;
        const auto read = std::from_chars(m_rest.data(), end, code, 16);
        m_rest.remove_prefix(4);
        return read.ec == std::errc() && read.ptr == end;
    }

    std::string_view m_rest;
    int m_values = 0;
    bool m_tooLarge = false;
};

void writeText(std::string& out, std::string_view text)
{
    out += '"';
    for (const char c : text) {
        const auto code = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (code < 0x20) {
            constexpr std::string_view kDigits = "0123456789abcdef";
            out += "\\u00";
            out += kDigits[code >> 4];
            out += kDigits[code & 15];
        } else {
            out += c;
        }
    }
    out += '"';
}

void writeNumber(std::string& out, double value)
{
    if (!std::isfinite(value)) {
        out += "null";
        return;
    }
    char buffer[40];
    const auto written = std::to_chars(buffer, buffer + sizeof buffer, value);
    const std::string_view digits(buffer, static_cast<std::size_t>(written.ptr - buffer));
    out += digits;
    if (digits.find_first_of(".e") == std::string_view::npos)
        out += ".0";
}

void writeValue(std::string& out, const Json& json);

struct Writer {
    std::string& out;
    void operator()(std::nullptr_t) const { out += "null"; }
    void operator()(bool truth) const { out += truth ? "true" : "false"; }
    void operator()(std::int64_t whole) const { out += std::to_string(whole); }
    void operator()(double number) const { writeNumber(out, number); }
    void operator()(const std::string& text) const { writeText(out, text); }
    void operator()(const Json::Array& items) const
    {
        out += '[';
        for (std::size_t index = 0; index < items.size(); ++index) {
            if (index > 0)
                out += ',';
            writeValue(out, items[index]);
        }
        out += ']';
    }
    void operator()(const Json::Object& members) const
    {
        out += '{';
        for (std::size_t index = 0; index < members.size(); ++index) {
            if (index > 0)
                out += ',';
            writeText(out, members[index].first);
            out += ':';
            writeValue(out, members[index].second);
        }
        out += '}';
    }
};

void writeValue(std::string& out, const Json& json)
{
    std::visit(Writer{out}, json.value);
}

} // namespace

const Json* Json::member(std::string_view name) const
{
    if (const Object* members = object()) {
        for (const auto& [key, held] : *members) {
            if (key == name)
                return &held;
        }
    }
    return nullptr;
}

bool Json::asDouble(double& result) const
{
    if (const std::int64_t* held = whole()) {
        result = static_cast<double>(*held);
        return true;
    }
    if (const double* held = number()) {
        result = *held;
        return true;
    }
    return false;
}

Result<Json> readJson(std::string_view text)
{
    return Reader(text).document();
}

std::string writeJson(const Json& json)
{
    std::string out;
    writeValue(out, json);
    return out;
}

} // namespace zv
