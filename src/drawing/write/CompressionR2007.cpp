#include "drawing/write/CompressionR2007.h"

#include "drawing/container/LiteralOrderR2007.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>

namespace zv::dwg {

namespace {

/// Bytes that stand earlier as well.
struct Match {
    std::size_t length = 0, distance = 0;
};

/// Finds the last place where three bytes stood before.
class MatchFinder {
public:
    static constexpr std::size_t kShortest = 3;

    explicit MatchFinder(std::string_view bytes) : m_bytes(bytes) {}

    /// The bytes at `at` that stand earlier as well, if a repetition of them is shorter than they are.
    Match find(std::size_t at)
    {
        constexpr std::size_t kLongest = 255, kFarthest = 0xFFFF;
        addUpTo(at);
        if (m_bytes.size() - at < kShortest)
            return {};
        const auto found = m_last.find(key(at));
        if (found == m_last.end() || at - found->second > kFarthest)
            return {};
        Match match{kShortest, at - found->second};
        const std::size_t most = std::min(kLongest, m_bytes.size() - at);
        while (match.length < most && m_bytes[found->second + match.length] == m_bytes[at + match.length])
            ++match.length;
        const std::size_t cost = match.distance <= kNear ? 2 : match.distance <= kMiddle ? 3 : 4;
        return match.length > cost ? match : Match();
    }

    static constexpr std::size_t kNear = 1 << 9, kMiddle = 1 << 13;

private:
    std::uint32_t key(std::size_t at) const
    {
        std::uint32_t value = 0;
        for (std::size_t i = 0; i < kShortest; ++i)
            value = value << 8 | static_cast<unsigned char>(m_bytes[at + i]);
        return value;
    }
    void addUpTo(std::size_t at)
    {
        for (; m_added < at && m_bytes.size() - m_added >= kShortest; ++m_added)
            m_last[key(m_added)] = m_added;
    }

    std::string_view m_bytes;
    std::unordered_map<std::uint32_t, std::size_t> m_last;
    std::size_t m_added = 0;
};

/// The packed bytes while they come about. A literal run of up to seven bytes is told in the last byte of the
/// repetition before it, a longer one has a code of its own.
class Packed {
public:
    static constexpr std::size_t kLongRun = 8;

    void literal(std::string_view bytes)
    {
        if (bytes.empty())
            return;
        if (bytes.size() < kLongRun)
            m_bytes[m_tail] = static_cast<char>(m_bytes[m_tail] | static_cast<char>(bytes.size()));
        else
            length(bytes.size());
        for (; !bytes.empty(); bytes.remove_prefix(std::min(kLiteralRun, bytes.size()))) {
            const std::size_t run = std::min(kLiteralRun, bytes.size());
            std::string turned(run, '\0');
            for (std::size_t i = 0; i < run; ++i)
                turned[kLiteralOrder[run][i]] = bytes[i];
            m_bytes += turned;
        }
    }
    void repetition(Match match)
    {
        constexpr std::size_t kShort = 14, kMiddle = 18;
        const std::size_t back = match.distance - 1;
        if (match.length <= kShort && match.distance <= MatchFinder::kNear) {
            put(match.length << 4 | (back & 0xF));
            put(back >> 4 << 3);
        } else if (match.length <= kMiddle && match.distance <= MatchFinder::kMiddle) {
            put(0x10 | (match.length - 3));
            put(back & 0xFF);
            put(back >> 8 << 3);
        } else {
            put(0x20 | (match.length & 7));
            put(match.distance & 0xFF);
            put(match.distance >> 8);
            put(match.length & 0xF8);
        }
        m_tail = m_bytes.size() - 1;
    }
    std::string take() { return std::move(m_bytes); }

private:
    void put(std::size_t byte) { m_bytes.push_back(static_cast<char>(byte)); }
    void length(std::size_t size)
    {
        constexpr std::size_t kLast = 15, kByte = 0xFF, kShort = 0xFFFF;
        std::size_t rest = size - kLongRun;
        put(std::min(rest, kLast));
        if (rest < kLast)
            return;
        rest -= kLast;
        put(std::min(rest, kByte));
        if (rest < kByte)
            return;
        for (rest -= kByte;; rest -= kShort) {
            const std::size_t part = std::min(rest, kShort);
            put(part & 0xFF);
            put(part >> 8);
            if (part < kShort)
                return;
        }
    }

    std::string m_bytes;
    std::size_t m_tail = 0; ///< The last byte of the last repetition.
};

} // namespace

std::string compressR2007(std::string_view bytes)
{
    if (bytes.size() <= Packed::kLongRun)
        return std::string(bytes);
    MatchFinder finder(bytes);
    Packed packed;
    std::size_t literal = 0;
    // A page begins with a literal run that has a code of its own.
    for (std::size_t at = Packed::kLongRun; at < bytes.size();) {
        const Match match = finder.find(at);
        if (match.length == 0) {
            ++at;
            continue;
        }
        packed.literal(bytes.substr(literal, at - literal));
        packed.repetition(match);
        literal = at += match.length;
    }
    packed.literal(bytes.substr(literal));
    std::string result = packed.take();
    return result.size() < bytes.size() ? result : std::string(bytes);
}

} // namespace zv::dwg
