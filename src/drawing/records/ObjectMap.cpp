#include "drawing/records/ObjectMap.h"

#include "drawing/bits/BitReader.h"

#include <algorithm>

namespace zv::dwg {

namespace {

/// One part of the map; each starts counting anew. False when it is damaged.
bool readPart(std::span<const std::byte> bytes, std::vector<ObjectPlace>& places)
{
    BitReader in(bytes);
    Handle handle = 0;
    std::int64_t offset = 0;
    while (in.left() >= 16) {
        const std::uint64_t step = in.modularCharUnsigned();
        offset += in.modularChar();
        if (!in.ok() || offset < 0)
            return false;
        handle += step;
        // A step of nothing names no object.
        if (step != 0)
            places.push_back({handle, static_cast<std::uint64_t>(offset)});
    }
    return true;
}

} // namespace

Result<ObjectMap> ObjectMap::read(std::span<const std::byte> section)
{
    constexpr std::size_t kCheckSum = 2;
    ObjectMap map;
    std::size_t at = 0;
    for (;;) {
        if (section.size() - at < 2)
            return Error{ErrorCode::Damaged, "the object map has no end"};
        const std::size_t size =
            std::to_integer<std::size_t>(section[at]) << 8 | std::to_integer<std::size_t>(section[at + 1]);
        if (size == kCheckSum)
            break;
        if (size < kCheckSum || size + kCheckSum > section.size() - at)
            return Error{ErrorCode::Damaged, "a part of the object map is cut short"};
        if (!readPart(section.subspan(at + 2, size - 2), map.m_places))
            return Error{ErrorCode::Damaged, "a part of the object map is damaged"};
        at += size + kCheckSum;
    }
    // A later entry stands for the newer record of the same object.
    auto& places = map.m_places;
    const auto byHandle = [](const ObjectPlace& a, const ObjectPlace& b) { return a.handle < b.handle; };
    if (!std::is_sorted(places.begin(), places.end(), byHandle))
        std::stable_sort(places.begin(), places.end(), byHandle);
    const auto same = [](const ObjectPlace& a, const ObjectPlace& b) { return a.handle == b.handle; };
    const auto last = std::unique(places.rbegin(), places.rend(), same);
    places.erase(places.begin(), last.base());
    return map;
}

std::size_t ObjectMap::find(Handle handle) const
{
    const auto found =
        std::lower_bound(m_places.begin(), m_places.end(), handle,
                         [](const ObjectPlace& place, Handle wanted) { return place.handle < wanted; });
    if (found == m_places.end() || found->handle != handle)
        return kNone;
    return static_cast<std::size_t>(found - m_places.begin());
}

} // namespace zv::dwg
