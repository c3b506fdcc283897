#include "drawing/paint/ClipPolygon.h"

namespace zv::dwg {

bool clipSegment(Point2& a, Point2& b, const Box& box, double margin)
{
    if (!finite(a) || !finite(b))
        return false;
    double from = 0, to = 1;
    const Point2 d = b - a;
    const auto cut = [&](double slope, double room) {
        // slope * t <= room
        if (slope == 0)
            return room >= 0;
        const double t = room / slope;
        if (slope > 0)
            to = std::min(to, t);
        else
            from = std::max(from, t);
        return from <= to;
    };
    if (!cut(-d.x, a.x - (box.min.x - margin)) || !cut(d.x, box.max.x + margin - a.x) ||
        !cut(-d.y, a.y - (box.min.y - margin)) || !cut(d.y, box.max.y + margin - a.y))
        return false;
    const Point2 start = a;
    if (to < 1)
        b = start + d * to;
    if (from > 0)
        a = start + d * from;
    return true;
}

std::vector<Point2> clipPolygon(std::span<const Point2> polygon, const Box& box, double margin)
{
    std::vector<Point2> in(polygon.begin(), polygon.end()), out;
    // One side of the box after the other: `room` is how far inside of it a point lies.
    const auto cut = [&](auto&& room) {
        out.clear();
        for (std::size_t i = 0; i < in.size(); ++i) {
            const Point2 a = in[i], b = in[(i + 1) % in.size()];
            const double ra = room(a), rb = room(b);
            if (ra >= 0)
                out.push_back(a);
            if ((ra >= 0) != (rb >= 0))
                out.push_back(a + (b - a) * (ra / (ra - rb)));
        }
        in.swap(out);
    };
    cut([&](Point2 p) { return p.x - (box.min.x - margin); });
    cut([&](Point2 p) { return box.max.x + margin - p.x; });
    cut([&](Point2 p) { return p.y - (box.min.y - margin); });
    cut([&](Point2 p) { return box.max.y + margin - p.y; });
    return in;
}

} // namespace zv::dwg
