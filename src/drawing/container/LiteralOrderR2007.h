#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace zv::dwg {

// Literal bytes of a packed page of R2007 are not stored in their own order: they come in runs of at most 32,
// a run is cut into parts, and the parts come last first. Parts of two and three bytes are turned round
// within as well.

inline constexpr std::size_t kLiteralRun = 32;

struct LiteralPart {
    std::uint8_t from = 0, length = 0;
};

/// For each length of a run: its parts, in the order of the run, with their places in the stored one.
inline constexpr std::array<std::array<LiteralPart, 6>, kLiteralRun + 1> kLiteralParts{{
    {},
    {{{0, 1}}},
    {{{0, 2}}},
    {{{0, 3}}},
    {{{0, 4}}},
    {{{4, 1}, {0, 4}}},
    {{{5, 1}, {1, 4}, {0, 1}}},
    {{{5, 2}, {1, 4}, {0, 1}}},
    {{{0, 8}}},
    {{{8, 1}, {0, 8}}},
    {{{9, 1}, {1, 8}, {0, 1}}},
    {{{9, 2}, {1, 8}, {0, 1}}},
    {{{8, 4}, {0, 8}}},
    {{{12, 1}, {8, 4}, {0, 8}}},
    {{{13, 1}, {9, 4}, {1, 8}, {0, 1}}},
    {{{13, 2}, {9, 4}, {1, 8}, {0, 1}}},
    {{{8, 8}, {0, 8}}},
    {{{9, 8}, {8, 1}, {0, 8}}},
    {{{17, 1}, {9, 8}, {1, 8}, {0, 1}}},
    {{{16, 3}, {8, 8}, {0, 8}}},
    {{{16, 4}, {8, 8}, {0, 8}}},
    {{{20, 1}, {16, 4}, {8, 8}, {0, 8}}},
    {{{20, 2}, {16, 4}, {8, 8}, {0, 8}}},
    {{{20, 3}, {16, 4}, {8, 8}, {0, 8}}},
    {{{16, 8}, {8, 8}, {0, 8}}},
    {{{17, 8}, {16, 1}, {8, 8}, {0, 8}}},
    {{{25, 1}, {17, 8}, {16, 1}, {8, 8}, {0, 8}}},
    {{{25, 2}, {17, 8}, {16, 1}, {8, 8}, {0, 8}}},
    {{{24, 4}, {16, 8}, {8, 8}, {0, 8}}},
    {{{28, 1}, {24, 4}, {16, 8}, {8, 8}, {0, 8}}},
    {{{28, 2}, {24, 4}, {16, 8}, {8, 8}, {0, 8}}},
    {{{30, 1}, {26, 4}, {18, 8}, {10, 8}, {2, 8}, {0, 2}}},
    {{{24, 8}, {16, 8}, {8, 8}, {0, 8}}},
}};

/// For each length of a run: where in the stored run each of its bytes stands.
inline constexpr auto kLiteralOrder = [] {
    std::array<std::array<std::uint8_t, kLiteralRun>, kLiteralRun + 1> order{};
    for (std::size_t length = 1; length <= kLiteralRun; ++length) {
        std::size_t at = 0;
        for (const LiteralPart& part : kLiteralParts[length]) {
            const bool turned = part.length == 2 || part.length == 3;
            for (std::size_t i = 0; i < part.length; ++i)
                order[length][at++] =
                    static_cast<std::uint8_t>(part.from + (turned ? part.length - 1 - i : i));
        }
    }
    return order;
}();

} // namespace zv::dwg
