#pragma once

#include <cstddef>
#include <cstdint>
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

    /// The bytes that guard a block, 255 - dataBytes of them; `data` is filled up with zeros to the block's.
    static std::vector<std::byte> guards(std::span<const std::byte> data, std::size_t dataBytes);
    /// The data as woven blocks with their guards, filled up with zeros.
    static std::vector<std::byte> woven(std::span<const std::byte> data, std::size_t dataBytes);

    /// Data is coded in whole groups of eight bytes.
    static constexpr std::uint64_t padded(std::uint64_t size) { return (size + 7) / 8 * 8; }
    /// How many blocks hold that much data.
    static constexpr std::uint64_t blocks(std::uint64_t size, std::size_t dataBytes)
    {
        return (size + dataBytes - 1) / dataBytes;
    }
};

} // namespace zv::dwg
