#include "print/PrintWindows.h"

#include "print/PrintLib.h"

namespace zv {

void addPrintWindows(Program& program)
{
    program.add(QStringLiteral("PrintLib"), [&program] { return new PrintLib(program); });
}

} // namespace zv
