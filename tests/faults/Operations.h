#pragma once

#include "support/FailingFiles.h"

#include <vector>

namespace zv {

/// Everything that the program does to a list, the catalogue, a profile, the queue and the log.
std::vector<FileOperation> fileOperations();
/// Of these, what can be done on this system alone.
std::vector<FileOperation> systemFileOperations();

} // namespace zv
