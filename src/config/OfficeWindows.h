#pragma once

namespace zv {

class Program;

/// Makes the administrator's windows known to the program: the office's rules, the font folder, the master
/// folder.
void addOfficeWindows(Program& program);

} // namespace zv
