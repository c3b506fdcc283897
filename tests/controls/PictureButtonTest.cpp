#include "controls/PictureButton.h"

#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

namespace zv {
namespace {

TEST(PictureButton, TellsWhichPictureItShows)
{
    PictureButton button(PictureButton::Caption::Below, true);
    EXPECT_EQ(button.picture(), QString());
    button.setPicture(ImageList::b(), 28);
    EXPECT_EQ(button.picture(), QStringLiteral("B28"));
    EXPECT_FALSE(button.icon().isNull());
}

TEST(PictureButton, HasRoomForItsCaptionInBold)
{
    PictureButton button(PictureButton::Caption::Beside, false);
    button.setText(QStringLiteral("&Insert"));
    const QSize plain = button.sizeHint();
    QFont bold = button.font();
    bold.setBold(true);
    button.setFont(bold);
    EXPECT_EQ(button.sizeHint(), plain);
}

TEST(PictureButton, DrawsALineOfItsBorderColour)
{
    PictureButton button(PictureButton::Caption::Beside, false);
    button.resize(80, 30);
    button.setBorderColor(QColor(255, 128, 0));
    const QColor edge = button.grab().toImage().pixelColor(40, 0);
    EXPECT_GT(edge.red(), 200);
    EXPECT_LT(edge.blue(), 100);
}

TEST(PictureButton, ReturnPressesItAsSpaceDoes)
{
    PictureButton button(PictureButton::Caption::Beside, false);
    int pressed = 0;
    QObject::connect(&button, &QPushButton::clicked, [&pressed] { ++pressed; });
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space})
        QTest::keyClick(&button, key);
    EXPECT_EQ(pressed, 3);
}

TEST(PictureBox, ActsOnAClickAndOnSpaceAndEnter)
{
    PictureBox box(PictureBox::Acts::OnClick);
    box.resize(40, 24);
    QSignalSpy acted(&box, &PictureBox::activated);
    QTest::mouseClick(&box, Qt::LeftButton);
    EXPECT_EQ(acted.count(), 1);
    QTest::keyClick(&box, Qt::Key_Space);
    EXPECT_EQ(acted.count(), 2);
    QTest::keyClick(&box, Qt::Key_Return);
    EXPECT_EQ(acted.count(), 3);
    QTest::keyClick(&box, Qt::Key_A);
    EXPECT_EQ(acted.count(), 3);
}

TEST(PictureBox, ActsOnADoubleClickOnlyWhereItIsSoMade)
{
    PictureBox box(PictureBox::Acts::OnDoubleClick);
    box.resize(40, 24);
    QSignalSpy acted(&box, &PictureBox::activated);
    QTest::mouseClick(&box, Qt::LeftButton);
    EXPECT_EQ(acted.count(), 0);
    QTest::mouseDClick(&box, Qt::LeftButton);
    EXPECT_EQ(acted.count(), 1);
    QTest::keyClick(&box, Qt::Key_Space);
    EXPECT_EQ(acted.count(), 2);
}

TEST(PictureBox, CanBeReachedByTab)
{
    PictureBox box(PictureBox::Acts::OnClick);
    EXPECT_TRUE(box.focusPolicy() & Qt::TabFocus);
}

TEST(PictureBox, ShowsWhetherItIsChosen)
{
    PictureBox box(PictureBox::Acts::OnClick);
    box.setPicture(ImageList::a(), 3);
    box.resize(60, 24);
    const QImage before = box.grab().toImage();
    box.setChosen(true);
    EXPECT_NE(box.grab().toImage(), before);
}

} // namespace
} // namespace zv
