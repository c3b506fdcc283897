// Cuts every operation on a list, the catalogue, a profile, the queue and the log off at each of its calls of
// the system, in every way that there is, and prints what that came to, as a table. Ends with 1 when a file
// was not left whole, as it was or as it is to be.
#include "faults/Operations.h"

#include <cstdio>

int main()
{
    int faults = 0;
    std::size_t broken = 0;
    std::printf("| operation | calls | cut off | of that killed | file not whole |\n|---|---|---|---|---|\n");
    for (const zv::FileOperation& operation : zv::fileOperations()) {
        const zv::FaultReport report = zv::tryEveryFault(operation);
        std::printf("| %s | %d | %d | %d | %zu |\n", operation.name.c_str(), report.steps, report.faults,
                    report.kills, report.broken.size());
        for (const std::string& what : report.broken)
            std::fprintf(stderr, "%s\n", what.c_str());
        faults += report.faults;
        broken += report.broken.size();
    }
    std::printf("| all | | %d | | %zu |\n", faults, broken);
    return broken == 0 ? 0 : 1;
}
