#pragma once

#include "platform/ByteSource.h"
#include "platform/Result.h"

#include <memory>
#include <optional>
#include <string>

namespace zv {

/// The lines of a list from its top, a piece of the file at a time, so that a list of any length takes little
/// memory. Lines that are added while it is read are read as well.
class ListFeed {
public:
    explicit ListFeed(std::unique_ptr<ByteSource> file) : m_file(std::move(file)) {}

    /// Whether a whole line is at hand. One that ends with the file may still grow and counts only as the
    /// rest.
    bool hasLine() const;
    /// The next line without its end, in the program's own text; there must be one.
    std::string takeLine();
    /// The last line, which no line end closes, once nothing is left to read. None when there is no such
    /// line.
    std::optional<std::string> takeRest();

    /// Reads on in the file. False at its end, as it is now. Errors: Failed; TooLarge, no line is so long.
    Result<bool> readOn();

    /// How many lines the list has. Of one that has not been read whole yet, as many as its length lets
    /// expect.
    std::size_t expectedLines() const;

private:
    std::unique_ptr<ByteSource> m_file;
    std::string m_bytes; ///< Read, and not taken from `m_next` on.
    std::size_t m_next = 0;
    std::uint64_t m_place = 0; ///< In the file, behind the bytes read.
    std::size_t m_knownLines = 0;
};

} // namespace zv
