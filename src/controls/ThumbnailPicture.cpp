#include "controls/ThumbnailPicture.h"

#include "drawing/container/Container.h"
#include "drawing/preview/Preview.h"
#include "platform/WithinMemory.h"

#include <QBuffer>
#include <QImageReader>
#include <QPainter>

#include <algorithm>
#include <array>
#include <cstring>
#include <mutex>
#include <optional>
#include <span>
#include <vector>

namespace zv {
namespace {

// Thin lines come out best when a picture is made smaller in one step, by the cell itself.
constexpr QSize kKeptWhole(512, 512);
constexpr int kMostOfRoom = 4; ///< Times the room's edge.

/// The size that a picture is unpacked to.
QSize unpackedSize(QSize picture, QSize room)
{
    const QSize most = (room * kMostOfRoom).expandedTo(kKeptWhole);
    const bool fits = picture.width() <= most.width() && picture.height() <= most.height();
    return fits ? picture : picture.scaled(most, Qt::KeepAspectRatio).expandedTo({1, 1});
}

QImage decodePng(std::span<const std::byte> bytes, QSize room)
{
    QByteArray data =
        QByteArray::fromRawData(reinterpret_cast<const char*>(bytes.data()), qsizetype(bytes.size()));
    QBuffer file(&data);
    QImageReader reader(&file, "PNG");
    // The header tells the size before anything is unpacked.
    const QSize size = reader.size();
    if (size.isEmpty() || size.width() > dwg::kLargestPictureEdge || size.height() > dwg::kLargestPictureEdge)
        return {};
    if (const QSize unpacked = unpackedSize(size, room); unpacked != size)
        reader.setScaledSize(unpacked);
    return reader.read().convertToFormat(QImage::Format_ARGB32);
}

QImage decodeDib(std::span<const std::byte> bytes, QSize room)
{
    const auto pixels = dwg::decodeBitmap(bytes);
    if (!pixels)
        return {};
    QImage image(pixels->width, pixels->height, QImage::Format_ARGB32);
    const std::size_t rowBytes = std::size_t(pixels->width) * 4;
    for (int row = 0; row < image.height(); ++row)
        std::memcpy(image.scanLine(row), pixels->bgra.data() + std::size_t(row) * rowBytes, rowBytes);
    const QSize unpacked = unpackedSize(image.size(), room);
    return unpacked == image.size() ? image
                                    : image.scaled(unpacked, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

QImage decode(const dwg::PreviewImage& preview, QSize room)
{
    // A panel's pictures are read side by side, and twenty large ones at once would take a gigabyte.
    static std::mutex oneLarge;
    std::unique_lock alone(oneLarge, std::defer_lock);
    if (const QSize size(preview.width, preview.height); unpackedSize(size, room) != size)
        alone.lock();
    switch (preview.kind) {
    case dwg::PreviewKind::Png:
        return decodePng(preview.bytes, room);
    case dwg::PreviewKind::Bmp:
        return decodeDib(preview.bytes, room);
    default:
        return {};
    }
}

constexpr int kReadableOnWhite = 140; ///< Lightness, of 255, that stands out from white.

bool isLight(QRgb color)
{
    return qGray(color) >= 128;
}

int distance(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b)) + std::abs(qBlue(a) - qBlue(b));
}

/// Turns pixels on one ground into the same picture on another.
class GroundChange {
public:
    GroundChange(QRgb from, QRgb to) : m_flips(isLight(from) != isLight(to)), m_toLight(isLight(to))
    {
        for (int value = 0; value < 256; ++value) {
            fill(m_plainRed, value, qRed(from), isLight(from));
            fill(m_plainGreen, value, qGreen(from), isLight(from));
            fill(m_plainBlue, value, qBlue(from), isLight(from));
            m_red[value] = onTarget(value, qRed(to), isLight(to));
            m_green[value] = onTarget(value, qGreen(to), isLight(to));
            m_blue[value] = onTarget(value, qBlue(to), isLight(to));
        }
    }

    QRgb operator()(QRgb pixel) const
    {
        int red = m_plainRed[qRed(pixel)];
        int green = m_plainGreen[qGreen(pixel)];
        int blue = m_plainBlue[qBlue(pixel)];
        if (m_flips) {
            const int shift = 255 - std::max({red, green, blue}) - std::min({red, green, blue});
            red += shift;
            green += shift;
            blue += shift;
            if (m_toLight)
                return onLight(red, green, blue);
        }
        return qRgb(m_red[std::size_t(red)], m_green[std::size_t(green)], m_blue[std::size_t(blue)]);
    }

private:
    using Table = std::array<uchar, 256>;

    // The ground becomes pure black or pure white first, so that turning the lightness over is exact.
    static void fill(Table& table, int value, int ground, bool light)
    {
        const int plain =
            light ? value * 255 / std::max(ground, 1) : (value - ground) * 255 / std::max(255 - ground, 1);
        table[std::size_t(value)] = uchar(std::clamp(plain, 0, 255));
    }
    // Yellow and cyan are as light as they are strong, so on white they are darkened, the more the stronger.
    QRgb onLight(int red, int green, int blue) const
    {
        const int light = qGray(red, green, blue);
        const int strength = std::max({red, green, blue}) - std::min({red, green, blue});
        if (light > kReadableOnWhite) {
            const double kept = 1 - strength / 255.0 * (1 - double(kReadableOnWhite) / light);
            red = int(red * kept);
            green = int(green * kept);
            blue = int(blue * kept);
        }
        return qRgb(m_red[std::size_t(red)], m_green[std::size_t(green)], m_blue[std::size_t(blue)]);
    }
    static uchar onTarget(int value, int ground, bool light)
    {
        return uchar(light ? value * ground / 255 : ground + value * (255 - ground) / 255);
    }

