#include "drawing/records/SectionReader.h"

namespace zv::dwg {

Result<RecordReader> openSection(std::span<const std::byte> section, Version version, int maintenance,
                                 int codePage)
{
    constexpr std::size_t kSentinel = 16;
    const Error cutShort{ErrorCode::Damaged, "a section of the drawing is cut short"};
    if (section.size() < kSentinel + 4)
        return cutShort;
    BitReader sizes(section.subspan(kSentinel));
    std::size_t size = sizes.rawLong();
    // The size has 64 bits in newer files; no section comes near the upper half.
    const bool wide = version >= Version::R2018 || (version >= Version::R2010 && maintenance > 3);
    if (wide)
        sizes.rawLong();
    const std::size_t start = kSentinel + sizes.position() / 8;
    if (!sizes.ok() || size > section.size() - start)
        return cutShort;
    RecordReader in(section.subspan(start, size), version, codePage);
    if (version >= Version::R2007)
        in.setHandlesAt(in.rawLong());
    if (!in.ok())
        return cutShort;
    return in;
}

} // namespace zv::dwg
