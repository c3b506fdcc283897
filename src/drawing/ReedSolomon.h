#pragma once

#include <cstddef>
#include <span>
#include <vector>

namespace zv::dwg {

/// The error-correcting code of R2007 pages: blocks of 255 bytes, of which `dataBytes` (239 or 251) are data
/// and the others guard them. The blocks of a page are woven: byte i of all blocks stands before byte i + 1
/// of any.
class ReedSolomon {
public:
    static constexpr std::size_t kBlock = 255, kSystemData = 239, kPageData = 251;

    /// The data of `blocks` woven blocks, without a look at the guard bytes. `woven` holds blocks * 255
    /// bytes.
    static std::vector<std::byte> data(std::span<const std::byte> woven, std::size_t blocks,
                                       std::size_t dataBytes);
    /// Corrects up to (255 - dataBytes) / 2 wrong bytes in each block. False when a block has more.
    static bool correct(std::span<std::byte> woven, std::size_t blocks, std::size_t dataBytes);
};

} // namespace zv::dwg
