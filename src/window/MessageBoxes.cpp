#include "window/MessageBoxes.h"

#include "window/TextBytes.h"

#include <QApplication>
#include <QMessageBox>

namespace zv {
namespace {

QMessageBox::Icon iconOf(MessageIcon icon)
{
    switch (icon) {
    case MessageIcon::Critical:
        return QMessageBox::Critical;
    case MessageIcon::Question:
        return QMessageBox::Question;
    case MessageIcon::Warning:
        return QMessageBox::Warning;
    case MessageIcon::Information:
        return QMessageBox::Information;
    case MessageIcon::None:
        break;
    }
    return QMessageBox::NoIcon;
}

int answer(const Message& message, QMessageBox::StandardButtons buttons, QMessageBox::StandardButton closing)
{
    QMessageBox box(iconOf(message.icon),
                    message.title.empty() ? QStringLiteral("Zelvora") : toText(message.title),
                    toText(message.text), buttons, QApplication::activeWindow());
    // Paths are shown as they are, whatever marks they hold.
    box.setTextFormat(Qt::PlainText);
    box.setEscapeButton(closing);
    return box.exec();
}

} // namespace

void MessageBoxes::show(const Message& message)
{
    answer(message, QMessageBox::Ok, QMessageBox::Ok);
}

bool MessageBoxes::ask(const Message& message)
{
    return answer(message, QMessageBox::Yes | QMessageBox::No, QMessageBox::No) == QMessageBox::Yes;
}

} // namespace zv
