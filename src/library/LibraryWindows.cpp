#include "library/LibraryWindows.h"

#include "library/MyLib.h"
#include "library/Newlib.h"

namespace zv {

void addLibraryWindows(Program& program)
{
    program.add(QStringLiteral("Newlib"), [&program] { return new Newlib(program); });
    program.add(QStringLiteral("MyLib"), [&program] { return new MyLib(program); });
}

} // namespace zv
