#pragma once

#include "platform/ByteSource.h"

#include <cstddef>
#include <cstdint>

/// The bytes that the fuzzer gives, as a source.
inline zv::MemorySource fuzzedSource(const std::uint8_t* data, std::size_t size)
{
    return zv::MemorySource(std::as_bytes(std::span(data, size)));
}
