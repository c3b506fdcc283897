#pragma once

#include "drawing/Document.h"
#include "platform/ByteSource.h"

#include <array>
#include <span>

namespace zv::dwg {

/// The bytes at the start of a drawing file that have the same places in every version from R13 on.
class FileStart {
public:
    static constexpr std::size_t kSize = 0x24;
    /// R2004 and later: here is told where the content of the summary section's first page stands (4 bytes).
    static constexpr std::size_t kSummaryAt = 0x20;

    /// `bytes` are at least kSize, and outlive this.
    explicit FileStart(std::span<const std::byte> bytes) : m_bytes(bytes) {}

    /// Reads and checks it. Errors: Unsupported, the version's own words; Damaged, no drawing.
    static Result<std::array<std::byte, kSize>> read(const ByteSource& source);

    std::string versionText() const { return {reinterpret_cast<const char*>(m_bytes.data()), 6}; }
    Version version() const;
    int maintenance() const { return std::to_integer<int>(m_bytes[0x0B]); }
    /// Where the preview is: its first sentinel.
    std::uint32_t previewPosition() const { return number(0x0D, 4); }
    int codePage() const { return static_cast<int>(number(0x13, 2)); }
    /// R2004 and later: bit 0 tells that the file is encrypted with a password.
    std::uint32_t security() const { return number(0x18, 4); }

private:
    std::uint32_t number(std::size_t at, unsigned size) const
    {
        std::uint32_t value = 0;
        for (unsigned i = size; i-- > 0;)
            value = value << 8 | std::to_integer<std::uint32_t>(m_bytes[at + i]);
        return value;
    }

    std::span<const std::byte> m_bytes;
};

} // namespace zv::dwg
