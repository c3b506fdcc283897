#pragma once

namespace zv {

/// The name of the profile file in the installation and in the master folder.
inline constexpr const char* kProfileName = "Zelvora.ini";
/// A user's own is the login name with this.
inline constexpr const char* kProfileEnding = ".ini";
/// A library's list is its name with this, and a user's own the login name.
inline constexpr const char* kListEnding = ".lst";

} // namespace zv
