#pragma once

#include <cctype>
#include <cstdlib>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

/// A JSON value, as far as lists of expected values need it. Texts are UTF-8.
struct Json {
    enum class Kind { Null, Bool, Number, Text, List, Object } kind = Kind::Null;
    bool truth = false;
    double number = 0;
    std::string text;
    std::vector<Json> list;
    std::map<std::string, Json> object;

    bool isNull() const { return kind == Kind::Null; }
    /// The member; null when there is none.
    const Json& operator[](const std::string& name) const
    {
        static const Json none;
        const auto found = object.find(name);
        return found == object.end() ? none : found->second;
    }

    /// The text's value; null as soon as it is no JSON.
    static Json parse(std::string_view text)
    {
        Parser parser{text};
        return parser.value();
    }

private:
    struct Parser {
        std::string_view text;
        std::size_t at = 0;

        char next()
        {
            while (at < text.size() && std::isspace(static_cast<unsigned char>(text[at])) != 0)
                ++at;
            return at < text.size() ? text[at] : '\0';
        }
        bool take(std::string_view word)
        {
            if (text.substr(at, word.size()) != word)
                return false;
            at += word.size();
            return true;
        }
        Json value()
        {
            Json out;
            switch (next()) {
            case '{':
                ++at;
                out.kind = Kind::Object;
                while (next() == '"') {
                    const std::string name = string();
                    if (next() == ':')
                        ++at;
                    out.object[name] = value();
                    if (next() == ',')
                        ++at;
                }
                ++at;
                break;
            case '[':
                ++at;
                out.kind = Kind::List;
                while (next() != ']' && at < text.size()) {
                    out.list.push_back(value());
                    if (next() == ',')
                        ++at;
                }
                ++at;
                break;
            case '"':
                out.kind = Kind::Text;
                out.text = string();
                break;
            default:
                scalar(out);
                break;
            }
            return out;
        }
        void scalar(Json& out)
        {
            if (take("true") || take("false")) {
                out.kind = Kind::Bool;
                out.truth = text[at - 2] == 'u';
                return;
            }
            if (take("null"))
                return;
            const std::string digits(text.substr(at, 40));
            char* end = nullptr;
            out.number = std::strtod(digits.c_str(), &end);
            out.kind = Kind::Number;
            at += end == digits.c_str() ? 1 : static_cast<std::size_t>(end - digits.c_str());
        }
        std::string string()
        {
            std::string out;
            for (++at; at < text.size() && text[at] != '"'; ++at) {
                if (text[at] != '\\') {
                    out += text[at];
                    continue;
                }
                switch (text[++at]) {
                case 'n':
                    out += '\n';
                    break;
                case 'r':
                    out += '\r';
                    break;
                case 't':
                    out += '\t';
                    break;
                case 'u':
                    append(out, std::strtoul(std::string(text.substr(at + 1, 4)).c_str(), nullptr, 16));
                    at += 4;
                    break;
                default:
                    out += text[at];
                    break;
                }
            }
            ++at;
            return out;
        }
        /// One code point below U+10000 as UTF-8.
        static void append(std::string& out, unsigned long code)
        {
            if (code < 0x80) {
                out += static_cast<char>(code);
            } else if (code < 0x800) {
                out += static_cast<char>(0xC0 | code >> 6);
                out += static_cast<char>(0x80 | (code & 0x3F));
            } else {
                out += static_cast<char>(0xE0 | code >> 12);
                out += static_cast<char>(0x80 | (code >> 6 & 0x3F));
                out += static_cast<char>(0x80 | (code & 0x3F));
            }
        }
    };
};

} // namespace zv
