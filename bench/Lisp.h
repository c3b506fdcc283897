#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zv::bench {

/// An AutoLISP expression, as far as commands are scripted with it.
struct LispItem {
    enum class Kind { Text, Number, Symbol, List };
    Kind kind = Kind::List;
    std::string text; ///< Of a text (escapes resolved), a number as written, or a symbol in capitals.
    double number = 0;
    std::vector<LispItem> items; ///< Of a list.
};

enum class LispOutcome {
    Whole,
    Incomplete, ///< The text ends before the expression does.
    Malformed,
};

/// Reads the one expression at the start of a typed text; `used` becomes its length. Texts need no blank
/// between them.
LispOutcome readLisp(std::string_view typed, LispItem& item, std::size_t& used);

} // namespace zv::bench
