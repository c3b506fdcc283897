#pragma once

#include "drawing/scene/Scene.h"

#include <QImage>

#include <string>

namespace zv::dwg {

struct LoadedImage {
    QImage picture;
};

/// Loads the pictures that a scene shows: by their path as it is stored, then in the folder of `drawing`,
/// whose path is in the program's own text. What cannot be found or read, is no plain picture, or has a
/// path of another machine, keeps its frame only. Large ones are made smaller.
void loadImages(Scene& scene, const std::string& drawing);

} // namespace zv::dwg
