#pragma once

namespace zv {

/// What the files of the program ask of the system. Every such call is one step.
enum class FileStep {
    Open,
    Status,
    List,
    Read,
    Reserve,   ///< Room on the disk for what is to be written.
    Write,     ///< A full disk may make it for its first half.
    Overwrite, ///< A write where there is room already.
    Flush,
    Cut,
    Lock,
    Rights,
    Rename,
    Link,
    Delete,
};

/// What becomes of a step: the system makes it, or it fails as on a damaged disk. On a full disk a write is
/// made for its first half, and no room is reserved; for any other step that is as if it were made.
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
