#include "host/QtEventPump.h"

#include "controls/Clip.h"
#include "support/TemporaryFolder.h"

#include <QCloseEvent>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include <unistd.h>

namespace zv {
namespace {

/// A button that tells what reaches it.
class Button final : public QPushButton {
public:
    Button()
    {
        connect(this, &QPushButton::clicked, this, [this] { ++clicks; });
    }
    int clicks = 0, keys = 0, closes = 0;

protected:
    void keyPressEvent(QKeyEvent* event) override
    {
        ++keys;
        QPushButton::keyPressEvent(event);
    }
    void closeEvent(QCloseEvent* event) override
    {
        ++closes;
        event->ignore();
    }
};

TEST(QtEventPump, WindowsAreClosedToInputWhileTheHostIsWaitedFor)
{
    Button button;
    button.show();
    const auto act = [&button] {
        QTest::mouseClick(&button, Qt::LeftButton);
        QTest::keyClick(&button, Qt::Key_Space);
        button.close();
    };
    bool acted = false;
    QTimer::singleShot(0, &button, [&] {
        act();
        acted = true;
    });
    QtEventPump pump;
    while (!acted)
        pump.wait(-1, 10);
    EXPECT_EQ(button.clicks, 0);
    EXPECT_EQ(button.keys, 0);
    EXPECT_EQ(button.closes, 0);
    EXPECT_TRUE(button.isVisible());

    act();
    EXPECT_EQ(button.clicks, 2) << "by the mouse and by the key";
    EXPECT_EQ(button.keys, 1);
    EXPECT_EQ(button.closes, 1);
}

TEST(QtEventPump, ClipPlaysOnWhileTheHostIsWaitedFor)
{
    const TemporaryFolder folder;
    ClipPlayer player;
    player.setAutoPlay(true);
    ASSERT_TRUE(player.open(folder.write("a.avi", writeClip({2, 2, 10, {{1, 1, 1, 1}, {2, 2, 2, 2}}}))));
    QtEventPump pump;
    for (int turn = 0; turn < 200 && player.frame() == 0; ++turn)
        pump.wait(-1, 20);
    EXPECT_EQ(player.frame(), 1);
}

TEST(QtEventPump, AnswerOfTheHostEndsTheWait)
{
    int ends[2];
    ASSERT_EQ(::pipe(ends), 0);
    ASSERT_EQ(::write(ends[1], "x", 1), 1);
    QtEventPump().wait(ends[0], -1);
    char read = 0;
    EXPECT_EQ(::read(ends[0], &read, 1), 1);
    ::close(ends[0]);
    ::close(ends[1]);
}

} // namespace
} // namespace zv
