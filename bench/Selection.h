#pragma once

#include "drawing/Document.h"
#include "drawing/geometry/Transform.h"

#include <optional>
#include <vector>

namespace zv::bench {

/// What a drawing's model space shows, entity by entity, so that it can be picked. Entities are known by
/// their place in the model space; one that is not seen cannot be picked.
class Outlines {
public:
    /// `seen` is the drawing with the content of its external references.
    explicit Outlines(const dwg::Document& seen);

    /// The entity nearest to a point, the last one drawn of several; none within `radius`: nothing.
    std::optional<std::size_t> nearest(dwg::Point2 point, double radius) const;
    /// The entities that are wholly inside.
    std::vector<std::size_t> inside(const dwg::Box& window) const;
    /// The entities that are inside or cross its edge.
    std::vector<std::size_t> crossing(const dwg::Box& window) const;

private:
    struct Run {
        std::vector<dwg::Point2> points;
        bool filled = false; ///< Its inside belongs to it.
    };
    struct Outline {
        dwg::Box bounds;
        std::vector<Run> runs;
    };
    static double distance(const Outline& outline, dwg::Point2 point);

    std::vector<Outline> m_outlines;
};

} // namespace zv::bench
