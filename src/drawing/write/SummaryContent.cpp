#include "drawing/write/SummaryContent.h"

#include "drawing/bits/BitReader.h"
#include "drawing/properties/PropertyTexts.h"
#include "drawing/write/BitWriter.h"
#include "drawing/write/Record.h"
#include "drawing/write/Tables.h"

namespace zv::dwg {

namespace {

constexpr std::size_t kTimes = 24;

/// Texts, each with its length, which counts the zero at its end.
class TextWriter {
public:
    TextWriter(std::string& bytes, const Container& container)
        : m_bytes(bytes), m_wide(container.version() >= Version::R2007), m_codePage(container.codePage())
    {
    }

    /// False when the text is longer than its length can tell.
    bool add(const Text& text)
    {
        const std::string bytes = m_wide ? std::string() : encodeText(text, m_codePage);
        const std::size_t length = (m_wide ? text.size() : bytes.size()) + 1;
        if (length > 0xFFFF)
            return false;
        putShort(m_bytes, static_cast<std::uint16_t>(length));
        if (m_wide) {
            for (const char16_t unit : text)
                putShort(m_bytes, unit);
            putShort(m_bytes, 0);
        } else {
            m_bytes += bytes + '\0';
        }
        return true;
    }

private:
    std::string& m_bytes;
    bool m_wide;
    int m_codePage;
};

/// The times of a section: of editing, of making, of the last change.
std::string timesOf(std::span<const std::byte> section, bool wide)
{
    BitReader in(section);
    const Properties all;
    eachSummaryText(all, [&](const Text&) { in.skip(std::size_t{in.rawShort()} * (wide ? 16 : 8)); });
    std::string times = in.bytes(kTimes);
    times.resize(kTimes, '\0');
    return times;
}

} // namespace

Result<std::string> summaryContent(const Container& container, std::span<const std::byte> old,
                                   const Properties& p)
{
    constexpr std::size_t kMostCustom = 0x7FFF;
    if (p.custom.size() > kMostCustom)
        return Error{ErrorCode::Unsupported, "too many custom properties"};
    std::string bytes;
    TextWriter texts(bytes, container);
    bool whole = true;
    eachSummaryText(p, [&](const Text& text) { whole &= texts.add(text); });
    bytes += timesOf(old, container.version() >= Version::R2007);
    putShort(bytes, static_cast<std::uint16_t>(p.custom.size()));
    for (const auto& [name, value] : p.custom) {
        whole &= texts.add(name) && texts.add(value);
    }
    if (!whole)
        return Error{ErrorCode::Unsupported, kPropertyTooLong};
    return bytes + std::string(8, '\0');
}

} // namespace zv::dwg
