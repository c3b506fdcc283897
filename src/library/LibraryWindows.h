#pragma once

namespace zv {

class Program;

/// Makes the windows that make libraries known to the program: the editor and the user's favourites.
void addLibraryWindows(Program& program);

} // namespace zv
