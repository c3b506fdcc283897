#pragma once

#include "drawing/container/PagedContainer.h"

namespace zv::dwg {

/// R2004, R2010, R2013 and R2018: an encrypted header leads to the map of pages and the map of sections; data
/// pages have masked headers.
class ContainerR2004 final : public PagedContainer {
public:
    /// Errors: Damaged.
    static Result<std::unique_ptr<Container>> open(const ByteSource& source, const FileStart& start);

protected:
    Result<void> unpackPage(const SectionEntry& section, const SectionPage& page,
                            std::span<std::byte> into) const override;

private:
    ContainerR2004(const ByteSource& source, const FileStart& start);

    bool m_encrypted;
};

} // namespace zv::dwg
