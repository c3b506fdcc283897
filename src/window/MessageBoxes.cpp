#include "window/MessageBoxes.h"

#include "window/TextBytes.h"

#include <QApplication>
#include <QKeyEvent>
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

/// A message box that knows whether a button was pressed, or Esc or the close box.
class Box final : public QMessageBox {
public:
    Box(const Message& message, StandardButtons buttons)
        : QMessageBox(iconOf(message.icon),
                      message.title.empty() ? QStringLiteral("Zelvora") : toText(message.title),
                      toText(message.text), buttons, QApplication::activeWindow())
    {
        // Paths are shown as they are, whatever marks they hold.
        setTextFormat(Qt::PlainText);
    }
    StandardButton answer(StandardButton closing)
    {
        setEscapeButton(closing);
        return StandardButton(exec());
    }
    bool wasClosed() const { return m_closed; }

protected:
    void closeEvent(QCloseEvent* event) override
    {
        m_closed = true;
        QMessageBox::closeEvent(event);
    }
    void keyPressEvent(QKeyEvent* event) override
    {
        m_closed = m_closed || event->matches(QKeySequence::Cancel);
        QMessageBox::keyPressEvent(event);
    }

private:
    bool m_closed = false;
};

} // namespace

void MessageBoxes::show(const Message& message)
{
    Box(message, QMessageBox::Ok).answer(QMessageBox::Ok);
}

bool MessageBoxes::ask(const Message& message)
{
    return askOrClose(message).value_or(false);
}

std::optional<bool> MessageBoxes::askOrClose(const Message& message)
{
    Box box(message, QMessageBox::Yes | QMessageBox::No);
    const bool yes = box.answer(QMessageBox::No) == QMessageBox::Yes;
    return box.wasClosed() ? std::nullopt : std::optional(yes);
}

bool MessageBoxes::confirm(const Message& message)
{
    return Box(message, QMessageBox::Ok | QMessageBox::Cancel).answer(QMessageBox::Cancel) == QMessageBox::Ok;
}

} // namespace zv
