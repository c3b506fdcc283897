#include "queue/dwgcopy.h"

#include "config/Keys.h"
#include "controls/DriveBox.h"
#include "controls/FolderList.h"
#include "host/cmode.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "platform/Text.h"
#include "window/BrowserFields.h"
#include "window/TextBytes.h"

#include <QLineEdit>

namespace zv {
namespace {

cmode* cmodeOf(const Program& program)
{
    return qobject_cast<cmode*>(program.loaded(QStringLiteral("cmode")));
}

} // namespace

dwgcopy::dwgcopy(Program& program)
    : CopyPlace(program, QStringLiteral("dwgcopy"), QStringLiteral("Specify Copy Location"),
                QStringLiteral("Copy DWG To: "))
{
    Command8->setToolTip(QStringLiteral("Discard"));
    Command11->setToolTip(QStringLiteral("Close and Save Changes"));
}

void dwgcopy::load()
{
    const cmode* caller = cmodeOf(program());
    if (!caller || caller->Text1->text().isEmpty())
        return;
    // A folder that has gone leaves the current one.
    static_cast<void>(Dir1->setPath(parentFolder(toBytes(caller->Text1->text()))));
    Text1->setText(Dir1->pathText());
}

void dwgcopy::unloading()
{
    if (cmodeOf(program()))
        program().show(QStringLiteral("cmode"));
}

void dwgcopy::accept()
{
    const std::string folder = fullPath(destination());
    if (!goToDestination())
        return;
    if (cmode* caller = cmodeOf(program())) {
        const BrowserFields& fields = program().fields();
        const std::string held = toBytes(caller->Text1->text());
        const std::string& search = fileNamePart(held).empty() ? fields.searchDrawing : held;
        const std::string& drawing = fields.cmodeState == 7 ? search : fields.selectedDrawing;
        program().show(QStringLiteral("cmode"));
        caller->Text1->setText(toText(joinPath(folder, fileNamePart(drawing))));
    }
    profiles().write(keys::dwgcopy::writeProjectpath, Dir1->path());
    program().unload(objectName());
}

void dwgcopy::newFolder()
{
    openNewFolder(QStringLiteral("cNewFolder"));
}

} // namespace zv
