#include "controls/DwgViewX.h"

#include "drawing/Writer.h"
#include "drawing/paint/Picture.h"
#include "window/TextBytes.h"

#include <QDialog>
#include <QImage>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <gtest/gtest.h>

namespace zv {
namespace {

/// A square of 10 units on layer "0" and a circle in it on layer "ROUND".
dwg::Document squareAndCircle()
{
    dwg::Document document;
    for (const char16_t* name : {u"0", u"ROUND"}) {
        document.layers.emplace_back();
        document.layers.back().name = name;
        document.layers.back().handle = 0x100 + document.layers.size();
        document.layerIndex[document.layers.back().handle] = document.layers.size() - 1;
    }
    document.layers[1].color = {dwg::Color::Kind::Index, 1, 0};
    document.blocks.emplace_back();
    document.blocks[0].name = u"*Model_Space";
    document.blocks[0].layout = true;
    document.blocks[0].handle = 0x200;
    document.blockIndex[0x200] = 0;
    dwg::Polyline square;
    for (const dwg::Point3 p : {dwg::Point3{0, 0, 0}, {10, 0, 0}, {10, 10, 0}, {0, 10, 0}})
        square.vertices.push_back({p});
    square.closed = true;
    const auto add = [&](const dwg::Geometry& geometry, const char* kind, std::size_t layer) {
        dwg::Entity entity;
        entity.geometry = geometry;
        entity.kind = kind;
        entity.layer = document.layers[layer].handle;
        document.blocks[0].entities.push_back(entity);
    };
    add(square, "LWPOLYLINE", 0);
    add(dwg::Circle{{5, 5, 0}, 3}, "CIRCLE", 1);
    return document;
}

class DwgViewXTest : public testing::Test {
protected:
    DwgViewXTest()
    {
        const auto written = dwg::writeDocument(squareAndCircle(), {});
        EXPECT_TRUE(written);
        path = toBytes(folder.filePath(QStringLiteral("view.dwg")));
        QFile file(toText(path));
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        if (written)
            file.write(written.value().data(), qint64(written.value().size()));
        viewer.resize(416, 316);
        viewer.show();
    }
    /// How many pixels of the viewer are as red as the circle.
    int redPixels()
    {
        const QImage image = viewer.grab().toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y)
            for (int x = 0; x < image.width(); ++x) {
                const QColor c = image.pixelColor(x, y);
                count += c.red() > 90 && c.green() < 60 && c.blue() < 60;
            }
        return count;
    }
    void wheel(QPointF at, int notches)
    {
        QWheelEvent event(at, viewer.mapToGlobal(at), {}, {0, notches * 120}, Qt::NoButton, Qt::NoModifier,
                          Qt::NoScrollPhase, false);
        QApplication::sendEvent(&viewer, &event);
    }

