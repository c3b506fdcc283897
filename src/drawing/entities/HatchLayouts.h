#pragma once

#include "drawing/entities/CurveLayouts.h"

#include <algorithm>

/// The records of hatches, for reading and for writing.
namespace zv::dwg {

inline constexpr std::uint32_t kPolylineLoop = 2, kDerivedLoop = 4;

/// The spline of an edge lies in the plane.
template <class Fields> void layoutEdgeSpline(Fields& fields, Of<Spline> auto& spline)
{
    std::size_t knots = spline.knots.size(), points = spline.controlPoints.size();
    bool weighted = spline.rational && spline.weights.size() == points;
    fields.bitLong(spline.degree);
    fields.bit(weighted);
    fields.bit(spline.periodic);
    fields.bitLong(knots);
    fields.bitLong(points);
    fields.resize(spline.knots, static_cast<std::int64_t>(knots), kFewestDoubleBits);
    for (auto& knot : spline.knots)
        fields.bitDouble(knot);
    fields.resize(spline.controlPoints, static_cast<std::int64_t>(points), kRawPointBits);
    if constexpr (Fields::kReads) {
        spline.rational = weighted;
        if (weighted)
            spline.weights.resize(spline.controlPoints.size());
    }
    for (std::size_t i = 0; i < spline.controlPoints.size(); ++i) {
        fields.rawFlat(spline.controlPoints[i], 0);
        if (weighted)
            fields.bitDouble(spline.weights[i]);
    }
    if (fields.version() < Version::R2010)
        return;
    fields.count(spline.fitPoints, kRawPointBits);
    for (auto& point : spline.fitPoints)
        fields.rawFlat(point, 0);
    if (spline.fitPoints.empty())
        return;
    fields.rawFlat(spline.startTangent, 0);
    fields.rawFlat(spline.endTangent, 0);
}

template <class Fields> void layout(Fields& fields, Of<HatchEdge> auto& edge)
{
    int kind = static_cast<int>(edge.kind) + 1;
    fields.rawChar(kind);
    if constexpr (Fields::kReads) {
        if (kind < 1 || kind > static_cast<int>(HatchEdge::Kind::Spline) + 1)
            return fields.reader().fail();
        edge.kind = static_cast<HatchEdge::Kind>(kind - 1);
    }
    switch (edge.kind) {
    case HatchEdge::Kind::Line:
        fields.rawPoint2(edge.start);
        fields.rawPoint2(edge.end);
        return;
    case HatchEdge::Kind::Arc:
        fields.rawPoint2(edge.center);
        fields.bitDouble(edge.radius);
        break;
    case HatchEdge::Kind::Ellipse:
        fields.rawPoint2(edge.center);
        fields.rawPoint2(edge.majorAxis);
        fields.bitDouble(edge.axisRatio);
        break;
    case HatchEdge::Kind::Spline:
        return layoutEdgeSpline(fields, edge.spline);
    }
    fields.bitDouble(edge.startAngle);
    fields.bitDouble(edge.endAngle);
    fields.bit(edge.counterClockwise);
}

void layoutLoopVertices(auto& fields, Of<HatchLoop> auto& loop, bool bulges)
{
    fields.count(loop.polyline, kRawPointBits);
    for (auto& vertex : loop.polyline) {
        fields.rawFlat(vertex.position, 0);
        if (bulges)
            fields.bitDouble(vertex.bulge);
    }
}

template <class Fields> void layout(Fields& fields, Of<HatchLoop> auto& loop)
{
    constexpr unsigned kFewestEdgeBits = 8 + 12;
    std::uint32_t flags = loop.flags;
    if constexpr (!Fields::kReads) // It stands for itself, and a loop without edges is a polyline.
        flags = (flags & ~(kPolylineLoop | kDerivedLoop)) | (loop.edges.empty() ? kPolylineLoop : 0);
    fields.bitLong(flags);
    if constexpr (Fields::kReads)
        loop.flags = flags;
    if ((flags & kPolylineLoop) == 0) {
        fields.eachCounted(loop.edges, kFewestEdgeBits, [&](auto& edge) { layout(fields, edge); });
        return;
    }
    bool bulges = std::any_of(loop.polyline.begin(), loop.polyline.end(),
                              [](const PolylineVertex& vertex) { return vertex.bulge != 0; });
    fields.bit(bulges);
    fields.bit(loop.closed);
    layoutLoopVertices(fields, loop, bulges);
}

template <class Fields> void layoutPattern(Fields& fields, Of<Hatch> auto& hatch)
{
    constexpr unsigned kFewestLineBits = 12;
    fields.bitDouble(hatch.angle);
    fields.bitDouble(hatch.scale);
    fields.bit(hatch.doubled);
    fields.shortCount(hatch.lines, kFewestLineBits);
    for (auto& line : hatch.lines) {
        fields.bitDouble(line.angle);
        fields.bitPoint2(line.base);
        fields.bitPoint2(line.offset);
        fields.shortCount(line.dashes, kFewestDoubleBits);
        for (auto& dash : line.dashes)
            fields.bitDouble(dash);
    }
}

/// R2004 and later: the colours that run into each other.
void readGradient(RecordReader& in, Hatch& hatch);

template <class Fields> void layout(Fields& fields, Of<Hatch> auto& hatch)
{
    constexpr unsigned kFewestLoopBits = 6, kFewestHandleBits = 8;
    constexpr int kFromItsName = 1;
    if constexpr (Fields::kReads) {
        if (fields.version() >= Version::R2004)
            readGradient(fields.reader(), hatch);
    }
    fields.bitDouble(hatch.elevation);
    fields.bitPoint3(hatch.normal);
    fields.text(hatch.pattern);
    fields.bit(hatch.solid);
    fields.fixedBit(false); // Follows its boundary.
    std::int64_t boundaries = 0;
    bool derived = false;
    fields.eachCounted(hatch.loops, kFewestLoopBits, [&](auto& loop) {
        layout(fields, loop);
        if constexpr (Fields::kReads) {
            derived = derived || (loop.flags & kDerivedLoop) != 0;
            boundaries +=
                fields.reader().handles().checkedCount(fields.reader().bitLong(), kFewestHandleBits);
        } else {
            fields.fixedLong(0); // No boundary entities.
        }
    });
    fields.bitShort(hatch.style);
    fields.fixedShort(kFromItsName); // Where the pattern comes from.
    if (!hatch.solid)
        layoutPattern(fields, hatch);
    if (derived)
        fields.fixedDouble(0); // Size of a pixel.
    if constexpr (Fields::kReads) {
        fields.reader().count(kRawPointBits); // Points that were picked; the last fields.
        fields.reader().handles().checkedCount(boundaries, kFewestHandleBits);
    } else {
        fields.fixedLong(0);
    }
}

} // namespace zv::dwg
