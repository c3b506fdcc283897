#include "faults/Operations.h"

namespace zv {

std::vector<FileOperation> systemFileOperations()
{
    return {};
}

} // namespace zv
