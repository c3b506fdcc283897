#include "log/ActivityLog.h"

#include "platform/Files.h"
#include "platform/System.h"

namespace zv {

namespace {

constexpr std::string_view kHeader = "Zelvora Log File,\r\n"
                                     "Date:,Login:,DWG:,Method:,\r\n"
                                     "\r\n";

} // namespace

std::string logEntry(const std::string& login, const std::string& drawing, std::string_view method)
{
    return shortDateTime() + "," + login + "," + drawing + "," + std::string(method) + ",";
}

void writeLog(const std::string& logPath, const std::string& entry)
{
    // A path of blanks is what a switched-off log leaves behind; systems differ on whether it names a file.
    if (logPath.find_first_not_of(' ') == std::string::npos)
        return;
    const std::string line = entry + "\r\n";
    const std::string begun = std::string(kHeader) + line;
    if (!fileExists(logPath)) {
        const Result<void> made = createFile(logPath, begun);
        if (made || made.error().code != ErrorCode::Busy)
            return;
    }
    // Another program may have made it meanwhile. Else a link that leads nowhere has the name.
    const Result<std::uint64_t> length = fileLength(logPath);
    const bool isNew = !length && length.error().code == ErrorCode::NotFound;
    static_cast<void>(appendLines(logPath, isNew ? begun : line).ok());
}

} // namespace zv
