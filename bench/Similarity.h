#pragma once

#include "drawing/Document.h"

namespace zv::bench {

/// A map that keeps shapes: scaling by one factor, then turning about the z axis, then moving.
struct Similarity {
    double scale = 1;    ///< Above 0.
    double rotation = 0; ///< Radians.
    dwg::Point3 move;

    dwg::Point3 point(const dwg::Point3& p) const;
    dwg::Point3 vector(const dwg::Point3& v) const;    ///< Turned and scaled, not moved.
    dwg::Point3 direction(const dwg::Point3& v) const; ///< Turned only.
};

/// Puts an entity's geometry where the map says.
void transform(dwg::Geometry& geometry, const Similarity& map);

} // namespace zv::bench
