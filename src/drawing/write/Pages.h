#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace zv::dwg {

/// Kinds of system pages.
inline constexpr std::uint32_t kPageMapPage = 0x41630E3B, kSectionMapPage = 0x4163003B;
inline constexpr std::size_t kDataPageHeader = 32;

/// Hides the header of AC1018 and later, or shows it.
void maskHeader(std::string& header);
/// The check code of the header shown, its own field zero.
std::uint32_t headerCode(std::string_view header);

/// The content of a system page; no value when it cannot be read.
std::optional<std::string> systemPage(std::string_view file, std::uint64_t position, std::uint32_t type);
/// A system page with that content, packed as one literal run.
std::string packedSystemPage(std::string_view content, std::uint32_t type);
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
