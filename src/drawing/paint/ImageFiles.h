#pragma once

#include "drawing/scene/Scene.h"

#include <QImage>

#include <cstdint>
#include <string>

namespace zv::dwg {

struct LoadedImage {
    QImage picture;
};

/// Pixels of all pictures of one drawing as their files hold them, which have to be unpacked whole: for a
/// drawing that is looked at, and for one of the twenty in a panel.
inline constexpr std::int64_t kMostStoredPixels = 256'000'000;
inline constexpr std::int64_t kMostStoredForThumbnail = 40'000'000;

/// Loads the pictures that a scene shows: by their path as it is stored, then in the folder of `drawing`,
/// whose path is in the program's own text. What cannot be found or read, is no plain picture, or has a
/// path of another machine, keeps its frame only, and so do those that are too many. Large ones are made
/// smaller.
void loadImages(Scene& scene, const std::string& drawing, std::int64_t mostStored = kMostStoredPixels);

} // namespace zv::dwg
