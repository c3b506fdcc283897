#include "drawing/container/ContainerR13.h"

#include "drawing/bits/BitReader.h"
#include "drawing/container/FileStart.h"

#include <algorithm>

namespace zv::dwg {

namespace {

constexpr std::uint64_t kMostObjects = std::uint64_t{1} << 30;
constexpr std::size_t kLocatorCountAt = 0x15, kLocatorSize = 9, kMostLocators = 32;

int locatorNumber(Section which)
{
    switch (which) {
    case Section::Header:
        return 0;
    case Section::Classes:
        return 1;
    case Section::ObjectMap:
        return 2;
    case Section::Template:
        return 4;
    case Section::AuxHeader:
        return 5;
    default:
        return -1;
    }
}

Error outside(std::uint64_t offset, std::uint64_t length)
{
    return Error{ErrorCode::Damaged, std::to_string(length) + " bytes at " + std::to_string(offset) +
                                         " lie beyond the end of the file"};
}

} // namespace

Result<std::unique_ptr<Container>> ContainerR13::open(const ByteSource& source, Version version)
{
    std::array<std::byte, kLocatorCountAt + 4 + kMostLocators * kLocatorSize> start{};
    const std::size_t size = std::min<std::uint64_t>(start.size(), source.size());
    if (const auto read = source.read(0, std::span(start).first(size)); !read)
        return read.error();
    const FileStart fields(start);
    std::unique_ptr<ContainerR13> container(new ContainerR13(source));
    container->m_version = version;
    container->m_versionText = fields.versionText();
    container->m_codePage = fields.codePage();
    container->m_maintenance = fields.maintenance();
    container->m_previewPosition = fields.previewPosition();

    BitReader in(std::span<const std::byte>(start).first(size));
    in.seek(kLocatorCountAt * 8);
    const std::uint32_t count = in.rawLong();
    if (!in.ok() || count == 0 || count > kMostLocators)
        return Error{ErrorCode::Damaged, "section locators: a count of " + std::to_string(count)};
    for (std::uint32_t i = 0; i < count; ++i) {
        const std::size_t number = in.rawChar();
        const Locator locator{in.rawLong(), in.rawLong(), true};
        if (number < kLocators)
            container->m_locators[number] = locator;
    }
    if (!in.ok())
        return Error{ErrorCode::Damaged, "section locators: the file ends within them"};
    return std::unique_ptr<Container>(std::move(container));
}

Result<std::vector<std::byte>> ContainerR13::section(Section which) const
{
    if (which == Section::Objects) {
        if (m_source.size() > kMostObjects)
            return Error{ErrorCode::TooLarge, "the drawing is larger than 1 GiB"};
        return objectBytes(0, m_source.size());
    }
    if (which == Section::Preview)
        return preview();
    const int number = locatorNumber(which);
    if (number < 0 || !m_locators[number].present)
        return Error{ErrorCode::NotFound, "no such section in " + m_versionText};
    return objectBytes(m_locators[number].position, m_locators[number].size);
}

Result<std::vector<std::byte>> ContainerR13::preview() const
{
    constexpr std::uint64_t kSentinel = 16, kFrame = 2 * kSentinel + 4;
    const std::uint64_t fileSize = m_source.size();
    if (m_previewPosition == 0 || m_previewPosition + kFrame > fileSize)
        return Error{ErrorCode::NotFound, "no preview section"};
    std::array<std::byte, 4> length{};
    if (const auto read = m_source.read(m_previewPosition + kSentinel, length); !read)
        return read.error();
    const std::uint64_t size = kFrame + BitReader(length).rawLong();
    return objectBytes(m_previewPosition, std::min(size, fileSize - m_previewPosition));
}

Result<std::vector<std::byte>> ContainerR13::objectBytes(std::uint64_t offset, std::size_t length) const
{
    if (offset > m_source.size() || length > m_source.size() - offset)
        return outside(offset, length);
    std::vector<std::byte> bytes(length);
    if (const auto read = m_source.read(offset, bytes); !read)
        return read.error();
    return bytes;
}

} // namespace zv::dwg
