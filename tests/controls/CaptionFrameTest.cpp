#include "controls/CaptionFrame.h"

#include <QImage>
#include <gtest/gtest.h>

namespace zv {
namespace {

/// The lowest row in which the caption's own colour stands, looked for right of the frame's edge.
int lowestInk(CaptionFrame& frame)
{
    const QImage image = frame.grab().toImage();
    const QRgb ground = image.pixel(frame.width() / 2, frame.height() / 2);
    for (int y = frame.height() / 2; y >= 0; --y)
        for (int x = 14; x < 60; ++x)
            if (image.pixel(x, y) != ground)
                return y;
    return -1;
}

TEST(CaptionFrame, ShowsItsCaption)
{
    CaptionFrame frame;
    frame.setTitle(QStringLiteral("Pages"));
    frame.resize(200, 100);
    EXPECT_GT(lowestInk(frame), 5);
    EXPECT_LT(lowestInk(frame), frame.naturalCaptionHeight());
}

TEST(CaptionFrame, KeepsItsCaptionInTheHeightThatIsFree)
{
    CaptionFrame frame;
    frame.setTitle(QStringLiteral("Pages"));
    frame.resize(200, 100);
    frame.setCaptionHeight(9);
    EXPECT_LT(lowestInk(frame), 9);
}

TEST(CaptionFrame, CutsALongCaptionButKeepsIt)
{
    CaptionFrame frame;
    const QString whole(500, QLatin1Char('W'));
    frame.setTitle(whole);
    frame.resize(120, 100);
    EXPECT_FALSE(frame.grab().isNull());
    EXPECT_EQ(frame.title(), whole);
}

} // namespace
} // namespace zv
