#pragma once

#include "drawing/container/MapsR2007.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace zv::dwg {

/// The check of unpacked pages in the map of sections.
std::uint32_t checksumR2007(std::string_view bytes);
/// The check of packed pages and of the maps.
std::uint64_t pageCodeR2007(std::string_view bytes);

/// A map as its page stands in the file, with what the header tells of it.
struct SystemPageR2007 {
    explicit SystemPageR2007(std::string_view content);

    std::string page;
    std::uint64_t size = 0, packedSize = 0;
    std::uint64_t repeats = 0; ///< The packed bytes stand in the page that many times.
    std::uint64_t code = 0, packedCode = 0;
};

/// How long the page of a map of `size` bytes is.
std::size_t systemPageSize(std::size_t size);
/// A page that is neither packed nor woven, so that other programs can read it at its place. It has room for
/// `room` bytes of content.
std::string plainPage(std::string_view content, std::size_t room);
/// The header as it stands in the file at HeaderR2007::kAt, without what follows its blocks up to the first
/// page.
std::string headerPage(HeaderR2007 header);

} // namespace zv::dwg
