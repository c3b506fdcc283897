#pragma once

namespace zv {

class Program;

/// Makes the window that prints libraries known to the program.
void addPrintWindows(Program& program);

} // namespace zv
