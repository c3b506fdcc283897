#pragma once

namespace zv {

class Program;

/// Makes the main window and the about box known to the program.
void addBrowserWindows(Program& program);

} // namespace zv
