#include "config/Fontpath.h"

#include <QLineEdit>
#include <QPushButton>

namespace zv {

Fontpath::Fontpath(Program& program)
    : FolderWindow(program, QStringLiteral("Fontpath"), QStringLiteral("Font Path"),
                   QStringLiteral("Locate Font Folder:"), tr("Font path"))
{
    for (QPushButton* command : {Command11, Command8})
        connect(command, &QPushButton::clicked, this, [this] { this->program().unload(objectName()); });
}

void Fontpath::unloading()
{
    const QString options = QStringLiteral("Options");
    Window* window = program().loaded(options);
    if (!window)
        return;
    window->findChild<QLineEdit*>(QStringLiteral("Text1"))->setText(Text1->text());
    program().show(options);
}

} // namespace zv
