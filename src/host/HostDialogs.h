#pragma once

#include <cstdint>
#include <string>

namespace zv {

class Program;

/// Makes Xattach and cmode known to the program.
void addHostWindows(Program& program);

/// From which window a dialog is opened; the number is the state that it starts in.
enum class OpenedFrom : std::int16_t { MainWindow = 0, Search = 7 };

/// Opens Xattach for a drawing, with the scale that is stored in it, or none. False when it cannot be opened.
bool openXattach(Program& program, OpenedFrom from, const std::string& drawing,
                 const std::string& storedScale);
/// Opens cmode for a drawing. False when it cannot be opened.
bool openCmode(Program& program, OpenedFrom from, const std::string& drawing);

} // namespace zv
