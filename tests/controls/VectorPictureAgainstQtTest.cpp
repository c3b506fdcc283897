#include "controls/ImageList.h"
#include "controls/VectorPicture.h"

#include <QDir>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <gtest/gtest.h>

#include <cstdlib>

namespace zv {
namespace {

constexpr int kEdge = 72;

template <class Paint> QImage painted(Paint paint)
{
    QImage image(kEdge, kEdge, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    paint(painter, QRectF(0, 0, kEdge, kEdge));
    return image;
}

/// How far the two are apart where they are farthest, of 255.
int distance(const QImage& a, const QImage& b)
{
    int farthest = 0;
    for (int y = 0; y < kEdge; ++y)
        for (int x = 0; x < kEdge; ++x)
            farthest = std::max(farthest, std::abs(qGray(a.pixel(x, y)) - qGray(b.pixel(x, y))));
    return farthest;
}

TEST(VectorPicture, PaintsEveryPictureOfTheProgramAsQtsOwnReaderDoes)
{
    ASSERT_FALSE(namedPicture(QStringLiteral("logo")).isNull());
    const QFileInfoList files = QDir(QStringLiteral(":/pictures")).entryInfoList({QStringLiteral("*.svg")});
    ASSERT_GE(files.size(), 40);
    for (const QFileInfo& info : files) {
        QFile file(info.filePath());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        const QByteArray svg = file.readAll();
        const VectorPicture picture(svg);
        EXPECT_FALSE(picture.isEmpty()) << info.fileName().toStdString();
        QSvgRenderer renderer(svg);
        const QImage ours =
            painted([&](QPainter& painter, const QRectF& place) { picture.paint(painter, place); });
        const QImage theirs =
            painted([&](QPainter& painter, const QRectF& place) { renderer.render(&painter, place); });
        // A colour step or two of rounding at an edge cannot be seen.
        EXPECT_LE(distance(ours, theirs), 16) << info.fileName().toStdString();
    }
}

} // namespace
} // namespace zv
