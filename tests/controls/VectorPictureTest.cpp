#include "controls/VectorPicture.h"

#include <QImage>
#include <QPainter>
#include <gtest/gtest.h>

#include <string>

namespace zv {
namespace {

QByteArray pictureOf(const std::string& shapes)
{
    return QByteArray::fromStdString("<svg xmlns='http://www.w3.org/2000/svg' viewBox='0 0 10 10'>" + shapes +
                                     "</svg>");
}

QImage painted(const VectorPicture& picture, const QRectF& place = QRectF(0, 0, 20, 20))
{
    QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    QPainter painter(&image);
    picture.paint(painter, place);
    return image;
}

TEST(VectorPicture, FillsAnArea)
{
    const QImage image =
        painted(VectorPicture(pictureOf("<rect x='2' y='2' width='4' height='6' fill='#ff0000'/>")));
    EXPECT_EQ(image.pixelColor(5, 5), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(11, 15), QColor(Qt::red));
    EXPECT_EQ(image.pixelColor(2, 5), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(13, 5), QColor(Qt::white));
}

TEST(VectorPicture, HandsTheLookOfAGroupDown)
{
    const QImage image = painted(VectorPicture(
        pictureOf("<g fill='none' stroke='#0000ff' stroke-width='2'><path d='M0 5 H10'/></g>")));
    EXPECT_EQ(image.pixelColor(10, 10), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(10, 9), QColor(Qt::blue));
    EXPECT_EQ(image.pixelColor(10, 5), QColor(Qt::white));
}

TEST(VectorPicture, FollowsEveryCommandOfAPath)
{
    const QImage image = painted(
        VectorPicture(pictureOf("<path d='M1 1 L9 1 V5 H5 Q5 9 1 9 C1 7,1 7,1 5 Z' fill='#00ff00'/>")));
    EXPECT_EQ(image.pixelColor(4, 4), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(16, 8), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(4, 14), QColor(Qt::green));
    EXPECT_EQ(image.pixelColor(16, 16), QColor(Qt::white));
}

TEST(VectorPicture, FillsThePlaceThatItIsGiven)
{
    const VectorPicture picture(pictureOf("<rect x='0' y='0' width='10' height='10' fill='#000000'/>"));
    const QImage image = painted(picture, QRectF(4, 8, 12, 6));
    EXPECT_EQ(image.pixelColor(4, 8), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(15, 13), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(3, 8), QColor(Qt::white));
    EXPECT_EQ(image.pixelColor(15, 14), QColor(Qt::white));
}

TEST(VectorPicture, IsEmptyWhenAnythingInItIsNotKnown)
{
    for (const char* shapes :
         {"<text x='1' y='2'>A</text>", "<path d='m1 1 l2 2'/>", "<path d='M1 1 A2 2 0 1 1 5 5'/>",
          "<path d='M1'/>", "<path d='1 2'/>", "<path d='M1 x'/>",
          "<g transform='scale(2)'><path d='M1 1 H3'/></g>", "<path d='M1 1 H3' stroke='url(#a)'/>",
          "<path d='M1 1 H3' stroke-dasharray='1 2'/>", "<path d='M1 1 H3' stroke-linecap='square'/>",
          "<rect width='1' height='1'"})
        EXPECT_TRUE(VectorPicture(pictureOf(shapes)).isEmpty()) << shapes;
    EXPECT_TRUE(VectorPicture(QByteArray()).isEmpty());
    EXPECT_TRUE(VectorPicture("<svg xmlns='http://www.w3.org/2000/svg'><path d='M1 1 H3'/></svg>").isEmpty());
}

TEST(VectorPicture, AnIconOfAFileThatIsNotThereIsNull)
{
    EXPECT_TRUE(vectorIcon(QStringLiteral(":/pictures/nowhere.svg")).isNull());
}

} // namespace
} // namespace zv
