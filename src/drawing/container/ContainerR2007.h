#pragma once

#include "drawing/container/PagedContainer.h"

namespace zv::dwg {

/// R2007: header, map of pages and map of sections are guarded by an error-correcting code, and so are most
/// data pages.
class ContainerR2007 final : public PagedContainer {
public:
    /// Errors: Damaged.
    static Result<std::unique_ptr<Container>> open(const ByteSource& source, const FileStart& start);

protected:
    Result<void> unpackPage(const SectionEntry& section, const SectionPage& page,
                            std::span<std::byte> into) const override;

private:
    using PagedContainer::PagedContainer;
};

} // namespace zv::dwg
