#pragma once

#include "platform/Automation.h"

#include <string>
#include <string_view>

namespace zv {

/// The path as the host's command line needs it: each "\" becomes "/".
std::string withForwardSlashes(std::string_view path);

/// Turns the mark for exploding, a "*" in front of the path, over: what stands up to the last "*" is cut off,
/// and a "*" is put in front if `explode` is on and the path did not begin with one.
std::string withExplodeMark(const std::string& path, bool explode);

/// The text typed to insert a drawing as a block; the host then asks for the point and the rotation.
std::string insertBlockText(const std::string& path, const std::string& scale);

/// The text typed to insert a drawing exploded at a point; the host then asks for the rotation. `path` holds
/// its mark.
std::string insertExplodedText(const std::string& path, const AutomationPoint& point,
                               const std::string& scale);

/// The scale in a custom property "name=value": the text behind its last "=", or the whole text.
std::string storedScale(const std::string& property);

} // namespace zv
