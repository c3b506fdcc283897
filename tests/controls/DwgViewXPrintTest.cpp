#include "controls/DwgViewX.h"
#include "drawing/Writer.h"
#include "platform/System.h"
#include "support/Environment.h"
#include "support/FullDisk.h"
#include "support/PdfFacts.h"
#include "window/TextBytes.h"

#include <QApplication>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QLineEdit>
#include <QPrintDialog>
#include <QPrinter>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <gtest/gtest.h>

namespace zv {
namespace {

constexpr double kA4Short = 210, kA4Long = 297;

/// A rectangle of this size in the colour of an index, and a line of 2 mm in it.
dwg::Document rectangle(double width, double height, int color = 7)
{
    dwg::Document document;
    document.layers.emplace_back();
    document.layers[0].name = u"0";
    document.layers[0].handle = 0x100;
    document.layerIndex[0x100] = 0;
    document.blocks.emplace_back();
    document.blocks[0].name = u"*Model_Space";
    document.blocks[0].layout = true;
    document.blocks[0].handle = 0x200;
    document.blockIndex[0x200] = 0;
    dwg::Polyline outline;
    for (const dwg::Point3 p : {dwg::Point3{0, 0, 0}, {width, 0, 0}, {width, height, 0}, {0, height, 0}})
        outline.vertices.push_back({p});
    outline.closed = true;
    dwg::Entity entity;
    entity.geometry = outline;
    entity.kind = "LWPOLYLINE";
    entity.layer = 0x100;
    entity.color = {dwg::Color::Kind::Index, std::uint8_t(color), 0};
    document.blocks[0].entities.push_back(entity);
    return document;
}

class DwgViewXPrintTest : public testing::Test {
protected:
    DwgViewXPrintTest()
    {
        viewer.resize(200, 200);
        viewer.show();
    }

    std::string write(const QString& name, const dwg::Document& document)
    {
        const auto written = dwg::writeDocument(document, {});
        EXPECT_TRUE(written);
        const QString path = folder.filePath(name);
        EXPECT_TRUE(QDir().mkpath(QFileInfo(path).path()));
        QFile file(path);
        EXPECT_TRUE(file.open(QIODevice::WriteOnly));
        if (written)
            file.write(written.value().data(), qint64(written.value().size()));
        return toBytes(path);
    }
    /// The user chooses this file in the dialog.
    void choosePdf(const QString& name)
    {
        viewer.setPrinterChooser([this, name](QPrinter& printer, QWidget*) {
            ++asked;
            printer.setOutputFormat(QPrinter::PdfFormat);
            printer.setOutputFileName(out(name));
            return true;
        });
    }
    /// The user says no.
    void cancel()
    {
        viewer.setPrinterChooser([this](QPrinter&, QWidget*) {
            ++asked;
            return false;
        });
    }
    bool printSilently(const std::string& path)
    {
        viewer.setDrawing(path);
        viewer.setPrintSilently(true);
        return viewer.print();
    }
    bool printWithDialog(const std::string& path)
    {
        viewer.setDrawing(path);
        viewer.setPrintSilently(false);
        return viewer.print();
    }
    QString out(const QString& name) { return folder.filePath(QStringLiteral("out/") + name); }
    QStringList printed() { return QDir(folder.filePath(QStringLiteral("out"))).entryList(QDir::Files); }

