#include "host/QtEventPump.h"

#include "controls/Clip.h"
#include "platform/EndRequest.h"
#include "support/TemporaryFolder.h"

#include <QApplication>
#include <QCloseEvent>
#include <QCursor>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>
#include <gtest/gtest.h>

#include <csignal>
#include <vector>

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

    act();
    EXPECT_EQ(button.clicks, 2) << "by the mouse and by the key";
    EXPECT_EQ(button.keys, 1);
}

TEST(QtEventPump, ClosingAWindowGivesTheWaitUpAndIsCarriedOutAfterwards)
{
    Button button;
    button.show();
    QtEventPump pump;
    QTimer::singleShot(0, &button, [&button] { button.close(); });
    pump.wait(-1, -1);
    EXPECT_TRUE(pump.isGivenUp());
    EXPECT_EQ(button.closes, 0);
    pump.wait(-1, -1);
    EXPECT_EQ(button.closes, 0) << "there is nothing to wait for any more";
    EXPECT_TRUE(QTest::qWaitFor([&button] { return button.closes == 1; }));
    pump.beginAction(-1);
    EXPECT_FALSE(pump.isGivenUp());
}

TEST(QtEventPump, CloseBoxOfAWindowThatIsOutOfReachGivesNothingUp)
{
    Button button;
    button.show();
    button.setEnabled(false);
    QtEventPump pump;
    bool closed = false;
    QTimer::singleShot(0, &button, [&] {
        button.close();
        closed = true;
    });
    while (!closed)
        pump.wait(-1, 10);
    EXPECT_FALSE(pump.isGivenUp());
}

TEST(QtEventPump, ToolTipThatGoesGivesNothingUp)
{
    QLabel tip(QStringLiteral("a"), nullptr, Qt::ToolTip);
    tip.show();
    QtEventPump pump;
    QTimer::singleShot(0, &tip, [&tip] { tip.close(); });
    while (tip.isVisible())
        pump.wait(-1, 10);
    EXPECT_FALSE(pump.isGivenUp());
}

TEST(QtEventPump, MessageBoxThatComesUpMeanwhileCanBeAnswered)
{
    QtEventPump pump;
    int answer = 0;
    QTimer::singleShot(0, qApp, [&answer] {
        QMessageBox box(QMessageBox::Critical, QStringLiteral("Zelvora"), QStringLiteral("No."),
                        QMessageBox::Yes | QMessageBox::No);
        QTimer::singleShot(0, &box,
                           [&box] { QTest::mouseClick(box.button(QMessageBox::Yes), Qt::LeftButton); });
        QTimer::singleShot(5000, &box, [&box] { box.done(-1); });
        answer = box.exec();
    });
    while (answer == 0)
        pump.wait(-1, 10);
    EXPECT_EQ(answer, QMessageBox::Yes);
    EXPECT_FALSE(pump.isGivenUp());
}

TEST(QtEventPump, ActionWithALimitGivesItselfUp)
{
    QtEventPump pump;
    pump.beginAction(20);
    while (!pump.isGivenUp())
        pump.wait(-1, -1);
    pump.beginAction(-1);
    EXPECT_FALSE(pump.isGivenUp());
}

TEST(QtEventPump, LongWaitIsShownWithThePointerUntilItIsOver)
{
    std::vector<bool> told;
    QtEventPump pump([&told](bool waiting) { told.push_back(waiting); });
    pump.showWaiting(true);
    pump.showWaiting(true);
    EXPECT_TRUE(told.empty()) << "a short one is not";
    while (told.empty())
        pump.wait(-1, 50);
    ASSERT_NE(QApplication::overrideCursor(), nullptr);
    EXPECT_EQ(QApplication::overrideCursor()->shape(), Qt::WaitCursor);
    pump.showWaiting(false);
    EXPECT_EQ(told, std::vector<bool>{true});
    pump.showWaiting(false);
    EXPECT_EQ(told, (std::vector<bool>{true, false}));
    EXPECT_EQ(QApplication::overrideCursor(), nullptr);
}

TEST(QtEventPump, RequestToEndTheProgramThatIsPutOffGivesTheWaitUp)
{
    static int requests = 0;
    const auto before = std::signal(SIGTERM, [](int) { ++requests; });
    {
        const EndRequestHold hold;
        if (endRequestDescriptor() < 0)
            GTEST_SKIP() << "no signal ends a program with windows on this system";
        QtEventPump pump;
        QTimer::singleShot(0, qApp, [] { std::raise(SIGTERM); });
        pump.wait(-1, -1);
        EXPECT_TRUE(pump.isGivenUp());
        EXPECT_EQ(requests, 0);
    }
    EXPECT_EQ(requests, 1) << "carried out now";
    std::signal(SIGTERM, before);
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

} // namespace
} // namespace zv
