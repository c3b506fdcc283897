#pragma once

#include <QBuffer>
#include <QByteArray>
#include <QImage>

#include <cstdint>
#include <string>

namespace zv {

inline QByteArray littleEndian(std::uint32_t value)
{
    QByteArray bytes;
    for (int i = 0; i < 4; ++i)
        bytes += char(value >> (8 * i));
    return bytes;
}

/// A file of R2000 that is no more than its header and this picture.
inline std::string fileWithPng(const QImage& image)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    image.save(&buffer, "PNG");
    QByteArray header = "AC1015" + QByteArray(0x60 - 6, '\0');
    header[0x15] = 1;
    header.replace(0x0D, 4, littleEndian(std::uint32_t(header.size())));
    const QByteArray sentinel("\x1F\x25\x6D\x07\xD4\x36\x28\x28\x9D\x57\xCA\x3F\x9D\x44\x10\x2B");
    const QByteArray file = header + sentinel + littleEndian(std::uint32_t(1 + 9 + png.size())) + char(1) +
                            char(6) + littleEndian(std::uint32_t(header.size() + 16 + 4 + 1 + 9)) +
                            littleEndian(std::uint32_t(png.size())) + png;
    return file.toStdString();
}

/// Black with a white bar through its middle, one bit a pixel.
inline QImage largeBar(QSize size)
{
    QImage image(size, QImage::Format_Mono);
    image.fill(0);
    for (int row = size.height() * 2 / 5; row < size.height() * 3 / 5; ++row)
        for (int column = 0; column < size.width(); ++column)
            image.setPixel(column, row, 1);
    return image;
}

} // namespace zv
