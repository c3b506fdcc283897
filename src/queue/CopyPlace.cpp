#include "queue/CopyPlace.h"

#include "controls/CaptionFrame.h"
#include "controls/DriveBox.h"
#include "controls/FolderList.h"
#include "controls/NamedControls.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "window/TextBytes.h"

#include <QLineEdit>
#include <QShortcut>
#include <QVBoxLayout>

namespace zv {
CopyPlace::CopyPlace(Program& program, const QString& name, const QString& title, const QString& frame)
    : Window(program, name, title)
{
    Frame1 = named<CaptionFrame>("Frame1", this);
    Frame1->setTitle(frame);
    Text1 = named<QLineEdit>("Text1", Frame1);
    Text1->setAccessibleName(tr("Destination"));
    Drive1 = named<DriveBox>("Drive1", Frame1);
    Dir1 = named<FolderList>("Dir1", Frame1);
    Command1 = namedButton("Command1", QStringLiteral("&New"), this);
    Command11 = namedButton("Command11", QStringLiteral("&Ok"), this);
    Command8 = namedButton("Command8", QStringLiteral("&Cancel"), this);

    auto* const inFrame = new QVBoxLayout(Frame1);
    inFrame->setContentsMargins(8, 8, 8, 8);
    inFrame->setSpacing(8);
    inFrame->addWidget(Text1);
    inFrame->addWidget(Drive1);
    inFrame->addWidget(Dir1, 1);
    buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(Command1);
    buttons->addStretch();
    buttons->addWidget(Command11);
    buttons->addWidget(Command8);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(8, 8, 8, 8);
    column->setSpacing(8);
    column->addWidget(Frame1, 1);
    column->addLayout(buttons);
    resize(400, 440);

    chainLists(*Drive1, *Dir1, messages());
    Text1->setText(Dir1->pathText());
    connect(Dir1, &FolderList::pathChanged, Text1, [this] { Text1->setText(Dir1->pathText()); });
    connect(Command1, &QPushButton::clicked, this, [this] { newFolder(); });
    connect(Command11, &QPushButton::clicked, this, [this] { accept(); });
    connect(Command8, &QPushButton::clicked, this, [this] { cancel(); });
    connect(Text1, &QLineEdit::returnPressed, Command11, &QPushButton::click);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, Command8, &QPushButton::click);
    Dir1->setFocus();
}

std::string CopyPlace::destination() const
{
    return toBytes(Text1->text());
}

bool CopyPlace::goToDestination()
{
    const auto gone = setCurrentFolder(destination());
    if (!gone)
        program().fail(namingFile(destination(), gone.error()));
    return bool(gone);
}

Window* CopyPlace::openNewFolder(const QString& window)
{
    Window* const dialog = program().load(window);
    if (dialog) {
        setEnabled(false);
        program().show(window);
    }
    return dialog;
}

void CopyPlace::cancel()
{
    program().unload(objectName());
}

} // namespace zv
