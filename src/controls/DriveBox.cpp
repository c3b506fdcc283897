#include "controls/DriveBox.h"

#include "controls/FolderList.h"
#include "platform/Folders.h"
#include "platform/Messages.h"
#include "window/TextBytes.h"

#include <QSignalBlocker>

namespace zv {

DriveBox::DriveBox(QWidget* parent) : QComboBox(parent)
{
    setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    setMinimumContentsLength(8);
    setAccessibleName(tr("Drive"));
    refresh();
    connect(this, &QComboBox::textActivated, this, &DriveBox::driveChosen);
}

void DriveBox::refresh()
{
    const QSignalBlocker noHandlers(this);
    const QString shown = currentText();
    clear();
    for (const std::string& root : drives())
        addItem(toText(root));
    setCurrentIndex(findText(shown, Qt::MatchExactly));
}

void DriveBox::showDriveOf(const std::string& path)
{
    std::vector<std::string> roots;
    for (int row = 0; row < count(); ++row)
        roots.push_back(toBytes(itemText(row)));
    const std::string root = driveOf(path, roots);
    const QSignalBlocker noHandlers(this);
    setCurrentIndex(root.empty() ? -1 : findText(toText(root), Qt::MatchExactly));
}

void DriveBox::showPopup()
{
    refresh();
    QComboBox::showPopup();
}

void chainLists(DriveBox& drives, FolderList& folders, Messages& messages)
{
    drives.showDriveOf(folders.path());
    QObject::connect(&drives, &DriveBox::driveChosen, &folders, [&](const QString& root) {
        if (!folders.setPath(toBytes(root))) {
            drives.showDriveOf(folders.path());
            messages.show({"Error Reading Drive", "Drive Error", MessageIcon::Critical});
        }
    });
    QObject::connect(&folders, &FolderList::pathChanged, &drives,
                     [&] { drives.showDriveOf(folders.path()); });
}

} // namespace zv
