#include "drawing/container/ReedSolomon.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <utility>

namespace zv::dwg {

namespace {

constexpr int kOrder = 255;
constexpr std::size_t kPowers = std::size_t{2} * kOrder;
constexpr std::size_t kMostGuards = 16;

/// The field of 256 elements that a polynomial makes.
struct Field {
    std::array<std::uint8_t, kPowers> power{};
    std::array<int, 256> log{};
    /// Products with the roots of the code, which are the powers from 1 on.
    std::array<std::array<std::uint8_t, 256>, kMostGuards> timesRoot{};

    constexpr explicit Field(unsigned polynomial)
    {
        unsigned x = 1;
        for (int i = 0; i < kOrder; ++i) {
            power[i] = power[i + kOrder] = static_cast<std::uint8_t>(x);
            log[x] = i;
            x <<= 1;
            if ((x & 0x100) != 0)
                x ^= polynomial;
        }
        for (std::size_t root = 0; root < kMostGuards; ++root) {
            for (unsigned value = 1; value < 256; ++value)
                timesRoot[root][value] = power[log[value] + static_cast<int>(root) + 1];
        }
    }
    std::uint8_t multiply(std::uint8_t a, std::uint8_t b) const
    {
        return a == 0 || b == 0 ? 0 : power[log[a] + log[b]];
    }
    std::uint8_t divide(std::uint8_t a, std::uint8_t b) const
    {
        return a == 0 ? 0 : power[log[a] + kOrder - log[b]];
    }
};
// x^8 + x^6 + x^5 + x^3 + 1 for system pages, x^8 + x^4 + x^3 + x^2 + 1 for data pages.
constexpr Field kSystemField(0x169), kPageField(0x11D);

const Field& fieldOf(std::size_t dataBytes)
{
    return dataBytes == ReedSolomon::kSystemData ? kSystemField : kPageField;
}

using Polynomial = std::array<std::uint8_t, kMostGuards + 1>; // lowest power first

/// Corrects a block, whose bytes are a polynomial with the lowest power first, by its values at the roots of
/// the code, which are 0 for a block without errors.
class BlockCorrector {
public:
    BlockCorrector(const Field& field, std::span<const std::uint8_t> syndromes)
        : m_field(field), m_guards(syndromes.size())
    {
        std::copy(syndromes.begin(), syndromes.end(), m_syndromes.begin());
    }

    bool correct(std::span<std::byte> woven, std::size_t block, std::size_t blocks)
    {
        const std::size_t errors = findLocator();
        if (errors > m_guards / 2)
            return false;
        const Polynomial evaluator = product();
        std::vector<std::pair<std::size_t, std::uint8_t>> found;
        for (int at = 0; at < kOrder; ++at) {
            const std::uint8_t inverse = m_field.power[(kOrder - at) % kOrder];
            if (valueAt(m_locator, inverse) == 0)
                found.emplace_back(at, errorAt(evaluator, inverse));
        }
        if (found.size() != errors)
            return false;
        for (const auto& [at, error] : found)
            woven[at * blocks + block] ^= static_cast<std::byte>(error);
        return true;
    }

private:
    std::uint8_t valueAt(std::span<const std::uint8_t> polynomial, std::uint8_t x) const
    {
        const int step = m_field.log[x];
        std::uint8_t value = 0;
        for (std::size_t i = polynomial.size(); i-- > 0;)
            value = (value == 0 ? 0 : m_field.power[m_field.log[value] + step]) ^ polynomial[i];
        return value;
    }

    /// The polynomial whose roots tell the wrong places (Berlekamp and Massey); gives how many there are.
    std::size_t findLocator()
    {
        m_locator = {1};
        Polynomial previous{1};
        std::size_t length = 0, gap = 1;
        std::uint8_t last = 1;
        for (std::size_t n = 0; n < m_guards; ++n) {
            std::uint8_t discrepancy = m_syndromes[n];
            for (std::size_t i = 1; i <= length; ++i)
                discrepancy ^= m_field.multiply(m_locator[i], m_syndromes[n - i]);
            if (discrepancy == 0) {
                ++gap;
                continue;
            }
            const Polynomial before = m_locator;
            const std::uint8_t factor = m_field.divide(discrepancy, last);
            for (std::size_t i = 0; i + gap < m_locator.size(); ++i)
                m_locator[i + gap] ^= m_field.multiply(factor, previous[i]);
            if (2 * length > n) {
                ++gap;
                continue;
            }
            length = n + 1 - length;
            previous = before;
            last = discrepancy;
            gap = 1;
        }
        return length;
    }

