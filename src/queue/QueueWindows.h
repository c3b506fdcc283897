#pragma once

namespace zv {

class Program;

/// Makes the queue's window and the dialogs that ask for a folder known to the program.
void addQueueWindows(Program& program);

} // namespace zv
