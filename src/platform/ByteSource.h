#pragma once

#include "platform/Result.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>
#include <string>
#include <vector>

namespace zv {

/// Bytes that can be read from any place, so that a reader touches only the pages that it needs.
class ByteSource {
public:
    virtual ~ByteSource() = default;
    virtual std::uint64_t size() const = 0;
    /// Asks anew how long the bytes are, for a file that others write at meanwhile.
    virtual void refreshSize() {}
    /// Fills `into` whole from `offset`. Errors: Damaged, when fewer bytes are there; Failed, the system's
    /// reason.
    virtual Result<void> read(std::uint64_t offset, std::span<std::byte> into) const = 0;
};

/// Bytes in memory. They are not copied and must outlive the source.
class MemorySource final : public ByteSource {
public:
    explicit MemorySource(std::span<const std::byte> bytes) : m_bytes(bytes) {}
    std::uint64_t size() const override { return m_bytes.size(); }
    Result<void> read(std::uint64_t offset, std::span<std::byte> into) const override;

private:
    std::span<const std::byte> m_bytes;
};

/// Opens a regular file for reading; `path` is in the program's own text. A file that shrinks while it
/// is open gives errors, never a signal. Errors: NotFound; Denied; Failed.
Result<std::unique_ptr<ByteSource>> openByteSource(const std::string& path);

} // namespace zv
