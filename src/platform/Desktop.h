#pragma once

#include <string>

namespace zv {

/// Brings the desktop window with exactly this title, in the program's own text, to the front. False
/// when there is none, or no way to do it, as where there is no X server.
bool activateWindowByTitle(const std::string& title);

} // namespace zv
