#include "drawing/container/Decompression.h"
#include "drawing/container/DecompressionOutput.h"
#include "drawing/container/LiteralOrderR2007.h"

#include <array>

namespace zv::dwg {

namespace {

bool copyLiteral(PackedInput& in, UnpackedOutput& out, std::size_t count)
{
    const std::uint8_t* from = in.take(count);
    if (from == nullptr)
        return false;
    while (count != 0 && !out.full()) {
        const std::size_t run = std::min(count, kLiteralRun);
        const auto& order = kLiteralOrder[run];
        std::array<std::uint8_t, kLiteralRun> turned;
        for (std::size_t i = 0; i < run; ++i)
            turned[i] = from[order[i]];
        out.literal(turned.data(), run);
        from += run;
        count -= run;
    }
    return true;
}

std::size_t literalLength(PackedInput& in, unsigned code)
{
    std::size_t length = code + 8;
    if (length != 0x17)
        return length;
    unsigned more = in.byte();
    length += more;
    if (more != 0xFF)
        return length;
    do {
        more = in.byte();
        more |= in.byte() << 8;
        length += more;
    } while (more == 0xFFFF && in.ok());
    return length;
}

struct Repetition {
    std::size_t length = 0, distance = 0;
    unsigned code = 0; ///< Its lowest three bits: the number of literal bytes that follow.
};

Repetition readRepetition(PackedInput& in, unsigned code)
{
    Repetition r;
    switch (code >> 4) {
    case 0:
        r.distance = in.byte();
        r.code = in.byte();
        r.length = (code & 0xF) + 0x13 + (r.code >> 3 & 0x10);
        r.distance += ((r.code & 0x78) << 5) + 1;
        break;
    case 1:
        r.distance = in.byte();
        r.code = in.byte();
        r.length = (code & 0xF) + 3;
        r.distance += ((r.code & 0xF8) << 5) + 1;
        break;
    case 2:
        r.distance = in.byte();
        r.distance |= in.byte() << 8;
        r.length = code & 7;
        if ((code & 8) == 0) {
            r.code = in.byte();
            r.length += r.code & 0xF8;
        } else {
            ++r.distance;
            r.length += in.byte() << 3;
            r.code = in.byte();
            r.length += ((r.code & 0xF8) << 8) + 0x100;
        }
        break;
    default:
        r.length = code >> 4;
        r.distance = code & 0xF;
        r.code = in.byte();
        r.distance += ((r.code & 0xF8) << 1) + 1;
        break;
    }
    return r;
}

/// Repetitions up to the next literal run. `code` becomes that run's code, `literals` its length when the
/// last repetition told it.
bool copyRepetitions(PackedInput& in, UnpackedOutput& out, unsigned& code, std::size_t& literals)
{
    code = in.byte();
    for (;;) {
        const Repetition repetition = readRepetition(in, code);
        if (!in.ok() || !out.repeat(repetition.distance, repetition.length))
            return false;
        literals = repetition.code & 7;
        if (literals != 0 || in.left() == 0)
            return true;
        code = in.byte();
        if (code >> 4 == 0)
            return true;
        if (code >> 4 == 15)
            code &= 15;
    }
}

} // namespace

std::optional<std::size_t> decompressR2007(std::span<const std::byte> packed, std::span<std::byte> into)
{
    PackedInput in(packed);
    UnpackedOutput out(into);
    unsigned code = in.byte();
    std::size_t literals = 0;
    if ((code & 0xF0) == 0x20) {
        in.take(2);
        literals = in.byte() & 7;
    }
    while (in.left() != 0 && !out.full()) {
        if (literals == 0)
            literals = literalLength(in, code);
        if (!copyLiteral(in, out, literals))
            return std::nullopt;
        if (in.left() != 0 && !out.full() && !copyRepetitions(in, out, code, literals))
            return std::nullopt;
    }
    return in.ok() ? std::optional(out.written()) : std::nullopt;
}

} // namespace zv::dwg
