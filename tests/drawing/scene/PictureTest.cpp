#include "EverythingScene.h"

#include "drawing/Writer.h"
#include "drawing/paint/ClipPolygon.h"
#include "drawing/paint/ImageFiles.h"
#include "drawing/paint/Picture.h"
#include "drawing/paint/SystemFonts.h"

#include <QFile>
#include <QFileInfo>
#include <QPainter>
#include <QTemporaryDir>

namespace zv::dwg {
namespace {

TEST(Picture, LooksAsTheReference)
{
    SceneMaker m = everything();
    const QImage found = paintPicture(m.scene(), {480, 80}, Qt::black);
    const QString reference = QStringLiteral(ZELVORA_REFERENCES "/everything.png");
    const double apart = difference(found, QImage(reference));
    if (apart > 2) {
        found.save(QStringLiteral("everything-found.png"));
        ADD_FAILURE() << "differs by " << apart << "; see everything-found.png in the working folder";
    }
}

TEST(Picture, EveryFileKindIsWritten)
{
    QTemporaryDir folder;
    SceneMaker m = everything();
    for (const char* name : {"a.png", "a.jpg", "a.bmp", "a.pdf"}) {
        const QString file = folder.filePath(QLatin1String(name));
        EXPECT_TRUE(savePicture(m.scene(), file.toStdString(), {200, 100}, Qt::white)) << name;
        EXPECT_GT(QFileInfo(file).size(), 100) << name;
    }
    EXPECT_EQ(savePicture(m.scene(), "a.tga", {10, 10}, Qt::white).error().code, ErrorCode::Unsupported);
    EXPECT_EQ(savePicture(m.scene(), "/nowhere/a.png", {10, 10}, Qt::white).error().code, ErrorCode::Failed);
}

TEST(Picture, ColourSevenContrastsWithTheGround)
{
    EXPECT_EQ(paintedColor({0xffffff, true, 255}, Qt::black), QColor(Qt::white));
    EXPECT_EQ(paintedColor({0xffffff, true, 255}, Qt::white), QColor(Qt::black));
    EXPECT_EQ(paintedColor({0x000000, false, 255}, Qt::black), QColor(Qt::white));
    EXPECT_EQ(paintedColor({0xff0000, false, 255}, Qt::white), QColor(Qt::red));
}

TEST(Picture, FitsTheDrawingIntoTheMiddle)
{
    const Affine map = fitted(box(10, 10, 20, 15), QRectF(0, 0, 100, 100), 0);
    EXPECT_NEAR(map.map({10, 15}).x, 0, 1e-9);
    EXPECT_NEAR(map.map({10, 15}).y, 25, 1e-9);
    EXPECT_NEAR(map.map({20, 10}).y, 75, 1e-9);
}

TEST(Picture, EmptyDrawingsGiveTheGroundAlone)
{
    SceneMaker m;
    const QImage image = paintPicture(m.scene(), {40, 30}, Qt::blue);
    EXPECT_EQ(image.pixelColor(20, 15), QColor(Qt::blue));
}

TEST(Picture, WipeoutHidesWhatStandsBeforeIt)
{
    SceneMaker m;
    m.add(Line{{0, 5, 0}, {10, 5, 0}});
    m.add(Circle{{5, 5, 0}, 5});
    Wipeout wipeout;
    wipeout.insertion = {3, 3, 0};
    wipeout.uVector = {4, 0, 0};
    wipeout.vVector = {0, 4, 0};
    wipeout.pixels = {1, 1};
    wipeout.frame = false;
    m.add(wipeout);
    const QImage image = paintPicture(m.scene(), {101, 101}, Qt::black);
    EXPECT_LT(image.pixelColor(50, 50).lightness(), 10);
    EXPECT_GT(image.pixelColor(15, 50).lightness() + image.pixelColor(15, 51).lightness(), 60);
}

TEST(Picture, DeepZoomCutsWhatLiesOutside)
{
    SceneMaker m;
    m.add(Circle{{0, 0, 0}, 100});
    Solid solid;
    solid.corners = {{{-100, -100, 0}, {100, -100, 0}, {-100, 0, 0}, {100, 0, 0}}};
    m.add(solid).color = {Color::Kind::Index, 1, 0};
    QImage image(100, 100, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    const double scale = 1e7;
    paintScene(painter, m.scene(), {scale, 0, 0, -scale, 50, 50}, QRectF(0, 0, 100, 100), {});
    painter.end();
    EXPECT_EQ(image.pixelColor(50, 20), QColor(Qt::black));
    EXPECT_EQ(image.pixelColor(50, 80), QColor(Qt::red));
}

TEST(Picture, SegmentsAndPolygonsAreCutToTheBox)
{
    Point2 a{-10, 5}, b{30, 5};
    ASSERT_TRUE(clipSegment(a, b, box(0, 0, 10, 10), 0));
    EXPECT_NEAR(a.x, 0, 1e-12);
    EXPECT_NEAR(b.x, 10, 1e-12);
    Point2 c{-10, 50}, d{30, 50};
    EXPECT_FALSE(clipSegment(c, d, box(0, 0, 10, 10), 0));
    const std::vector<Point2> large{{-100, -100}, {100, -100}, {100, 100}, {-100, 100}};
    Box cut;
    for (const Point2& p : clipPolygon(large, box(0, 0, 10, 10), 1))
        cut.add(p);
    expectBox(cut, box(-1, -1, 11, 11));
}

TEST(Picture, OutlineFontsHaveCapitalsOfHeightOne)
{
    SystemFonts fonts{std::string()};
    FontRequest request;
    request.typeface = u"DejaVu Sans";
    const Glyph* glyph = fonts.find(request)->glyph(U'H');
    ASSERT_NE(glyph, nullptr);
    EXPECT_TRUE(!glyph->filled || std::abs(glyph->bounds.max.y - 1) < 0.02);
}

TEST(Picture, MissingFontsFallBack)
{
    SystemFonts fonts("/nowhere");
    FontRequest request;
    request.file = u"romans.shx";
    ASSERT_NE(fonts.find(request)->glyph(U'A'), nullptr);
    EXPECT_FALSE(fonts.find(request)->glyph(U'A')->filled);
    request.file = u"nosuch.ttf";
    EXPECT_NE(fonts.find(request)->glyph(U'A'), nullptr);
}

TEST(Picture, ThumbnailOfAWrittenDrawing)
{
    SceneMaker m = everything();
    const auto written = writeDocument(m.document, {});
    ASSERT_TRUE(written);
    QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("a.dwg"));
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(written.value().data(), qint64(written.value().size()));
    file.close();
    const QImage image = drawThumbnail(name.toStdString(), {480, 80});
    EXPECT_LT(difference(image, paintPicture(m.scene(), {480, 80}, Qt::black)), 2);
    EXPECT_TRUE(drawThumbnail("/nowhere.dwg", {10, 10}).isNull());
}

/// A picture 4 pixels wide and 2 high, one drawing unit each, whose upper row is red and whose lower is blue.
SceneMaker withImage(const Text& file)
{
    SceneMaker m;
    Wipeout image;
    image.image = true;
    image.file = file;
    image.uVector = {1, 0, 0};
    image.vVector = {0, 1, 0};
    image.pixels = {4, 2};
    // Its right half only.
    image.clip = {{1.5, -0.5}, {3.5, 1.5}};
    m.add(image);
    return m;
}

QTemporaryDir& folderOfPictures()
{
    static QTemporaryDir folder;
    QImage picture(4, 2, QImage::Format_RGB32);
    for (int x = 0; x < 4; ++x) {
        picture.setPixel(x, 0, 0xffff0000);
        picture.setPixel(x, 1, 0xff0000ff);
    }
    picture.save(folder.filePath(QStringLiteral("Logo.png")));
    return folder;
}

TEST(Picture, ImagesAreShownInsideTheirClip)
{
    const QTemporaryDir& folder = folderOfPictures();
    Scene scene = withImage(u"C:\\Office\\LOGO.PNG").scene();
    loadImages(scene, folder.filePath(QStringLiteral("a.dwg")).toStdString());
    QImage shown(40, 20, QImage::Format_RGB32);
    shown.fill(Qt::black);
    QPainter painter(&shown);
    paintScene(painter, scene, {10, 0, 0, -10, 0, 20}, QRectF(0, 0, 40, 20), {});
    painter.end();
    EXPECT_EQ(shown.pixelColor(10, 3), QColor(Qt::black));
    EXPECT_GT(shown.pixelColor(30, 3).red(), 200);
    EXPECT_GT(shown.pixelColor(30, 16).blue(), 200);
}

TEST(Picture, ImagesThatCannotBeShownKeepTheirFrame)
{
    const QTemporaryDir& folder = folderOfPictures();
    QFile text(folder.filePath(QStringLiteral("text.png")));
    ASSERT_TRUE(text.open(QIODevice::WriteOnly));
    text.write("<svg xmlns='http://www.w3.org/2000/svg' width='9' height='9'/>");
    text.close();
    for (const Text& file : {Text(u"missing.png"), Text(u"text.png"), Text(u".."), Text(u"")}) {
        Scene scene = withImage(file).scene();
        loadImages(scene, folder.filePath(QStringLiteral("a.dwg")).toStdString());
        for (const SceneImage& image : scene.images)
            EXPECT_EQ(image.loaded, nullptr);
        expectBox(scene.bounds, box(2, 0, 4, 2));
    }
}

TEST(Picture, ImagesThatHoldTooMuchTogetherKeepTheirFrame)
{
    const QTemporaryDir& folder = folderOfPictures();
    QFile::copy(folder.filePath(QStringLiteral("Logo.png")), folder.filePath(QStringLiteral("Other.png")));
    SceneMaker m = withImage(u"Logo.png");
    Wipeout second;
    second.image = true;
    second.file = u"Other.png";
    second.pixels = {4, 2};
    m.add(second);
    Scene scene = m.scene();
    ASSERT_EQ(scene.images.size(), 2u);
    loadImages(scene, folder.filePath(QStringLiteral("a.dwg")).toStdString(), 15);
    EXPECT_NE(scene.images[0].loaded, nullptr);
    EXPECT_EQ(scene.images[1].loaded, nullptr) << "8 pixels each";
    loadImages(scene, folder.filePath(QStringLiteral("a.dwg")).toStdString(), 16);
    EXPECT_NE(scene.images[1].loaded, nullptr);
}

TEST(Picture, EndingsOfPaperCountInAnyCase)
{
    EXPECT_TRUE(isPaper("a.PDF"));
    EXPECT_TRUE(isPaper("a.b.Svg"));
    EXPECT_FALSE(isPaper("pdf.png"));
}

TEST(Picture, PreviewPixelsAreOpaque)
{
    SceneMaker m = everything();
    const Pixels pixels = renderPreview(m.document, 64, 32);
    EXPECT_EQ(pixels.width, 64);
    ASSERT_EQ(pixels.bgra.size(), 64u * 32 * 4);
    for (std::size_t i = 3; i < pixels.bgra.size(); i += 4)
        ASSERT_EQ(pixels.bgra[i], 255);
}

} // namespace
} // namespace zv::dwg
