#pragma once

#include <string>
#include <string_view>

namespace zv {

/// A text as the wide calls take it.
std::wstring wideText(std::string_view text);
/// A text that a wide call has given.
std::string textOf(std::wstring_view text);

/// A path as the calls on files take it: one that is too long for them goes out in the form "\\?\", which has
/// no limit, whatever the system's settings are.
std::wstring widePath(std::string_view path);
/// A path that a call has given, without the marks of that form.
std::string pathOf(std::wstring_view path);
/// The path in full, as the system puts it together, from the program's current folder.
std::wstring wideFullPath(std::string_view path);

/// Makes a folder current that is too long for the system's own current folder; empty for the system's again.
void holdCurrentFolder(std::wstring folder);

} // namespace zv
