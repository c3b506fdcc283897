#pragma once

#include <string>

namespace zv {

// Lists, profiles and queues are shared with older programs, which write them in the system's 8-bit code
// page. On Windows each line that is valid UTF-8 is taken as it stands, and any other is read in that code
// page; what the program writes itself is UTF-8. Elsewhere files hold the program's own bytes.

/// What stands in a file, in the program's own text: one line or many.
std::string textFromFile(std::string bytes);
/// A line as a file has to hold it, so that the same text is read from there.
std::string textForFile(std::string line);

} // namespace zv
