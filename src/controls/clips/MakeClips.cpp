// Draws the two clips of the program: make-clips FOLDER.

#include "controls/clips/ClipFile.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTextStream>

#include <cmath>
#include <functional>

namespace {

constexpr int kWidth = 160;
constexpr int kHeight = 60;
constexpr int kFrames = 24;
constexpr int kFrameMs = 100;
const QColor kGround(0x20, 0x20, 0x20);
const QColor kInk(0xd8, 0xd8, 0xd8);
const QColor kAccent(0xff, 0x80, 0x00);
constexpr int kCellEdge = 20;

void drawCell(QPainter& painter, QPointF at, bool lit, int kind)
{
    const QRectF cell(at, QSizeF(kCellEdge, kCellEdge));
    painter.setPen(QPen(lit ? kAccent : kInk, 1.5));
    painter.setBrush(lit ? QColor(0xff, 0x80, 0x00, 0x50) : QColor(Qt::transparent));
    painter.drawRoundedRect(cell, 2, 2);
    painter.setBrush(Qt::NoBrush);
    const QRectF inside = cell.adjusted(5, 5, -5, -5);
    if (kind == 0) {
        painter.drawEllipse(inside);
    } else if (kind == 1) {
        painter.drawLine(inside.topLeft(), inside.bottomRight());
        painter.drawLine(inside.topRight(), inside.bottomLeft());
    } else if (kind == 2) {
        painter.drawRect(inside);
    } else {
        painter.drawLine(inside.bottomLeft(), QPointF(inside.center().x(), inside.top()));
        painter.drawLine(QPointF(inside.center().x(), inside.top()), inside.bottomRight());
    }
}

/// A lens goes along a row of drawings and back; the drawing beneath it lights up.
void drawSearch(QPainter& painter, double turn)
{
    constexpr int kCells = 5;
    const double along = 0.5 - 0.5 * std::cos(turn * 2 * M_PI);
    const double lensX = 28 + along * 104;
    for (int i = 0; i < kCells; ++i) {
        const double x = 18.0 + 26 * i;
        drawCell(painter, {x, 20}, std::abs(x + kCellEdge / 2.0 - lensX) < 13, i % 4);
    }
    painter.setPen(QPen(kInk, 2.5));
    painter.drawEllipse(QPointF(lensX, 30), 15, 15);
    painter.drawLine(QPointF(lensX + 11, 41), QPointF(lensX + 19, 51));
}

/// Four drawings light up in turn while a line runs beneath them.
void drawLogo(QPainter& painter, double turn)
{
    const int lit = static_cast<int>(turn * 4);
    for (int i = 0; i < 4; ++i)
        drawCell(painter, {23.0 + 32 * i, 14}, i == lit, i);
    painter.setPen(QPen(QColor(0x60, 0x60, 0x60), 2));
    painter.drawLine(QPointF(23, 46), QPointF(137, 46));
    painter.setPen(QPen(kAccent, 2));
    const double start = 23 + turn * 94;
    painter.drawLine(QPointF(start, 46), QPointF(start + 20, 46));
}

zv::Clip drawClip(const std::function<void(QPainter&, double)>& draw)
{
    zv::Clip clip{kWidth, kHeight, kFrameMs, {}};
    for (int i = 0; i < kFrames; ++i) {
        QImage frame(kWidth, kHeight, QImage::Format_RGB32);
        frame.fill(kGround);
        QPainter painter(&frame);
        painter.setRenderHint(QPainter::Antialiasing);
        draw(painter, double(i) / kFrames);
        painter.end();
        std::vector<std::uint32_t> pixels;
        for (int y = 0; y < kHeight; ++y)
            for (int x = 0; x < kWidth; ++x)
                pixels.push_back(frame.pixel(x, y) & 0xffffff);
        clip.frames.push_back(std::move(pixels));
    }
    return clip;
}

bool save(const QString& path, const zv::Clip& clip)
{
    const std::string bytes = zv::writeClip(clip);
    QFile file(path);
    return file.open(QIODevice::WriteOnly) &&
           file.write(bytes.data(), static_cast<qint64>(bytes.size())) == static_cast<qint64>(bytes.size()) &&
           file.flush();
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        QTextStream(stderr) << "usage: make-clips FOLDER\n";
        return 2;
    }
    const QString folder = QFile::decodeName(argv[1]);
    if (save(folder + QStringLiteral("/Zelvora.avi"), drawClip(drawSearch)) &&
        save(folder + QStringLiteral("/Zelvora_Logo.avi"), drawClip(drawLogo)))
        return 0;
    QTextStream(stderr) << "make-clips: cannot write to " << folder << '\n';
    return 1;
}