    QTemporaryDir folder;
    bool made = QDir(folder.path()).mkdir(QStringLiteral("out"));
    DwgViewX viewer;
    int asked = 0;
};

TEST_F(DwgViewXPrintTest, APageHoldsTheDrawingAsLinesNotAsAPicture)
{
    choosePdf(QStringLiteral("first.pdf"));
    ASSERT_TRUE(printWithDialog(write(QStringLiteral("plan.dwg"), rectangle(200, 100))));
    const PdfFacts page = readPdf(out(QStringLiteral("first.pdf")));
    EXPECT_TRUE(page.whole);
    EXPECT_EQ(page.pages, 1);
    EXPECT_EQ(page.images, 0);
    EXPECT_GT(page.paths, 0);
    EXPECT_EQ(page.title, QStringLiteral("plan.dwg"));
}

TEST_F(DwgViewXPrintTest, EachPageIsTurnedAsItsDrawingIsLarger)
{
    choosePdf(QStringLiteral("wide.pdf"));
    ASSERT_TRUE(printWithDialog(write(QStringLiteral("wide.dwg"), rectangle(200, 100))));
    ASSERT_TRUE(printSilently(write(QStringLiteral("high.dwg"), rectangle(100, 200))));
    ASSERT_TRUE(printSilently(write(QStringLiteral("wide2.dwg"), rectangle(200, 100))));
    for (const char* name : {"wide.pdf", "wide2.pdf"}) {
        EXPECT_NEAR(readPdf(out(QLatin1String(name))).millimetres.width(), kA4Long, 0.5);
        EXPECT_NEAR(readPdf(out(QLatin1String(name))).millimetres.height(), kA4Short, 0.5);
    }
    EXPECT_NEAR(readPdf(out(QStringLiteral("high.pdf"))).millimetres.height(), kA4Long, 0.5);
}

TEST_F(DwgViewXPrintTest, TheDrawingFillsThePrintableAreaButForAMargin)
{
    choosePdf(QStringLiteral("wide.pdf"));
    ASSERT_TRUE(printWithDialog(write(QStringLiteral("wide.dwg"), rectangle(200, 100))));
    const PdfFacts page = readPdf(out(QStringLiteral("wide.pdf")));
    EXPECT_GT(page.ink.width(), kA4Long * 0.85);
    EXPECT_LT(page.ink.width(), kA4Long - 2);
    EXPECT_NEAR(page.ink.height(), page.ink.width() / 2, 0.1);
    EXPECT_NEAR(page.ink.center().x(), kA4Long / 2, 0.5);
    EXPECT_NEAR(page.ink.center().y(), kA4Short / 2, 0.5);
}

TEST_F(DwgViewXPrintTest, NoLineIsThinnerThanPaperHolds)
{
    dwg::Document document = rectangle(200, 100);
    // A line whose width is part of the drawing: a tenth of a unit on a page that is 200 units wide.
    dwg::Polyline thin;
    thin.vertices.push_back({{10, 10, 0}});
    thin.vertices.push_back({{190, 10, 0}});
    thin.constantWidth = 0.01;
    document.blocks[0].entities.push_back(document.blocks[0].entities[0]);
    document.blocks[0].entities.back().geometry = thin;
    choosePdf(QStringLiteral("thin.pdf"));
    ASSERT_TRUE(printWithDialog(write(QStringLiteral("thin.dwg"), document)));
    const PdfFacts page = readPdf(out(QStringLiteral("thin.pdf")));
    // The outline of the filled line is as wide as it lacks.
    constexpr double kWidthOnPaper = 0.01 * kA4Long / 200;
    EXPECT_GE(page.thinnest + kWidthOnPaper, 0.18 - 1e-3);
    EXPECT_LT(page.thinnest, 0.3);
}

TEST_F(DwgViewXPrintTest, ColoursAreThoseOfALightGround)
{
    choosePdf(QStringLiteral("c.pdf"));
    ASSERT_TRUE(printWithDialog(write(QStringLiteral("red.dwg"), rectangle(10, 10, 1))));
    ASSERT_TRUE(printSilently(write(QStringLiteral("contrast.dwg"), rectangle(10, 10, 7))));
    EXPECT_EQ(readPdf(out(QStringLiteral("c.pdf"))).colors, QSet<QRgb>{qRgb(255, 0, 0)});
    EXPECT_EQ(readPdf(out(QStringLiteral("contrast.pdf"))).colors, QSet<QRgb>{qRgb(0, 0, 0)});
}

TEST_F(DwgViewXPrintTest, WithoutColourEverythingIsBlack)
{
    viewer.setPrinterChooser([this](QPrinter& printer, QWidget*) {
        printer.setOutputFileName(out(QStringLiteral("c.pdf")));
        printer.setColorMode(QPrinter::GrayScale);
        return true;
    });
    ASSERT_TRUE(printWithDialog(write(QStringLiteral("yellow.dwg"), rectangle(10, 10, 2))));
    EXPECT_EQ(readPdf(out(QStringLiteral("c.pdf"))).colors, QSet<QRgb>{qRgb(0, 0, 0)});
}

TEST_F(DwgViewXPrintTest, TheUserIsAskedOnceAndEachFurtherDrawingHasAFileOfItsOwn)
{
    choosePdf(QStringLiteral("first.pdf"));
    ASSERT_TRUE(printWithDialog(write(QStringLiteral("a/door.dwg"), rectangle(10, 10))));
    ASSERT_TRUE(printSilently(write(QStringLiteral("b/door.dwg"), rectangle(10, 10))));
    ASSERT_TRUE(printSilently(write(QStringLiteral("c/door.dwg"), rectangle(10, 10))));
    ASSERT_TRUE(printSilently(write(QStringLiteral("d/door.v2.DWG"), rectangle(10, 10))));
    EXPECT_EQ(asked, 1);
    EXPECT_EQ(printed(), (QStringList{QStringLiteral("door-2.pdf"), QStringLiteral("door.pdf"),
                                      QStringLiteral("door.v2.pdf"), QStringLiteral("first.pdf")}));
}

TEST_F(DwgViewXPrintTest, AFileThatIsThereAlreadyIsNeverOverwrittenSilently)
{
    QFile kept(out(QStringLiteral("door.pdf")));
    ASSERT_TRUE(kept.open(QIODevice::WriteOnly));
    kept.write("mine");
    kept.close();
    choosePdf(QStringLiteral("first.pdf"));
    ASSERT_TRUE(printWithDialog(write(QStringLiteral("x.dwg"), rectangle(10, 10))));
    ASSERT_TRUE(printSilently(write(QStringLiteral("door.dwg"), rectangle(10, 10))));
    ASSERT_TRUE(kept.open(QIODevice::ReadOnly));
    EXPECT_EQ(kept.readAll(), "mine");
    EXPECT_TRUE(readPdf(out(QStringLiteral("door-2.pdf"))).whole);
}

TEST_F(DwgViewXPrintTest, ANameThatHoldsPercentSignsStaysAsItIs)
{
    choosePdf(QStringLiteral("ramp 5%1.pdf"));
    const std::string drawing = write(QStringLiteral("ramp 5%1.dwg"), rectangle(10, 10));
    ASSERT_TRUE(printWithDialog(drawing));
    ASSERT_TRUE(printSilently(drawing));
    EXPECT_EQ(printed(), (QStringList{QStringLiteral("ramp 5%1-2.pdf"), QStringLiteral("ramp 5%1.pdf")}));
}

TEST_F(DwgViewXPrintTest, NothingIsPrintedSilentlyWithoutAChoice)
{
    const std::string drawing = write(QStringLiteral("x.dwg"), rectangle(10, 10));
    EXPECT_FALSE(printSilently(drawing));
    cancel();
    EXPECT_FALSE(printWithDialog(drawing));
    EXPECT_FALSE(printSilently(drawing));
    EXPECT_EQ(asked, 1);
    EXPECT_TRUE(printed().isEmpty());
}

TEST_F(DwgViewXPrintTest, ANoTakesAnEarlierYesBack)
{
    const std::string drawing = write(QStringLiteral("x.dwg"), rectangle(10, 10));
    choosePdf(QStringLiteral("first.pdf"));
    ASSERT_TRUE(printWithDialog(drawing));
    cancel();
    EXPECT_FALSE(printWithDialog(drawing));
    EXPECT_FALSE(printSilently(drawing));
    EXPECT_EQ(printed(), QStringList{QStringLiteral("first.pdf")});
}

TEST_F(DwgViewXPrintTest, NoDrawingIsNotPrintedAndNobodyIsAsked)
{
    choosePdf(QStringLiteral("first.pdf"));
    EXPECT_FALSE(printWithDialog(toBytes(folder.filePath(QStringLiteral("none.dwg")))));
    EXPECT_EQ(asked, 0);
    EXPECT_TRUE(printed().isEmpty());
}

TEST_F(DwgViewXPrintTest, AFolderThatIsNotThereIsARefusal)
{
    choosePdf(QStringLiteral("none/first.pdf"));
    EXPECT_FALSE(printWithDialog(write(QStringLiteral("x.dwg"), rectangle(10, 10))));
}

TEST_F(DwgViewXPrintTest, AFullDiskIsToldAndLeavesNoHalfFile)
{
    if (!FullDisk::canBeMade())
        GTEST_SKIP() << "the size of files cannot be limited on this system";
    const std::string drawing = write(QStringLiteral("x.dwg"), rectangle(10, 10));
    choosePdf(QStringLiteral("first.pdf"));
    {
        const FullDisk disk(200);
        EXPECT_FALSE(printWithDialog(drawing));
        EXPECT_FALSE(printSilently(drawing));
    }
    EXPECT_TRUE(printed().isEmpty());
    EXPECT_TRUE(printSilently(drawing));
    EXPECT_EQ(printed(), QStringList{QStringLiteral("x.pdf")});
}

TEST_F(DwgViewXPrintTest, AHiddenLayerIsNotPrinted)
{
    dwg::Document document = rectangle(10, 10);
    document.layers[0].off = true;
    choosePdf(QStringLiteral("first.pdf"));
    ASSERT_TRUE(printWithDialog(write(QStringLiteral("x.dwg"), document)));
    EXPECT_EQ(readPdf(out(QStringLiteral("first.pdf"))).paths, 0);
}

// ---- the dialog itself

/// Runs what a user does in the print dialog once it stands.
class DialogUser {
public:
    explicit DialogUser(std::function<void(QPrintDialog&)> deed) : m_deed(std::move(deed))
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this] {
            auto* dialog = qobject_cast<QPrintDialog*>(QApplication::activeModalWidget());
            if (!dialog)
                return;
            m_timer.stop();
            m_deed(*dialog);
        });
        m_timer.start(10);
    }

