#pragma once

namespace zv {

/// What the files of the program ask of the system. Every such call is one step.
enum class FileStep { Open, Status, List, Read, Write, Flush, Cut, Lock, Rights, Rename, Link, Delete };

/// What becomes of a step: the system makes it, or it fails as on a damaged disk. A write can also be made
/// for its first half, as on a full disk; for any other step that is as if it were made.
enum class StepOutcome { Made, Failed, Half };

/// Sees every step before it is made and says what becomes of it. Tests stand between the program and its
/// disk this way: let any one step fail, or end the process there.
class FileWatch {
public:
    virtual ~FileWatch() = default;
    virtual StepOutcome before(FileStep step) = 0;
};

/// The watch of this process from now on; null, as in the program, for none.
void watchFiles(FileWatch* watch);

/// What becomes of the step that is about to be made. Only the platform's own files ask.
StepOutcome outcomeOf(FileStep step);

} // namespace zv
