#include "drawing/paint/SvgDevice.h"

namespace zv::dwg {

std::unique_ptr<QPaintDevice> svgDevice(const QString&, QSize)
{
    return nullptr;
}

} // namespace zv::dwg
