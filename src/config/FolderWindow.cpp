#include "config/FolderWindow.h"

#include "controls/CaptionFrame.h"
#include "controls/DriveBox.h"
#include "controls/FolderList.h"
#include "window/TextBytes.h"

#include <QBoxLayout>
#include <QLineEdit>
#include <QPushButton>

namespace zv {

namespace {

constexpr QSize kSizeAtFirst(433, 433);

} // namespace

FolderWindow::FolderWindow(Program& program, const QString& name, const QString& title,
                           const QString& caption, const QString& meaning)
    : Window(program, name, title), Frame1(new CaptionFrame(this)), Drive1(new DriveBox(Frame1)),
      Dir1(new FolderList(Frame1)), Text1(new QLineEdit(this)), m_buttons(new QHBoxLayout)
{
    Frame1->setObjectName(QStringLiteral("Frame1"));
    Frame1->setTitle(caption);
    Drive1->setObjectName(QStringLiteral("Drive1"));
    Dir1->setObjectName(QStringLiteral("Dir1"));
    Text1->setObjectName(QStringLiteral("Text1"));
    Text1->setAccessibleName(meaning);
    Command11 = button("Command11", QStringLiteral("&Ok"), QStringLiteral("Close and Save Changes"));
    Command8 = button("Command8", QStringLiteral("&Cancel"), QStringLiteral("Discard"));

    auto* lists = new QVBoxLayout(Frame1);
    lists->addWidget(Drive1);
    lists->addWidget(Dir1, 1);
    m_buttons->addStretch(1);
    m_buttons->addWidget(Command11);
    m_buttons->addWidget(Command8);
    auto* all = new QVBoxLayout(this);
    all->setContentsMargins(8, 8, 8, 8);
    all->setSpacing(8);
    all->addWidget(Frame1, 1);
    all->addWidget(Text1);
    all->addLayout(m_buttons);
    resize(kSizeAtFirst);

    chainLists(*Drive1, *Dir1, messages());
    connect(Dir1, &FolderList::folderChosen, this, [this] { Text1->setText(toText(Dir1->chosenPath())); });
    Dir1->setFocus();
}

QPushButton* FolderWindow::button(const char* name, const QString& caption, const QString& tip)
{
    auto* made = new QPushButton(caption, this);
    made->setObjectName(QLatin1String(name));
    made->setToolTip(tip);
    return made;
}

QPushButton* FolderWindow::addButton(const char* name, const QString& caption, const QString& tip)
{
    QPushButton* added = button(name, caption, tip);
    m_buttons->insertWidget(m_buttons->indexOf(Command8), added);
    setTabOrder(Command11, added);
    setTabOrder(added, Command8);
    return added;
}

} // namespace zv
