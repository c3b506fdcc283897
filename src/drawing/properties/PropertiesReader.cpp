#include "drawing/properties/PropertiesReader.h"

#include "drawing/bits/BitReader.h"
#include "drawing/bits/CodePage.h"
#include "drawing/container/Container.h"
#include "drawing/properties/PropertiesRecord.h"
#include "drawing/properties/PropertyTexts.h"

namespace zv::dwg {

namespace {

/// Texts of the summary section: a length, then characters or, from R2007 on, UTF-16.
class SummaryReader {
public:
    SummaryReader(std::span<const std::byte> bytes, const Container& container)
        : m_in(bytes), m_wide(container.version() >= Version::R2007), m_codePage(container.codePage())
    {
    }

    Result<std::optional<Properties>> read()
    {
        Properties p;
        eachSummaryText(p, [this](Text& text) { text = readText(); });
        if (!m_in.ok())
            return Error{ErrorCode::Damaged, "summary section: its texts are cut short"};
        // Some writers end the section here, without the times and the custom properties.
        constexpr std::size_t kTimes = 24;
        if (m_in.left() < (kTimes + 2) * 8)
            return std::optional(std::move(p));
        m_in.skip(kTimes * 8);
        const std::uint32_t count = m_in.checkedCount(m_in.rawShort(), 2 * 16);
        for (std::uint32_t i = 0; i < count && m_in.ok(); ++i) {
            Text name = readText();
            p.custom.emplace_back(std::move(name), readText());
        }
        if (!m_in.ok())
            return Error{ErrorCode::Damaged, "summary section: its custom properties are cut short"};
        return std::optional(std::move(p));
    }

private:
    Text readText()
    {
        const std::size_t length = m_in.rawShort();
        return m_wide ? decodeUnits(m_in.units(length)) : decodeText(m_in.bytes(length), m_codePage);
    }

    BitReader m_in;
    bool m_wide;
    int m_codePage;
};

} // namespace

Result<std::optional<Properties>> readProperties(const ByteSource& source)
{
    const auto container = Container::open(source);
    if (!container)
        return container.error();
    if ((*container)->version() < Version::R2004)
        return readPropertiesRecord(**container);
    const auto section = (*container)->section(Section::SummaryInfo);
    if (!section && section.error().code == ErrorCode::NotFound)
        return std::optional<Properties>();
    if (!section)
        return section.error();
    return SummaryReader(*section, **container).read();
}

} // namespace zv::dwg
