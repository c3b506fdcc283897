#include "drawing/container/Decompression.h"
#include "drawing/container/DecompressionOutput.h"

namespace zv::dwg {

namespace {

constexpr unsigned kEnd = 0x11;

/// A length that did not fit its bits: zeros stand for 255 each, the first other byte ends it.
std::size_t longLength(PackedInput& in, std::size_t length)
{
    unsigned byte = in.byte();
    while (byte == 0 && in.ok()) {
        length += 0xFF;
        byte = in.byte();
    }
    return length + byte;
}

std::size_t literalLength(PackedInput& in, unsigned code)
{
    return (code == 0 ? longLength(in, 0x0F) : code) + 3;
}

bool copyLiteral(PackedInput& in, UnpackedOutput& out, std::size_t count)
{
    const std::uint8_t* from = in.take(count);
    if (from == nullptr)
        return false;
    out.literal(from, count);
    return true;
}

/// One repetition. `literals` becomes the number of literal bytes that its code asks for besides.
bool copyRepeated(PackedInput& in, UnpackedOutput& out, unsigned code, unsigned& literals)
{
    std::size_t length = 0, distance = 0;
    if (code >= 0x40) {
        length = (code >> 4) - 1;
        distance = ((code >> 2 & 3) | in.byte() << 2) + 1;
        literals = code & 3;
    } else {
        const bool far = code < 0x20;
        const unsigned mask = far ? 0x07 : 0x1F;
        length = code & mask;
        if (length == 0)
            length = longLength(in, mask);
        length += 2;
        const unsigned low = in.byte();
        distance = (low >> 2 | in.byte() << 6) + (far ? ((code & 8) << 11) + 0x4000 : 1);
        literals = low & 3;
    }
    return in.ok() && out.repeat(distance, length);
}

} // namespace

std::optional<std::size_t> decompressR2004(std::span<const std::byte> packed, std::span<std::byte> into)
{
    PackedInput in(packed);
    UnpackedOutput out(into);
    unsigned code = in.byte();
    if (code > kEnd) {
        if (!copyLiteral(in, out, code - kEnd))
            return std::nullopt;
        code = in.byte();
    } else if (code < 0x10) {
        if (!copyLiteral(in, out, literalLength(in, code)))
            return std::nullopt;
        code = in.byte();
    }
    while (code != kEnd && !out.full()) {
        unsigned literals = 0;
        if (code < 0x10 || !copyRepeated(in, out, code, literals))
            return std::nullopt;
        std::size_t count = literals;
        if (literals == 0) {
            code = in.byte();
            if (code >= 0x10)
                continue;
            count = literalLength(in, code);
        }
        if (!copyLiteral(in, out, count))
            return std::nullopt;
        code = in.byte();
    }
    return in.ok() ? std::optional(out.written()) : std::nullopt;
}

} // namespace zv::dwg
