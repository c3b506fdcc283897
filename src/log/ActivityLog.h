#pragma once

#include <string>
#include <string_view>

namespace zv {

/// One entry of the activity log: present date and time, login name, drawing and method, each with a comma
/// behind it. Commas in the fields stay as they are.
std::string logEntry(const std::string& login, const std::string& drawing, std::string_view method);

/// Writes an entry to the log; a missing log is made, with its header, and takes its name as a whole. The
/// entry goes out as a whole line in one write, so that several programs can share a log. An empty path
/// writes nothing. A log that cannot be written is not reported: the entry is lost.
void writeLog(const std::string& logPath, const std::string& entry);

} // namespace zv