    QTemporaryDir folder;
    std::string path;
    DwgViewX viewer;
};

TEST_F(DwgViewXTest, ADrawingIsShownWhole)
{
    ASSERT_TRUE(viewer.setDrawing(path)) << viewer.errorText().toStdString();
    EXPECT_EQ(viewer.dwgFileName(), toText(path));
    EXPECT_TRUE(viewer.errorText().isEmpty());
    // 300 pixels inside the margins for 10 units.
    EXPECT_NEAR(viewer.unitsPerPixel(), 10.0 / 300, 1e-9);
    EXPECT_GT(redPixels(), 100);
}

TEST_F(DwgViewXTest, AMissingDrawingLeavesNothingShown)
{
    ASSERT_TRUE(viewer.setDrawing(path));
    EXPECT_FALSE(viewer.setDrawing(path + "x"));
    EXPECT_FALSE(viewer.hasDrawing());
    EXPECT_FALSE(viewer.errorText().isEmpty());
    EXPECT_EQ(redPixels(), 0);
    EXPECT_EQ(viewer.unitsPerPixel(), 0);
}

TEST_F(DwgViewXTest, ADamagedDrawingIsRefused)
{
    const QString name = folder.filePath(QStringLiteral("bad.dwg"));
    QFile bad(name);
    ASSERT_TRUE(bad.open(QIODevice::WriteOnly));
    bad.write("AC1015 and no more");
    bad.close();
    EXPECT_FALSE(viewer.setDrawing(toBytes(name)));
    EXPECT_FALSE(viewer.errorText().isEmpty());
}

TEST_F(DwgViewXTest, AnEmptyPathEmptiesTheViewerWithoutAnError)
{
    ASSERT_TRUE(viewer.setDrawing(path));
    EXPECT_FALSE(viewer.setDrawing({}));
    EXPECT_TRUE(viewer.errorText().isEmpty());
    EXPECT_FALSE(viewer.hasDrawing());
}

TEST_F(DwgViewXTest, PropertiesCarryFileAndFontFolder)
{
    EXPECT_TRUE(viewer.setProperty("fontPath", QStringLiteral("/fonts")));
    EXPECT_EQ(viewer.property("fontPath").toString(), QStringLiteral("/fonts"));
    EXPECT_TRUE(viewer.setProperty("dwgFileName", toText(path)));
    EXPECT_TRUE(viewer.hasDrawing());
    viewer.setFontFolder("/other");
    EXPECT_TRUE(viewer.hasDrawing());
}

TEST_F(DwgViewXTest, ZoomInAndOutAreEachOthersOpposite)
{
    viewer.setDrawing(path);
    const double whole = viewer.unitsPerPixel();
    viewer.zoomIn();
    EXPECT_LT(viewer.unitsPerPixel(), whole);
    viewer.zoomOut();
    EXPECT_NEAR(viewer.unitsPerPixel(), whole, whole * 1e-9);
    viewer.zoomOut();
    viewer.zoomExtents();
    EXPECT_NEAR(viewer.unitsPerPixel(), whole, whole * 1e-9);
}

TEST_F(DwgViewXTest, CommandsWithoutADrawingDoNothing)
{
    viewer.zoomExtents();
    viewer.zoomIn();
    viewer.zoomOut();
    viewer.layersDialog();
    wheel({10, 10}, 1);
    QTest::keyClick(&viewer, Qt::Key_Left);
    EXPECT_FALSE(viewer.print());
    EXPECT_EQ(viewer.unitsPerPixel(), 0);
}

TEST_F(DwgViewXTest, TheWheelKeepsThePlaceUnderThePointer)
{
    viewer.setDrawing(path);
    // The square's upper left corner.
    const QPointF corner(208 - 150, 158 - 150);
    for (int i = 0; i < 4; ++i)
        wheel(corner, 1);
    QTest::qWait(0);
    const QImage image = viewer.grab().toImage();
    EXPECT_GT(image.pixelColor(int(corner.x()) + 20, int(corner.y())).lightness() +
                  image.pixelColor(int(corner.x()) + 20, int(corner.y()) - 1).lightness(),
              100);
    EXPECT_LT(image.pixelColor(int(corner.x()) - 20, int(corner.y())).lightness(), 40);
}

TEST_F(DwgViewXTest, AWindowIsZoomedByDragging)
{
    viewer.setDrawing(path);
    const double before = viewer.unitsPerPixel();
    viewer.zoomWindow();
    EXPECT_EQ(viewer.mode(), DwgViewX::Mode::ZoomWindow);
    EXPECT_EQ(viewer.cursor().shape(), Qt::CrossCursor);
    QTest::mousePress(&viewer, Qt::LeftButton, {}, {100, 100});
    QTest::mouseMove(&viewer, {204, 179});
    QTest::mouseRelease(&viewer, Qt::LeftButton, {}, {204, 179});
    EXPECT_EQ(viewer.mode(), DwgViewX::Mode::None);
    EXPECT_NEAR(viewer.unitsPerPixel(), before / 4, before * 1e-6);
}

TEST_F(DwgViewXTest, AWindowIsZoomedByTwoClicks)
{
    viewer.setDrawing(path);
    const double before = viewer.unitsPerPixel();
    viewer.zoomWindow();
    QTest::mouseClick(&viewer, Qt::LeftButton, {}, {100, 100});
    EXPECT_EQ(viewer.mode(), DwgViewX::Mode::ZoomWindow);
    QTest::mouseClick(&viewer, Qt::LeftButton, {}, {204, 179});
    EXPECT_NEAR(viewer.unitsPerPixel(), before / 4, before * 1e-6);
}

TEST_F(DwgViewXTest, EscLeavesAMode)
{
    viewer.setDrawing(path);
    for (const auto start : {&DwgViewX::zoomWindow, &DwgViewX::pan, &DwgViewX::zoomRealtime,
                             &DwgViewX::panRealtime, &DwgViewX::view3DOrbit}) {
        (viewer.*start)();
        EXPECT_NE(viewer.mode(), DwgViewX::Mode::None);
        QTest::keyClick(&viewer, Qt::Key_Escape);
        EXPECT_EQ(viewer.mode(), DwgViewX::Mode::None);
    }
}

TEST_F(DwgViewXTest, DraggingPansInItsModeAndAlwaysWithTheMiddleButton)
{
    viewer.setDrawing(path);
    const int whole = redPixels();
    viewer.pan();
    QTest::mousePress(&viewer, Qt::LeftButton, {}, {10, 100});
    QTest::mouseMove(&viewer, {510, 100});
    QTest::mouseRelease(&viewer, Qt::LeftButton, {}, {510, 100});
    EXPECT_EQ(redPixels(), 0);
    QTest::keyClick(&viewer, Qt::Key_Escape);
    QTest::mousePress(&viewer, Qt::MiddleButton, {}, {510, 100});
    QTest::mouseMove(&viewer, {10, 100});
    QTest::mouseRelease(&viewer, Qt::MiddleButton, {}, {10, 100});
    EXPECT_EQ(redPixels(), whole);
}

TEST_F(DwgViewXTest, ADoubleMiddleClickShowsTheWholeDrawing)
{
    viewer.setDrawing(path);
    const double whole = viewer.unitsPerPixel();
    viewer.zoomIn();
    QTest::mouseDClick(&viewer, Qt::MiddleButton, {}, {50, 50});
    EXPECT_NEAR(viewer.unitsPerPixel(), whole, 1e-12);
}

TEST_F(DwgViewXTest, RealtimeZoomGrowsUpwards)
{
    viewer.setDrawing(path);
    const double before = viewer.unitsPerPixel();
    viewer.zoomRealtime();
    QTest::mousePress(&viewer, Qt::LeftButton, {}, {200, 200});
    QTest::mouseMove(&viewer, {200, 100});
    EXPECT_NEAR(viewer.unitsPerPixel(), before / 2, before * 1e-6);
    QTest::mouseRelease(&viewer, Qt::LeftButton, {}, {200, 100});
}

TEST_F(DwgViewXTest, KeysZoomAndMove)
{
    viewer.setDrawing(path);
    const double whole = viewer.unitsPerPixel();
    QTest::keyClick(&viewer, Qt::Key_Plus);
    EXPECT_LT(viewer.unitsPerPixel(), whole);
    QTest::keyClick(&viewer, Qt::Key_Minus);
    EXPECT_NEAR(viewer.unitsPerPixel(), whole, 1e-12);
    for (int i = 0; i < 12; ++i)
        QTest::keyClick(&viewer, Qt::Key_Right);
    EXPECT_EQ(redPixels(), 0);
    QTest::keyClick(&viewer, Qt::Key_Home);
    EXPECT_GT(redPixels(), 100);
}

TEST_F(DwgViewXTest, AWholeDrawingStaysWholeWhenTheSizeChanges)
{
    viewer.setDrawing(path);
    viewer.resize(216, 216);
    QTest::qWait(0);
    EXPECT_NEAR(viewer.unitsPerPixel(), 10.0 / 200, 1e-9);
}

TEST_F(DwgViewXTest, LayersAreSwitchedInTheDialog)
{
    viewer.setDrawing(path);
    int rows = 0, redWhileOff = -1;
    QTimer::singleShot(0, &viewer, [&] {
        auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
        ASSERT_NE(dialog, nullptr);
        auto* list = dialog->findChild<QListWidget*>(QStringLiteral("LayerList"));
        rows = list->count();
        list->findItems(QStringLiteral("ROUND"), Qt::MatchExactly).at(0)->setCheckState(Qt::Unchecked);
        redWhileOff = redPixels();
        dialog->findChild<QPushButton*>(QStringLiteral("LayersAllOn"))->click();
        dialog->reject();
    });
    viewer.layersDialog();
    EXPECT_GE(rows, 2);
    EXPECT_EQ(redWhileOff, 0);
    EXPECT_GT(redPixels(), 100);
}

} // namespace
} // namespace zv
