#pragma once

#include <windows.h>

namespace zv {

/// Where this user's classes are registered: among the user's own keys, or the machine's on a system that
/// looks for classes there only, as older Wine does.
HKEY classesRoot();

} // namespace zv
