#pragma once

#include "drawing/container/PagesR2004.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace zv::dwg {

/// A page of the system with that content, packed as one literal run.
std::string packedSystemPage(std::string_view content, PageType type);
/// A data page, not packed, as it stands at `position` of the file; its content begins at `offset` of the
/// section.
std::string dataPage(std::string_view content, std::uint32_t section, std::size_t offset,
                     std::uint64_t position);

/// Pages are as long as a multiple of this.
constexpr std::size_t roundedUp(std::size_t size)
{
    constexpr std::size_t kStep = 0x20;
    return (size + kStep - 1) / kStep * kStep;
}

} // namespace zv::dwg
