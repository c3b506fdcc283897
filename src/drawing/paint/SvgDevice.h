#pragma once

#include <QPaintDevice>
#include <QSize>
#include <QString>

#include <memory>

namespace zv::dwg {

/// What is painted on it goes into an SVG file of so many pixels, which is whole once the device is gone.
/// Null where Qt was built without its SVG module.
std::unique_ptr<QPaintDevice> svgDevice(const QString& file, QSize size);

} // namespace zv::dwg
