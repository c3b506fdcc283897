#include "drawing/paint/SvgDevice.h"

#include <QSvgGenerator>

namespace zv::dwg {

std::unique_ptr<QPaintDevice> svgDevice(const QString& file, QSize size)
{
    auto device = std::make_unique<QSvgGenerator>();
    device->setFileName(file);
    device->setSize(size);
    device->setViewBox(QRectF(QPointF(), size));
    return device;
}

} // namespace zv::dwg
