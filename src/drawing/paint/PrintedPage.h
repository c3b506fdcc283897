#pragma once

#include "drawing/scene/Scene.h"

#include <QPageLayout>

class QPrinter;

namespace zv::dwg {

/// The thinnest line on paper. What is thinner breaks up when it is printed.
inline constexpr double kThinnestMillimetres = 0.18;

/// The orientation in which a scene of these bounds comes out larger on the paper; the layout's own where it
/// makes no difference.
QPageLayout::Orientation betterOrientation(const Box& bounds, const QPageLayout& layout);

/// Paints the scene whole on one page of the printer, which is turned to the better orientation: as on a
/// light ground, in black alone where the printer has no colour or is not to use it. False when the printer
/// refuses.
bool printPicture(const Scene& scene, QPrinter& printer);

} // namespace zv::dwg
