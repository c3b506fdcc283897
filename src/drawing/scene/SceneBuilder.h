#pragma once

#include "drawing/scene/Scene.h"

namespace zv::dwg {

struct SceneOptions {
    Handle block = 0;     ///< The space or block to draw; 0: model space.
    bool plotted = false; ///< Leave out what is not to be plotted: layers without plot, point-size marks.
};

/// The drawing as a scene. Beyond the limits of a scene the rest is left out, so that a drawing made to
/// hurt ends soon as well. `document` is not needed afterwards; the fonts are kept by the scene.
Scene buildScene(const Document& document, FontProvider& fonts, const SceneOptions& options = {});

} // namespace zv::dwg
