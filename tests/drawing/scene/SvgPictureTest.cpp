#include "EverythingScene.h"

#include "drawing/paint/Picture.h"

#include <QPainter>
#include <QSvgRenderer>
#include <QTemporaryDir>

namespace zv::dwg {
namespace {

TEST(Picture, SvgShowsTheSame)
{
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("a.svg"));
    SceneMaker m = everything();
    ASSERT_TRUE(savePicture(m.scene(), file.toStdString(), {480, 80}, Qt::black));
    QSvgRenderer svg(file);
    ASSERT_TRUE(svg.isValid());
    QImage image(480, 80, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    svg.render(&painter);
    painter.end();
    EXPECT_LT(difference(image, paintPicture(m.scene(), {480, 80}, Qt::black)), 8);
}

} // namespace
} // namespace zv::dwg