private:
    std::function<void(QPrintDialog&)> m_deed;
    QTimer m_timer;
};

QLineEdit* fileField(QPrintDialog& dialog)
{
    return dialog.findChild<QLineEdit*>(QStringLiteral("filename"));
}

void press(QPrintDialog& dialog, QDialogButtonBox::StandardButton button)
{
    dialog.findChild<QDialogButtonBox*>()->button(button)->click();
}

class PrintDialogTest : public DwgViewXPrintTest {
protected:
    PrintDialogTest() { viewer.setPrinterChooser({}); }
    void SetUp() override
    {
        if (kSystemHasPrintDialog)
            GTEST_SKIP() << "the dialog is the system's own";
    }

    QTemporaryDir home;
    Environment homeFolder{"HOME", home.path().toStdString()};
    Environment config{"XDG_CONFIG_HOME", home.filePath(QStringLiteral("config")).toStdString()};
    Environment noServer{"CUPS_SERVER", home.filePath(QStringLiteral("none.sock")).toStdString()};
};

TEST_F(PrintDialogTest, WithoutAPrinterAFileInTheUsersDocumentsIsOffered)
{
    ASSERT_TRUE(QDir(home.path()).mkdir(QStringLiteral("Documents")));
    QString offered;
    DialogUser user([&](QPrintDialog& dialog) {
        offered = fileField(dialog)->text();
        EXPECT_TRUE(fileField(dialog)->isEnabled());
        press(dialog, QDialogButtonBox::Ok);
    });
    ASSERT_TRUE(printWithDialog(write(QStringLiteral("sub/door.dwg"), rectangle(10, 10))));
    EXPECT_EQ(offered, home.filePath(QStringLiteral("Documents/door.pdf")));
    EXPECT_TRUE(readPdf(offered).whole);
}

