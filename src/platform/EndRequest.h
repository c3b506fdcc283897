#pragma once

namespace zv {

/// Puts a request to end this program, a signal, off for as long as it lives, and then carries it out: what
/// was changed in another program meanwhile can be set back first, and what waits here can be written. Of
/// several that live at once the last carries it out. On Windows a program with windows is asked to end
/// through these.
class EndRequestHold {
public:
    EndRequestHold();
    ~EndRequestHold();
    EndRequestHold(const EndRequestHold&) = delete;
    EndRequestHold& operator=(const EndRequestHold&) = delete;
};

/// Whether a request is put off.
bool endIsRequested();

/// A descriptor that can be read once a request is put off; -1 while none would be.
int endRequestDescriptor();

} // namespace zv
