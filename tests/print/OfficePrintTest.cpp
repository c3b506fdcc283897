#include "SampleOffice.h"
#include "support/PdfFacts.h"
#include "window/TextBytes.h"

#include <QDir>
#include <QLabel>
#include <QPrinter>
#include <QPushButton>
#include <QStandardPaths>

namespace zv {
namespace {

constexpr double kA4Short = 210, kA4Long = 297;

class OfficePrintTest : public SampleOffice {};

TEST_F(OfficePrintTest, EveryDrawingOfTheSampleOfficeIsOnAPageOfItsOwn)
{
    const bool hasPoppler = !QStandardPaths::findExecutable(QStringLiteral("pdftoppm")).isEmpty();
    ASSERT_TRUE(open());
    const QString out = toText(folder.file("out/"));
    window().DwgViewX1->setPrinterChooser([&](QPrinter& printer, QWidget*) {
        printer.setOutputFormat(QPrinter::PdfFormat);
        printer.setOutputFileName(out + QStringLiteral("first of all.pdf"));
        return true;
    });
    selectAll();
    const auto lines = paths();
    ASSERT_GT(lines.size(), 200u);
    window().Command7->click();
    EXPECT_EQ(window().Label1->text(), QStringLiteral("Printed: \n%1 of %1").arg(lines.size()));

    const QStringList files = QDir(out).entryList({QStringLiteral("*.pdf")});
    EXPECT_EQ(std::size_t(files.size()), readablePaths().size());
    for (const QString& name : files) {
        const PdfFacts page = readPdf(out + name);
        const std::string told = name.toStdString();
        EXPECT_TRUE(page.whole) << told;
        EXPECT_EQ(page.pages, 1) << told;
        const auto [shorter, longer] = std::minmax({page.millimetres.width(), page.millimetres.height()});
        EXPECT_NEAR(shorter, kA4Short, 0.5) << told;
        EXPECT_NEAR(longer, kA4Long, 0.5) << told;
        EXPECT_EQ(page.images, 0) << told;
        EXPECT_GT(page.paths, 0) << told;
        EXPECT_TRUE(QRectF(QPointF(), page.millimetres).contains(page.ink)) << told;
        if (hasPoppler) {
            EXPECT_GT(inkOnPage(out + name), 0.0001) << told;
        }
    }
}

} // namespace
} // namespace zv
