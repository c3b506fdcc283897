#include "queue/QueueFile.h"

#include "library/ListFile.h"
#include "platform/FileText.h"
#include "platform/Files.h"
#include "platform/Text.h"

namespace zv {

namespace {

/// More than anybody queues.
constexpr std::uint64_t kMostQueueBytes = kMostListBytes;
constexpr const char* kLineEnd = "\r\n";

std::string workingCopyOf(const std::string& queuePath)
{
    return queuePath + ".new";
}

} // namespace

std::string queuePath(const std::string& userFolder, const std::string& loginName)
{
    return joinPath(userFolder, loginName + ".crt");
}

Result<void> addToQueue(const std::string& queuePath, const std::string& drawing,
                        const std::function<void()>& whileOpen)
{
    return appendLines(queuePath, textForFile(drawing) + kLineEnd, workingCopyOf(queuePath), whileOpen);
}

bool isQueuedPath(std::string_view path)
{
    return wide(path).size() > 1;
}

Result<std::vector<std::string>> readQueue(const std::string& queuePath)
{
    Result<std::string> bytes = readFile(queuePath, kMostQueueBytes);
    if (!bytes)
        return bytes.error();
    const std::string text = textFromFile(std::move(*bytes));
    std::vector<std::string> drawings;
    for (const std::string_view line : textLines(text)) {
        if (isQueuedPath(line))
            drawings.emplace_back(line);
    }
    return drawings;
}

Result<void> saveQueue(const std::string& queuePath, const std::vector<std::string>& drawings)
{
    std::string bytes;
    for (const std::string& drawing : drawings)
        bytes += textForFile(drawing) + kLineEnd;
    return replaceFile(queuePath, workingCopyOf(queuePath), bytes);
}

} // namespace zv
