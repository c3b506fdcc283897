#include "host/cmode.h"

#include "config/Keys.h"
#include "controls/ElidedLabel.h"
#include "controls/NamedControls.h"
#include "host/ActionProcedure.h"
#include "host/CmodeProcedure.h"
#include "platform/Files.h"
#include "platform/Text.h"
#include "window/BrowserFields.h"
#include "window/TextBytes.h"

#include <QCheckBox>
#include <QLineEdit>
#include <QShortcut>
#include <QVBoxLayout>

namespace zv {
cmode::cmode(Program& program)
    : HostDialog(program, QStringLiteral("cmode"), QStringLiteral("Open and Copy"),
                 program.fields().cmodeState)
{
    Label1 = named<ElidedLabel>("Label1", this);
    Label1->setText(QStringLiteral("Open:"));
    Check5 = named<QCheckBox>("Check5", this);
    Check5->setText(QStringLiteral("Copy Drawing to Project Folder then Open:"));
    Text1 = named<QLineEdit>("Text1", this);
    Text1->setAccessibleName(tr("Copy to make"));
    Command1 = namedButton("Command1", QStringLiteral("&Browse..."), this);
    Command3 = namedButton("Command3", QStringLiteral("&Open"), this);
    Command2 = namedButton("Command2", QStringLiteral("&Cancel"), this);
    layOut();
    connect(Check5, &QCheckBox::toggled, this, &cmode::setCopying);
    connect(Command1, &QPushButton::clicked, this, [this] {
        hideWindow();
        if (!this->program().show(QStringLiteral("dwgcopy")))
            showOnTop();
    });
    connect(Command2, &QPushButton::clicked, this, [this] { cancel(); });
    connect(Command3, &QPushButton::clicked, this, &cmode::open);
    connect(Text1, &QLineEdit::returnPressed, Command3, &QPushButton::click);
    connect(new QShortcut(Qt::Key_Escape, this), &QShortcut::activated, Command2, &QPushButton::click);
}

void cmode::layOut()
{
    auto* const target = new QHBoxLayout;
    target->setSpacing(8);
    target->addWidget(Text1, 1);
    target->addWidget(Command1);
    auto* const buttons = new QHBoxLayout;
    buttons->setSpacing(8);
    buttons->addStretch();
    buttons->addWidget(Command3);
    buttons->addWidget(Command2);
    auto* const column = new QVBoxLayout(this);
    column->setContentsMargins(8, 8, 8, 8);
    column->setSpacing(8);
    column->addWidget(Label1);
    column->addWidget(Check5);
    column->addLayout(target);
    column->addSpacing(8);
    column->addLayout(buttons);
    // Room below would show nothing.
    column->setSizeConstraint(QLayout::SetMinAndMaxSize);
    resize(480, sizeHint().height());
}

void cmode::load()
{
    stayOnTop();
    m_drawing = chosenDrawing();
    const Result<int> stored = profiles().storedNumber(keys::cmode::projectcopy);
    const bool copies = stored.valueOr(keys::cmode::projectcopy.fallback) == 1;
    m_settingUnknown = !stored;
    Check5->setChecked(copies);
    m_settingUnknown = false;
    Command1->setEnabled(copies);
    Text1->setEnabled(copies);
    const std::string folder = profiles().text(keys::cmode::projectpath);
    if (!folder.empty())
        Text1->setText(toText(joinPath(folder, fileNamePart(m_drawing))));
    Command3->setFocus();
}

void cmode::setCopying(bool on)
{
    Command1->setEnabled(on);
    Text1->setEnabled(on);
    if (!m_settingUnknown)
        profiles().writeFlag(keys::cmode::projectcopy, on);
}

void cmode::rememberFolder(const std::string& folder)
{
    profiles().write(keys::cmode::projectpath, folder);
}

/// Not this dialog comes up for Search once more, but the other one.
void cmode::showAgainForSearch()
{
    endQuietly();
    if (Window* other = program().load(QStringLiteral("Xattach"))) {
        other->stayOnTop();
        program().show(other->objectName());
    }
    program().unload(objectName());
}

void cmode::open()
{
    const OpenOrder order{m_drawing, Check5->isChecked(), toBytes(Text1->text())};
    if (order.copy && order.target.empty()) {
        messages().show({"Copy Path Not Specfied", "Specify DWG Copy Path", MessageIcon::Information});
        state() = isFromSearch() ? 8 : 1;
        return;
    }
    openDrawing(order, *this, program().actionServices(), settings());
}

} // namespace zv
