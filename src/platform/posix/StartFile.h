#pragma once

#include "platform/Result.h"

#include <atomic>
#include <memory>
#include <string>
#include <utility>

namespace zv {

/// A program that was started here and that outlives this one. Its end is waited for, so that it leaves
/// nothing behind.
class StartedProcess {
public:
    explicit StartedProcess(std::shared_ptr<const std::atomic<bool>> ended) : m_ended(std::move(ended)) {}
    bool hasEnded() const { return *m_ended; }

private:
    std::shared_ptr<const std::atomic<bool>> m_ended;
};

/// Runs the command of a host's start file, without waiting for its end. It gets no file that is open here.
/// Errors: NotFound, there is no such file; Failed, the command cannot be run.
Result<StartedProcess> runStartFile(const std::string& progId);

} // namespace zv
