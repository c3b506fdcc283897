#include "search/ListFeed.h"

#include "platform/FileText.h"

#include <algorithm>
#include <span>

namespace zv {

namespace {

constexpr std::size_t kPiece = 1U << 20;
constexpr std::size_t kLongestLine = 1U << 20;
constexpr const char* kLineEnds = "\r\n";

} // namespace

bool ListFeed::hasLine() const
{
    const std::size_t end = m_bytes.find_first_of(kLineEnds, m_next);
    // A CR that stands last may have its LF still to come.
    return end != std::string::npos && (m_bytes[end] == '\n' || end + 1 < m_bytes.size());
}

std::string ListFeed::takeLine()
{
    const std::size_t end = m_bytes.find_first_of(kLineEnds, m_next);
    std::string line = m_bytes.substr(m_next, end - m_next);
    m_next = end + (m_bytes.compare(end, 2, "\r\n") == 0 ? 2 : 1);
    return textFromFile(std::move(line));
}

std::optional<std::string> ListFeed::takeRest()
{
    if (m_next == m_bytes.size())
        return {};
    std::string rest = m_bytes.substr(m_next);
    m_next = m_bytes.size();
    if (rest.back() == '\r')
        rest.pop_back();
    return textFromFile(std::move(rest));
}

std::size_t ListFeed::expectedLines() const
{
    const std::uint64_t size = m_file->size();
    if (m_place == 0 || m_place >= size)
        return m_knownLines;
    return static_cast<std::size_t>(double(m_knownLines) * double(size) / double(m_place));
}

Result<bool> ListFeed::readOn()
{
    m_file->refreshSize();
    const std::uint64_t left = m_file->size() - std::min(m_file->size(), m_place);
    if (left == 0)
        return false;
    m_bytes.erase(0, m_next);
    m_next = 0;
    if (m_bytes.size() > kLongestLine)
        return Error{ErrorCode::TooLarge, "no line of a list is so long"};
    const std::size_t before = m_bytes.size();
    m_bytes.resize(before + std::min<std::uint64_t>(left, kPiece));
    const auto piece = std::as_writable_bytes(std::span(m_bytes)).subspan(before);
    if (const Result<void> read = m_file->read(m_place, piece); !read)
        return read.error();
    m_place += piece.size();
    for (std::size_t at = before; at < m_bytes.size(); ++at)
        m_knownLines += m_bytes[at] == '\n' || (m_bytes[at] == '\r' && m_bytes.compare(at, 2, "\r\n") != 0);
    return true;
}

} // namespace zv
