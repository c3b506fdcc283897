#include "ContactSheet.h"

#include "Library.h"
#include "drawing/paint/Picture.h"

#include <QImage>
#include <QPainter>

namespace zv::samples {

namespace {
constexpr int kColumns = 16, kCellWidth = 112, kCellHeight = 84, kLabel = 12, kTitle = 22, kGap = 4;

int rowsOf(const Library& library)
{
    return (static_cast<int>(library.samples.size()) + kColumns - 1) / kColumns;
}

void paintLibrary(QPainter& painter, const Library& library, int top)
{
    QFont font = painter.font();
    font.setPixelSize(14);
    font.setBold(true);
    painter.setFont(font);
    painter.drawText(QRect(kGap, top, kColumns * kCellWidth, kTitle), Qt::AlignVCenter,
                     QString::fromStdString(library.name));
    font.setPixelSize(8);
    font.setBold(false);
    painter.setFont(font);
    for (std::size_t i = 0; i < library.samples.size(); ++i) {
        const int column = static_cast<int>(i) % kColumns, row = static_cast<int>(i) / kColumns;
        const QPoint at(kGap + column * (kCellWidth + kGap),
                        top + kTitle + row * (kCellHeight + kLabel + kGap));
        const dwg::Pixels pixels =
            dwg::renderPreview(library.samples[i].draft.document(), kCellWidth, kCellHeight);
        const QImage picture(pixels.bgra.data(), pixels.width, pixels.height, QImage::Format_RGB32);
        painter.drawImage(at, picture);
        painter.drawText(QRect(at + QPoint(0, kCellHeight), QSize(kCellWidth, kLabel)), Qt::AlignCenter,
                         QString::fromStdString(library.samples[i].name));
    }
}
} // namespace

Result<void> makeContactSheet(const std::string& path)
{
    const std::vector<Library> libraries = allLibraries();
    int height = kGap;
    for (const Library& library : libraries)
        height += kTitle + rowsOf(library) * (kCellHeight + kLabel + kGap);
    QImage sheet(kGap + kColumns * (kCellWidth + kGap), height, QImage::Format_RGB32);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::TextAntialiasing);
    int top = 0;
    for (const Library& library : libraries) {
        paintLibrary(painter, library, top);
        top += kTitle + rowsOf(library) * (kCellHeight + kLabel + kGap);
    }
    painter.end();
    if (!sheet.save(QString::fromStdString(path), "PNG"))
        return Error{ErrorCode::Failed, path + " cannot be written"};
    return {};
}

} // namespace zv::samples
