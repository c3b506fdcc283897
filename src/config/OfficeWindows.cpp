#include "config/OfficeWindows.h"

#include "config/Fontpath.h"
#include "config/Options.h"
#include "config/ZVYpath.h"

namespace zv {

void addOfficeWindows(Program& program)
{
    program.add(QStringLiteral("Options"), [&program] { return new Options(program); });
    program.add(QStringLiteral("Fontpath"), [&program] { return new Fontpath(program); });
    program.add(QStringLiteral("ZVYpath"), [&program] { return new ZVYpath(program); });
}

} // namespace zv
