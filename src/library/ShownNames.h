#pragma once

namespace zv {

class PathList;

/// Scrolls a list of paths sideways to where they differ: behind the folder that all of them have in common.
/// The list stays there when its width changes, until the user scrolls it elsewhere.
void scrollToNames(PathList& list);

} // namespace zv
