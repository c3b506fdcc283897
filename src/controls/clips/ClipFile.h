#pragma once

#include "platform/Result.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

/// A silent clip of uncompressed frames.
struct Clip {
    int width = 0;     ///< Pixels, 1 to kMaxClipEdge.
    int height = 0;    ///< Pixels, 1 to kMaxClipEdge.
    int frameMs = 100; ///< How long a frame stands, 10 to 10000.
    /// Each frame holds height rows from the top, each of width pixels as 0x00RRGGBB.
    std::vector<std::vector<std::uint32_t>> frames;
};

constexpr int kMaxClipEdge = 1024;
constexpr std::size_t kMaxClipBytes = 32U << 20; ///< Of a clip's file.

/// Reads a clip from the bytes of its file.
/// Errors: Unsupported, frames are not uncompressed pictures of 24 or 32 bits; TooLarge, a side, or the
/// whole, goes beyond the limits; Damaged, anything else that is not a clip with at least one whole frame.
/// Format: AVI RIFF, as Microsoft publishes it.
Result<Clip> readClip(std::string_view bytes);

/// The bytes of a clip's file, with frames of 24 bits. Every frame must have width * height pixels.
std::string writeClip(const Clip& clip);

} // namespace zv
