#include "controls/DwgThumbnail.h"
#include "drawing/Writer.h"
#include "platform/WithinMemory.h"
#include "support/PngDrawing.h"
#include "support/TemporaryFolder.h"
#include "window/DwgPropsX.h"

#include <QHBoxLayout>
#include <QSignalSpy>
#include <QTest>
#include <gtest/gtest.h>

#include <filesystem>
#include <new>
#include <stdexcept>

namespace zv {
namespace {

constexpr int kBlack = 0;
constexpr int kWhite = 0xFFFFFF;
constexpr QSize kRoom(85, 75); ///< Of a cell.

/// A picture on `ground` with a line of `ink` through its middle.
QImage lineOn(QColor ground, QColor ink)
{
    QImage image(60, 40, QImage::Format_ARGB32);
    image.fill(ground);
    for (int column = 10; column < 50; ++column)
        image.setPixelColor(column, 20, ink);
    return image;
}

dwg::Pixels pixelsOf(const QImage& image)
{
    dwg::Pixels pixels{image.width(), image.height(), {}};
    for (int row = 0; row < image.height(); ++row) {
        const uchar* line = image.constScanLine(row);
        pixels.bgra.insert(pixels.bgra.end(), line, line + std::size_t(image.width()) * 4);
    }
    return pixels;
}

class ThumbnailTest : public testing::Test {
protected:
    std::string drawing(const std::string& name, const dwg::WriteOptions& options)
    {
        return folder.write(name, dwg::writeDocument({}, options).valueOr({}));
    }
    std::string drawingWithPreview()
    {
        return drawing("a.dwg", {{}, pixelsOf(lineOn(Qt::white, Qt::black))});
    }

    TemporaryFolder folder;
};

TEST_F(ThumbnailTest, ShowsTheEmbeddedPicture)
{
    const auto picture = readThumbnail(drawingWithPreview(), kRoom);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->size(), QSize(60, 40));
    EXPECT_EQ(picture->pixelColor(20, 20), QColor(Qt::black));
}

TEST_F(ThumbnailTest, ADrawingWithoutPictureIsReadAndHasNone)
{
    const auto picture = readThumbnail(drawing("none.dwg", {}), kRoom);
    ASSERT_TRUE(picture);
    EXPECT_TRUE(picture->isNull());
}

TEST_F(ThumbnailTest, LargePictureIsUnpackedTowardsTheCell)
{
    const auto picture = readThumbnail(folder.write("a.dwg", fileWithPng(largeBar({4096, 2048}))), kRoom);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->size(), QSize(512, 256));
    EXPECT_EQ(picture->pixelColor(256, 128), QColor(Qt::white));
    EXPECT_EQ(picture->pixelColor(256, 10), QColor(Qt::black));
}

TEST_F(ThumbnailTest, PictureBeyondTheLimitIsNone)
{
    for (const QSize size : {QSize(4097, 1), QSize(1, 4097), QSize(5700, 5700)}) {
        const auto picture = readThumbnail(folder.write("a.dwg", fileWithPng(largeBar(size))), kRoom);
        ASSERT_TRUE(picture);
        EXPECT_TRUE(picture->isNull()) << size.width();
    }
}

TEST_F(ThumbnailTest, OrdinaryPictureIsKeptWholeUntilItsLinesAreStretched)
{
    const auto picture = readThumbnail(folder.write("a.dwg", fileWithPng(largeBar({256, 200}))), kRoom);
    ASSERT_TRUE(picture);
    EXPECT_EQ(picture->size(), QSize(256, 200));
}

