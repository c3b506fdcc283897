#include "browser/BrowserWindows.h"

#include "browser/Zelvora.h"
#include "browser/frmSplash.h"

namespace zv {

void addBrowserWindows(Program& program)
{
    program.add(QStringLiteral("Zelvora"), [&program] { return new Zelvora(program); });
    program.add(QStringLiteral("frmSplash"), [&program] { return new frmSplash(program); });
}

} // namespace zv
