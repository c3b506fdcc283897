#include "drawing/container/FilePages.h"

namespace zv::dwg {

FilePages::FilePages(const std::vector<FilePage>& pages)
{
    for (const FilePage& page : pages)
        if (!page.isGap())
            m_pages.emplace(page.number, page);
}

void FilePages::take(std::uint64_t number, SectionPage& page)
{
    const auto found = m_pages.find(static_cast<std::int64_t>(number));
    if (found == m_pages.end())
        return;
    page.filePosition = found->second.position;
    page.fileSize = found->second.size;
    m_pages.erase(found);
}

Result<std::vector<std::byte>> readBytes(const ByteSource& source, std::uint64_t position, std::uint64_t size)
{
    if (position > source.size() || size > source.size() - position)
        return Error{ErrorCode::Damaged,
                     "page at " + std::to_string(position) + " lies beyond the end of the file"};
    std::vector<std::byte> bytes(size);
    if (const auto read = source.read(position, bytes); !read)
        return read.error();
    return bytes;
}

} // namespace zv::dwg
