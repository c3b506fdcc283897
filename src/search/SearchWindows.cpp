#include "search/SearchWindows.h"

#include "search/Search.h"

namespace zv {

void addSearchWindows(Program& program)
{
    program.add(QStringLiteral("Search"), [&program] { return new Search(program); });
}

} // namespace zv
