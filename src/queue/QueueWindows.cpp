#include "queue/QueueWindows.h"

#include "queue/Cart.h"
#include "queue/CartCopy.h"
#include "queue/NewFolder.h"
#include "queue/dwgcopy.h"
#include "queue/xrefcopy.h"

namespace zv {
namespace {

void addNewFolder(Program& program, const QString& name, const QString& parent)
{
    program.add(name, [&program, name, parent] { return new NewFolder(program, name, parent); });
}

} // namespace

void addQueueWindows(Program& program)
{
    program.add(QStringLiteral("Cart"), [&program] { return new Cart(program); });
    program.add(QStringLiteral("CartCopy"), [&program] { return new CartCopy(program); });
    program.add(QStringLiteral("dwgcopy"), [&program] { return new dwgcopy(program); });
    program.add(QStringLiteral("xrefcopy"), [&program] { return new xrefcopy(program); });
    addNewFolder(program, QStringLiteral("sNewFolder"), QStringLiteral("CartCopy"));
    addNewFolder(program, QStringLiteral("cNewFolder"), QStringLiteral("dwgcopy"));
}

} // namespace zv