    /// Locator times syndromes, which gives the sizes of the errors.
    Polynomial product() const
    {
        Polynomial result{};
        for (std::size_t i = 0; i < m_guards; ++i) {
            for (std::size_t j = 0; j <= i; ++j)
                result[i] ^= m_field.multiply(m_locator[j], m_syndromes[i - j]);
        }
        return result;
    }

    /// The size of the error at the place whose element has this inverse (Forney).
    std::uint8_t errorAt(const Polynomial& evaluator, std::uint8_t inverse) const
    {
        std::uint8_t slope = 0;
        for (std::size_t i = 1; i < m_locator.size(); i += 2) {
            const int power = m_field.log[inverse] * static_cast<int>(i - 1) % kOrder;
            slope ^= m_field.multiply(m_locator[i], m_field.power[power]);
        }
        return slope == 0 ? 0 : m_field.divide(valueAt(evaluator, inverse), slope);
    }

    const Field& m_field;
    std::size_t m_guards;
    std::array<std::uint8_t, kMostGuards> m_syndromes{};
    Polynomial m_locator{};
};

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
    const Field& field = fieldOf(dataBytes);
    const std::size_t guards = kBlock - dataBytes;
    // All blocks side by side, as they are stored: that keeps many sums running at once.
    std::vector<std::uint8_t> sums(guards * blocks);
    for (std::size_t i = kBlock; i-- > 0;) {
        const std::byte* row = woven.data() + i * blocks;
        for (std::size_t guard = 0; guard < guards; ++guard) {
            const auto& times = field.timesRoot[guard];
            std::uint8_t* sum = sums.data() + guard * blocks;
            for (std::size_t block = 0; block < blocks; ++block)
                sum[block] = times[sum[block]] ^ std::to_integer<std::uint8_t>(row[block]);
        }
    }
    bool all = true;
    for (std::size_t block = 0; block < blocks; ++block) {
        std::array<std::uint8_t, kMostGuards> syndromes{};
        std::uint8_t any = 0;
        for (std::size_t guard = 0; guard < guards; ++guard) {
            syndromes[guard] = sums[guard * blocks + block];
            any |= syndromes[guard];
        }
        if (any != 0)
            all &= BlockCorrector(field, std::span(syndromes).first(guards)).correct(woven, block, blocks);
    }
    return all;
}

// Data and guards together must be divisible by the product of all (x - root). The guards stand at the powers
// from dataBytes on, and x to the 255th is 1 there: so they are what is left of the data times x to the power
// of their count, divided by that product.
std::vector<std::byte> ReedSolomon::guards(std::span<const std::byte> data, std::size_t dataBytes)
{
    const Field& field = fieldOf(dataBytes);
    const std::size_t count = kBlock - dataBytes;
    Polynomial divisor{1};
    for (std::size_t root = 1; root <= count; ++root) {
        for (std::size_t i = root; i > 0; --i)
            divisor[i] = divisor[i - 1] ^ field.multiply(divisor[i], field.power[root]);
        divisor[0] = field.multiply(divisor[0], field.power[root]);
    }
    Polynomial rest{};
    const auto shiftIn = [&](std::uint8_t next) {
        const std::uint8_t factor = rest[count - 1];
        for (std::size_t i = count - 1; i > 0; --i)
            rest[i] = rest[i - 1] ^ field.multiply(factor, divisor[i]);
        rest[0] = next ^ field.multiply(factor, divisor[0]);
    };
    for (std::size_t i = data.size(); i-- > 0;)
        shiftIn(std::to_integer<std::uint8_t>(data[i]));
    for (std::size_t i = 0; i < count; ++i)
        shiftIn(0);
    std::vector<std::byte> guards(count);
    std::transform(rest.begin(), rest.begin() + static_cast<std::ptrdiff_t>(count), guards.begin(),
                   [](std::uint8_t value) { return static_cast<std::byte>(value); });
    return guards;
}

std::vector<std::byte> ReedSolomon::woven(std::span<const std::byte> data, std::size_t dataBytes)
{
    const std::size_t count = blocks(data.size(), dataBytes);
    std::vector<std::byte> result(count * kBlock);
    for (std::size_t block = 0; block < count; ++block) {
        const auto own =
            data.subspan(block * dataBytes, std::min(dataBytes, data.size() - block * dataBytes));
        const std::vector<std::byte> guarding = guards(own, dataBytes);
        for (std::size_t i = 0; i < own.size(); ++i)
            result[i * count + block] = own[i];
        for (std::size_t i = 0; i < guarding.size(); ++i)
            result[(dataBytes + i) * count + block] = guarding[i];
    }
    return result;
}

} // namespace zv::dwg
