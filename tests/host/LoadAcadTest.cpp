#include "host/LoadAcad.h"

#include "controls/Clip.h"
#include "support/ProgramFixture.h"

#include <QLabel>
#include <QScreen>
#include <QTest>
#include <gtest/gtest.h>

namespace zv {
namespace {

class LoadAcadTest : public ProgramFixture {
protected:
    LoadAcadTest()
    {
        program.add(QStringLiteral("LoadAcad"), [this] { return new LoadAcad(program); });
        Clip clip{8, 4, 10, {}};
        for (std::uint32_t frame = 0; frame < 50; ++frame)
            clip.frames.emplace_back(8 * 4, frame);
        folder.write("Zelvora_Logo.avi", writeClip(clip));
    }
    Window* window() { return program.loaded(QStringLiteral("LoadAcad")); }
    ClipPlayer* animation() { return window()->findChild<ClipPlayer*>(QStringLiteral("Animation1")); }

    /// Long enough for a timer without a delay.
    static void turnEvents()
    {
        bool turned = false;
        QTimer::singleShot(1, qApp, [&turned] { turned = true; });
        ASSERT_TRUE(QTest::qWaitFor([&turned] { return turned; }));
    }

    LoadAcadSplash splash{program, 0};
};

TEST_F(LoadAcadTest, TheSplashStandsOnTopWithItsWordsAndItsClipPlaying)
{
    splash.show();
    ASSERT_TRUE(window());
    EXPECT_TRUE(window()->isVisible());
    EXPECT_EQ(window()->windowTitle(), QStringLiteral("AutoCAD Load"));
    EXPECT_TRUE(window()->windowFlags().testFlag(Qt::WindowStaysOnTopHint));
    ASSERT_EQ(window()->findChildren<QLabel*>().size(), 1);
    EXPECT_EQ(window()->findChild<QLabel*>()->text(), QStringLiteral("Loading AutoCAD..."));
    EXPECT_TRUE(animation()->autoPlay());
    EXPECT_TRUE(animation()->isPlaying());
}

TEST_F(LoadAcadTest, TheSplashStandsInTheMiddleOfTheScreen)
{
    splash.show();
    ASSERT_TRUE(window());
    const QPoint middle = window()->screen()->availableGeometry().center();
    // The frame may count or not.
    const QSize frame = window()->frameGeometry().size() - window()->size();
    const int most = std::max(8, frame.width() + frame.height());
    EXPECT_LE((window()->geometry().center() - middle).manhattanLength(), most);
}

TEST_F(LoadAcadTest, ShowingTheSplashAgainStartsTheClipAnew)
{
    splash.show();
    ASSERT_TRUE(QTest::qWaitFor([this] { return animation()->frame() > 0; }));
    splash.show();
    EXPECT_EQ(animation()->frame(), 0);
    EXPECT_TRUE(animation()->isPlaying());
}

TEST_F(LoadAcadTest, WithoutAClipTheSplashIsShownAllTheSame)
{
    std::filesystem::remove(folder.file("Zelvora_Logo.avi"));
    splash.show();
    ASSERT_TRUE(window());
    EXPECT_TRUE(window()->isVisible());
    EXPECT_FALSE(animation()->isPlaying());
}

TEST_F(LoadAcadTest, ALongWaitShowsTheSplashOnlyWhereItStandsBy)
{
    const auto isShown = [this] { return window() && window()->isVisible(); };
    splash.tellWaiting(true);
    turnEvents();
    EXPECT_FALSE(window());
    splash.tellWaiting(false);
    splash.standBy(true);
    splash.tellWaiting(true);
    ASSERT_TRUE(QTest::qWaitFor(isShown));
    EXPECT_EQ(window()->findChild<QLabel*>()->text(), QStringLiteral("Waiting for AutoCAD..."));
    splash.tellWaiting(false);
    EXPECT_FALSE(window());
    turnEvents();
    EXPECT_FALSE(window());
}

TEST_F(LoadAcadTest, WhileTheHostAsksItsUserTheSplashIsThereToBeClosedAndOutOfSight)
{
    splash.standBy(true);
    splash.userIsAsked(true);
    splash.tellWaiting(true);
    ASSERT_TRUE(QTest::qWaitFor([this] { return window() && window()->isVisible(); }));
    EXPECT_TRUE(window()->isMinimized());
    EXPECT_TRUE(window()->testAttribute(Qt::WA_ShowWithoutActivating));
    splash.tellWaiting(false);
    EXPECT_FALSE(window());
}

TEST_F(LoadAcadTest, AShortWaitOrOneThatAWindowCanGiveUpShowsNoSplash)
{
    splash.standBy(true);
    splash.tellWaiting(true);
    splash.tellWaiting(false);
    turnEvents();
    EXPECT_FALSE(window());
    QWidget main;
    main.show();
    splash.tellWaiting(true);
    turnEvents();
    EXPECT_FALSE(window());
    main.setEnabled(false);
    EXPECT_TRUE(QTest::qWaitFor([this] { return window() != nullptr; })) << "nobody can close that one";
    splash.tellWaiting(false);
}

TEST_F(LoadAcadTest, UnloadingForgetsTheSplash)
{
    splash.show();
    splash.unload();
    EXPECT_FALSE(window());
    splash.unload();
    EXPECT_FALSE(window());
}

} // namespace
} // namespace zv
