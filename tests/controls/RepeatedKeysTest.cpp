#include "window/RepeatedKeys.h"

#include "controls/DwgThumbnail.h"

#include <QApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <gtest/gtest.h>

namespace zv {
namespace {

class RepeatedKeysTest : public testing::Test {
protected:
    RepeatedKeysTest() { qApp->installEventFilter(&filter); }

    static void press(QWidget& control, int key, const QString& text = {}, bool repeated = false)
    {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier, text, repeated);
        QApplication::sendEvent(&control, &event);
    }
    static bool takesShortcut(QWidget& control, int key, Qt::KeyboardModifiers modifiers)
    {
        QKeyEvent event(QEvent::ShortcutOverride, key, modifiers, QString(), true);
        event.ignore();
        QApplication::sendEvent(&control, &event);
        return event.isAccepted();
    }

    RepeatedKeys filter;
};

TEST_F(RepeatedKeysTest, HeldReturnActsOnceOnACell)
{
    DwgThumbnail cell;
    QSignalSpy acted(&cell, &DwgThumbnail::doubleClicked);
    press(cell, Qt::Key_Return);
    press(cell, Qt::Key_Return, {}, true);
    press(cell, Qt::Key_Enter, {}, true);
    EXPECT_EQ(acted.count(), 1);
}

TEST_F(RepeatedKeysTest, HeldReturnAndEscapeLeaveAMessageStanding)
{
    QMessageBox box(QMessageBox::Information, QStringLiteral("a"), QStringLiteral("b"), QMessageBox::Ok);
    box.show();
    press(*box.button(QMessageBox::Ok), Qt::Key_Return, {}, true);
    press(box, Qt::Key_Return, {}, true);
    press(box, Qt::Key_Escape, {}, true);
    EXPECT_TRUE(box.isVisible());
    press(box, Qt::Key_Escape);
    EXPECT_FALSE(box.isVisible());
}

TEST_F(RepeatedKeysTest, TextsTakeRepeatedLettersAndBlanks)
{
    QLineEdit line;
    press(line, Qt::Key_A, QStringLiteral("a"), true);
    press(line, Qt::Key_Space, QStringLiteral(" "), true);
    press(line, Qt::Key_A, QStringLiteral("a"), true);
    EXPECT_EQ(line.text(), "a a");
    QPlainTextEdit lines;
    press(lines, Qt::Key_Return, QStringLiteral("\r"), true);
    EXPECT_EQ(lines.toPlainText(), "\n");
}

TEST_F(RepeatedKeysTest, HeldAccessKeySetsNothingOff)
{
    QPushButton button(QStringLiteral("&Insert"));
    EXPECT_TRUE(takesShortcut(button, Qt::Key_I, Qt::AltModifier));
    EXPECT_FALSE(takesShortcut(button, Qt::Key_Q, Qt::AltModifier | Qt::ControlModifier));
    EXPECT_FALSE(takesShortcut(button, Qt::Key_Down, Qt::NoModifier));
}

} // namespace
} // namespace zv
