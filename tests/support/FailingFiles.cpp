#include "support/FailingFiles.h"

#include "support/KilledProcess.h"

#include <cstdlib>

namespace zv {

namespace {

constexpr int kNever = -1;
/// An operation that goes on for longer in the face of a bad disk does not end.
constexpr std::size_t kMostSteps = 10'000;

const char* nameOf(Fault fault)
{
    switch (fault) {
    case Fault::Fails:
        return "fails";
    case Fault::StaysBad:
        return "and all later ones fail";
    case Fault::DiskIsFull:
        return "fills the disk";
    case Fault::Killed:
        return "is the end of the process";
    }
    return "";
}

bool needsRoom(FileStep step)
{
    return step == FileStep::Write || step == FileStep::Reserve;
}

/// What an undisturbed run comes to.
struct GoodRun {
    std::string before, after;
    std::vector<FileStep> steps;
};

GoodRun goodRun(const FileOperation& operation, std::vector<std::string>& broken)
{
    const TemporaryFolder folder;
    operation.prepare(folder);
    GoodRun good;
    good.before = operation.state(folder);
    {
        FailingFiles files(Fault::Fails, kNever);
        if (!operation.run(folder))
            broken.push_back(operation.name + ": fails undisturbed");
        good.steps = files.steps();
    }
    good.after = operation.state(folder);
    if (good.after == good.before)
        broken.push_back(operation.name + ": changes nothing");
    return good;
}

void tryFault(const FileOperation& operation, const GoodRun& good, Fault fault, int step, FaultReport& report)
{
    const TemporaryFolder folder;
    operation.prepare(folder);
    const auto run = [&] {
        const FailingFiles files(fault, step);
        return operation.run(folder);
    };
    bool done = false;
    if (fault != Fault::Killed)
        done = run();
    else if (runUntilKilled(run))
        ++report.kills;
    else
        return;
    ++report.faults;
    const std::string where =
        operation.name + ", step " + std::to_string(step + 1) + " " + nameOf(fault) + ": ";
    const std::string left = operation.state(folder);
    if (left != good.before && left != good.after)
        report.broken.push_back(where + "leaves \"" + left + "\"");
    else if (done && operation.tellsSuccess && left != good.after)
        report.broken.push_back(where + "tells success and has changed nothing");
    if (left != good.before)
        return;
    operation.run(folder);
    if (operation.state(folder) != good.after)
        report.broken.push_back(where + "the next run leaves \"" + operation.state(folder) + "\"");
}

} // namespace

StepOutcome FailingFiles::before(FileStep step)
{
    const int number = static_cast<int>(m_steps.size());
    m_steps.push_back(step);
    if (m_step == kNever || number < m_step)
        return StepOutcome::Made;
    if (m_steps.size() > kMostSteps)
        std::abort();
    switch (m_fault) {
    case Fault::Fails:
        return number == m_step ? StepOutcome::Failed : StepOutcome::Made;
    case Fault::StaysBad:
        return StepOutcome::Failed;
    case Fault::DiskIsFull:
        if (!needsRoom(step))
            return StepOutcome::Made;
        return number == m_step ? StepOutcome::Half : StepOutcome::Failed;
    case Fault::Killed:
        killThisProcess();
    }
    return StepOutcome::Made;
}

FaultReport tryEveryFault(const FileOperation& operation)
{
    FaultReport report;
    const GoodRun good = goodRun(operation, report.broken);
    report.steps = static_cast<int>(good.steps.size());
    for (int step = 0; step < report.steps; ++step) {
        for (const Fault fault : {Fault::Fails, Fault::StaysBad, Fault::Killed})
            tryFault(operation, good, fault, step, report);
        if (needsRoom(good.steps[static_cast<std::size_t>(step)]))
            tryFault(operation, good, Fault::DiskIsFull, step, report);
    }
    return report;
}

} // namespace zv