    bool m_flips;
    bool m_toLight;
    Table m_plainRed, m_plainGreen, m_plainBlue, m_red, m_green, m_blue;
};

std::optional<QRgb> groundOf(const QImage& picture)
{
    const int right = picture.width() - 1;
    const int bottom = picture.height() - 1;
    const std::array corners{picture.pixel(0, 0), picture.pixel(right, 0), picture.pixel(right, bottom),
                             picture.pixel(0, bottom)};
    for (const QRgb ground : {corners[0], corners[1]})
        if (std::count(corners.begin(), corners.end(), ground) >= 3)
            return ground;
    return {};
}

/// The pixel of a box that stands out most from the ground.
struct Strongest {
    StretchMode mode;
    QRgb ground;

    bool operator()(QRgb challenger, QRgb holder) const
    {
        const int a = distance(challenger, ground);
        const int b = distance(holder, ground);
        if (a != b)
            return a > b;
        return mode == StretchMode::BlackOnWhite ? qGray(challenger) < qGray(holder)
                                                 : qGray(challenger) > qGray(holder);
    }
};

QRgb between(QRgb a, QRgb b)
{
    return qRgb((qRed(a) + qRed(b)) / 2, (qGreen(a) + qGreen(b)) / 2, (qBlue(a) + qBlue(b)) / 2);
}

/// Half average, half strongest pixel: lines stay sharp and whole without growing fat.
QImage shrunkKeepingLines(const QImage& picture, QSize size, Strongest stronger)
{
    QImage result = picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation)
                        .convertToFormat(QImage::Format_RGB32);
    std::vector<QRgb> strongest(std::size_t(size.width()));
    int sourceRow = 0;
    for (int row = 0; row < size.height(); ++row) {
        const int end = std::max(sourceRow + 1, (row + 1) * picture.height() / size.height());
        std::fill(strongest.begin(), strongest.end(), stronger.ground);
        for (; sourceRow < end; ++sourceRow) {
            const QRgb* source = reinterpret_cast<const QRgb*>(picture.constScanLine(sourceRow));
            for (int column = 0; column < picture.width(); ++column) {
                QRgb& holder = strongest[std::size_t(column * size.width() / picture.width())];
                if (source[column] != holder && stronger(source[column], holder))
                    holder = source[column];
            }
        }
        QRgb* target = reinterpret_cast<QRgb*>(result.scanLine(row));
        for (int column = 0; column < size.width(); ++column)
            target[column] = between(target[column], strongest[std::size_t(column)]);
    }
    return result;
}

Result<QImage> readPicture(const std::string& path, QSize room)
{
    const auto source = openByteSource(path);
    if (!source)
        return source.error();
    const auto previews = dwg::readPreviews(**source);
    if (previews) {
        for (const dwg::PreviewImage& preview : *previews)
            if (const QImage image = decode(preview, room); !image.isNull())
                return image;
        return QImage();
    }
    // A drawing whose picture alone is damaged is still a drawing.
    const auto container = dwg::Container::open(**source);
    if (!container)
        return container.error();
    return QImage();
}

} // namespace

Result<QImage> readThumbnail(const std::string& path, QSize room)
{
    return withinMemory([&] { return readPicture(path, room); });
}

bool hasGround(const QImage& picture)
{
    return !picture.isNull() && groundOf(picture);
}

QImage onGround(const QImage& picture, QColor ground)
{
    if (picture.isNull())
        return picture;
    QImage result(picture.size(), QImage::Format_RGB32);
    result.fill(ground);
    QPainter(&result).drawImage(0, 0, picture);
    const auto from = groundOf(picture);
    if (!from || qAlpha(*from) == 0)
        return result;
    const GroundChange change(*from, ground.rgb());
    for (int row = 0; row < result.height(); ++row) {
        QRgb* pixels = reinterpret_cast<QRgb*>(result.scanLine(row));
        QRgb last = pixels[0];
        QRgb lastChanged = change(last);
        for (int column = 0; column < result.width(); ++column) {
            if (pixels[column] != last) {
                last = pixels[column];
                lastChanged = change(last);
            }
            pixels[column] = lastChanged;
        }
    }
    return result;
}

QImage stretched(const QImage& picture, QSize size, StretchMode mode, QColor ground)
{
    if (picture.isNull() || size.isEmpty())
        return {};
    const bool shrinks = size.width() < picture.width() && size.height() < picture.height();
    if (!shrinks || mode == StretchMode::Halftone)
        return picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    if (mode == StretchMode::ColorOnColor)
        return picture.scaled(size, Qt::IgnoreAspectRatio, Qt::FastTransformation);
    return shrunkKeepingLines(picture.convertToFormat(QImage::Format_RGB32), size, {mode, ground.rgb()});
}

} // namespace zv
