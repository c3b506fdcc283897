#include "browser/BrowserWindows.h"

#include "browser/Zelvora.h"
#include "browser/frmSplash.h"

namespace zv {

void addBrowserWindows(Program& program)
{
    const auto fields = std::make_shared<BrowserFields>();
    program.add(QStringLiteral("Zelvora"), [&program, fields] { return new Zelvora(program, *fields); });
    program.add(QStringLiteral("frmSplash"), [&program] { return new frmSplash(program); });
}

} // namespace zv
