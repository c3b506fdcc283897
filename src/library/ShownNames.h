#pragma once

namespace zv {

class PathList;

/// Scrolls a list of paths sideways to where they differ: behind the folder that all of them have in common.
/// The folder can be scrolled back to.
void scrollToNames(PathList& list);

} // namespace zv
