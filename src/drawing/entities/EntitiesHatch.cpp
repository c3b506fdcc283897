#include "drawing/entities/HatchLayouts.h"

namespace zv::dwg {

void readGradient(RecordReader& in, Hatch& hatch)
{
    constexpr unsigned kFewestColorBits = 14;
    hatch.gradient = in.bitLong() != 0;
    in.bitLong();
    hatch.gradientAngle = in.bitDouble();
    hatch.gradientShift = in.bitDouble();
    const bool oneColor = in.bitLong() != 0;
    hatch.gradientTint = in.bitDouble();
    const std::uint32_t colors = in.count(kFewestColorBits);
    for (std::uint32_t i = 0; i < colors; ++i) {
        in.bitDouble();
        (i == 0 ? hatch.gradientColor1 : hatch.gradientColor2) = in.color();
    }
    hatch.gradientOneColor = oneColor;
    hatch.gradientName = in.text();
}

void readMPolygon(RecordReader& in, EntityRecord& out)
{
    constexpr unsigned kFewestLoopBits = 4;
    EntityFieldsIn fields(in, out);
    auto& polygon = out.geometry.emplace<MPolygon>();
    Hatch& area = polygon.area;
    in.bitLong(); // Version.
    if (in.version() >= Version::R2004)
        readGradient(in, area);
    area.elevation = in.bitDouble();
    area.normal = in.bitPoint3();
    area.pattern = in.text();
    area.solid = in.bit();
    const std::uint32_t loops = in.count(kFewestLoopBits);
    for (std::uint32_t i = 0; i < loops && in.ok(); ++i) {
        HatchLoop& loop = area.loops.emplace_back();
        loop.flags = kPolylineLoop;
        loop.closed = in.bit();
        layoutLoopVertices(fields, loop, in.bit());
    }
    in.bitShort(); // Where the pattern comes from.
    if (!area.solid)
        layoutPattern(fields, area);
    polygon.fill = in.color();
}

} // namespace zv::dwg
