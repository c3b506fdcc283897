#include "drawing/write/Pages.h"

#include "drawing/write/BitWriter.h"
#include "drawing/write/Bytes.h"

namespace zv::dwg {

namespace {

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

std::string packedSystemPage(std::string_view content, PageType type)
{
    const std::string packed = literalRun(content);
    std::string header;
    putLong(header, static_cast<std::uint32_t>(type));
    putLong(header, static_cast<std::uint32_t>(content.size()));
    putLong(header, static_cast<std::uint32_t>(packed.size()));
    putLong(header, kPacked);
    std::string page = header;
    putLong(header, 0);
    putLong(page, pageChecksum(pageChecksum(0, bytesOf(header)), bytesOf(packed)));
    page += packed;
    page.resize(roundedUp(page.size()), '\0');
    return page;
}

std::string dataPage(std::string_view content, std::uint32_t section, std::size_t offset,
                     std::uint64_t position)
{
    const std::uint32_t sum = pageChecksum(0, bytesOf(content));
    std::uint32_t fields[8] = {static_cast<std::uint32_t>(PageType::Data),
                               section,
                               static_cast<std::uint32_t>(content.size()),
                               static_cast<std::uint32_t>(DataPageHeader::kSize + content.size()),
                               static_cast<std::uint32_t>(offset),
                               0,
                               0,
                               sum};
    std::string header;
    for (const std::uint32_t field : fields)
        putLong(header, field);
    fields[6] = pageChecksum(sum, bytesOf(header));
    std::string page;
    for (const std::uint32_t field : fields)
        putLong(page, field ^ DataPageHeader::mask(position));
    return page + std::string(content);
}

} // namespace zv::dwg
