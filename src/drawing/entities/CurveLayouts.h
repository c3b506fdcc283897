#pragma once

#include "drawing/entities/EntityFields.h"

/// The records of lines, curves and faces, for reading and for writing.
namespace zv::dwg {

inline constexpr unsigned kFewestDoubleBits = 2, kFewestPointBits = 6, kRawPointBits = 128;

void layout(auto& fields, Of<Line> auto& line)
{
    if (fields.version() <= Version::R14) {
        fields.bitPoint3(line.start);
        fields.bitPoint3(line.end);
    } else {
        bool flat = line.start.z == 0 && line.end.z == 0;
        fields.bit(flat);
        fields.rawDouble(line.start.x);
        fields.defaultDouble(line.end.x, line.start.x);
        fields.rawDouble(line.start.y);
        fields.defaultDouble(line.end.y, line.start.y);
        if (!flat) {
            fields.rawDouble(line.start.z);
            fields.defaultDouble(line.end.z, line.start.z);
        }
    }
    fields.thickness(line.thickness);
    fields.extrusion(line.normal);
}

template <class Fields> void layout(Fields& fields, Of<Spline> auto& spline)
{
    constexpr int kByControlPoints = 1, kByFitPoints = 2, kCustomKnots = 15;
    constexpr std::int32_t kClosed = 4, kUseKnotParameter = 8;
    bool byFitPoints = spline.controlPoints.empty();
    int scenario = byFitPoints ? kByFitPoints : kByControlPoints;
    fields.bitLong(scenario);
    if constexpr (Fields::kReads) {
        byFitPoints = scenario == kByFitPoints;
        if (fields.version() >= Version::R2013) {
            const std::int32_t flags = fields.reader().bitLong();
            const std::int32_t knots = fields.reader().bitLong();
            spline.closed = (flags & kClosed) != 0;
            byFitPoints = knots != kCustomKnots && (flags & kUseKnotParameter) != 0;
        }
    }
    fields.bitLong(spline.degree);
    if (byFitPoints) {
        fields.fixedDouble(0); // Tolerance.
        fields.bitPoint3(spline.startTangent);
        fields.bitPoint3(spline.endTangent);
        fields.count(spline.fitPoints, kFewestPointBits);
        for (auto& point : spline.fitPoints)
            fields.bitPoint3(point);
        return;
    }
    constexpr double kTolerance = 1e-7;
    fields.bit(spline.rational);
    fields.bit(spline.closed);
    fields.bit(spline.periodic);
    fields.fixedDouble(kTolerance);
    fields.fixedDouble(kTolerance);
    std::size_t knots = spline.knots.size(), points = spline.controlPoints.size();
    bool weighted = spline.weights.size() == points;
    fields.bitLong(knots);
    fields.bitLong(points);
    fields.bit(weighted);
    fields.resize(spline.knots, static_cast<std::int64_t>(knots), kFewestDoubleBits);
    for (auto& knot : spline.knots)
        fields.bitDouble(knot);
    fields.resize(spline.controlPoints, static_cast<std::int64_t>(points), kFewestPointBits);
    if constexpr (Fields::kReads) {
        spline.rational = weighted;
        if (weighted)
            spline.weights.resize(spline.controlPoints.size());
    }
    for (std::size_t i = 0; i < spline.controlPoints.size(); ++i) {
        fields.bitPoint3(spline.controlPoints[i]);
        if (weighted)
            fields.bitDouble(spline.weights[i]);
    }
}

/// Whether it goes both ways tells the record's type.
void layout(auto& fields, Of<Ray> auto& ray)
{
    fields.bitPoint3(ray.start);
    fields.bitPoint3(ray.direction);
}

/// Whether it is a trace tells the record's type.
void layout(auto& fields, Of<Solid> auto& solid)
{
    fields.thickness(solid.thickness);
    double elevation = solid.corners[0].z;
    fields.bitDouble(elevation);
    for (auto& corner : solid.corners)
        fields.rawFlat(corner, elevation);
    fields.extrusion(solid.normal);
}

void layout(auto& fields, Of<Face3D> auto& face)
{
    if (fields.version() <= Version::R14) {
        for (auto& corner : face.corners)
            fields.bitPoint3(corner);
        fields.bitShort(face.hiddenEdges);
        return;
    }
    auto& first = face.corners[0];
    bool noneHidden = face.hiddenEdges == 0, onGround = first.z == 0;
    fields.bit(noneHidden);
    fields.bit(onGround);
    fields.rawDouble(first.x);
    fields.rawDouble(first.y);
    if (!onGround)
        fields.rawDouble(first.z);
    for (std::size_t i = 1; i < face.corners.size(); ++i) {
        const Point3& last = face.corners[i - 1];
        auto& corner = face.corners[i];
        fields.defaultDouble(corner.x, last.x);
        fields.defaultDouble(corner.y, last.y);
        fields.defaultDouble(corner.z, last.z);
    }
    if (!noneHidden)
        fields.bitShort(face.hiddenEdges);
}

void layout(auto& fields, Of<Shape> auto& shape)
{
    fields.bitPoint3(shape.position);
    fields.bitDouble(shape.size);
    fields.bitDouble(shape.rotation);
    fields.bitDouble(shape.widthFactor);
    fields.bitDouble(shape.oblique);
    fields.fixedDouble(0); // Thickness.
    fields.bitShort(shape.number);
    fields.bitPoint3(shape.normal);
    fields.handle(shape.style, Table::TextStyle);
}

} // namespace zv::dwg
