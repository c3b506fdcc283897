#pragma once

#include "drawing/scene/Scene.h"

namespace zv::dwg {

/// How lines are drawn.
struct Pen {
    SceneColor color;
    int lineweight = 0;
    const Linetype* linetype = nullptr; ///< Null: continuous.
    double dashScale = 1;               ///< From the linetype's lengths to drawing units.
    bool throughVertices = false;       ///< The dashes of a run go on round its corners.
};

/// The small figures that some linetypes hold.
class DashFigures {
public:
    virtual ~DashFigures() = default;
    /// Adds the figures of one element at a place of the line; `unit` is one of the linetype's units along
    /// the line.
    virtual void add(const LinetypeDash& dash, Point2 at, Point2 unit, std::vector<GlyphPlace>& out) = 0;
};

/// Puts shapes into a scene and stops when it has grown beyond its limits.
class Ink {
public:
    Ink(Scene& scene, DashFigures& figures) : m_scene(scene), m_figures(figures) {}

    void stroke(const Path& path, const Pen& pen);
    void fill(const Path& path, SceneColor color, bool winding = false);
    void gradient(const Path& path, SceneColor from, SceneColor to, double angle, GradientForm form);
    void mask(const Path& path);
    void image(const Path& path, SceneImage image);
    void glyphs(const std::vector<GlyphPlace>& places, SceneColor color, int lineweight);

    /// The index of the clip that holds for what follows; -1 for none.
    void setClip(int clip) { m_clip = static_cast<std::int16_t>(clip); }
    bool full() const;

private:
    void add(const Path& path, SceneItem item);
    bool strokeDashed(const Path& path, const Pen& pen);

    Scene& m_scene;
    DashFigures& m_figures;
    std::int16_t m_clip = -1;
    std::size_t m_dashes = 0;
};

} // namespace zv::dwg
