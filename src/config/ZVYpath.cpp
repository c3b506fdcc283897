#include "config/ZVYpath.h"

#include "config/Keys.h"
#include "config/MasterFolder.h"
#include "controls/DriveBox.h"
#include "controls/FolderList.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "window/TextBytes.h"

#include <QLineEdit>
#include <QPushButton>

namespace zv {

ZVYpath::ZVYpath(Program& program)
    : FolderWindow(program, QStringLiteral("ZVYpath"), QStringLiteral("Zelvora Master Libraries Folder"),
                   QStringLiteral("Locate Zelvora Master Libraries"), tr("Master folder"))
{
    Command1 =
        addButton("Command1", QStringLiteral("&Default"), QStringLiteral("Set Default for Zelvora List"));
    connect(Command11, &QPushButton::clicked, this, &ZVYpath::save);
    connect(Command1, &QPushButton::clicked, this, &ZVYpath::setDefault);
    connect(Command8, &QPushButton::clicked, this, [this] { this->program().unload(objectName()); });
}

void ZVYpath::load()
{
    const std::string& master = values().MasterPath;
    Text1->setText(toText(master));
    if (!setCurrentFolder(master) || !Dir1->setPath(master)) {
        messages().show({"Error Reading Drive: " + master, "Drive Error", MessageIcon::Critical});
        return;
    }
    Drive1->showDriveOf(master);
}

void ZVYpath::unloading()
{
    const QString editor = QStringLiteral("Newlib");
    if (Window* window = program().load(editor))
        window->setEnabled(true);
    program().show(editor);
}

/// The window stays open, and only the running value changes. What is written names a file below the profile
/// file, which cannot be; offices have come to rely on the next start going back to the old folder.
void ZVYpath::setDefault()
{
    const std::string& installation = program().folders().installation;
    Text1->setText(toText(installation));
    values().MasterPath = joinPath(installation, kProfileName);
    profiles().write(keys::zvypath::writeMasterZVRpath, installation);
    values().MasterPath = installation;
}

void ZVYpath::save()
{
    moveMasterFolder(program().folders().installation, toBytes(Text1->text()), values());
    program().unload(objectName());
}

} // namespace zv
