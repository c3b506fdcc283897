#pragma once

#include "drawing/entities/CurveLayouts.h"

#include <algorithm>

/// The records of polylines, meshes and multilines. The vertices of all but the light ones are records of
/// their own, which the owner's record leads to.
namespace zv::dwg {

/// The flags before a vertex.
inline constexpr unsigned kVertexOfFit = 8, kVertexSplineFrame = 16, kVertexInSpace = 32;

inline bool isZAxis(const Point3& normal)
{
    return normal.x == 0 && normal.y == 0 && normal.z == 1;
}

/// LWPOLYLINE.
template <class Fields> void layoutLight(Fields& fields, Of<Polyline> auto& line)
{
    constexpr unsigned kNormal = 1, kThickness = 2, kConstantWidth = 4, kElevation = 8, kBulges = 16,
                       kWidths = 32, kPlinegen = 256, kClosed = 512, kVertexNames = 1024;
    unsigned flags = 0;
    if constexpr (!Fields::kReads) {
        const auto any = [&](auto has) {
            return std::any_of(line.vertices.begin(), line.vertices.end(), has);
        };
        const auto bent = [](const PolylineVertex& v) { return v.bulge != 0; };
        const auto wide = [](const PolylineVertex& v) { return v.startWidth != 0 || v.endWidth != 0; };
        flags = (isZAxis(line.normal) ? 0 : kNormal) | (line.thickness != 0 ? kThickness : 0) |
                (line.constantWidth != 0 ? kConstantWidth : 0) | (line.elevation != 0 ? kElevation : 0) |
                (any(bent) ? kBulges : 0) | (any(wide) ? kWidths : 0) | (line.plinegen ? kPlinegen : 0) |
                (line.closed ? kClosed : 0);
    }
    fields.bitShort(flags);
    const auto has = [&](unsigned flag) { return (flags & flag) != 0; };
    if constexpr (Fields::kReads) {
        line.plinegen = has(kPlinegen);
        line.closed = has(kClosed);
    }
    if (has(kConstantWidth))
        fields.bitDouble(line.constantWidth);
    if (has(kElevation))
        fields.bitDouble(line.elevation);
    if (has(kThickness))
        fields.bitDouble(line.thickness);
    if (has(kNormal))
        fields.bitPoint3(line.normal);
    const std::size_t all = line.vertices.size();
    std::int64_t vertices = static_cast<std::int64_t>(all);
    std::int64_t bulges = has(kBulges) ? vertices : 0, widths = has(kWidths) ? vertices : 0, names = 0;
    fields.bitLong(vertices);
    if (has(kBulges))
        fields.bitLong(bulges);
    if (has(kVertexNames))
        fields.bitLong(names);
    if (has(kWidths))
        fields.bitLong(widths);
    const bool whole = fields.version() <= Version::R14;
    fields.resize(line.vertices, vertices, whole ? 128 : 4);
    for (std::size_t i = 0; i < line.vertices.size() && fields.ok(); ++i) {
        auto& position = line.vertices[i].position;
        if (whole || i == 0) {
            fields.rawFlat(position, line.elevation);
            continue;
        }
        const Point3& last = line.vertices[i - 1].position;
        fields.defaultDouble(position.x, last.x);
        fields.defaultDouble(position.y, last.y);
        if constexpr (Fields::kReads)
            position.z = line.elevation;
    }
    // Files may hold more of them than vertices.
    using Vertex = std::remove_reference_t<decltype(line.vertices[0])>;
    PolylineVertex extra;
    const auto vertexAt = [&](std::int64_t i) -> Vertex& {
        return static_cast<std::size_t>(i) < line.vertices.size() ? line.vertices[static_cast<std::size_t>(i)]
                                                                  : extra;
    };
    bulges = fields.checked(bulges, kFewestDoubleBits);
    for (std::int64_t i = 0; i < bulges; ++i)
        fields.bitDouble(vertexAt(i).bulge);
    names = fields.checked(names, kFewestDoubleBits);
    for (std::int64_t i = 0; i < names; ++i)
        fields.fixedLong(0);
    widths = fields.checked(widths, 2 * kFewestDoubleBits);
    for (std::int64_t i = 0; i < widths; ++i) {
        fields.bitDouble(vertexAt(i).startWidth);
        fields.bitDouble(vertexAt(i).endWidth);
    }
}

inline bool isSplined(const Polyline& line)
{
    return std::any_of(line.vertices.begin(), line.vertices.end(),
                       [](const PolylineVertex& vertex) { return vertex.splineFrame; });
}

/// POLYLINE in the plane and in space.
template <class Fields> void layoutHeavy(Fields& fields, Of<Polyline> auto& line)
{
    constexpr unsigned kClosed = 1, kSplineFit = 4, kLinetypeThroughVertices = 128;
    constexpr int kFitted = 2, kCubic = 6;
    const bool splined = isSplined(line);
    unsigned flags = line.closed ? kClosed : 0;
    if (line.threeD) {
        fields.fixedChar(splined ? kFitted : 0);
        fields.rawChar(flags);
        if constexpr (Fields::kReads)
            line.closed = (flags & kClosed) != 0;
        return;
    }
    flags |= (splined ? kSplineFit : 0) | (line.plinegen ? kLinetypeThroughVertices : 0);
    fields.bitShort(flags);
    if constexpr (Fields::kReads) {
        line.closed = (flags & kClosed) != 0;
        line.plinegen = (flags & kLinetypeThroughVertices) != 0;
    }
    fields.fixedShort(splined ? kCubic : 0); // Kind of the fitted curve.
    fields.fixedDouble(line.constantWidth);  // Widths for new vertices.
    fields.fixedDouble(line.constantWidth);
    fields.thickness(line.thickness);
    fields.bitDouble(line.elevation);
    fields.extrusion(line.normal);
}

/// A vertex behind its flags; only those in the plane have more than a place.
template <class Fields> void layoutVertex(Fields& fields, Of<PolylineVertex> auto& vertex, bool inPlane)
{
    if (!inPlane)
        return fields.bitPoint3(vertex.position);
    // A vertex in the plane has its height from the polyline.
    Point3 position{vertex.position.x, vertex.position.y, 0};
    fields.bitPoint3(position);
    // Two equal widths are one negative number.
    bool even = vertex.startWidth != 0 && vertex.startWidth == vertex.endWidth;
    double start = even ? -vertex.startWidth : vertex.startWidth;
    fields.bitDouble(start);
    if constexpr (Fields::kReads) {
        even = start < 0;
        vertex.position = position;
        vertex.startWidth = vertex.endWidth = even ? -start : start;
    }
    if (!even)
        fields.bitDouble(vertex.endWidth);
    fields.bitDouble(vertex.bulge);
    if constexpr (!Fields::kReads)
        fields.fixedDouble(0); // The tangent.
}

template <class Fields> void layoutPolyfaceMesh(Fields& fields, Of<Mesh> auto& mesh)
{
    fields.fixedShort(static_cast<int>(mesh.vertices.size()));
    fields.fixedShort(static_cast<int>(mesh.faces.size()));
}

template <class Fields> void layoutPolygonMesh(Fields& fields, Of<Mesh> auto& mesh)
{
    constexpr unsigned kClosedM = 1, kSplineFit = 4, kPolygonMesh = 16, kClosedN = 32;
    unsigned flags = kPolygonMesh | (mesh.closedM ? kClosedM : 0) | (mesh.closedN ? kClosedN : 0);
    int fineM = 0, fineN = 0;
    fields.bitShort(flags);
    fields.fixedShort(0); // Kind of the surface.
    fields.bitShort(mesh.m);
    fields.bitShort(mesh.n);
    fields.bitShort(fineM);
    fields.bitShort(fineN);
    if constexpr (Fields::kReads) {
        mesh.closedM = (flags & kClosedM) != 0;
        mesh.closedN = (flags & kClosedN) != 0;
        if ((flags & kSplineFit) != 0) {
            fields.record().smoothed = true;
            mesh.m = fineM;
            mesh.n = fineN;
        }
    }
}

/// Each vertex has a list of distances for each of `elements`, and another one of where it is filled.
template <class Fields> void layoutMLine(Fields& fields, Of<MLine> auto& line, std::size_t elements)
{
    constexpr unsigned kOpen = 1, kLoop = 3, kNoStartCap = 4, kNoEndCap = 8;
    constexpr unsigned kFewestVertexBits = 18, kFewestElementBits = 4;
    fields.bitDouble(line.scale);
    fields.rawChar(line.justification);
    fields.fixedPoint3(line.vertices.empty() ? Point3{} : line.vertices.front().position);
    fields.bitPoint3(line.normal);
    unsigned flags =
        (line.closed ? kLoop : kOpen) | (line.noStartCap ? kNoStartCap : 0) | (line.noEndCap ? kNoEndCap : 0);
    fields.bitShort(flags);
    if constexpr (Fields::kReads) {
        line.closed = (flags & kLoop) == kLoop;
        line.noStartCap = (flags & kNoStartCap) != 0;
        line.noEndCap = (flags & kNoEndCap) != 0;
    }
    fields.rawChar(elements);
    fields.shortCount(line.vertices,
                      static_cast<unsigned>(kFewestVertexBits + elements * kFewestElementBits));
    for (auto& vertex : line.vertices) {
        fields.bitPoint3(vertex.position);
        fields.bitPoint3(vertex.direction);
        fields.bitPoint3(vertex.miter);
        if constexpr (Fields::kReads)
            vertex.elements.resize(elements);
        for (auto& element : vertex.elements) {
            fields.shortCount(element, kFewestDoubleBits);
            for (auto& distance : element)
                fields.bitDouble(distance);
            std::vector<double> fills;
            fields.shortCount(fills, kFewestDoubleBits);
            for (auto& fill : fills)
                fields.bitDouble(fill);
        }
    }
    fields.handle(line.style, Table::MLineStyle);
}

} // namespace zv::dwg
