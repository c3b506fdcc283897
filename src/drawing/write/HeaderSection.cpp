#include "drawing/write/HeaderSection.h"

#include "drawing/write/FieldsOut.h"

#include <chrono>

namespace zv::dwg {

JulianTime JulianTime::now()
{
    using std::chrono::duration_cast, std::chrono::system_clock;
    constexpr std::int64_t kEpochDay = 2440588; // 1970-01-01
    const std::int64_t ms =
        duration_cast<std::chrono::milliseconds>(system_clock::now().time_since_epoch()).count();
    constexpr std::int64_t kDay = 86400000;
    return {static_cast<std::uint32_t>(kEpochDay + ms / kDay), static_cast<std::uint32_t>(ms % kDay)};
}

std::string sentinelSection(const std::string& begin, const std::string& content, const std::string& end)
{
    std::string sized;
    putLong(sized, static_cast<std::uint32_t>(content.size()));
    sized += content;
    putShort(sized, checkCode(sized));
    return begin + sized + end;
}

namespace {

/// Writes header variables, whose handles stand among the fields, and notes where those stand that are asked
/// for; the counterpart of HeaderIn.
class HeaderOut : public PlainFieldsOut {
public:
    explicit HeaderOut(WrittenHeader& out) : PlainFieldsOut(out.content, out.content), m_out(out) {}

    void handle(Handle value, Table) { pointer(value); }
    void nextHandle(Handle value) { m_out.content.handle(0, value); }
    void marked(HeaderPlace place, auto each)
    {
        FieldPlace& noted = m_out.places[static_cast<std::size_t>(place)];
        noted.from = m_out.content.size();
        each();
        noted.to = m_out.content.size();
    }

private:
    WrittenHeader& m_out;
};

} // namespace

WrittenHeader writeHeader(const HeaderVariables& variables, const HeaderHandles& handles,
                          const DimensionStyle& style, const HeaderOrigin& origin)
{
    WrittenHeader out;
    HeaderOut fields(out);
    layoutHeader(fields, variables, handles, style, origin);
    return out;
}

std::string headerSection(const Plan& plan, const Properties& properties, JulianTime saved)
{
    static const std::string kBegin("\xCF\x7B\x1F\x23\xFD\xDE\x38\xA9\x5F\x7C\x68\xB8\x4E\x6D\x33\x5F", 16);
    static const std::string kEnd("\x30\x84\xE0\xDC\x02\x21\xC7\x56\xA0\x83\x97\x47\xB1\x92\xCC\xA0", 16);
    HeaderVariables variables = plan.document.header;
    variables.currentLayer = plan.layer(variables.currentLayer);
    variables.currentTextStyle = plan.style(variables.currentTextStyle);
    variables.currentDimensionStyle = plan.dimensionStyle(variables.currentDimensionStyle);
    variables.handleSeed = plan.seed();
    DimensionStyle current;
    for (const DimensionStyle& style : plan.document.dimensionStyles) {
        if (style.handle == variables.currentDimensionStyle)
            current = style;
    }
    current.textStyle = plan.style(current.textStyle);
    const HeaderOrigin origin{static_cast<std::int32_t>(saved.day),
                              static_cast<std::int32_t>(saved.milliseconds),
                              encodeText(properties.hyperlinkBase)};
    return sentinelSection(kBegin, writeHeader(variables, plan, current, origin).content.bytes(), kEnd);
}

} // namespace zv::dwg