TEST_F(PrintDialogTest, AMissingDocumentsFolderIsNotOffered)
{
    QString offered;
    DialogUser user([&](QPrintDialog& dialog) {
        offered = fileField(dialog)->text();
        press(dialog, QDialogButtonBox::Cancel);
    });
    EXPECT_FALSE(printWithDialog(write(QStringLiteral("door.dwg"), rectangle(10, 10))));
    EXPECT_EQ(offered, home.filePath(QStringLiteral("door.pdf")));
}

TEST_F(PrintDialogTest, TheNameThatIsTypedIsTheFirstFileAndTheFolderOfTheOthers)
{
    DialogUser user([&](QPrintDialog& dialog) {
        fileField(dialog)->setText(out(QStringLiteral("mine.pdf")));
        press(dialog, QDialogButtonBox::Ok);
    });
    ASSERT_TRUE(printWithDialog(write(QStringLiteral("one.dwg"), rectangle(10, 10))));
    ASSERT_TRUE(printSilently(write(QStringLiteral("two.dwg"), rectangle(10, 10))));
    EXPECT_EQ(printed(), (QStringList{QStringLiteral("mine.pdf"), QStringLiteral("two.pdf")}));
}

TEST_F(PrintDialogTest, EachDialogOffersTheNameOfItsOwnDrawing)
{
    QStringList offered;
    for (const char* name : {"one.dwg", "two.dwg"}) {
        DialogUser user([&](QPrintDialog& dialog) {
            offered << QFileInfo(fileField(dialog)->text()).fileName();
            press(dialog, QDialogButtonBox::Ok);
        });
        EXPECT_TRUE(printWithDialog(write(QLatin1String(name), rectangle(10, 10))));
    }
    EXPECT_EQ(offered, (QStringList{QStringLiteral("one.pdf"), QStringLiteral("two.pdf")}));
}

} // namespace
} // namespace zv
