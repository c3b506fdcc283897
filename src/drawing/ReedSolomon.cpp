#include "drawing/ReedSolomon.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace zv::dwg {

namespace {

constexpr unsigned kPolynomial = 0x169; // x^8 + x^6 + x^5 + x^3 + 1 makes the field
constexpr int kOrder = 255;
constexpr std::size_t kMostGuards = 16;

struct Field {
    std::array<std::uint8_t, 2 * kOrder> power{};
    std::array<int, 256> log{};
};
constexpr Field kField = [] {
    Field field;
    unsigned x = 1;
    for (int i = 0; i < kOrder; ++i) {
        field.power[i] = field.power[i + kOrder] = static_cast<std::uint8_t>(x);
        field.log[x] = i;
        x <<= 1;
        if ((x & 0x100) != 0)
            x ^= kPolynomial;
    }
    return field;
}();

std::uint8_t multiply(std::uint8_t a, std::uint8_t b)
{
    return a == 0 || b == 0 ? 0 : kField.power[kField.log[a] + kField.log[b]];
}

std::uint8_t divide(std::uint8_t a, std::uint8_t b)
{
    return a == 0 ? 0 : kField.power[kField.log[a] + kOrder - kField.log[b]];
}

using Polynomial = std::array<std::uint8_t, kMostGuards + 1>; // lowest power first

std::uint8_t valueAt(std::span<const std::uint8_t> polynomial, std::uint8_t x)
{
    std::uint8_t value = 0;
    for (std::size_t i = polynomial.size(); i-- > 0;)
        value = multiply(value, x) ^ polynomial[i];
    return value;
}

/// The polynomial whose roots tell the wrong places (Berlekamp and Massey), and how many there are.
Polynomial locator(std::span<const std::uint8_t> syndromes, std::size_t& errors)
{
    Polynomial current{1}, previous{1};
    std::size_t length = 0, gap = 1;
    std::uint8_t last = 1;
    for (std::size_t n = 0; n < syndromes.size(); ++n) {
        std::uint8_t discrepancy = syndromes[n];
        for (std::size_t i = 1; i <= length; ++i)
            discrepancy ^= multiply(current[i], syndromes[n - i]);
        if (discrepancy == 0) {
            ++gap;
            continue;
        }
        const Polynomial before = current;
        const std::uint8_t factor = divide(discrepancy, last);
        for (std::size_t i = 0; i + gap < current.size(); ++i)
            current[i + gap] ^= multiply(factor, previous[i]);
        if (2 * length > n) {
            ++gap;
            continue;
        }
        length = n + 1 - length;
        previous = before;
        last = discrepancy;
        gap = 1;
    }
    errors = length;
    return current;
}

/// The size of the error at the place whose field element has this inverse (Forney).
std::uint8_t errorAt(const Polynomial& errors, std::span<const std::uint8_t> syndromes, std::uint8_t inverse)
{
    Polynomial evaluator{};
    for (std::size_t i = 0; i < syndromes.size(); ++i) {
        for (std::size_t j = 0; j <= i; ++j)
            evaluator[i] ^= multiply(errors[j], syndromes[i - j]);
    }
    std::uint8_t slope = 0;
    for (std::size_t i = 1; i < errors.size(); i += 2)
        slope ^= multiply(errors[i], kField.power[kField.log[inverse] * static_cast<int>(i - 1) % kOrder]);
    if (slope == 0)
        return 0;
    return divide(valueAt(std::span(evaluator).first(syndromes.size()), inverse), slope);
}

bool correctBlock(std::span<std::uint8_t, ReedSolomon::kBlock> block, std::size_t guards)
{
    std::array<std::uint8_t, kMostGuards> store{};
    const auto syndromes = std::span(store).first(guards);
    for (std::size_t i = 0; i < guards; ++i)
        syndromes[i] = valueAt(block, kField.power[i + 1]);
    if (std::all_of(syndromes.begin(), syndromes.end(), [](std::uint8_t s) { return s == 0; }))
        return true;
    std::size_t errors = 0;
    const Polynomial places = locator(syndromes, errors);
    if (errors > guards / 2)
        return false;
    std::size_t found = 0;
    for (int at = 0; at < kOrder; ++at) {
        const std::uint8_t inverse = kField.power[(kOrder - at) % kOrder];
        if (valueAt(places, inverse) != 0)
            continue;
        ++found;
        block[at] ^= errorAt(places, syndromes, inverse);
    }
    return found == errors;
}

} // namespace

std::vector<std::byte> ReedSolomon::data(std::span<const std::byte> woven, std::size_t blocks,
                                         std::size_t dataBytes)
{
    std::vector<std::byte> bytes(blocks * dataBytes);
    for (std::size_t block = 0; block < blocks; ++block) {
        std::byte* to = bytes.data() + block * dataBytes;
        for (std::size_t i = 0; i < dataBytes; ++i)
            to[i] = woven[i * blocks + block];
    }
    return bytes;
}

bool ReedSolomon::correct(std::span<std::byte> woven, std::size_t blocks, std::size_t dataBytes)
{
    bool all = true;
    for (std::size_t block = 0; block < blocks; ++block) {
        std::array<std::uint8_t, kBlock> bytes;
        for (std::size_t i = 0; i < kBlock; ++i)
            bytes[i] = std::to_integer<std::uint8_t>(woven[i * blocks + block]);
        if (!correctBlock(bytes, kBlock - dataBytes)) {
            all = false;
            continue;
        }
        for (std::size_t i = 0; i < kBlock; ++i)
            woven[i * blocks + block] = static_cast<std::byte>(bytes[i]);
    }
    return all;
}

} // namespace zv::dwg
