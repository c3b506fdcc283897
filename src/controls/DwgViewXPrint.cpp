#include "controls/DwgViewXState.h"
#include "drawing/paint/PrintedPage.h"
#include "platform/System.h"
#include "platform/Text.h"

#include <QDir>
#include <QFileDialog>
#include <QPrintDialog>
#include <QPrinterInfo>
#include <QStandardPaths>

namespace zv {

namespace {

/// The drawing's file name; "\\" and "/" both end a folder.
QString fileNameOf(const QString& drawing)
{
    return toText(fileNamePart(toBytes(drawing)));
}

/// The same without its ending.
QString nameOf(const QString& drawing)
{
    const QString name = fileNameOf(drawing);
    const qsizetype dot = name.lastIndexOf(QLatin1Char('.'));
    return dot > 0 ? name.left(dot) : name;
}

bool isThere(const QString& file)
{
    const QFileInfo info(file);
    return info.exists() || info.isSymLink();
}

/// A file for the drawing in a folder, where none is yet.
QString freeFile(const QDir& folder, const QString& drawing)
{
    const QString name = nameOf(drawing);
    QString file = folder.filePath(name + QStringLiteral(".pdf"));
    for (int number = 2; isThere(file); ++number)
        file = folder.filePath(QStringLiteral("%1-%2.pdf").arg(name, QString::number(number)));
    return file;
}

/// The file that is offered for a drawing: in the user's documents, or where there are none, at home.
QString offeredFile(const QString& drawing)
{
    QDir folder(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
    if (!folder.exists())
        folder.setPath(QDir::homePath());
    return folder.filePath(nameOf(drawing) + QStringLiteral(".pdf"));
}

/// A file that could not be written to its end, as on a full disk, lacks its mark.
bool isWholePdf(const QString& name)
{
    constexpr qint64 kTail = 32;
    QFile file(name);
    if (!file.open(QIODevice::ReadOnly))
        return false;
    file.seek(std::max<qint64>(0, file.size() - kTail));
    return file.read(kTail).contains("%%EOF");
}

bool askForFile(QPrinter& printer, QWidget* parent, const QString& offered)
{
    const QString file = QFileDialog::getSaveFileName(parent, DwgViewX::tr("Print to File"), offered,
                                                      DwgViewX::tr("PDF files (*.pdf)"));
    if (file.isEmpty())
        return false;
    printer.setOutputFormat(QPrinter::PdfFormat);
    printer.setOutputFileName(file);
    return true;
}

/// A dialog of the system's own knows printers only. Ours offers the file as well.
bool askForPrinter(QPrinter& printer, QWidget* parent, const QString& drawing)
{
    const QString offered = offeredFile(drawing);
    const bool hasPrinter = !QPrinterInfo::availablePrinterNames().isEmpty();
    if (kSystemHasPrintDialog) {
        if (!hasPrinter)
            return askForFile(printer, parent, offered);
    } else {
        const QPrinter::OutputFormat format = printer.outputFormat();
        printer.setOutputFileName(offered);
        printer.setOutputFormat(hasPrinter ? format : QPrinter::PdfFormat);
    }
    return QPrintDialog(&printer, parent).exec() == QDialog::Accepted;
}

} // namespace

bool DwgViewX::print()
{
    State& s = *m_state;
    if (!s.drawing)
        return false;
    if (!s.printer)
        s.printer = std::make_unique<QPrinter>(QPrinter::HighResolution);
    QPrinter& printer = *s.printer;
    printer.setDocName(fileNameOf(s.path));
    if (!s.printSilently) {
        s.printerChosen = s.chooser ? s.chooser(printer, this) : askForPrinter(printer, this, s.path);
    } else if (const QString file = printer.outputFileName(); s.printerChosen && !file.isEmpty()) {
        printer.setOutputFileName(freeFile(QFileInfo(file).dir(), s.path));
    }
    return s.printerChosen && printDirect(printer);
}

bool DwgViewX::printDirect(QPrinter& printer)
{
    State& s = *m_state;
    if (!s.drawing || !printer.isValid() || !dwg::printPicture(s.sceneOf(true), printer))
        return false;
    const QString file = printer.outputFileName();
    if (file.isEmpty() || !QFileInfo(file).isFile() || isWholePdf(file))
        return true;
    QFile::remove(file);
    return false;
}

bool DwgViewX::printSilently() const
{
    return m_state->printSilently;
}
void DwgViewX::setPrintSilently(bool silently)
{
    m_state->printSilently = silently;
}
void DwgViewX::setPrinterChooser(std::function<bool(QPrinter&, QWidget*)> chooser)
{
    m_state->chooser = std::move(chooser);
}

} // namespace zv