/// Whether the cell's middle comes to this colour; what it reads anew may take a moment.
bool middleBecomes(DwgThumbnail& cell, QColor color)
{
    const auto becomes = [&cell, color] {
        const QImage shown = cell.grab().toImage();
        return shown.pixelColor(shown.rect().center()) == color;
    };
    return QTest::qWaitFor(becomes, 30'000);
}

TEST_F(ThumbnailTest, LargerPictureIsReadAgainForAnotherGroundAndKeptAsPaintedWhenItHasGone)
{
    const std::string path = folder.write("a.dwg", fileWithPng(largeBar({600, 400})));
    DwgThumbnail thumbnail;
    thumbnail.resize(90, 60);
    ASSERT_TRUE(thumbnail.setDrawing(path));
    EXPECT_TRUE(middleBecomes(thumbnail, Qt::white));
    thumbnail.setBitmapBackColor(kWhite);
    EXPECT_TRUE(middleBecomes(thumbnail, Qt::black));
    std::filesystem::remove(path);
    thumbnail.setBitmapBackColor(kBlack);
    thumbnail.resize(180, 120);
    QTest::qWait(0);
    EXPECT_TRUE(middleBecomes(thumbnail, Qt::black));
}

TEST_F(ThumbnailTest, PictureThatTakesLongToUnpackIsShownOnceItIsThere)
{
    DwgThumbnail thumbnail;
    thumbnail.resize(90, 60);
    ASSERT_TRUE(thumbnail.setDrawing(folder.write("a.dwg", fileWithPng(largeBar({4096, 4096})))));
    EXPECT_TRUE(middleBecomes(thumbnail, Qt::white));
    thumbnail.resize(180, 120);
    thumbnail.setBitmapBackColor(kWhite);
    EXPECT_TRUE(middleBecomes(thumbnail, Qt::black));
}

TEST_F(ThumbnailTest, PictureThatIsStillBeingReadDoesNotComeIntoTheNextDrawingsCell)
{
    DwgThumbnail thumbnail;
    thumbnail.resize(90, 60);
    ASSERT_TRUE(thumbnail.setDrawing(folder.write("a.dwg", fileWithPng(largeBar({4096, 4096})))));
    ASSERT_TRUE(middleBecomes(thumbnail, Qt::white));
    thumbnail.setBitmapBackColor(kWhite);
    thumbnail.grab();
    ASSERT_TRUE(thumbnail.setDrawing(drawing("white.dwg", {{}, pixelsOf(lineOn(Qt::white, Qt::white))})));
    EXPECT_TRUE(middleBecomes(thumbnail, Qt::white));
    EXPECT_TRUE(waitForWorkers(std::chrono::seconds(5)));
    EXPECT_TRUE(middleBecomes(thumbnail, Qt::white));
}

TEST_F(ThumbnailTest, DrawingThatAsksForTooMuchMemoryShowsItsNameAlone)
{
    bool asked = false;
    DwgThumbnail::setRenderer([&asked](const std::string&, QSize) -> QImage {
        asked = true;
        throw std::bad_alloc();
    });
    DwgThumbnail thumbnail;
    ASSERT_TRUE(thumbnail.setDrawing(drawing("none.dwg", {})));
    thumbnail.show();
    EXPECT_TRUE(QTest::qWaitFor([&asked] { return asked; }));
    DwgThumbnail::setRenderer({});
}

TEST(WithinMemory, WantOfMemoryIsAnError)
{
    EXPECT_EQ(withinMemory([]() -> Result<int> { throw std::bad_alloc(); }).error().code,
              ErrorCode::TooLarge);
    EXPECT_EQ(withinMemory([]() -> Result<int> { throw std::length_error("x"); }).error().code,
              ErrorCode::TooLarge);
    EXPECT_EQ(*withinMemory([]() -> Result<int> { return 3; }), 3);
}

TEST_F(ThumbnailTest, WhatIsNoDrawingIsRefused)
{
    DwgThumbnail thumbnail;
    for (const std::string& path : {folder.file("gone.dwg"), folder.write("text.dwg", "no drawing at all"),
                                    folder.write("empty.dwg", "")}) {
        EXPECT_FALSE(thumbnail.setDrawing(path)) << path;
        EXPECT_EQ(thumbnail.dwgFileName().toStdString(), path);
    }
    EXPECT_TRUE(thumbnail.setDrawing(drawingWithPreview()));
    EXPECT_TRUE(thumbnail.setDrawing({}));
    EXPECT_EQ(thumbnail.dwgFileName(), "");
}

TEST_F(ThumbnailTest, TheGroundIsTheOneThatIsSet)
{
    DwgThumbnail thumbnail;
    thumbnail.resize(90, 60);
    ASSERT_TRUE(thumbnail.setDrawing(drawingWithPreview()));
    const QPoint besideLine(45, 10);
    EXPECT_EQ(thumbnail.grab().toImage().pixelColor(besideLine), QColor(Qt::black));
    thumbnail.setBitmapBackColor(kWhite);
    thumbnail.setBackColor(kWhite);
    EXPECT_EQ(thumbnail.grab().toImage().pixelColor(besideLine), QColor(Qt::white));
}

TEST(ThumbnailPicture, TurnsTheLightnessOverAndKeepsTheHue)
{
    const QImage onWhite = onGround(lineOn(Qt::black, Qt::white), Qt::white);
    EXPECT_EQ(onWhite.pixelColor(0, 0), QColor(Qt::white));
    EXPECT_EQ(onWhite.pixelColor(20, 20), QColor(Qt::black));
    const QImage red = onGround(lineOn(Qt::black, Qt::red), Qt::white);
    EXPECT_EQ(red.pixelColor(20, 20), QColor(Qt::red));
    const QImage yellow = onGround(lineOn(Qt::black, Qt::yellow), Qt::white);
    EXPECT_LT(qGray(yellow.pixel(20, 20)), 160) << "readable on white";
    EXPECT_EQ(yellow.pixelColor(20, 20).hue(), QColor(Qt::yellow).hue());
    const QImage fromGrey = onGround(lineOn(QColor(33, 40, 48), Qt::white), Qt::black);
    EXPECT_EQ(fromGrey.pixelColor(0, 0), QColor(Qt::black));
    EXPECT_EQ(fromGrey.pixelColor(20, 20), QColor(Qt::white));
}

TEST(ThumbnailPicture, APictureWithoutGroundStays)
{
    QImage photo = lineOn(Qt::white, Qt::black);
    photo.setPixelColor(0, 0, Qt::green);
    EXPECT_TRUE(hasGround(photo)) << "one corner may hold a mark";
    photo.setPixelColor(59, 0, Qt::red);
    EXPECT_FALSE(hasGround(photo));
    EXPECT_EQ(onGround(photo, Qt::black).pixelColor(30, 5), QColor(Qt::white));
    EXPECT_TRUE(onGround({}, Qt::black).isNull());
}

TEST(ThumbnailPicture, ATransparentGroundLetsTheNewOneThrough)
{
    const QImage result = onGround(lineOn(Qt::transparent, Qt::red), Qt::white);
    EXPECT_EQ(result.pixelColor(0, 0), QColor(Qt::white));
    EXPECT_EQ(result.pixelColor(20, 20), QColor(Qt::red));
}

TEST(ThumbnailPicture, ThinLinesSurviveShrinking)
{
    for (const StretchMode mode : {StretchMode::BlackOnWhite, StretchMode::WhiteOnBlack}) {
        const QImage small = stretched(lineOn(Qt::black, Qt::white), {12, 8}, mode, Qt::black);
        ASSERT_EQ(small.size(), QSize(12, 8));
        EXPECT_GT(small.pixelColor(6, 4).lightness(), 120);
        EXPECT_EQ(small.pixelColor(6, 0), QColor(Qt::black));
    }
    EXPECT_EQ(stretched(lineOn(Qt::black, Qt::white), {120, 80}, StretchMode::ColorOnColor, Qt::black).size(),
              QSize(120, 80));
    EXPECT_TRUE(stretched({}, {5, 5}, StretchMode::Halftone, Qt::black).isNull());
}

TEST_F(ThumbnailTest, TheRendererDrawsWhatHasNoPicture)
{
    std::string asked;
    DwgThumbnail::setRenderer([&asked](const std::string& path, QSize) {
        asked = path;
        return lineOn(Qt::black, Qt::green);
    });
    DwgThumbnail thumbnail;
    thumbnail.resize(90, 60);
    const std::string path = drawing("none.dwg", {});
    ASSERT_TRUE(thumbnail.setDrawing(path));
    EXPECT_EQ(asked, "") << "not before the cell is seen";
    thumbnail.show();
    EXPECT_TRUE(QTest::qWaitFor([&] { return asked == path; }));
    DwgThumbnail::setRenderer({});
}

TEST_F(ThumbnailTest, TellsClicksDoubleClicksAndFocus)
{
    QWidget form;
    auto* row = new QHBoxLayout(&form);
    auto* first = new DwgThumbnail;
    auto* second = new DwgThumbnail;
    row->addWidget(first);
    row->addWidget(second);
    form.show();
    form.activateWindow();
    ASSERT_TRUE(QTest::qWaitForWindowActive(&form));
    QSignalSpy clicked(second, &DwgThumbnail::clicked), doubled(second, &DwgThumbnail::doubleClicked);
    QSignalSpy got(second, &DwgThumbnail::gotFocus), lost(second, &DwgThumbnail::lostFocus);
    QTest::mouseClick(second, Qt::LeftButton);
    EXPECT_EQ(clicked.count(), 1);
    EXPECT_EQ(got.count(), 1);
    EXPECT_TRUE(second->hasFocusRect());
    QTest::mouseDClick(second, Qt::LeftButton);
    EXPECT_EQ(doubled.count(), 1);
    QTest::mouseClick(second, Qt::RightButton);
    EXPECT_EQ(clicked.count(), 1) << "the right button does not select";
    QTest::keyClick(second, Qt::Key_Backtab);
    EXPECT_EQ(lost.count(), 1);
    EXPECT_FALSE(second->hasFocusRect());
    EXPECT_TRUE(first->hasFocusRect());
}

TEST_F(ThumbnailTest, TheNameIsToldToScreenReaders)
{
    DwgThumbnail thumbnail;
    ASSERT_TRUE(thumbnail.setDrawing(drawingWithPreview()));
    EXPECT_EQ(thumbnail.accessibleName(), "a.dwg");
    EXPECT_EQ(thumbnail.toolTip().toStdString(), folder.file("a.dwg"));
}

TEST_F(ThumbnailTest, PropertiesAreReadByPath)
{
    dwg::Properties stored;
    stored.comments = u"A door";
    stored.keywords = u"door, wood";
    stored.custom = {{u"scale", u"48"}, {u"a=b", u"c"}};
    DwgPropsX props;
    ASSERT_TRUE(props.load(drawing("a.dwg", {stored, {}})));
    EXPECT_EQ(props.comments(), "A door");
    EXPECT_EQ(props.keywords(), "door, wood");
    EXPECT_EQ(props.customProperty(0), "scale=48");
    EXPECT_EQ(props.customProperty(1), "a=b=c");
    EXPECT_EQ(props.customProperty(2), "");
    EXPECT_FALSE(props.load(folder.file("gone.dwg")));
    EXPECT_EQ(props.comments(), "A door") << "what was held stays";
    ASSERT_TRUE(props.load(drawing("plain.dwg", {})));
    EXPECT_EQ(props.comments(), "");
    EXPECT_EQ(props.customProperty(0), "");
}

} // namespace
} // namespace zv
