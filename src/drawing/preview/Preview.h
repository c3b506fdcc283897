#pragma once

#include "platform/ByteSource.h"
#include "platform/Result.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace zv::dwg {

enum class PreviewKind { None, Bmp, Wmf, Png };

/// One picture of the preview section, as stored: a device-independent bitmap without file header, or a PNG
/// file.
struct PreviewImage {
    PreviewKind kind = PreviewKind::None;
    int width = 0, height = 0; ///< Pixels; 0 for a metafile.
    int bits = 0;              ///< Per pixel.
    std::vector<std::byte> bytes;
};

/// The pictures embedded in a drawing, the one with the most pixels first; empty when it has none. Metafiles
/// are among them, last. Only the pages that hold them are read.
/// Errors: as Container::open; Damaged, there are pictures and each is cut short or has no valid header.
Result<std::vector<PreviewImage>> readPreviews(const ByteSource& source);

/// Pixels along an edge of a picture that is unpacked. Larger ones are no previews.
inline constexpr int kLargestPictureEdge = 4096;

/// A decoded picture: rows top first, four bytes a pixel in memory order blue, green, red, alpha (opaque:
/// 255).
struct Pixels {
    int width = 0, height = 0;
    std::vector<std::uint8_t> bgra;
};

/// Decodes a bitmap of 1, 4, 8, 16, 24 or 32 bits, plain or run-length coded.
/// Format: BITMAPINFOHEADER, as Microsoft publishes it. Errors: Damaged; Unsupported; TooLarge, over 4096 x
/// 4096.
Result<Pixels> decodeBitmap(std::span<const std::byte> dib);

} // namespace zv::dwg
