#include "drawing/write/Pages.h"

#include "drawing/BitReader.h"
#include "drawing/Decompression.h"
#include "drawing/write/BitWriter.h"

namespace zv::dwg {

namespace {

constexpr std::size_t kSystemHeader = 20;
constexpr std::uint32_t kPacked = 2;

/// Two running sums, as in Adler-32, of the bytes on top of `seed`.
std::uint32_t pageSum(std::uint32_t seed, std::string_view bytes)
{
    constexpr std::uint32_t kModulus = 0xFFF1;
    std::uint32_t low = seed & 0xFFFF, high = seed >> 16;
    for (const char c : bytes) {
        low = (low + static_cast<unsigned char>(c)) % kModulus;
        high = (high + low) % kModulus;
    }
    return high << 16 | low;
}

/// One literal run and the mark of the end.
std::string literalRun(std::string_view content)
{
    constexpr std::size_t kShort = 3, kLong = 15, kStep = 255;
    std::string packed;
    std::size_t length = content.size() - kShort;
    if (length <= kLong) {
        packed.push_back(static_cast<char>(length));
    } else {
        packed.push_back('\0');
        for (length -= kLong; length > kStep; length -= kStep)
            packed.push_back('\0');
        packed.push_back(static_cast<char>(length));
    }
    packed += content;
    return packed + std::string("\x11\0\0", 3);
}

} // namespace

void maskHeader(std::string& header)
{
    std::uint32_t random = 1;
    for (char& byte : header) {
        random = random * 0x343FD + 0x269EC3;
        byte = static_cast<char>(static_cast<unsigned char>(byte) ^ (random >> 16 & 0xFF));
    }
}

std::uint32_t headerCode(std::string_view header)
{
    std::uint32_t code = 0xFFFFFFFF;
    for (const char c : header) {
        code ^= static_cast<unsigned char>(c);
        for (int bit = 0; bit < 8; ++bit)
            code = (code & 1) != 0 ? code >> 1 ^ 0xEDB88320 : code >> 1;
    }
    return ~code;
}

std::optional<std::string> systemPage(std::string_view file, std::uint64_t position, std::uint32_t type)
{
    constexpr std::uint64_t kMostUnpacked = 256;
    if (position > file.size() || file.size() - position < kSystemHeader)
        return {};
    const std::string_view from = file.substr(static_cast<std::size_t>(position));
    BitReader in(std::as_bytes(std::span(from.data(), from.size())));
    const bool right = in.rawLong() == type;
    const std::uint32_t size = in.rawLong(), packedSize = in.rawLong(), packing = in.rawLong();
    if (!right || packedSize > from.size() - kSystemHeader || size > kMostUnpacked * packedSize)
        return {};
    const std::string_view packed = from.substr(kSystemHeader, packedSize);
    if (packing != kPacked)
        return std::string(packed);
    std::string content(size, '\0');
    const auto unpacked = decompressR2004(std::as_bytes(std::span(packed.data(), packed.size())),
                                          std::as_writable_bytes(std::span(content.data(), content.size())));
    if (unpacked != size)
        return {};
    return content;
}

std::string packedSystemPage(std::string_view content, std::uint32_t type)
{
    const std::string packed = literalRun(content);
    std::string header;
    putLong(header, type);
    putLong(header, static_cast<std::uint32_t>(content.size()));
    putLong(header, static_cast<std::uint32_t>(packed.size()));
    putLong(header, kPacked);
    std::string page = header;
    putLong(header, 0);
    putLong(page, pageSum(pageSum(0, header), packed));
    page += packed;
    page.resize(roundedUp(page.size()), '\0');
    return page;
}

std::string dataPage(std::string_view content, std::uint32_t section, std::size_t offset,
                     std::uint64_t position)
{
    constexpr std::uint32_t kType = 0x4163043B, kMask = 0x4164536B;
    const std::uint32_t sum = pageSum(0, content);
    std::uint32_t fields[8] = {kType,
                               section,
                               static_cast<std::uint32_t>(content.size()),
                               static_cast<std::uint32_t>(kDataPageHeader + content.size()),
                               static_cast<std::uint32_t>(offset),
                               0,
                               0,
                               sum};
    std::string header;
    for (const std::uint32_t field : fields)
        putLong(header, field);
    fields[6] = pageSum(sum, header);
    std::string page;
    for (const std::uint32_t field : fields)
        putLong(page, field ^ kMask ^ static_cast<std::uint32_t>(position));
    return page + std::string(content);
}

} // namespace zv::dwg
