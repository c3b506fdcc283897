#include "drawing/write/HeaderSection.h"

#include "drawing/write/Tables.h"

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
class HeaderWriter {
public:
    HeaderWriter(const Plan& plan, const Properties& properties, JulianTime saved)
        : m_plan(plan), m_header(plan.document.header), m_properties(properties), m_saved(saved)
    {
    }

    std::string content()
    {
        units();
        modes();
        numbers();
        times();
        space({}, {1e20, 1e20, 1e20}, {-1e20, -1e20, -1e20}, {0, 0}, {12, 9});
        space(m_header.insertionBase, m_header.extentsMin, m_header.extentsMax, m_header.limitsMin,
              m_header.limitsMax);
        dimensions();
        objects();
        return m_out.bytes();
    }

private:
    void pointer(Handle handle) { m_out.handle(kHardPointer, handle); }
    void owner(Handle handle) { m_out.handle(kHardOwner, handle); }
    void shorts(std::initializer_list<int> values)
    {
        for (const int value : values)
            m_out.bitShort(static_cast<std::int16_t>(value));
    }
    void doubles(std::initializer_list<double> values)
    {
        for (const double value : values)
            m_out.bitDouble(value);
    }
    void bits(std::initializer_list<bool> values)
    {
        for (const bool value : values)
            m_out.bit(value);
    }

    void units()
    {
        doubles({412148564080.0, 1, 1, 1});
        m_out.text("m");
        for (int i = 0; i < 3; ++i)
            m_out.text({});
        m_out.bitLong(24);
        m_out.bitLong(0);
        pointer(0);
    }

    void modes()
    {
        // Associative dimensions, shown while dragged; polyline linetypes, ortho, regeneration.
        bits({true, true, false, false, true});
        bits({m_header.fillMode, m_header.quickText, m_header.paperSpaceLinetypeScaling, false});
        // User timer, sketch polylines, direction of angles, spline frames.
        bits({true, false, false, false});
        bits({m_header.mirrorText, true});
        // Model tab, paper limits, xref layers kept; silhouettes, polyline ellipses.
        bits({true, false, true, false, false});
        // Proxy pictures, tree depth, linear and angular units.
        shorts({1, 3020, 2, 4, 0, 0, 1});
        shorts({m_header.pointMode});
        shorts({0, 0, 0, 0, 0});
        // Splines and surfaces.
        shorts({8, 6, 6, 6, 6, 6, 6, 3, 70});
        shorts({0, 64, 4, 0, 50});
    }

    void numbers()
    {
        doubles({m_header.linetypeScale, m_header.textSize, 0.05, 0.1, 0, 0, 0, m_header.pointSize, 0});
        doubles({0, 0, 0, 0, 0});
        doubles({0, 0, 0, 0});
        doubles({0.5, 1, m_header.currentEntityLinetypeScale});
        m_out.text(".");
    }

    void times()
    {
        for (int i = 0; i < 2; ++i) {
            m_out.bitLong(static_cast<std::int32_t>(m_saved.day));
            m_out.bitLong(static_cast<std::int32_t>(m_saved.milliseconds));
        }
        for (int i = 0; i < 4; ++i)
            m_out.bitLong(0);
        m_out.bitShort(256);
        m_out.handle(0, m_plan.seed());
        pointer(m_plan.layer(m_header.currentLayer));
        pointer(m_plan.style(m_header.currentTextStyle));
        pointer(m_plan.byLayer);
        pointer(m_plan.dimensionStyle(m_header.currentDimensionStyle));
        pointer(m_plan.standardMLineStyle);
        m_out.bitDouble(0);
    }

    /// The variables that paper space and model space have each.
    void space(Point3 base, Point3 extentsMin, Point3 extentsMax, Point2 limitsMin, Point2 limitsMax)
    {
        m_out.bitPoint3(base);
        m_out.bitPoint3(extentsMin);
        m_out.bitPoint3(extentsMax);
        m_out.rawPoint2(limitsMin);
        m_out.rawPoint2(limitsMax);
        m_out.bitDouble(0);
        m_out.bitPoint3({0, 0, 0});
        m_out.bitPoint3({1, 0, 0});
        m_out.bitPoint3({0, 1, 0});
        pointer(0);
        pointer(0);
        m_out.bitShort(0);
        pointer(0);
        for (int i = 0; i < 6; ++i)
            m_out.bitPoint3({0, 0, 0});
    }

    void dimensions()
    {
        m_out.text({});
        m_out.text({});
        DimensionStyle current;
        for (const DimensionStyle& style : m_plan.document.dimensionStyles)
            if (style.handle == m_plan.dimensionStyle(m_header.currentDimensionStyle))
                current = style;
        current.scale = m_header.dimScale;
        const DimensionVariables variables = dimensionVariables(m_plan, current);
        variables.writeNumbers(m_out);
        variables.writeHandles(m_out);
        shorts({-2, -2});
    }

    void objects()
    {
        for (const Handle handle :
             {m_plan.blockControl, m_plan.layerControl, m_plan.styleControl, m_plan.linetypeControl,
              m_plan.viewControl, m_plan.ucsControl, m_plan.vportControl, m_plan.applicationControl,
              m_plan.dimensionStyleControl, m_plan.viewportHeaderControl})
            owner(handle);
        pointer(m_plan.groups);
        pointer(m_plan.mlineStyles);
        owner(m_plan.namedObjects);
        shorts({1, 70});
        m_out.text(encodeText(m_properties.hyperlinkBase));
        m_out.text({});
        pointer(m_plan.layouts);
        pointer(m_plan.plotSettings);
        pointer(m_plan.plotStyles);
        // New entities' lineweight ByLayer, plot styles by colour, long names.
        m_out.bitLong(0x281D | 0x400 | (m_header.lineweightDisplay ? 0 : 0x200));
        shorts({m_header.insertionUnits, 0});
        m_out.text("{00000000-0000-0000-0000-000000000000}");
        m_out.text("{00000000-0000-0000-0000-000000000000}");
        pointer(m_plan.document.blocks[m_plan.paperSpace].handle);
        pointer(m_plan.document.blocks[m_plan.document.modelSpace].handle);
        pointer(m_plan.byLayer);
        pointer(m_plan.byBlock);
        pointer(m_plan.continuous);
        shorts({-1, -1, -1, -1});
    }

    const Plan& m_plan;
    const HeaderVariables& m_header;
    const Properties& m_properties;
    JulianTime m_saved;
    BitWriter m_out;
};
} // namespace

std::string headerSection(const Plan& plan, const Properties& properties, JulianTime saved)
{
    static const std::string kBegin("\xCF\x7B\x1F\x23\xFD\xDE\x38\xA9\x5F\x7C\x68\xB8\x4E\x6D\x33\x5F", 16);
    static const std::string kEnd("\x30\x84\xE0\xDC\x02\x21\xC7\x56\xA0\x83\x97\x47\xB1\x92\xCC\xA0", 16);
    return sentinelSection(kBegin, HeaderWriter(plan, properties, saved).content(), kEnd);
}

} // namespace zv::dwg
