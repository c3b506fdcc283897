#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zv {

inline constexpr std::size_t kKeywords = 6;
/// The keywords in the order of their boxes, in capitals; an empty one takes no part.
using Keywords = std::array<std::string, kKeywords>;

/// How far a keyword has come with one drawing.
enum class Keyword : std::uint8_t { Absent, Wanted, Found };

/// The keywords of one drawing, which may be found in one source each.
class KeywordMatch {
public:
    /// `keywords` outlive this.
    explicit KeywordMatch(const Keywords& keywords);

    /// Looks for the keywords in one more source, and tells whether the drawing is a hit now.
    bool findIn(std::string_view source);

private:
    const Keywords& m_keywords;
    std::array<Keyword, kKeywords> m_flags{};
};

/// The hit test on the six flags.
bool isHit(const std::array<Keyword, kKeywords>& flags);

/// The file name without the four characters of its ending, in capitals; none when it is shorter than these.
std::optional<std::string> fileStem(std::string_view path);

} // namespace zv
