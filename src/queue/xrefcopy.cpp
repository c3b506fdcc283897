#include "queue/xrefcopy.h"

#include "host/Xattach.h"

#include <QLineEdit>

namespace zv {
namespace {

Xattach* xattachOf(const Program& program)
{
    return qobject_cast<Xattach*>(program.loaded(QStringLiteral("Xattach")));
}

} // namespace

xrefcopy::xrefcopy(Program& program)
    : CopyPlace(program, QStringLiteral("xrefcopy"), QStringLiteral("Xref Copy Location"),
                QStringLiteral("Copy Xref To: "))
{
    Command8->setToolTip(QStringLiteral("Discard"));
    Command11->setToolTip(QStringLiteral("Close and Save Changes"));
}

void xrefcopy::unloading()
{
    if (xattachOf(program()))
        program().show(QStringLiteral("Xattach"));
}

void xrefcopy::accept()
{
    if (Xattach* caller = xattachOf(program())) {
        program().show(QStringLiteral("Xattach"));
        caller->Text8->setText(Text1->text());
    }
    program().unload(objectName());
}

// This button has never had a window behind it.
void xrefcopy::newFolder()
{
    program().fail("xrefcopy: there is no window for a new folder");
}

} // namespace zv
