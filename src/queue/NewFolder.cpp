#include "queue/NewFolder.h"

#include "controls/CaptionFrame.h"
#include "controls/FolderList.h"
#include "controls/NamedControls.h"
#include "help/ProgramHelp.h"
#include "platform/Files.h"
#include "platform/Folders.h"
#include "queue/CopyPlace.h"
#include "window/TextBytes.h"

#include <QLabel>
#include <QLineEdit>
#include <QShortcut>
#include <QVBoxLayout>

namespace zv {
NewFolder::NewFolder(Program& program, const QString& name, const QString& parent)
    : Window(program, name, QStringLiteral("Create New Folder")), m_parent(parent)
{
    Frame1 = named<CaptionFrame>("Frame1", this);
    Frame1->setTitle(QStringLiteral("Create New Folder Under:"));
    Text1 = named<QLineEdit>("Text1", Frame1);
    Text1->setReadOnly(true);
    Text1->setAccessibleName(Frame1->title());
    Label1 = named<QLabel>("Label1", this, QStringLiteral("Type New Folder Name:"));
    Text2 = named<QLineEdit>("Text2", this);
    Label1->setBuddy(Text2);
    Text2->setAccessibleName(Label1->text());
    Command11 = namedButton("Command11", QStringLiteral("&Ok"), this, QStringLiteral("Create New Folder"));
    Command4 = namedButton("Command4", QStringLiteral("&Cancel"), this, QStringLiteral("Cancel New Folder"));
    Command3 = namedButton("Command3", QStringLiteral("&Help"), this, QStringLiteral("Open Quendar Help"));
    layOut();
    connect(Command11, &QPushButton::clicked, this, &NewFolder::create);
    connect(Text2, &QLineEdit::returnPressed, Command11, &QPushButton::click);
    connect(Command4, &QPushButton::clicked, this, [this] { this->program().unload(objectName()); });
    connect(Command3, &QPushButton::clicked, this, [this] { showHelpContents(this->program()); });
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, Command4, &QPushButton::click);
}

void NewFolder::layOut()
{
    auto* const inFrame = new QVBoxLayout(Frame1);
    inFrame->setContentsMargins(8, 8, 8, 8);
    inFrame->addWidget(Text1);
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addWidget(Command3);
    buttons->addStretch();
    buttons->addWidget(Command11);
    buttons->addWidget(Command4);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(8, 8, 8, 8);
    column->setSpacing(8);
    column->addWidget(Frame1);
    column->addWidget(Label1);
    column->addWidget(Text2);
    column->addSpacing(8);
    column->addLayout(buttons);
    // Room below would show nothing.
    for (QWidget* rigid : {static_cast<QWidget*>(Frame1), static_cast<QWidget*>(Label1)})
        rigid->setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    column->setSizeConstraint(QLayout::SetMinAndMaxSize);
    resize(360, sizeHint().height());
}

void NewFolder::load()
{
    if (const CopyPlace* parent = parentDialog())
        Text1->setText(parent->Dir1->pathText());
    Text2->clear();
    Text2->setFocus();
}

void NewFolder::unloading()
{
    if (CopyPlace* parent = parentDialog()) {
        parent->setEnabled(true);
        parent->activateWindow();
    }
}

CopyPlace* NewFolder::parentDialog() const
{
    return qobject_cast<CopyPlace*>(program().loaded(m_parent));
}

std::string NewFolder::newPath() const
{
    const CopyPlace* parent = parentDialog();
    return joinPath(parent ? parent->Dir1->path() : std::string(), toBytes(Text2->text()));
}

void NewFolder::create()
{
    if (Text2->text().isEmpty()) {
        messages().show(
            {"Please Specify New Folder name", "No Folder Name Specified", MessageIcon::Information});
        return;
    }
    CopyPlace* parent = parentDialog();
    const std::string path = newPath();
    if (!parent || !makeFolder(path) || !parent->Dir1->setPath(path)) {
        messages().show(
            {"Folder Name: " + path + " Already Exists", "Folder Already Exists", MessageIcon::Information});
        Text2->clear();
        return;
    }
    parent->repaint();
    program().unload(objectName());
    parent->Command11->setFocus();
}

} // namespace zv
