#include "EverythingScene.h"

#include "drawing/paint/Picture.h"

#include <QFileInfo>
#include <QTemporaryDir>

namespace zv::dwg {
namespace {

TEST(Picture, SvgIsRefusedWhereQtHasNone)
{
    QTemporaryDir folder;
    const QString file = folder.filePath(QStringLiteral("a.svg"));
    EXPECT_FALSE(savePicture(everything().scene(), file.toStdString(), {480, 80}, Qt::black));
    EXPECT_FALSE(QFileInfo::exists(file));
}

} // namespace
} // namespace zv::dwg
