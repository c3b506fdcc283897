#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace zv::dwg {

/// Bytes that are kept as text, for those who take bytes, and the other way round.
inline std::span<const std::byte> bytesOf(std::string_view text)
{
    return std::as_bytes(std::span(text.data(), text.size()));
}
inline std::string textOf(std::span<const std::byte> bytes)
{
    return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
}

} // namespace zv::dwg
