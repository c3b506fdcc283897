#pragma once

#include "platform/FileSteps.h"
#include "support/TemporaryFolder.h"

#include <functional>
#include <string>
#include <vector>

namespace zv {

/// Where an operation on files is cut off.
enum class Fault {
    Fails,      ///< One step fails; the next ones are made.
    StaysBad,   ///< From one step on all fail, as where a disk or a network is gone.
    DiskIsFull, ///< A write is made for its first half, and no further one.
    Killed,     ///< The process ends before one step.
};

/// Lets the files of this process fail while it lives: the step of number `step`, from 0, meets the fault.
class FailingFiles final : public FileWatch {
public:
    FailingFiles(Fault fault, int step) : m_fault(fault), m_step(step) { watchFiles(this); }
    FailingFiles(const FailingFiles&) = delete;
    FailingFiles& operator=(const FailingFiles&) = delete;
    ~FailingFiles() override { watchFiles(nullptr); }

    StepOutcome before(FileStep step) override;
    /// The steps so far, in their order.
    const std::vector<FileStep>& steps() const { return m_steps; }

private:
    Fault m_fault;
    int m_step;
    std::vector<FileStep> m_steps;
};

/// An operation that leaves its file whole, as it was or as it is to be, wherever it is cut off.
struct FileOperation {
    std::string name;
    /// Makes the files as they are before the operation.
    std::function<void(const TemporaryFolder&)> prepare;
    /// Carries the operation out; false when it tells a failure.
    std::function<bool(const TemporaryFolder&)> run;
    /// What the file holds, for example folder.read("a.lst").
    std::function<std::string(const TemporaryFolder&)> state;
    /// Whether the operation's success tells that it was done; a profile's write that nobody looks at does
    /// not.
    bool tellsSuccess = true;
};

struct FaultReport {
    int steps = 0;  ///< System calls of an undisturbed run.
    int faults = 0; ///< Ways in which it was cut off.
    int kills = 0;  ///< Of these, by the end of its process; 0 where the system does not allow it.
    std::vector<std::string> broken; ///< What did not hold, in words.
};

/// Runs the operation once with each of its steps failing, each in every way that there is, and once killed
/// at each. After every fault the file has to be as before or as after an undisturbed run, as after it when
/// the operation tells success, and an undisturbed run from there has to come to the same end as one from the
/// start.
FaultReport tryEveryFault(const FileOperation& operation);

} // namespace zv
