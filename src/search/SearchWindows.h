#pragma once

namespace zv {

class Program;

/// Makes the search window known to the program.
void addSearchWindows(Program& program);

} // namespace zv
