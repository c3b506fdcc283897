#pragma once

#include "SceneMaker.h"

#include <QImage>

#include <cstdlib>

namespace zv::dwg {

/// One thing of nearly every kind, in a row.
inline SceneMaker everything()
{
    SceneMaker m;
    const Handle red = m.layer(u"RED", 1);
    m.add(Line{{0, 0, 0}, {8, 8, 0}}).layer = red;
    m.add(Circle{{14, 4, 0}, 4});
    m.add(Arc{{24, 4, 0}, 4, 0, 4});
    Polyline wide;
    for (const Point3 p : {Point3{30, 0, 0}, Point3{38, 0, 0}, Point3{38, 8, 0}})
        wide.vertices.push_back({p});
    wide.constantWidth = 1;
    m.add(wide).color = {Color::Kind::Index, 3, 0};
    Hatch hatch;
    HatchLoop loop;
    for (const Point3 p : {Point3{42, 0, 0}, Point3{50, 0, 0}, Point3{50, 8, 0}, Point3{42, 8, 0}})
        loop.polyline.push_back({p});
    hatch.loops = {loop};
    hatch.lines = {{kPi / 4, {0, 0}, {-0.7, 0.7}, {}}};
    m.add(hatch);
    Solid solid;
    solid.corners = {{{54, 0, 0}, {62, 0, 0}, {54, 8, 0}, {62, 8, 0}}};
    m.add(solid).color = {Color::Kind::Index, 5, 0};
    TextLine text;
    text.text = u"Abc 19";
    text.height = 5;
    text.insertion = {66, 1, 0};
    m.add(text);
    return m;
}

/// The mean difference of two pictures' channels; pictures of other sizes are wholly different.
inline double difference(const QImage& a, const QImage& b)
{
    if (a.size() != b.size() || a.isNull())
        return 255;
    double sum = 0;
    for (int y = 0; y < a.height(); ++y)
        for (int x = 0; x < a.width(); ++x) {
            const QRgb p = a.pixel(x, y), q = b.pixel(x, y);
            sum +=
                std::abs(qRed(p) - qRed(q)) + std::abs(qGreen(p) - qGreen(q)) + std::abs(qBlue(p) - qBlue(q));
        }
    return sum / 3 / a.width() / a.height();
}

} // namespace zv::dwg
