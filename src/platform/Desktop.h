#pragma once

#include <string>

namespace zv {

/// Brings the desktop window with exactly this title, in the system's 8-bit code page, to the front. False
/// when there is none, or no way to do it, as where there is no X server.
bool activateWindowByTitle(const std::string& title);

} // namespace zv
