#pragma once

#include "platform/Result.h"

#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace zv {

/// The queue of a user: user folder + separator + login name + ".crt".
std::string queuePath(const std::string& userFolder, const std::string& loginName);

/// Adds one drawing at the queue's end, as a whole line in one write, so that two programs of one user can
/// add at once. A missing queue is made. The queue takes any text, an empty one too, and the same drawing
/// again. `whileOpen` is called before the file is closed again. Errors: Denied, Failed.
Result<void> addToQueue(const std::string& queuePath, const std::string& drawing,
                        const std::function<void()>& whileOpen = {});

/// Whether a path has the two characters that make it one: shorter ones are neither queued nor read.
bool isQueuedPath(std::string_view path);

/// The queued drawings in the order of adding, without lines of 0 or 1 characters. Errors: NotFound, Denied;
/// TooLarge, before anything is read; Failed.
Result<std::vector<std::string>> readQueue(const std::string& queuePath);

/// Replaces the whole queue; no drawings leave a file of zero bytes. A crash or a full disk leaves the old
/// queue or the new one. Errors: Denied, Failed.
Result<void> saveQueue(const std::string& queuePath, const std::vector<std::string>& drawings);

} // namespace zv
