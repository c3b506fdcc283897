#include "platform/ByteSource.h"

#include <algorithm>

namespace zv {

Result<void> MemorySource::read(std::uint64_t offset, std::span<std::byte> into) const
{
    if (offset > m_bytes.size() || into.size() > m_bytes.size() - offset)
        return Error{ErrorCode::Damaged, "the data ends too early"};
    std::copy_n(m_bytes.begin() + static_cast<std::ptrdiff_t>(offset), into.size(), into.begin());
    return {};
}

} // namespace zv
