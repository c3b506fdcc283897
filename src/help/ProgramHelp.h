#pragma once

#include "help/HTMLHelpViewer.h"

namespace zv {

class Program;

/// The one help of the program, which every Help button goes through. It ends with the application.
HTMLHelpViewer& programHelp();

/// Makes the program's help file, beside the executable, the application's own help file: its property
/// "helpFile".
void pointToHelpFile(const Program& program);

/// What every Help button does: shows the contents of the program's help file. Nothing happens when the file
/// is missing or damaged.
void showHelpContents(const Program& program);

} // namespace zv
