#pragma once

#include "platform/ByteSource.h"

#include <cstdint>
#include <unordered_map>
#include <vector>

namespace zv::dwg {

/// A page of a file from R2004 on, as the map of pages tells it.
struct FilePage {
    std::int64_t number = 0; ///< Of a gap between pages negative.
    std::uint64_t size = 0, position = 0;
    bool isGap() const { return number < 0; }
};

/// One page of a section: where its unpacked bytes belong, and where its packed ones stand in the file.
struct SectionPage {
    std::uint64_t offset = 0;       ///< In the unpacked section.
    std::uint64_t unpackedSize = 0; ///< At most; the last page of a section can hold less.
    std::uint64_t filePosition = 0; ///< 0: the file has no such page.
    std::uint64_t fileSize = 0;
    std::uint64_t packedSize = 0; ///< What of it is packed data, before any error-correcting code.
};

/// The pages of a file by their numbers. Each is given away once, so that no page is unpacked for two places.
class FilePages {
public:
    explicit FilePages(const std::vector<FilePage>& pages);
    /// Tells a section's page its place. A page that is not there, or is another's, gets none, and so costs
    /// its own section only.
    void take(std::uint64_t number, SectionPage& page);

private:
    std::unordered_map<std::int64_t, FilePage> m_pages;
};

/// Bytes of the file. Errors: Damaged, when they go beyond its end; as ByteSource::read.
Result<std::vector<std::byte>> readBytes(const ByteSource& source, std::uint64_t position,
                                         std::uint64_t size);

} // namespace zv::dwg
