#pragma once

#include "Command.h"
#include "Workshop.h"

#include <functional>
#include <vector>

namespace zv::bench {

/// The prompts by which a block gets its place, scales and rotation. Axes whose scale was preset at the
/// insertion prompt are not asked for.
class Placement {
public:
    /// With `uniform` one scale is asked for all axes, as for a block that is placed in parts.
    explicit Placement(bool uniform) : m_uniform(uniform) {}

    /// With the block as it would stand, in which a length is `factor` times as large as in its own drawing.
    Prompt prompt(dwg::Handle block, double factor) const;
    /// Done once the rotation is known.
    Step answer(const Answer& answer);

    const dwg::Point3& point() const { return m_point; }
    dwg::Point3 scale() const;
    double rotation() const { return m_rotation.value_or(0); } ///< Radians.

private:
    enum class Stage { Point, Preset, ScaleX, ScaleY, ScaleZ, Rotation };

    Prompt question() const;
    Step pointAnswer(const Answer& answer);
    Step presetAnswer(const Answer& answer);
    Step scaleXAnswer(const Answer& answer);
    Step otherScaleAnswer(const Answer& answer);
    Step rotationAnswer(const Answer& answer);
    Step next();

    bool m_uniform;
    Stage m_stage = Stage::Point;
    dwg::Point3 m_point;
    std::optional<double> m_x, m_y, m_z, m_rotation;
    bool m_askZ = false;
    std::string m_presetQuestion;
    std::function<void(double)> m_storePreset;
};

} // namespace zv::bench
