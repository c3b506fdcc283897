#pragma once

#include "drawing/Document.h"
#include "platform/Result.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace zv::dwg {

struct ObjectPlace {
    Handle handle = 0;
    std::uint64_t offset = 0; ///< Of the record, in bytes, in the stream of objects.
};

/// Where each object's record stands.
class ObjectMap {
public:
    /// Errors: Damaged, a part of the map is cut short or points before the stream.
    static Result<ObjectMap> read(std::span<const std::byte> section);

    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);
    /// The index into places(); kNone when the drawing has no such object.
    std::size_t find(Handle handle) const;
    /// By rising handle, each handle once.
    const std::vector<ObjectPlace>& places() const { return m_places; }

private:
    std::vector<ObjectPlace> m_places;
};

} // namespace zv::dwg
